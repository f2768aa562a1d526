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

    // The plain text of a document, or a document that holds the text. Return 1, also for an empty
    // source; 0 when the first argument is null, when the system refuses its rich-text control, or
    // when nothing came out.
    int RtfToText(SString* text, SString& rtf);
    int TextToRtf(SString* rtf, SString& text);

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
    // Makes the hidden control if there is none yet; 0 when the system refuses. Where no control
    // is needed for the conversions there is nothing to make.
    int CreateEditCtrl();
    void DeleteEditCtrl();

private:
    brcore8::RichText* control_ = nullptr;
};

#endif
