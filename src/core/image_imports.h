// The names of the modules that a Windows program imports, read from its file.
#ifndef BRCORE8_SRC_CORE_IMAGE_IMPORTS_H
#define BRCORE8_SRC_CORE_IMAGE_IMPORTS_H

#include <cstddef>
#include <cstdint>

#include "core/checked_allocator.h"

namespace brcore8 {

// Names in order, each ended by a zero byte; names of more than 260 bytes are cut there, one byte
// beyond the longest that anybody can use.
class ImportedNames {
public:
    static constexpr std::size_t LongestName = 260;

    void Add(const char* name, std::size_t length);
    // The next name, or null after the last one.
    const char* Next() noexcept;

private:
    CheckedVector<char> text_;
    std::size_t next_ = 0;
};

enum class ImageStatus { Good, NotFound, NotPE };

// Adds the names of the import table, and with `delayed` of the delayed one. A file that cannot be
// read to the end of its tables is not found. Nothing outside of the file is read, and it is closed
// on return. Throws SEOutOfMemory.
ImageStatus ReadImports(const char* path, bool delayed, ImportedNames& names);

}  // namespace brcore8

#endif
