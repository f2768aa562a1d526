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

#include <brcore8/containers/map.h>
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
    // character, the ";", is dropped unless a group follows or it is escaped; so are further
    // semicolons, blanks and line ends before it. One character alone is no name. Groups inside
    // (classification, alternative names) and binary data are left out.
    int SetFontEntry(const SString& text);

    // Whether number, name and controls are the same: 1 or 0.
    int operator==(const SRtfFontEntry& other) const noexcept;
    int operator!=(const SRtfFontEntry& other) const noexcept { return !(*this == other); }
};

class BRCORE8_API SRtfFontTable : public STable<SRtfFontEntry> {
public:
    // Merges a table group, as SRtfDocument::ExtractFontTable gives it, into this table. Returns
    // the number here of each number there, by which SRtfDocument::ChangeFontAndColor makes a body
    // fit. A font whose name is here already, in any case of letters, gets that entry's number; any
    // other is added under the next number, the table's count. Groups without a name are left out,
    // and what is no group ends the table; but where its first entry has no braces around it, none
    // has, and each runs to its ";". Of a text that is no font table nothing is taken.
    SMap<int, int> AddFontTable(const SString& fontTableText);
    // "{\fonttbl", CR LF, each entry and CR LF, "}", CR LF.
    SString GetFontTable() const;
};

// ---- Colours ----------------------------------------------------------------------------------

struct BRCORE8_API SRtfColorEntry {
    long number = 0;        // its position in the table
    SString specification;  // "\red255\green0\blue0"; empty for the automatic colour

    // The colour's words and ";".
    SString GetColorEntry() const;
    // The colour's words become the text less one ";" at its end and blanks, tabs and line ends
    // before that; the number 0. Returns 1.
    int SetColorEntry(const SString& text);

    // Whether number and specification are the same: 1 or 0.
    int operator==(const SRtfColorEntry& other) const noexcept;
    int operator!=(const SRtfColorEntry& other) const noexcept { return !(*this == other); }
};

class BRCORE8_API SRtfColorTable : public STable<SRtfColorEntry> {
public:
    // Merges a table group, as SRtfDocument::ExtractColorTable gives it, into this table. Returns
    // the number here of each position there. Into an empty table the automatic colour is put
    // first, as number 0. A specification that is here already, letter for letter, gets that
    // entry's number; any other is added under the next number, the table's count.
    //
    // Positions count every entry from 0, as the control words of a body do. A table that begins
    // with the automatic colour, as most do, thus maps 0 to 0 and its first real colour is 1; in
    // one that begins with a real colour that colour is 0, and never becomes the automatic one.
    // What stands behind the last ";" counts unless it is empty; groups inside and binary data are
    // left out. Of a text that is no colour table nothing is taken.
    SMap<int, int> AddColorTable(const SString& colorTableText);
    // "{\colortbl", CR LF, each entry and CR LF, "}", CR LF.
    SString GetColorTable() const;
};

#endif
