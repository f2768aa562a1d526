// What SExceptionDialog shows, apart from the showing.
#ifndef BRCORE8_SRC_CORE_EXCEPTION_TEXT_H
#define BRCORE8_SRC_CORE_EXCEPTION_TEXT_H

#include <cstddef>

namespace brcore8 {

constexpr std::size_t kExceptionTextSize = 1024;

// Writes the text for a failure at a source position, cut to the buffer; `text` may be null, and
// so may `file`.
void FormatExceptionText(char (&buffer)[kExceptionTextSize], const char* file, long line,
                         const char* text) noexcept;

}  // namespace brcore8

#endif
