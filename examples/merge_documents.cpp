// Two RTF documents become one: the fonts and colours that both name are shared, every reference is
// renumbered, and both texts read as before.
#include <brcore8/brcore8.h>
#include <iostream>

int main() {
    const SString letter =
        "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\froman "
        "Georgia;}}{\\colortbl;\\red192\\green0\\blue0;}"
        "\\f0 Dear Ada, \\cf1 see the annex.\\par}";
    const SString annex =
        "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fmodern Courier;}{\\f1\\froman GEORGIA;}}"
        "{\\colortbl;\\red0\\green0\\blue192;\\red192\\green0\\blue0;}"
        "\\f0\\cf1 span 12 m, \\f1\\cf2 approved\\par}";
    SString both;
    SRtfDocument::Merge(letter, annex, both);

    SString fonts;
    SRtfDocument::ExtractFontTable(fonts, both, 1);
    SRtfFontTable table;
    table.AddFontTable(fonts);
    for (const SRtfFontEntry& font : table)
        std::cout << font.number << ' ' << font.name << ", ";
    std::cout << both.Find("\\f1\\cf2 span") << '\n';
    // "0 Georgia, 1 Courier, \f1\cf2 span 12 m, \f0\cf1 approved\par}}"
}
