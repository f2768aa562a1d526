// The controls of dialogs by their numbers.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/posix/desktop/dialogs/dialog.h"

namespace {

constexpr int kDigits = 32;

// The whole number at the text's beginning, spaces before it left out; false for none and for one
// that is too large.
bool ToNumber(const char* text, bool isSigned, UINT& number) noexcept {
    while (*text == ' ' || *text == '\t')
        ++text;
    const bool isNegative = isSigned && *text == '-';
    if (isNegative) ++text;
    if (*text < '0' || *text > '9') return false;
    std::int64_t value = 0;
    for (; *text >= '0' && *text <= '9'; ++text) {
        value = value * 10 + (*text - '0');
        if (value > 0xFFFFFFFFLL) return false;
    }
    if (isSigned && value > 0x7FFFFFFFLL + isNegative) return false;
    number = static_cast<UINT>(isNegative ? -value : value);
    return true;
}

}  // namespace

UINT GetDlgItemTextA(HWND dialog, int id, char* text, int size) {
    if (size > 0) text[0] = '\0';
    const HWND item = GetDlgItem(dialog, id);
    return item != nullptr ? static_cast<UINT>(GetWindowTextA(item, text, size)) : 0;
}

BOOL SetDlgItemTextA(HWND dialog, int id, const char* text) {
    const HWND item = GetDlgItem(dialog, id);
    return item != nullptr && SetWindowTextA(item, text);
}

UINT GetDlgItemInt(HWND dialog, int id, BOOL* isNumber, BOOL isSigned) {
    char text[kDigits] = "";
    UINT number = 0;
    GetDlgItemTextA(dialog, id, text, sizeof text);
    const bool isGood = ToNumber(text, isSigned != 0, number);
    if (isNumber != nullptr) *isNumber = isGood;
    return isGood ? number : 0;
}

BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned) {
    const std::string text =
        isSigned ? std::to_string(static_cast<std::int32_t>(value)) : std::to_string(value);
    return SetDlgItemTextA(dialog, id, text.c_str());
}

BOOL CheckDlgButton(HWND dialog, int id, UINT check) {
    const HWND item = GetDlgItem(dialog, id);
    if (item == nullptr) return 0;
    SendMessageA(item, BM_SETCHECK, check, 0);
    return 1;
}

UINT IsDlgButtonChecked(HWND dialog, int id) {
    return static_cast<UINT>(SendDlgItemMessageA(dialog, id, BM_GETCHECK, 0, 0));
}

BOOL CheckRadioButton(HWND dialog, int first, int last, int check) {
    const brcore8::desktop::Window* const window = brcore8::desktop::Find(dialog);
    if (window == nullptr) return 0;
    std::vector<HWND> group;
    for (const auto* child = window->firstChild; child != nullptr; child = child->below)
        if (child->id >= first && child->id <= last) group.push_back(child->handle);
    for (const HWND button : group)
        SendMessageA(button, BM_SETCHECK, GetDlgCtrlID(button) == check, 0);
    return 1;
}
