// Where string buffers come from: eight pools for texts of up to 2048 bytes, the heap beyond. The
// pools are there before the first static initialiser and after the last destructor; their unused
// blocks go back to the heap when the library is unloaded.
#ifndef BRCORE8_STRINGS_STRING_POOLS_H
#define BRCORE8_STRINGS_STRING_POOLS_H

#include <brcore8/strings/string.h>

#include <cstdint>

namespace brcore8::string_pools {

// A buffer of one handle with `bytes` bytes (at least 1), to be copied in, and a terminator.
// When memory is short, gives unused blocks back and tries once more; throws SEOutOfMemory, also
// above SString::MaxBytes.
SStringData* Take(std::int64_t bytes);
// The buffer that `data`, which nobody shares, becomes when it is to have room for more bytes: it
// may move. When that throws, `data` is as it was.
SStringData* Enlarge(SStringData* data, std::int64_t bytes);
void Give(SStringData* data) noexcept;
void FreeUnused() noexcept;

}  // namespace brcore8::string_pools

#endif
