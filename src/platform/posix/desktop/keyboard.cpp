// Keys, and the characters that they mean: the American layout, and whatever the driver of a real
// keyboard says of its own.

#include <brcore8/platform/posix/input_calls.h>
#include <brcore8/strings/multibyte.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

namespace {

// A key without its characters has zeros there.
struct Key {
    BYTE key;
    BYTE scan;
    char plain;
    char shifted;
};

constexpr Key kKeys[] = {
    {VK_ESCAPE, 0x01, 27, 27},
    {'1', 0x02, '1', '!'},
    {'2', 0x03, '2', '@'},
    {'3', 0x04, '3', '#'},
    {'4', 0x05, '4', '$'},
    {'5', 0x06, '5', '%'},
    {'6', 0x07, '6', '^'},
    {'7', 0x08, '7', '&'},
    {'8', 0x09, '8', '*'},
    {'9', 0x0A, '9', '('},
    {'0', 0x0B, '0', ')'},
    {VK_OEM_MINUS, 0x0C, '-', '_'},
    {VK_OEM_PLUS, 0x0D, '=', '+'},
    {VK_BACK, 0x0E, 8, 8},
    {VK_TAB, 0x0F, 9, 9},
    {'Q', 0x10, 'q', 'Q'},
    {'W', 0x11, 'w', 'W'},
    {'E', 0x12, 'e', 'E'},
    {'R', 0x13, 'r', 'R'},
    {'T', 0x14, 't', 'T'},
    {'Y', 0x15, 'y', 'Y'},
    {'U', 0x16, 'u', 'U'},
    {'I', 0x17, 'i', 'I'},
    {'O', 0x18, 'o', 'O'},
    {'P', 0x19, 'p', 'P'},
    {VK_OEM_4, 0x1A, '[', '{'},
    {VK_OEM_6, 0x1B, ']', '}'},
    {VK_RETURN, 0x1C, 13, 13},
    {VK_CONTROL, 0x1D, 0, 0},
    {'A', 0x1E, 'a', 'A'},
    {'S', 0x1F, 's', 'S'},
    {'D', 0x20, 'd', 'D'},
    {'F', 0x21, 'f', 'F'},
    {'G', 0x22, 'g', 'G'},
    {'H', 0x23, 'h', 'H'},
    {'J', 0x24, 'j', 'J'},
    {'K', 0x25, 'k', 'K'},
    {'L', 0x26, 'l', 'L'},
    {VK_OEM_1, 0x27, ';', ':'},
    {VK_OEM_7, 0x28, '\'', '"'},
    {VK_OEM_3, 0x29, '`', '~'},
    {VK_SHIFT, 0x2A, 0, 0},
    {VK_OEM_5, 0x2B, '\\', '|'},
    {'Z', 0x2C, 'z', 'Z'},
    {'X', 0x2D, 'x', 'X'},
    {'C', 0x2E, 'c', 'C'},
    {'V', 0x2F, 'v', 'V'},
    {'B', 0x30, 'b', 'B'},
    {'N', 0x31, 'n', 'N'},
    {'M', 0x32, 'm', 'M'},
    {VK_OEM_COMMA, 0x33, ',', '<'},
    {VK_OEM_PERIOD, 0x34, '.', '>'},
    {VK_OEM_2, 0x35, '/', '?'},
    {VK_MULTIPLY, 0x37, '*', '*'},
    {VK_MENU, 0x38, 0, 0},
    {VK_SPACE, 0x39, ' ', ' '},
    {VK_CAPITAL, 0x3A, 0, 0},
    {VK_F1, 0x3B, 0, 0},
    {VK_F2, 0x3C, 0, 0},
    {VK_F3, 0x3D, 0, 0},
    {VK_F4, 0x3E, 0, 0},
    {VK_F5, 0x3F, 0, 0},
    {VK_F6, 0x40, 0, 0},
    {VK_F7, 0x41, 0, 0},
    {VK_F8, 0x42, 0, 0},
    {VK_F9, 0x43, 0, 0},
    {VK_F10, 0x44, 0, 0},
    {VK_NUMLOCK, 0x45, 0, 0},
    {VK_SCROLL, 0x46, 0, 0},
    {VK_HOME, 0x47, 0, 0},
    {VK_UP, 0x48, 0, 0},
    {VK_PRIOR, 0x49, 0, 0},
    {VK_SUBTRACT, 0x4A, '-', '-'},
    {VK_LEFT, 0x4B, 0, 0},
    {VK_CLEAR, 0x4C, 0, 0},
    {VK_RIGHT, 0x4D, 0, 0},
    {VK_ADD, 0x4E, '+', '+'},
    {VK_END, 0x4F, 0, 0},
    {VK_DOWN, 0x50, 0, 0},
    {VK_NEXT, 0x51, 0, 0},
    {VK_INSERT, 0x52, 0, 0},
    {VK_DELETE, 0x53, 0, 0},
    {VK_F11, 0x57, 0, 0},
    {VK_F12, 0x58, 0, 0},
    {VK_NUMPAD0, 0x52, '0', 0},
    {VK_NUMPAD1, 0x4F, '1', 0},
    {VK_NUMPAD1 + 1, 0x50, '2', 0},
    {VK_NUMPAD1 + 2, 0x51, '3', 0},
    {VK_NUMPAD1 + 3, 0x4B, '4', 0},
    {VK_NUMPAD1 + 4, 0x4C, '5', 0},
    {VK_NUMPAD1 + 5, 0x4D, '6', 0},
    {VK_NUMPAD1 + 6, 0x47, '7', 0},
    {VK_NUMPAD1 + 7, 0x48, '8', 0},
    {VK_NUMPAD9, 0x49, '9', 0},
    {VK_DECIMAL, 0x53, '.', 0},
    {VK_DIVIDE, 0x35, '/', '/'},
    {VK_LSHIFT, 0x2A, 0, 0},
    {VK_RSHIFT, 0x36, 0, 0},
    {VK_LCONTROL, 0x1D, 0, 0},
    {VK_RCONTROL, 0x1D, 0, 0},
    {VK_LMENU, 0x38, 0, 0},
    {VK_RMENU, 0x38, 0, 0},
};

const Key* FindKey(UINT code) noexcept {
    const Key* const found = std::find_if(std::begin(kKeys), std::end(kKeys),
                                          [=](const Key& key) { return key.key == code; });
    return found != std::end(kKeys) ? found : nullptr;
}

bool IsLetter(UINT key) noexcept {
    return key >= 'A' && key <= 'Z';
}

// Ctrl makes control characters of the letters and of a few others.
char32_t ControlOf(UINT key, bool shift) noexcept {
    if (IsLetter(key)) return key - 'A' + 1;
    if (shift)
        return key == '2' ? U'\0' : key == '6' ? U'\x1E' : key == VK_OEM_MINUS ? U'\x1F' : U'\0';
    switch (key) {
        case VK_OEM_4:
            return 0x1B;
        case VK_OEM_5:
            return 0x1C;
        case VK_OEM_6:
            return 0x1D;
        case VK_RETURN:
            return '\n';
        case VK_BACK:
            return 0x7F;
        case VK_ESCAPE:
            return 0x1B;
        case VK_SPACE:
            return ' ';
        default:
            return 0;
    }
}

}  // namespace

