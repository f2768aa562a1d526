// The library's own reader and writer of RTF, for plain text. One pass each, no recursion; a
// reader takes memory for the text, and for groups and fonts as far as the document has them.
#ifndef BRCORE8_SRC_TEXT_RTF_READER_H
#define BRCORE8_SRC_TEXT_RTF_READER_H

#include <string_view>

#include "platform/rich_text.h"

namespace brcore8::rtf {

// Both as the rich-text engine promises.
void ReadText(std::string_view rtf, RichBuffer<char16_t>& text);
void WriteText(std::u16string_view text, RichBuffer<char>& rtf);

// The document as it stands, up to its end: groups that are open there are closed, and what is cut
// short at the very end, or follows the end, is left out.
void WriteWhole(std::string_view rtf, RichBuffer<char>& whole);

// How deep the document's groups nest.
std::size_t DeepestGroup(std::string_view rtf) noexcept;

}  // namespace brcore8::rtf

#endif
