// Searching: SBaseFind walks the entries of a folder, or of what is like one (SZipFile); SFileFind
// those of a folder.
//
//     SFileFind find;
//     for (int more = find.FindFile("data/*.txt", SBaseFind::AllAttributes); more;
//          more = find.FindNextFileA())
//         use(find.GetFilePath());
//
// Threads: a search belongs to one thread at a time.
// Errors: SEOutOfMemory; what cannot be found or read ends the search.
#ifndef BRCORE8_STREAMS_FIND_H
#define BRCORE8_STREAMS_FIND_H

#include <brcore8/platform/export.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/time.h>

#include <cstdint>
#include <memory>

class BRCORE8_API SBaseFind {
public:
    // Every entry has at least one of these.
    enum Attribute : unsigned long {
        ReadOnly = 0x1,
        Hidden = 0x2,
        System = 0x4,
        Directory = 0x10,
        Archive = 0x20,
        Device = 0x40,
        Normal = 0x80,  // alone, where there is no other
        Link = 0x400,
        AllAttributes = 0xFFFFFFFF
    };

    SBaseFind() noexcept = default;
    SBaseFind(const SBaseFind&) = delete;
    SBaseFind& operator=(const SBaseFind&) = delete;
    virtual ~SBaseFind();

    // Starts anew and goes to the first entry; 1 when there is one, else 0.
    virtual int FindFile(const char* mask, unsigned long attributes) = 0;
    // Goes to the next entry; 0 when there is none.
    virtual int FindNextFileA() = 0;
    // Whether the present entry has one of these attributes: 1 or 0.
    virtual int MatchesMask(unsigned long attributes) const = 0;
    // When the present entry was made, or last changed where that is not kept: 1, and 0 for null.
    virtual int GetCreationTime(STime* time) const = 0;

    // The present entry: its name, and what leads to it from where the search began.
    virtual SString GetFileName() const = 0;
    virtual SString GetFilePath() const = 0;
    virtual std::uint64_t GetLength() const = 0;
    virtual unsigned long GetAttributes() const = 0;
    int IsDirectory() const { return (GetAttributes() & Directory) != 0; }
};

// The entries of a folder whose names match a mask and that have one of some attributes; the two
// entries for the folder itself and its parent are left out. Their order is the system's.
class BRCORE8_API SFileFind : public SBaseFind {
public:
    SFileFind() noexcept;
    ~SFileFind() override;

    // `mask` is a path whose last part may hold "*", any run of characters, and "?", any one;
    // "*.*" means every name. Without them it is the path of one entry. A slash of either kind
    // separates on Windows, "/" elsewhere, where upper and lower case are then different too.
    int FindFile(const char* mask, unsigned long attributes = AllAttributes) override;
    int FindNextFileA() override;
    void Close() noexcept;

    int MatchesMask(unsigned long attributes) const override;
    // The time of the last change where the system keeps none of creation.
    int GetCreationTime(STime* time) const override;
    int GetLastWriteTime(STime* time) const;
    SString GetFileName() const override;
    SString GetFilePath() const override;
    std::uint64_t GetLength() const override;
    unsigned long GetAttributes() const override;

private:
    struct State;
    bool IsWanted() const noexcept;

    std::unique_ptr<State> state_;
};

#endif
