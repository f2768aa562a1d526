// What SExceptionDialog shows, and how.
#ifndef BRCORE8_SRC_CORE_EXCEPTION_TEXT_H
#define BRCORE8_SRC_CORE_EXCEPTION_TEXT_H

#include <cstddef>

namespace brcore8 {

constexpr std::size_t kExceptionTextSize = 1024;

// Writes the text for a failure at a source position, cut to the buffer; `text` may be null, and
// so may `file`.
void FormatExceptionText(char (&buffer)[kExceptionTextSize], const char* file, long line,
                         const char* text) noexcept;

// Shows a box until it is closed. A test puts its own in the place of the platform's.
using ErrorBox = void (*)(const char* text, const char* caption, unsigned style);
extern ErrorBox g_showErrorBox;

}  // namespace brcore8

#endif
