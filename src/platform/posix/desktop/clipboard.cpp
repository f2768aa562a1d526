// The clipboard. Other programs see its text alone, through the screen.

#include <brcore8/platform/posix/drawing_calls.h>
#include <brcore8/platform/posix/input_calls.h>
#include <brcore8/platform/posix/window_calls.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "platform/posix/desktop/screen.h"
#include "platform/posix/desktop/thread.h"

using namespace brcore8::desktop;

namespace {

struct Entry {
    UINT format;
    HGLOBAL data;
    bool isMade;  // of the other text format
};

struct Clipboard {
    std::vector<Entry> entries;
    const Thread* opener = nullptr;
    HWND openWindow = nullptr;
    HWND owner = nullptr;
    DWORD changes = 0;
    bool isChanged = false;  // the screen was not told yet
    bool isOffered = false;  // the screen has ours
    bool isForeign = false;  // or we have the screen's
};

Clipboard& TheClipboard() {
    static Clipboard& clipboard = *new Clipboard;
    return clipboard;
}

// The clipboard while this thread has it open.
Clipboard* Opened() {
    Clipboard& clipboard = TheClipboard();
    if (clipboard.opener == &ThisThread()) return &clipboard;
    SetLastError(ERROR_CLIPBOARD_NOT_OPEN);
    return nullptr;
}

Entry* FindEntry(Clipboard& clipboard, UINT format) noexcept {
    for (Entry& entry : clipboard.entries)
        if (entry.format == format) return &entry;
    return nullptr;
}

void Free(const Entry& entry) noexcept {
    if (entry.format == CF_BITMAP)
        DeleteObject(entry.data);
    else
        GlobalFree(entry.data);
}

void Drop(Clipboard& clipboard) noexcept {
    for (const Entry& entry : clipboard.entries)
        Free(entry);
    clipboard.entries.clear();
}

HGLOBAL NewBlock(const void* data, std::size_t size) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
    if (block == nullptr) return nullptr;
    std::memcpy(GlobalLock(block), data, size);
    GlobalUnlock(block);
    return block;
}

// Up to the first zero, or to the block's end.
std::string TextOf(HGLOBAL block) {
    const auto* const text = static_cast<const char*>(GlobalLock(block));
    std::string copy(text, strnlen(text, GlobalSize(block)));
    GlobalUnlock(block);
    return copy;
}

std::u16string UnitsOf(HGLOBAL block) {
    std::u16string units(GlobalSize(block) / sizeof(char16_t), u'\0');
    std::memcpy(units.data(), GlobalLock(block), units.size() * sizeof(char16_t));
    GlobalUnlock(block);
    units.resize(std::min(units.find(u'\0'), units.size()));
    return units;
}

void AddText(Clipboard& clipboard, const std::string& text, bool isMade) {
    const HGLOBAL block = NewBlock(text.c_str(), text.size() + 1);
    if (block != nullptr) clipboard.entries.push_back({CF_TEXT, block, isMade});
}

void AddUnits(Clipboard& clipboard, const std::u16string& units, bool isMade) {
    const HGLOBAL block = NewBlock(units.c_str(), (units.size() + 1) * sizeof(char16_t));
    if (block != nullptr) clipboard.entries.push_back({CF_UNICODETEXT, block, isMade});
}

// What another program offers; nothing while that is our own. Not under the lock: the screen's
// thread, which answers, may want it.
std::optional<std::string> AskScreen() {
    Screen* const screen = TheScreen();
    if (screen == nullptr || screen->OwnsText()) return std::nullopt;
    return screen->AskForText();
}

// It takes the place of our own.
void TakeForeignText(Clipboard& clipboard, const std::string& text) {
    if (text.empty() && !clipboard.isOffered && !clipboard.isForeign) return;
    clipboard.isOffered = false;
    clipboard.isForeign = !text.empty();
    Drop(clipboard);
    clipboard.owner = nullptr;
    if (text.empty()) return;
    std::u16string units;
    for (const char16_t unit : SUtf16FromUtf8(text)) {
        if (unit == u'\n' && (units.empty() || units.back() != u'\r')) units += u'\r';
        units += unit;
    }
    AddUnits(clipboard, units, true);
}

// For the screen's programs, which end lines with one byte.
std::optional<std::string> TextForOthers(Clipboard& clipboard) {
    std::u16string units;
    if (const Entry* const wide = FindEntry(clipboard, CF_UNICODETEXT))
        units = UnitsOf(wide->data);
    else if (const Entry* const text = FindEntry(clipboard, CF_TEXT))
        units = SUtf16FromText(TextOf(text->data));
    else
        return std::nullopt;
    std::string lines = SUtf8FromUtf16(units);
    for (std::size_t at = 0; (at = lines.find("\r\n", at)) != std::string::npos;)
        lines.erase(at, 1);
    return lines;
}

// Without a text too: what another program offered before is not to come back.
void Close(Clipboard& clipboard) {
    clipboard.opener = nullptr;
    clipboard.openWindow = nullptr;
    Screen* const screen = TheScreen();
    if (!clipboard.isChanged || screen == nullptr) return;
    screen->OfferText(TextForOthers(clipboard));
    clipboard.isOffered = true;
    clipboard.isChanged = false;
}

bool TryClose(Clipboard& clipboard) noexcept {
    try {
        Close(clipboard);
        return true;
    } catch (...) {
        return false;
    }
}

UINT OtherText(UINT format) noexcept {
    return format == CF_TEXT ? CF_UNICODETEXT : format == CF_UNICODETEXT ? CF_TEXT : 0;
}

}  // namespace

