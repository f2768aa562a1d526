// The font and colour tables of Rich Text Format: SRtfFontTable of SRtfFontEntry, SRtfColorTable of
// SRtfColorEntry. They are read from the text of a table group, merged, and written back.
//
// Plain values that own what they hold. Text is kept as RTF writes it: a name holds \'hh and \uN as
// they stood. Malformed text is read as far as its groups go; nothing is reported.
// Threads: one table serves one thread at a time.
// Errors: SEOutOfMemory; the entry or table is then what it was before.
//
//     SRtfFontTable fonts;
//     fonts.AddFontTable("{\\fonttbl{\\f7\\fswiss Arial;}{\\f9\\froman Times;}}");
//     fonts[0].name;                       // "Arial", with the number 0
//     fonts.GetFontTable();                // "{\fonttbl\r\n{\f0\fswiss Arial;}\r\n ... }\r\n"
#ifndef BRCORE8_TEXT_RTF_TABLES_H
#define BRCORE8_TEXT_RTF_TABLES_H

#include <brcore8/containers/table.h>
#include <brcore8/strings/string.h>

// ---- Fonts ------------------------------------------------------------------------------------

struct BRCORE8_API SRtfFontEntry {
    long number = 0;   // the N of the control word \fN
    SString name;      // without the ";" that ends it
    SString controls;  // the entry's other control words, joined: "\froman\fcharset0"

    // "{\fN", the controls, a blank, the name, ";}".
    SString GetFontEntry() const;
    // Reads one font group, as AddFontTable finds them; what the entry held is lost. Returns 1 when
    // there was a name, else 0.
    //
    // Control words become the controls, each without the blank that ends it; \fN, wherever it
    // stands, gives the number, 0 when missing. The name is the first text and runs to the group's
    // end or to a group inside; \'hh, \uN and escaped characters are part of it. Its last
    // character, the ";", is dropped unless a group follows; so are further semicolons, blanks and
    // line ends before it. One character alone is no name. Groups inside (classification,
    // alternative names) are left out.
    int SetFontEntry(const SString& text);

    // Whether number, name and controls are the same: 1 or 0.
    int operator==(const SRtfFontEntry& other) const noexcept;
    int operator!=(const SRtfFontEntry& other) const noexcept { return !(*this == other); }
};

class BRCORE8_API SRtfFontTable : public STable<SRtfFontEntry> {
public:
    // "{\fonttbl", CR LF, each entry and CR LF, "}", CR LF.
    SString GetFontTable() const;
};

// ---- Colours ----------------------------------------------------------------------------------

struct BRCORE8_API SRtfColorEntry {
    long number = 0;        // its position in the table
    SString specification;  // "\red255\green0\blue0"; empty for the automatic colour

    // The specification and ";".
    SString GetColorEntry() const;
    // The specification becomes the text less one ";" at its end and blanks, tabs and line ends
    // before that; the number 0. Returns 1.
    int SetColorEntry(const SString& text);

    // Whether number and specification are the same: 1 or 0.
    int operator==(const SRtfColorEntry& other) const noexcept;
    int operator!=(const SRtfColorEntry& other) const noexcept { return !(*this == other); }
};

class BRCORE8_API SRtfColorTable : public STable<SRtfColorEntry> {
public:
    // "{\colortbl", CR LF, each entry and CR LF, "}", CR LF.
    SString GetColorTable() const;
};

#endif
