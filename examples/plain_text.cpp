// The text of a letter in RTF, and a document of a text, with no code page in between.
#include <brcore8/strings/unicode.h>
#include <brcore8/text/rtf_document.h>

#include <iostream>

int main() {
    const char* const letter =
        "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}{\\f1\\fcharset204 Arial Cyr;}}"
        "\\f0 {\\b From:} {\\f1\\'cc\\'e8\\'f0}\\par{\\info{\\author nobody}}3\\'a0m wide\\par}";
    SRtfDocument converter;
    std::u16string text;
    if (!converter.RtfToUtf16(&text, letter)) return 1;
    SString again;
    converter.Utf16ToRtf(&again, text);
    std::u16string same;
    converter.RtfToUtf16(&same, again.View());
    std::cout << SUtf8FromUtf16(text) << (same == text ? ", and back\n" : ", lost\n");
}
