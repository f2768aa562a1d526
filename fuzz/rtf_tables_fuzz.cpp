// A byte for the code page, then two documents with a line end of LF LF between them. Parts taken
// out and the rest make the whole; a table written reads back as it is; renumbering by no map
// changes nothing; two documents merged are one document, whole.
#include <brcore8/strings/multibyte.h>
#include <brcore8/text/rtf_document.h>

#include <cstdlib>
#include <string_view>

#include "fuzz.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

void RequireIdentity(const SMap<int, int>& map, int count) {
    Require(map.GetCount() == count);
    for (const auto& [from, to] : map)
        Require(from == to);
}

void CheckTables(SString rtf) {
    const int length = rtf.LengthByte();
    SString header, fonts, colors, styles;
    SRtfDocument::ExtractHeader(header, rtf, 1);
    SRtfDocument::ExtractFontTable(fonts, rtf, 1);
    SRtfDocument::ExtractColorTable(colors, rtf, 1);
    SRtfDocument::ExtractStyleTable(styles, rtf, 1);
    Require(header.LengthByte() + fonts.LengthByte() + colors.LengthByte() + styles.LengthByte() +
                rtf.LengthByte() ==
            length);

    SRtfFontTable fontTable;
    SRtfColorTable colorTable;
    const SMap<int, int> fontMap = fontTable.AddFontTable(fonts);
    const SMap<int, int> colorMap = colorTable.AddColorTable(colors);
    for (const auto& [from, to] : fontMap)
        Require(to >= 0 && to < fontTable.GetCount());
    for (const auto& [from, to] : colorMap)
        Require(to >= 0 && to < colorTable.GetCount());
    RequireIdentity(fontTable.AddFontTable(fontTable.GetFontTable()), fontTable.GetCount());
    // An empty one would take in the automatic colour.
    if (!colorTable.IsEmpty())
        RequireIdentity(colorTable.AddColorTable(colorTable.GetColorTable()),
                        colorTable.GetCount());

    SString same, changed;
    SRtfDocument::ChangeFontAndColor(rtf, same, {}, {});
    Require(same.View() == rtf.View());
    SRtfDocument::ChangeFontAndColor(rtf, changed, fontMap, colorMap);
}

void CheckTags(const SString& rtf) {
    SString copy = rtf;
    char* start = copy.LockBuffer();
    long length = 0;
    char* position = start;
    while (SRtfDocument::GetNextTag(&start, &length, position, 0)) {
        Require(start >= position && length > 0);
        position = start + length;
    }
    Require(*start == 0 && length == 0);
    copy.UnlockBuffer();
}

void CheckMerge(const SString& first, const SString& second) {
    SString merged;
    if (!SRtfDocument::Merge(first, second, merged)) return;
    Require(merged.IsRtf());
    if (merged.View().find('\0') != std::string_view::npos) return;
    char* start = merged.LockBuffer();
    long length = 0;
    Require(SRtfDocument::GetNextTag(&start, &length, start, 1) == 1);
    Require(length == merged.LengthByte());
    merged.UnlockBuffer();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    _setmbcp(data[0] & 1 ? 932 : 1252);
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t cut = std::min(text.find("\n\n"), text.size());
    const SString first(text.substr(0, cut));
    const SString second(text.substr(cut == text.size() ? cut : cut + 2));
    CheckTables(first);
    CheckTags(first);
    CheckMerge(first, second);
    CheckMerge(second, first);
    return 0;
}
