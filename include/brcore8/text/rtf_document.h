// SRtfDocument: takes documents in Rich Text Format apart, renumbers what refers to their tables,
// and converts between RTF and plain text.
//
// RTF is text in bytes; characters outside ASCII are written \'hh or \uN. Where raw bytes stand in
// it, they are characters of the process's code page. A zero byte is text like any other, except to
// the primitives on `char*`, for which it is the end.
// Threads: what needs no conversion has no state; the conversions of one object serve one thread.
// Errors: SEOutOfMemory; every string is then what it was before. Malformed RTF is read as far as
// its tags go: a group that is never closed runs to the end of the text. Nothing recurses, and
// every operation takes time linear in its text.
//
//     SString header, fonts, colours;
//     SRtfDocument::ExtractHeader(header, rtf, 1);            // "{\rtf1\ansi"
//     SRtfDocument::ExtractFontTable(fonts, rtf, 1);          // "{\fonttbl{\f0\fswiss Arial;}}"
//     SRtfDocument::ExtractColorTable(colours, rtf, 1);       // `rtf` is the body now
#ifndef BRCORE8_TEXT_RTF_DOCUMENT_H
#define BRCORE8_TEXT_RTF_DOCUMENT_H

#include <brcore8/containers/map.h>
#include <brcore8/strings/string.h>
#include <brcore8/text/rtf_tables.h>

#include <string>
#include <string_view>

namespace brcore8 {
struct RichText;
}

class BRCORE8_API SRtfDocument {
public:
    SRtfDocument() noexcept = default;
    // A copy makes a control of its own when it first converts.
    SRtfDocument(const SRtfDocument&) noexcept {}
    SRtfDocument& operator=(const SRtfDocument&) noexcept { return *this; }
    virtual ~SRtfDocument();

    // ---- Take apart ---------------------------------------------------------------------------
    // Each copies one part of `rtf` into its first argument, which is empty when there is none, and
    // removes it from `rtf` when `remove` is not zero. All return 1. Of one string given twice the
    // part remains.

    // The brace that begins an RTF document (see SString::IsRtf; of any other text the header is
    // empty) and up to six of these that follow it: \rtf1, \ansi, \deff0, \ansicpgN, \deflangN,
    // \deflangfeN, each with the blank that ends it. Line ends between them stay in `rtf`.
    static int ExtractHeader(SString& header, SString& rtf, int remove);
    // The first whole group that begins "{\fonttbl", "{\colortbl" or "{\stylesheet", wherever it
    // is; also when the header is gone already.
    static int ExtractFontTable(SString& table, SString& rtf, int remove);
    static int ExtractColorTable(SString& table, SString& rtf, int remove);
    static int ExtractStyleTable(SString& table, SString& rtf, int remove);

    // ---- Put together -------------------------------------------------------------------------

    // Copies a body, giving every reference to a font or colour the number that its map holds: N of
    // \fN by `fontMap`; of \cfN, \cbN and \highlightN by `colorMap`. A number that is not in its
    // map, every other control word and every other byte stay as they are. The result may be the
    // body itself. Returns 1.
    static int ChangeFontAndColor(const SString& body, SString& result,
                                  const SMap<int, int>& fontMap, const SMap<int, int>& colorMap);

    // Makes one document of two: the header of the first, the merged tables, the first one's style
    // sheet, and both bodies in order, each in a group of its own so that no formatting leaks from
    // one into the other. Returns 1; 0, and the result is left alone, unless both are RTF. The
    // result may be one of the two.
    //
    // A body is what remains of a document without header, tables and style sheet, up to the brace
    // that closes it. Only numbers in it change: those of ChangeFontAndColor, and those of all
    // other control words that refer to the tables, as \afN, \deffN, \clcbpatN and \brdrcfN. A
    // \par comes between bodies when the first one's last paragraph is open.
    //
    // So that both texts read as before, fonts of one name stay apart when their \fcharset differs
    // (AddFontTable would make them one), a second font without \fcharset gets that of its
    // document's code page when the first document has another, and the second body begins with
    // its document's default font. What is not kept apart: list numbers and styles of both.
    static int Merge(const SString& first, const SString& second, SString& result);

    // ---- Convert ------------------------------------------------------------------------------
    // By the system's rich-edit control where it has one, hidden and made at the first conversion,
    // so that the thread that made it is the one to convert and destroy; elsewhere, and for
    // documents nested deeper than the control bears, by a reader and a writer of this library.
    // What begins as a document (SString::IsRtf) is one, and anything else is plain text.

    // The plain text in the process's page, with CR LF between paragraphs and none after the last.
    // Blanks stand for line breaks inside a paragraph; a table's row begins with a line end, and
    // every cell and row ends with one. Left out is what is no text of the document: font, colour
    // and style tables, pictures, headers and footers, notes, fields' instructions, zero bytes.
    // Characters that the page cannot hold become their best fit or its default character.
    // Returns 1, also for an empty `rtf`; 0 when nothing came out, when `text` is null or when the
    // system refuses its control.
    int RtfToText(SString* text, SString& rtf);
    // A document that holds the text and reads back as it: CR LF, CR and LF each end a paragraph
    // and come back as CR LF. A text that is a document is taken as such, and comes back whole: with
    // its groups closed. Returns as above. What the document looks like differs between systems.
    int TextToRtf(SString* rtf, SString& text);

    // The same from and to UTF-16, so that nothing depends on the process's page or is lost to it.
    // Utf16ToRtf takes every text as plain text, and makes an empty document of an empty one.
    int RtfToUtf16(std::u16string* text, std::string_view rtf);
    int Utf16ToRtf(SString* rtf, std::u16string_view text);

    // ---- Tags ---------------------------------------------------------------------------------
    // On text that ends with a zero byte. All return 0 for a null argument.

    // Finds the tag at the position, or behind blanks, tabs and line ends there: `*start` is where
    // it begins, `*length` its bytes. A tag is a brace; from a "{", when `wholeGroup` is not zero,
    // the group up to its "}", or to the end of the text; a backslash and what follows up to a
    // blank or tab, which is part of the tag, or up to a backslash, brace, line end or the end of
    // the text; or any other text up to a backslash, brace or the end. An escaped brace, and one in
    // the data of \binN, is none of a group's. Returns 0 at the end of the text, with length 0.
    static int GetNextTag(char** start, long* length, char* position, int wholeGroup);
    // Moves the position over blanks, tabs and line ends.
    static int SkipSpace(char** position);
    // Moves the rest of the text left over `length` bytes, or over all there are when fewer; 0 when
    // length < 1. To take many parts out of one text, build the result instead: each call moves
    // the whole rest.
    static int RemoveTag(char* position, long length);

protected:
    // Makes the hidden control if there is none yet; 0 when the system refuses. Where conversions
    // need no control there is nothing to make, and the result is 1.
    int CreateEditCtrl();
    void DeleteEditCtrl();

private:
    brcore8::RichText* control_ = nullptr;
};

#endif
