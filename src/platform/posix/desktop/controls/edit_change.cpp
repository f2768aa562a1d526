// How the text of an edit field changes.

#include <brcore8/platform/posix/input_calls.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/posix/desktop/controls/edit.h"
#include "strings/mbs.h"

namespace brcore8::desktop {

namespace {

// A field of one line takes what stands before a line end.
void CutToLine(std::string& text) {
    text.resize(std::min(text.find_first_of("\r\n"), text.size()));
}

void Fold(std::string& text, DWORD style) {
    if ((style & (ES_UPPERCASE | ES_LOWERCASE)) == 0) return;
    const CodePage& page = CodePage::Ansi();
    const unsigned char* const table =
        (style & ES_UPPERCASE) != 0 ? page.UpperBytes() : page.LowerBytes();
    const char* const end = text.data() + text.size();
    for (char* at = text.data(); at < end;) {
        const std::size_t bytes = mbs::CharBytes(page, at, end);
        if (bytes == 1) *at = static_cast<char>(table[static_cast<unsigned char>(*at)]);
        at += bytes;
    }
}

}  // namespace

// A field of many lines does not tell that all its text is new.
void Edit::SetText(const char* text) {
    std::string whole = text != nullptr ? text : "";
    if (!HasLines()) CutToLine(whole);
    Fold(whole, Style());
    text_.Set(std::move(whole));
    anchor_ = caret_ = 0;
    firstLine_ = 0;
    scrollX_ = 0;
    isModified_ = false;
    UpdateBars();
    Repaint();
    PlaceCaret();
    if (!HasLines()) Changed();
}

void Edit::Select(std::size_t anchor, std::size_t caret) {
    if (anchor != anchor_ || caret != caret_) Repaint();
    anchor_ = anchor;
    caret_ = caret;
    PlaceCaret();
}

// -1 in the place of the begin lets go of the selection, in that of the end means all.
void Edit::SetSelection(LPARAM begin, LPARAM end) {
    if (begin == -1) {
        Select(caret_, caret_);
        return;
    }
    const auto within = [this](LPARAM at) {
        return at < 0 ? text_.Size() : std::min(static_cast<std::size_t>(at), text_.Size());
    };
    Select(within(begin), within(end));
}

std::string Edit::Fitting(std::string with) {
    const std::size_t kept = text_.Size() - (SelectionEnd() - SelectionBegin());
    const std::size_t room = limit_ > kept ? limit_ - kept : 0;
    if (with.size() <= room) return with;
    // A character of two bytes fits whole or not at all.
    const char* const end = with.data() + with.size();
    std::size_t fits = 0;
    for (const char* at = with.data(); fits < room; at = with.data() + fits) {
        const std::size_t bytes = mbs::CharBytes(CodePage::Ansi(), at, end);
        if (fits + bytes > room) break;
        fits += bytes;
    }
    with.resize(fits);
    return with;
}

void Edit::ReplaceSelection(std::string with, bool keepsUndo) {
    if (!HasLines()) CutToLine(with);
    Fold(with, Style());
    const std::size_t wanted = with.size();
    with = Fitting(std::move(with));
    const bool isCut = with.size() < wanted;
    const std::size_t begin = SelectionBegin();
    const std::size_t end = SelectionEnd();
    if (begin != end || !with.empty()) {
        text_.Replace(begin, end, with, keepsUndo);
        anchor_ = caret_ = begin + with.size();
        isModified_ = true;
        ScrollCaret();
        UpdateBars();
        Repaint();
        PlaceCaret();
    }
    if (isCut) Notify(EN_MAXTEXT);
    if (IsAlive()) Changed();
}

void Edit::Changed() {
    Notify(EN_UPDATE);
    if (IsAlive()) Notify(EN_CHANGE);
}

void Edit::Undo() {
    if (!text_.CanUndo() || IsReadOnly()) return;
    const auto [begin, end] = text_.Undo();
    anchor_ = begin;
    caret_ = end;
    isModified_ = true;
    ScrollCaret();
    UpdateBars();
    Repaint();
    PlaceCaret();
    Changed();
}

// --- Typing -------------------------------------------------------------------------------------

void Edit::Type(char c) {
    const bool isControl = GetKeyState(VK_CONTROL) < 0;
    if (lead_ != 0) {
        ReplaceSelection({std::exchange(lead_, '\0'), c}, true);
        return;
    }
    // The characters of these keys have their keys' numbers.
    if (IsDialogKey(static_cast<unsigned char>(c))) return;
    switch (c) {
        case '\r':
        case '\n':
            if (!HasLines()) break;
            if (!IsReadOnly()) ReplaceSelection("\r\n", true);
            break;
        case '\t':
            if (HasLines() && !IsReadOnly()) ReplaceSelection("\t", true);
            break;
        case '\b':
            if (!IsReadOnly() && !isControl) DeleteBack();
            break;
        case 'A' - '@':
            Select(0, text_.Size());
            break;
        case 'C' - '@':
            SendMessageA(Handle(), WM_COPY, 0, 0);
            break;
        case 'V' - '@':
            if (!IsReadOnly()) SendMessageA(Handle(), WM_PASTE, 0, 0);
            break;
        case 'X' - '@':
            if (!IsReadOnly()) SendMessageA(Handle(), WM_CUT, 0, 0);
            break;
        case 'Z' - '@':
            if (!IsReadOnly()) SendMessageA(Handle(), WM_UNDO, 0, 0);
            break;
        default:
            if (IsReadOnly() || static_cast<unsigned char>(c) < ' ' || c == 127) break;
            if ((Style() & ES_NUMBER) != 0 && (c < '0' || c > '9')) {
                MessageBeep(0);
                break;
            }
            if (CodePage::Ansi().IsLead(static_cast<unsigned char>(c))) {
                lead_ = c;
                break;
            }
            ReplaceSelection(std::string(1, c), true);
    }
}

void Edit::DeleteBack() {
    if (anchor_ == caret_) {
        if (caret_ == 0) return;
        anchor_ = text_.Previous(caret_);
    }
    ReplaceSelection({}, true);
}

void Edit::DeleteOn() {
    if (anchor_ == caret_) {
        if (caret_ == text_.Size()) return;
        caret_ = text_.Next(anchor_);
    }
    ReplaceSelection({}, true);
}

// --- The clipboard ------------------------------------------------------------------------------

void Edit::Copy() const {
    if (anchor_ == caret_ || password_ != 0 || !OpenClipboard(Handle())) return;
    const std::string part =
        text_.Get().substr(SelectionBegin(), SelectionEnd() - SelectionBegin());
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, part.size() + 1);
    if (block != nullptr) {
        std::memcpy(GlobalLock(block), part.data(), part.size());
        GlobalUnlock(block);
        EmptyClipboard();
        if (SetClipboardData(CF_TEXT, block) == nullptr) GlobalFree(block);
    }
    CloseClipboard();
}

void Edit::Paste() {
    if (IsReadOnly() || !OpenClipboard(Handle())) return;
    std::string pasted;
    const HANDLE block = GetClipboardData(CF_TEXT);
    if (block != nullptr) {
        const auto* const text = static_cast<const char*>(GlobalLock(block));
        pasted.assign(text, strnlen(text, GlobalSize(block)));
        GlobalUnlock(block);
    }
    CloseClipboard();
    if (block != nullptr) ReplaceSelection(std::move(pasted), true);
}

}  // namespace brcore8::desktop
