// The text of an INI file: finding keys in it, and changing one of them while every other byte
// stays. What the lines mean: brcore8/settings/profile.h. Names given here may bear blanks at their
// ends; they mean the process's code page.
//
//     text    = [EF BB BF] {line}
//     line    = {blank} (header | remark | key | other) (LF | CR LF | CR | the text's end)
//     header  = "[" name up to the line's last "]" ...
//     remark  = ";" ...
//     key     = name "=" value
//
// Any thread. What makes something throws SEOutOfMemory.
#ifndef BRCORE8_PLATFORM_POSIX_INI_TEXT_H
#define BRCORE8_PLATFORM_POSIX_INI_TEXT_H

#include <brcore8/core/throw.h>
#include <brcore8/strings/string_buffer.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace brcore8 {

// Bytes in a block of memory of their own.
class IniBytes {
public:
    IniBytes() noexcept = default;
    explicit IniBytes(std::size_t size) : data_(static_cast<char*>(Allocate(size))), size_(size) {}
    IniBytes(IniBytes&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    IniBytes& operator=(IniBytes&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        return *this;
    }
    ~IniBytes() { Release(data_); }

    char* Data() noexcept { return data_; }
    std::string_view View() const noexcept { return {data_, size_}; }

private:
    char* data_ = nullptr;
    std::size_t size_ = 0;
};

struct IniLine {
    enum Kind { Header, Key, Other };

    Kind kind = Other;
    std::string_view name;   // of a header or a key, without the blanks around it
    std::string_view value;  // of a key, without blanks, in its quotes
    std::size_t begin = 0;   // of the line
    std::size_t end = 0;     // of its text
    std::size_t next = 0;    // of the line after it
};

// The line that begins there.
IniLine IniLineAt(std::string_view text, std::size_t begin) noexcept;

class IniLines {
public:
    explicit IniLines(std::string_view text) noexcept;

    // False behind the last line.
    bool Next(IniLine& line) noexcept;

private:
    std::string_view text_;
    std::size_t at_;
};

std::string_view TrimIniBlanks(std::string_view text) noexcept;
// Without one pair of quotes.
std::string_view UnquoteIni(std::string_view value) noexcept;
bool SameIniName(std::string_view left, std::string_view right) noexcept;
// Whether the text begins with the mark of UTF-16, whose bytes are no lines.
bool IsIniUtf16(std::string_view text) noexcept;

// --- change --------------------------------------------------------------------------------------

// `removed` bytes from `at` on give way to the inserted ones.
struct IniEdit {
    std::size_t at = 0;
    std::size_t removed = 0;
    SStringBuffer inserted{256};

    bool ChangesNothing(std::string_view text) const noexcept;
    // The whole text afterwards.
    IniBytes Apply(std::string_view text) const;
};

// Gives the key a value, where there is none adds it, and the section before it. What may stand in
// a name or a value is the caller's business.
void SetIniKey(std::string_view text, std::string_view section, std::string_view key,
               std::string_view value, IniEdit& edit);
void EraseIniKey(std::string_view text, std::string_view section, std::string_view key,
                 IniEdit& edit) noexcept;
// From the header to the section's last key.
void EraseIniSection(std::string_view text, std::string_view section, IniEdit& edit) noexcept;

// --- search --------------------------------------------------------------------------------------

// The value without its quotes, a part of the text; nothing when the key is not there. Reads the
// text as far as it must.
std::optional<std::string_view> FindIniKey(std::string_view text, std::string_view section,
                                           std::string_view key) noexcept;

// Finds each key of a text of less than 4 GiB in constant time. Asked with another text or under
// another code page than it was made for, the answers mean nothing.
class IniIndex {
public:
    IniIndex() noexcept = default;
    explicit IniIndex(std::string_view text);
    IniIndex(IniIndex&& other) noexcept : IniIndex() { *this = std::move(other); }
    IniIndex& operator=(IniIndex&& other) noexcept;
    ~IniIndex() { Release(slots_); }

    std::optional<std::string_view> Find(std::string_view text, std::string_view section,
                                         std::string_view key) const noexcept;

private:
    struct Slot {
        std::uint32_t tag;      // of the hash; 0: free
        std::uint32_t section;  // where its header begins, or one of the below
        std::uint32_t line;
    };
    enum : std::uint32_t { IsHeader = 0xFFFFFFFF, Unnamed = 0xFFFFFFFE };

    void Fill(std::string_view text);
    void Grow();
    Slot& SlotOf(std::string_view text, std::uint32_t section, std::string_view name,
                 std::uint32_t tag) const noexcept;
    bool Add(std::string_view text, std::uint32_t section, const IniLine& line);

    Slot* slots_ = nullptr;
    std::size_t mask_ = 0;  // their number, a power of two, less one
    std::size_t used_ = 0;
};

}  // namespace brcore8

#endif