BOOL OpenClipboard(HWND window) noexcept {
    if (window != nullptr && Find(window) == nullptr) return 0;
    try {
        const std::optional<std::string> foreign = AskScreen();
        const std::lock_guard guard(Lock());
        Clipboard& clipboard = TheClipboard();
        if (clipboard.opener != nullptr &&
            (clipboard.opener != &ThisThread() || clipboard.openWindow != window)) {
            SetLastError(ERROR_ACCESS_DENIED);
            return 0;
        }
        if (foreign && clipboard.opener == nullptr) TakeForeignText(clipboard, *foreign);
        clipboard.opener = &ThisThread();
        clipboard.openWindow = window;
        return 1;
    } catch (const std::exception&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
}

BOOL CloseClipboard() noexcept {
    const std::lock_guard guard(Lock());
    Clipboard* const clipboard = Opened();
    return clipboard != nullptr && TryClose(*clipboard);
}

void brcore8::desktop::LeaveClipboard(HWND window) noexcept {
    const std::lock_guard guard(Lock());
    Clipboard& clipboard = TheClipboard();
    if (clipboard.owner == window) clipboard.owner = nullptr;
    if (clipboard.openWindow == window) TryClose(clipboard);
}

void brcore8::desktop::LeaveClipboard(const Thread& thread) noexcept {
    const std::lock_guard guard(Lock());
    Clipboard& clipboard = TheClipboard();
    if (clipboard.opener == &thread) TryClose(clipboard);
}

BOOL EmptyClipboard() {
    HWND old = nullptr;
    {
        const std::lock_guard guard(Lock());
        Clipboard* const clipboard = Opened();
        if (clipboard == nullptr) return 0;
        old = clipboard->owner;
    }
    if (old != nullptr && IsWindow(old)) SendMessageA(old, WM_DESTROYCLIPBOARD, 0, 0);
    const std::lock_guard guard(Lock());
    // Who had it may have closed it.
    Clipboard* const clipboard = Opened();
    if (clipboard == nullptr) return 0;
    Drop(*clipboard);
    clipboard->owner = clipboard->openWindow;
    clipboard->isChanged = true;
    clipboard->isForeign = false;
    ++clipboard->changes;
    return 1;
}

HANDLE SetClipboardData(UINT format, HANDLE data) {
    const std::lock_guard guard(Lock());
    Clipboard* const clipboard = Opened();
    if (clipboard == nullptr || data == nullptr || format == 0) return nullptr;
    std::erase_if(clipboard->entries, [=](const Entry& entry) {
        const bool goes =
            entry.format == format || (entry.isMade && entry.format == OtherText(format));
        if (goes && entry.data != data) Free(entry);
        return goes;
    });
    clipboard->entries.push_back({format, data, false});
    clipboard->isChanged = true;
    ++clipboard->changes;
    return data;
}

HANDLE GetClipboardData(UINT format) {
    const std::lock_guard guard(Lock());
    Clipboard* const clipboard = Opened();
    if (clipboard == nullptr) return nullptr;
    if (const Entry* const entry = FindEntry(*clipboard, format)) return entry->data;
    const Entry* const other = FindEntry(*clipboard, OtherText(format));
    if (OtherText(format) == 0 || other == nullptr) return nullptr;
    if (format == CF_TEXT)
        AddText(*clipboard, STextFromUtf16(UnitsOf(other->data)), true);
    else
        AddUnits(*clipboard, SUtf16FromText(TextOf(other->data)), true);
    const Entry* const made = FindEntry(*clipboard, format);
    return made != nullptr ? made->data : nullptr;
}

BOOL IsClipboardFormatAvailable(UINT format) noexcept {
    try {
        const std::optional<std::string> foreign = AskScreen();
        const std::lock_guard guard(Lock());
        Clipboard& clipboard = TheClipboard();
        if (foreign && clipboard.opener == nullptr) TakeForeignText(clipboard, *foreign);
        return FindEntry(clipboard, format) != nullptr ||
               (OtherText(format) != 0 && FindEntry(clipboard, OtherText(format)) != nullptr);
    } catch (const std::exception&) {
        return 0;
    }
}

int CountClipboardFormats() noexcept {
    const std::lock_guard guard(Lock());
    Clipboard& clipboard = TheClipboard();
    int count = 0;
    for (const Entry& entry : clipboard.entries)
        count +=
            FindEntry(clipboard, OtherText(entry.format)) == nullptr && OtherText(entry.format) != 0
                ? 2
                : 1;
    return count;
}

UINT EnumClipboardFormats(UINT format) noexcept {
    const std::lock_guard guard(Lock());
    const Clipboard* const clipboard = Opened();
    if (clipboard == nullptr) return 0;
    const std::vector<Entry>& entries = clipboard->entries;
    const auto at = std::find_if(entries.begin(), entries.end(),
                                 [=](const Entry& entry) { return entry.format == format; });
    const auto next = format == 0 ? entries.begin() : at == entries.end() ? at : at + 1;
    return next != entries.end() ? next->format : 0;
}

HWND GetClipboardOwner() noexcept {
    const std::lock_guard guard(Lock());
    return TheClipboard().owner;
}

HWND GetOpenClipboardWindow() noexcept {
    const std::lock_guard guard(Lock());
    return TheClipboard().openWindow;
}

DWORD GetClipboardSequenceNumber() noexcept {
    const std::lock_guard guard(Lock());
    return TheClipboard().changes;
}

UINT RegisterClipboardFormatA(const char* name) noexcept {
    return RegisterWindowMessageA(name);
}
