// SCRC32: the check sum of archives.
//
//     SCRC32 sum;
//     sum.Update(data, size);
//     if (sum.GetValue() != expected) ...
//
// Threads: one object serves one thread at a time. Nothing here fails.
#ifndef BRCORE8_ARCHIVE_CRC32_H
#define BRCORE8_ARCHIVE_CRC32_H

#include <brcore8/platform/export.h>

#include <cstdint>

class BRCORE8_API SCRC32 {
public:
    // Folds `length` bytes in; the parts of a block give what the whole block gives. Null or no
    // bytes change nothing.
    void Update(const void* data, unsigned long length) noexcept;
    // The sum of all bytes since the start or the last Reset; 0 of none.
    std::uint32_t GetValue() const noexcept { return value_; }
    void Reset() noexcept { value_ = 0; }

private:
    std::uint32_t value_ = 0;
};

#endif
