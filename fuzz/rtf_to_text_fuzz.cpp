// A byte for the code page, then what follows `{\rtf` in a document, which is text as well. A text
// that is read has whole line ends and no zero units; a document made whole stays as it is; a text
// made into a document reads back.
#include <brcore8/strings/multibyte.h>
#include <brcore8/text/rtf_document.h>

#include <cstdlib>
#include <string>
#include <string_view>

#include "fuzz.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

// Line ends as a document gives them back.
std::u16string WithLineEnds(std::u16string_view text) {
    std::u16string lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && i > 0 && text[i - 1] == '\r') continue;
        if (text[i] == '\r' || text[i] == '\n')
            lines += u"\r\n";
        else if (text[i] != 0)
            lines += text[i];
    }
    return lines;
}

std::u16string Read(SRtfDocument& converter, std::string_view rtf) {
    std::u16string text;
    const int done = converter.RtfToUtf16(&text, rtf);
    Require(done == !text.empty());
    Require(text == WithLineEnds(text));
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const auto pages = SSupportedCodePages();
    _setmbcp(pages[data[0] % pages.size()]);
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);

    SRtfDocument converter;
    SString document(std::string_view("{\\rtf" + std::string(bytes)));
    Read(converter, document.View());
    SString whole, again;
    converter.TextToRtf(&whole, document);
    converter.TextToRtf(&again, whole);
    Require(Read(converter, whole.View()) == Read(converter, again.View()));

    const std::u16string text = SUtf16FromText(bytes);
    converter.Utf16ToRtf(&whole, text);
    std::u16string back;
    converter.RtfToUtf16(&back, whole.View());
    Require(back == WithLineEnds(text));
    return 0;
}
