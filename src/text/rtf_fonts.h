// Merging font tables by whatever rule tells which fonts are the same.
#ifndef BRCORE8_SRC_TEXT_RTF_FONTS_H
#define BRCORE8_SRC_TEXT_RTF_FONTS_H

#include <brcore8/containers/map.h>
#include <brcore8/text/rtf_tables.h>

namespace brcore8::rtf {

// Fonts are the same when they have the same name. A derived rule may tell apart more.
struct FontRule {
    virtual ~FontRule() = default;
    // Fonts with equal keys, in any case of letters, are the same.
    virtual SString Key(const SRtfFontEntry& entry) const { return entry.name; }
    // Called for each entry read, before its key is asked for.
    virtual void Complete(SRtfFontEntry&) const {}
};

// See SRtfFontTable::AddFontTable.
SMap<int, int> AddFonts(SRtfFontTable& table, const SString& text, const FontRule& rule);

}  // namespace brcore8::rtf

#endif
