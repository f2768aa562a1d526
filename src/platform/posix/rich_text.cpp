#include "platform/rich_text.h"

#include "text/rtf_reader.h"

namespace brcore8 {

// The reader and the writer keep nothing between two documents.
struct RichText {};

RichText* OpenRichText() {
    static RichText engine;
    return &engine;
}

void CloseRichText(RichText*) noexcept {}

void ReadRtf(RichText&, std::string_view rtf, RichBuffer<char16_t>& text) {
    rtf::ReadText(rtf, text);
}

void WriteRtf(RichText&, std::u16string_view text, RichBuffer<char>& rtf) {
    rtf::WriteText(text, rtf);
}

void RewriteRtf(RichText&, std::string_view rtf, RichBuffer<char>& written) {
    rtf::WriteWhole(rtf, written);
}

}  // namespace brcore8
