// Which modules a Windows program needs: SModuleDependencyList reads the import tables of a program
// (or library, or driver) and of every module that it imports, and tells which of them are there
// and which cannot be found. Programs of 32 and 64 bits are read alike, on every system; nothing
// of them is loaded or run.
//
//     SModuleDependencyList modules("setup/program.exe");
//     for (const SModuleFileInfo& module : modules)           // the last one found first
//         for (const SModuleFileInfo& missing : module)
//             std::cout << missing.GetFileName() << ", which " << module.GetFileName() << "
//             needs\n";
//
// Modules are looked for in the program's folder, in the folders that the caller names, and where
// the platform looks: on Windows as SearchPath does, elsewhere in the folders of PATH, where names
// match in any case. Names with a folder or a drive, and names or paths of more than 259 bytes,
// are found nowhere. Only regular files are opened. The folders are read while the list is made;
// the current folder of the process stays what it is.
//
// Damaged programs are read as far as they make sense: what lies outside of the file ends the
// table that leads there, and an import table ends after 100,000 entries.
//
// Threads: a list belongs to one thread at a time. Errors: the status; nothing throws.
// Ownership: the list owns its modules; they live as long as it does.
#ifndef BRCORE8_CORE_MODULE_DEPENDENCY_H
#define BRCORE8_CORE_MODULE_DEPENDENCY_H

#include <brcore8/platform/export.h>

#include <cstddef>
#include <cstdint>
#include <iterator>

class SStringTable;

// One module, or one import that was not found (which has a file name alone).
class BRCORE8_API SModuleFileInfo {
    template <const SModuleFileInfo* (SModuleFileInfo::*Link)() const>
    class Iterator;

public:
    // The longest name or path and its terminator.
    static constexpr std::size_t PathSize = 260;

    SModuleFileInfo(const SModuleFileInfo&) = delete;
    SModuleFileInfo& operator=(const SModuleFileInfo&) = delete;

    // The part of the path after its last slash or backslash. Of an import that was not found, the
    // name as it is imported, cut after 259 bytes.
    const char* GetFileName() const noexcept { return fileName_; }
    // Where it was found; the program's own is as the caller gave it.
    const char* GetFullPath() const noexcept { return fullPath_; }

    // The first of this module's imports that were not found, for null, or the next one: the last
    // imported first. Null after the last one.
    const SModuleFileInfo* GetNextNotFoundModule(const SModuleFileInfo* previous) const noexcept {
        return previous != nullptr ? previous->firstNotFound_ : firstNotFound_;
    }

    // The imports that were not found, in range-for.
    auto begin() const noexcept;
    auto end() const noexcept;

private:
    friend class SModuleDependencyList;
    SModuleFileInfo() noexcept = default;
    const SModuleFileInfo* Next() const noexcept { return next_; }
    const SModuleFileInfo* NextNotFound() const noexcept { return firstNotFound_; }

    SModuleFileInfo* next_ = nullptr;
    SModuleFileInfo* firstNotFound_ = nullptr;  // of one that was not found: the next one
    char fileName_[PathSize] = "";
    char fullPath_[PathSize] = "";
};
static_assert(sizeof(SModuleFileInfo) == 2 * sizeof(void*) + 520);

class BRCORE8_API SModuleDependencyList {
public:
    enum Status : std::int32_t {
        Done = 0,
        FileNotFound = 1,   // or not to be read, or empty
        NotPE = 2,          // no program of Windows, or a damaged one
        GeneralFailure = 3  // no memory; the list holds what was found until then
    };
    // Bits.
    enum Options : unsigned {
        Imports = 0,
        DelayedImports = 1,  // also what is loaded on first use
        FoldersOnly = 2      // not where the platform looks
    };

    // Walks through the imports of the program, first to last, each followed by its own. A module
    // that is there already is not read again; the status is that of the program itself.
    explicit SModuleDependencyList(const char* path) noexcept;
    // The folders are looked into one after the other.
    SModuleDependencyList(const char* path, const SStringTable& folders,
                          unsigned options = Imports) noexcept;
    SModuleDependencyList(const SModuleDependencyList&) = delete;
    SModuleDependencyList& operator=(const SModuleDependencyList&) = delete;
    ~SModuleDependencyList();

    std::int32_t GetStatus() const noexcept { return status_; }
    // "No error", "File not found", "Not a PE file", "General failure"
    const char* GetErrorString() const noexcept;

    std::int32_t GetCount() const noexcept { return count_; }
    // The first module for null, else the one after it; null after the last one, which is the
    // program.
    const SModuleFileInfo* GetNextModule(const SModuleFileInfo* previous) const noexcept {
        return previous != nullptr ? previous->next_ : first_;
    }
    // The first module of that file name, or with `byFullPath` of that path, without case; or null.
    const SModuleFileInfo* LookupModule(const char* name, int byFullPath) const noexcept;

    // The modules, in range-for.
    auto begin() const noexcept;
    auto end() const noexcept;

private:
    class Walk;
    SModuleFileInfo* Add(const char* path);
    void AddNotFound(SModuleFileInfo& importer, const char* name);

    SModuleFileInfo* first_ = nullptr;
    std::int32_t count_ = 0;
    std::int32_t status_ = GeneralFailure;
};
static_assert(sizeof(void*) != 4 || sizeof(SModuleDependencyList) == 12);

template <const SModuleFileInfo* (SModuleFileInfo::*Link)() const>
class SModuleFileInfo::Iterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = SModuleFileInfo;
    using difference_type = std::ptrdiff_t;
    using pointer = const SModuleFileInfo*;
    using reference = const SModuleFileInfo&;

    Iterator() = default;
    explicit Iterator(const SModuleFileInfo* at) noexcept : at_(at) {}
    reference operator*() const noexcept { return *at_; }
    pointer operator->() const noexcept { return at_; }
    Iterator& operator++() noexcept {
        at_ = (at_->*Link)();
        return *this;
    }
    Iterator operator++(int) noexcept {
        const Iterator old = *this;
        ++*this;
        return old;
    }
    bool operator==(const Iterator&) const = default;

private:
    const SModuleFileInfo* at_ = nullptr;
};

inline auto SModuleFileInfo::begin() const noexcept {
    return Iterator<&SModuleFileInfo::NextNotFound>(firstNotFound_);
}
inline auto SModuleFileInfo::end() const noexcept {
    return Iterator<&SModuleFileInfo::NextNotFound>();
}
inline auto SModuleDependencyList::begin() const noexcept {
    return SModuleFileInfo::Iterator<&SModuleFileInfo::Next>(first_);
}
inline auto SModuleDependencyList::end() const noexcept {
    return SModuleFileInfo::Iterator<&SModuleFileInfo::Next>();
}

#endif
