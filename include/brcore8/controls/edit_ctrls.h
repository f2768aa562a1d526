// SEditCtrl and SRichEditCtrl: wrappers of the platform's fields for text. Positions count bytes
// of the text from 0; lines are counted from 0.
//
// Threads: the one that runs the user interface.
// Errors: Create answers 0 where the platform lacks the class or refuses; the other operations
// answer what the control does, 0 without one.
#ifndef BRCORE8_CONTROLS_EDIT_CTRLS_H
#define BRCORE8_CONTROLS_EDIT_CTRLS_H

#include <brcore8/streams/input_stream.h>
#include <brcore8/streams/output_stream.h>
#include <brcore8/window/wnd.h>

class BRCORE8_API SEditCtrl : public SWnd {
    SDECLARE_CREATABLE(SEditCtrl);

public:
    // An "EDIT" of the style ES_...; changes come to the parent as EN_CHANGE.
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("EDIT", nullptr, style, place, parent, id);
    }

    // --- The text -------------------------------------------------------------------------------

    int GetLineCount() const { return Ask(EM_GETLINECOUNT); }
    // Without its line break; empty for a line that is not there.
    SString GetLine(int line) const;
    // The first position of a line, -1 for the caret's; -1 when it is not there.
    int LineIndex(int line = -1) const { return Ask(EM_LINEINDEX, line); }
    // Of the line that the position is in.
    int LineLength(int position = -1) const { return Ask(EM_LINELENGTH, position); }
    // The line of a position, -1 for that of the selection.
    int LineFromChar(int position = -1) const { return Ask(EM_LINEFROMCHAR, position); }
    int GetFirstVisibleLine() const { return Ask(EM_GETFIRSTVISIBLELINE); }
    void LimitText(int most) { Ask(EM_SETLIMITTEXT, most); }
    int GetLimitText() const { return Ask(EM_GETLIMITTEXT); }
    int GetModify() const { return Ask(EM_GETMODIFY); }
    void SetModify(int on = 1) { Ask(EM_SETMODIFY, on); }

    // --- The selection --------------------------------------------------------------------------

    // From the first position to the one behind the last; equal where the caret is.
    void GetSel(int* from, int* to) const;
    // 0 and -1 select all.
    void SetSel(int from, int to) { Ask(EM_SETSEL, from, to); }
    // In the place of what is selected.
    void ReplaceSel(const char* text, int canUndo = 0) { Ask(EM_REPLACESEL, canUndo, text); }
    SString GetSelText() const;
    void ScrollCaret() { Ask(EM_SCROLLCARET); }
    int LineScroll(int lines, int characters = 0) { return Ask(EM_LINESCROLL, characters, lines); }
    // The client coordinates of a position, and the position under a point, -1 outside of the
    // client area. A line's characters behind the first 65,536 are not told apart from those.
    POINT PosFromChar(int position) const;
    int CharFromPos(POINT point) const;

    // --- Editing --------------------------------------------------------------------------------

    int SetReadOnly(int on) override { return Ask(EM_SETREADONLY, on); }
    int CanUndo() const { return Ask(EM_CANUNDO); }
    int Undo() { return Ask(EM_UNDO); }
    void EmptyUndoBuffer() { Ask(EM_EMPTYUNDOBUFFER); }
    void Cut() { Ask(WM_CUT); }
    void Copy() { Ask(WM_COPY); }
    void Paste() { Ask(WM_PASTE); }
    void Clear() { Ask(WM_CLEAR); }

    // --- The look -------------------------------------------------------------------------------

    // 0 shows the text itself.
    void SetPasswordChar(char shown) { Ask(EM_SETPASSWORDCHAR, static_cast<unsigned char>(shown)); }
    char GetPasswordChar() const { return Ask<char>(EM_GETPASSWORDCHAR); }
    void SetMargins(int left, int right) {
        Ask(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(left, right));
    }
    RECT GetRect() const;
    void SetRect(const RECT& rect) { Ask(EM_SETRECT, 0, &rect); }
};

// The control that shows formatted text. Its library is loaded by the first Create.
class BRCORE8_API SRichEditCtrl : public SWnd {
    SDECLARE_CREATABLE(SRichEditCtrl);

public:
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id);

    int GetLineCount() const { return Ask(EM_GETLINECOUNT); }
    int LineIndex(int line = -1) const { return Ask(EM_LINEINDEX, line); }
    int GetFirstVisibleLine() const { return Ask(EM_GETFIRSTVISIBLELINE); }
    // In characters.
    int GetTextLength() const { return GetWindowTextLength(); }
    void GetSel(CHARRANGE* range) const { Ask(EM_EXGETSEL, 0, range); }
    int SetSel(const CHARRANGE& range) { return Ask(EM_EXSETSEL, 0, &range); }
    int SetSel(LONG from, LONG to) { return SetSel(CHARRANGE{from, to}); }
    void ReplaceSel(const char* text, int canUndo = 0) { Ask(EM_REPLACESEL, canUndo, text); }
    SString GetSelText() const;
    void LimitText(int most) { Ask(EM_EXLIMITTEXT, 0, most); }
    int LineFromChar(int position) const { return Ask(EM_EXLINEFROMCHAR, 0, position); }
    int GetModify() const { return Ask(EM_GETMODIFY); }
    void SetModify(int on = 1) { Ask(EM_SETMODIFY, on); }
    // ENM_CHANGE and the like: what the parent is told.
    DWORD SetEventMask(DWORD mask) { return Ask<DWORD>(EM_SETEVENTMASK, 0, mask); }
    int SetReadOnly(int on) override { return Ask(EM_SETREADONLY, on); }
    int CanUndo() const { return Ask(EM_CANUNDO); }
    int Undo() { return Ask(EM_UNDO); }
    void Cut() { Ask(WM_CUT); }
    void Copy() { Ask(WM_COPY); }
    void Paste() { Ask(WM_PASTE); }

    // The format of the selection (SCF_SELECTION), or of all text (SCF_ALL); the record tells which
    // of its fields count.
    DWORD GetSelectionCharFormat(CHARFORMATA* format) const {
        return Ask<DWORD>(EM_GETCHARFORMAT, 1, format);
    }
    int SetCharFormat(const CHARFORMATA& format, UINT which = SCF_SELECTION) {
        return Ask(EM_SETCHARFORMAT, which, &format);
    }
    int SetParaFormat(const PARAFORMAT& format) { return Ask(EM_SETPARAFORMAT, 0, &format); }
    COLORREF SetBackgroundColor(COLORREF color) {
        return Ask<COLORREF>(EM_SETBKGNDCOLOR, 0, color);
    }

    // The text in the format SF_RTF or SF_TEXT, with SFF_SELECTION the selection alone. The bytes
    // that went through; less when the stream threw, which ends the transfer.
    int StreamIn(int format, SInputStream& from);
    int StreamOut(int format, SOutputStream& to) const;
};

#endif
