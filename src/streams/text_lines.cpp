#include <brcore8/streams/text_lines.h>

#include "platform/byte_search.h"

namespace brcore8 {

std::size_t FindLineEnd(std::string_view text, std::size_t from) noexcept {
    if (from >= text.size()) return text.size();
    constexpr ByteChoice kEnds{'\r', '\n'};
    const char* const found =
        FindBytePair(text.data() + from, text.data() + text.size() - 1, kEnds, 0, kEnds);
    return found != nullptr ? static_cast<std::size_t>(found - text.data()) : text.size();
}

std::size_t FindLineEnd(std::u16string_view text, std::size_t from) noexcept {
    if (from >= text.size()) return text.size();
    const char16_t* const end = text.data() + text.size();
    return static_cast<std::size_t>(FindUnit(text.data() + from, end, u'\r', u'\n', u'\u2028') -
                                    text.data());
}

}  // namespace brcore8