char32_t CharacterOf(UINT code, const BYTE* keys) noexcept {
    const auto isDown = [keys](int key) { return (keys[key] & 0x80) != 0; };
    const Key* const key = FindKey(code);
    if (key == nullptr) return 0;
    if (isDown(VK_CONTROL) && !isDown(VK_MENU)) return ControlOf(code, isDown(VK_SHIFT));
    const bool isCapital = IsLetter(code) && (keys[VK_CAPITAL] & 1) != 0;
    const char character = isDown(VK_SHIFT) != isCapital ? key->shifted : key->plain;
    return static_cast<unsigned char>(character);
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

namespace {

// The character in the process's code page, one or two bytes.
std::string BytesOf(char32_t character) {
    std::u16string units;
    if (character >= 0x10000) {
        units += static_cast<char16_t>(0xD7C0 + (character >> 10));
        units += static_cast<char16_t>(0xDC00 | (character & 0x3FF));
    } else {
        units += static_cast<char16_t>(character);
    }
    return STextFromUtf16(units);
}

bool IsKeyMessage(UINT message) noexcept {
    return message == WM_KEYDOWN || message == WM_KEYUP || message == WM_SYSKEYDOWN ||
           message == WM_SYSKEYUP;
}

// What the key of the message taken last means; a driver knows better than the American layout,
// but for control characters.
char32_t MeaningOf(const Thread& thread, const MSG& message) noexcept {
    const MSG& last = thread.current;
    const bool isLast = last.message == message.message && last.wParam == message.wParam &&
                        last.lParam == message.lParam && last.time == message.time;
    if (isLast && (thread.text != 0 || thread.knowsText)) return thread.text;
    return CharacterOf(static_cast<UINT>(message.wParam), thread.keys);
}

}  // namespace

BOOL TranslateMessage(const MSG* message) {
    if (!IsKeyMessage(message->message)) return 0;
    if (message->message != WM_KEYDOWN && message->message != WM_SYSKEYDOWN) return 1;
    const char32_t character = MeaningOf(ThisThread(), *message);
    if (character == 0) return 1;
    const UINT made = message->message == WM_KEYDOWN ? WM_CHAR : WM_SYSCHAR;
    for (const char byte : BytesOf(character))
        PostMessageA(message->hwnd, made, static_cast<unsigned char>(byte), message->lParam);
    return 1;
}

UINT MapVirtualKeyA(UINT code, UINT what) noexcept {
    if (what == MAPVK_VSC_TO_VK) {
        for (const Key& key : kKeys)
            if (key.scan == code) return key.key;
        return 0;
    }
    const Key* const key = FindKey(code);
    if (key == nullptr) return 0;
    if (what == MAPVK_VK_TO_VSC) return key->scan;
    if (what != MAPVK_VK_TO_CHAR) return 0;
    return static_cast<unsigned char>(IsLetter(code) ? static_cast<char>(code) : key->plain);
}

short VkKeyScanA(char character) noexcept {
    if (character == 0) return -1;
    for (const Key& key : kKeys) {
        if (key.plain == character) return key.key;
        if (key.shifted == character) return static_cast<short>(key.key | 0x100);
    }
    const auto code = static_cast<unsigned char>(character);
    return static_cast<short>(code >= 1 && code <= 26 ? (code + 'A' - 1) | 0x200 : -1);
}

int ToAscii(UINT key, UINT, const BYTE* keys, WORD* characters, UINT) noexcept {
    const char32_t character = CharacterOf(key, keys);
    if (character == 0) return 0;
    *characters = static_cast<WORD>(character);
    return 1;
}

BOOL GetKeyboardState(BYTE* keys) noexcept {
    std::memcpy(keys, ThisThread().keys, 256);
    return 1;
}

BOOL SetKeyboardState(const BYTE* keys) noexcept {
    std::memcpy(ThisThread().keys, keys, 256);
    return 1;
}

namespace {

constinit UINT g_doubleClickTime = 500;

}  // namespace

UINT GetDoubleClickTime() noexcept {
    return g_doubleClickTime;
}

BOOL SetDoubleClickTime(UINT milliseconds) noexcept {
    g_doubleClickTime = milliseconds != 0 ? std::min(milliseconds, 5000u) : 500;
    return 1;
}
