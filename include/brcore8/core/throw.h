// Throwing and checked memory for headers and hot code: nothing here needs the exception classes,
// so that inline code stays small and each text is built in one place.
//
// All of these may be called from any thread.
#ifndef BRCORE8_CORE_THROW_H
#define BRCORE8_CORE_THROW_H

#include <brcore8/platform/export.h>

#include <cstddef>
#include <cstdint>

namespace brcore8 {

// --- Throw ---------------------------------------------------------------------------------
// Each throws the class it is named after (see brcore8/core/exception.h) and never returns.

[[noreturn]] BRCORE8_API void ThrowOutOfMemory();                    // SEOutOfMemory
[[noreturn]] BRCORE8_API void ThrowNotImplemented();                 // SENotImplemented
[[noreturn]] BRCORE8_API void ThrowCOMException(std::int32_t code);  // SECOMException
[[noreturn]] BRCORE8_API void ThrowWinError(std::uint32_t code);     // SEWinError
[[noreturn]] BRCORE8_API void ThrowException(const char* text);      // SException
[[noreturn]] BRCORE8_API void ThrowIOException(const char* text);    // SEIOException
[[noreturn]] BRCORE8_API void ThrowIOAborted();                      // SEIOAbortedException
[[noreturn]] BRCORE8_API void ThrowEndOfFile();                      // SEEOFException
[[noreturn]] BRCORE8_API void ThrowZipException(const char* text);   // SEZipException

// SEUTFException with the units of the offending sequence as they were read.
[[noreturn]] BRCORE8_API void ThrowUTFException(int first, int second, int third);

// --- Checked memory ------------------------------------------------------------------------

// Returns `size` bytes (at least one) from the C library's heap, to be given back with Release.
// Throws SEOutOfMemory when the heap refuses.
[[nodiscard]] BRCORE8_API void* Allocate(std::size_t size);

// Changes the size of a block from Allocate, keeping its content; null allocates. Returns where
// the block now is. Throws SEOutOfMemory when the heap refuses; the old block is then untouched.
[[nodiscard]] BRCORE8_API void* Reallocate(void* block, std::size_t size);

// Gives back a block from Allocate or Reallocate; null does nothing.
BRCORE8_API void Release(void* block) noexcept;

// A program that tests itself under a shortage of memory may install a filter: it is asked before
// every allocation of the library (Allocate, Reallocate, chunks of the pools) and refuses by
// returning false. Null, the normal state, refuses nothing. Returns the previous filter. The
// filter is called from whichever thread allocates and must not throw.
using AllocationFilter = bool (*)(std::size_t size);
BRCORE8_API AllocationFilter SetAllocationFilter(AllocationFilter filter) noexcept;

}  // namespace brcore8

#endif
