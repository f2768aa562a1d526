// Standard UTF-8 to and from UTF-16, with a report of the first place that is malformed.
// Pure functions of their arguments; they throw SEOutOfMemory and nothing else.
#ifndef BRCORE8_STRINGS_UNICODE_H
#define BRCORE8_STRINGS_UNICODE_H

#include <brcore8/platform/export.h>

#include <cstddef>
#include <string>
#include <string_view>

// A surrogate pair becomes four bytes. A surrogate without its partner becomes U+FFFD;
// `*malformed` is the index of the first such unit, npos when there is none.
BRCORE8_API std::string SUtf8FromUtf16(std::u16string_view wide, std::size_t* malformed = nullptr);

// Four bytes become a surrogate pair. Besides the standard form, three bytes for U+0400 to U+07FF
// are accepted, because ST2UTF8Helper writes them. Every other sequence that is not standard
// (overlong, surrogate, above U+10FFFF, cut short) becomes one U+FFFD for its longest part that
// could begin a character; `*malformed` is the byte offset of the first, npos when there is none.
BRCORE8_API std::u16string SUtf16FromUtf8(std::string_view utf8, std::size_t* malformed = nullptr);

#endif
