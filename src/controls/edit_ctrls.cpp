#include <brcore8/controls/edit_ctrls.h>

#include "platform/platform.h"

#include <vector>

SIMPLEMENT_CREATABLE(SEditCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SRichEditCtrl, SWnd, 2);

// --- Plain text ---------------------------------------------------------------------------------

// The control is told the room by the first two bytes, and writes no terminator.
SString SEditCtrl::GetLine(int line) const {
    const int start = LineIndex(line);
    const int length = start >= 0 ? LineLength(start) : 0;
    if (length <= 0) return SString();
    if (length > 0xFFFF) {
        const SString text = GetWindowText();
        const auto first = static_cast<std::size_t>(start);
        return start <= text.LengthByte()
                   ? SString(text.View().substr(first, static_cast<std::size_t>(length)))
                   : SString();
    }
    std::vector<char> text(static_cast<std::size_t>(length) + sizeof(WORD));
    *reinterpret_cast<WORD*>(text.data()) = static_cast<WORD>(length);
    const int taken = Ask(EM_GETLINE, line, text.data());
    return SString(text.data(), taken < length ? taken : length);
}

void SEditCtrl::GetSel(int* from, int* to) const {
    DWORD first = 0;
    DWORD last = 0;
    Ask(EM_GETSEL, &first, &last);
    *from = static_cast<int>(first);
    *to = static_cast<int>(last);
}

SString SEditCtrl::GetSelText() const {
    int from = 0;
    int to = 0;
    GetSel(&from, &to);
    const SString text = GetWindowText();
    return from < to && to <= text.LengthByte()
               ? SString(text.View().substr(static_cast<std::size_t>(from),
                                            static_cast<std::size_t>(to - from)))
               : SString();
}

POINT SEditCtrl::PosFromChar(int position) const {
    const auto packed = Ask<DWORD>(EM_POSFROMCHAR, position);
    return {static_cast<std::int16_t>(LOWORD(packed)), static_cast<std::int16_t>(HIWORD(packed))};
}

int SEditCtrl::CharFromPos(POINT point) const {
    const auto packed = Ask<DWORD>(EM_CHARFROMPOS, 0, MAKELPARAM(point.x, point.y));
    if (packed == ~DWORD{0}) return -1;
    // Both are carried in 16 bits, and none is far before what shows first: a line, or a character
    // where there is one line alone.
    const int shown = GetFirstVisibleLine();
    const bool hasLines = (GetStyle() & ES_MULTILINE) != 0;
    const int start =
        hasLines ? LineIndex(shown + static_cast<WORD>(HIWORD(packed) - shown)) : shown;
    return start + static_cast<WORD>(LOWORD(packed) - start);
}

RECT SEditCtrl::GetRect() const {
    RECT rect{};
    Ask(EM_GETRECT, 0, &rect);
    return rect;
}

// --- Formatted text -----------------------------------------------------------------------------

namespace {

// Kept: the class lives as long as its library.
void LoadRichEdit() {
    [[maybe_unused]] static const HMODULE library = LoadLibraryA("riched20.dll");
}

// No exception may pass through the control: it ends the transfer.
template <class Stream>
struct Transfer {
    Stream& stream;
    int count = 0;
};

DWORD CALLBACK ReadBlock(DWORD_PTR cookie, BYTE* block, LONG size, LONG* taken) {
    auto& transfer = *reinterpret_cast<Transfer<SInputStream>*>(cookie);
    try {
        const unsigned long got =
            SBytesOf(transfer.stream.Read(block, static_cast<unsigned long>(size)));
        *taken = static_cast<LONG>(got);
        transfer.count += static_cast<int>(got);
        return 0;
    } catch (...) {
        return 1;
    }
}

DWORD CALLBACK WriteBlock(DWORD_PTR cookie, BYTE* block, LONG size, LONG* taken) {
    auto& transfer = *reinterpret_cast<Transfer<SOutputStream>*>(cookie);
    try {
        const unsigned long put = transfer.stream.Write(block, static_cast<unsigned long>(size));
        *taken = static_cast<LONG>(put);
        transfer.count += static_cast<int>(put);
        return 0;
    } catch (...) {
        return 1;
    }
}

}  // namespace

int SRichEditCtrl::Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
    LoadRichEdit();
    return SWnd::Create("RichEdit20A", nullptr, style, place, parent, id);
}

SString SRichEditCtrl::GetSelText() const {
    CHARRANGE range{};
    GetSel(&range);
    if (range.cpMax <= range.cpMin) return SString();
    // A character may take two bytes.
    std::vector<char> text(static_cast<std::size_t>(range.cpMax - range.cpMin) * 2 + 1);
    const int length = Ask(EM_GETSELTEXT, 0, text.data());
    return SString(text.data(), length);
}

int SRichEditCtrl::StreamIn(int format, SInputStream& from) {
    Transfer<SInputStream> transfer{from};
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&transfer), 0, &ReadBlock};
    Ask(EM_STREAMIN, format, &stream);
    return transfer.count;
}

int SRichEditCtrl::StreamOut(int format, SOutputStream& to) const {
    Transfer<SOutputStream> transfer{to};
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&transfer), 0, &WriteBlock};
    Ask(EM_STREAMOUT, format, &stream);
    return transfer.count;
}
