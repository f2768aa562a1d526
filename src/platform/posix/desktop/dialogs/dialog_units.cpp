// Dialog units: a quarter of the average character's width and an eighth of its height.

#include <brcore8/platform/posix/drawing_calls.h>

#include <cstdint>

#include "platform/posix/desktop/dialogs/dialog.h"
#include "platform/posix/fonts.h"

namespace brcore8::desktop {

SIZE UnitsOf(HFONT font) {
    static constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const HDC context = GetDC(nullptr);
    const HGDIOBJ object =
        font != nullptr ? static_cast<HGDIOBJ>(font) : GetStockObject(SYSTEM_FONT);
    const HGDIOBJ old = SelectObject(context, object);
    SIZE size{};
    TEXTMETRICA metrics{};
    const bool isKnown = GetTextExtentPoint32A(context, kLetters, 52, &size) != 0 &&
                         GetTextMetricsA(context, &metrics) != 0;
    SelectObject(context, old);
    ReleaseDC(nullptr, context);
    // Where nothing can draw every character is alike.
    return isKnown ? SIZE{(size.cx / 26 + 1) / 2, metrics.tmHeight} : SIZE{8, 16};
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

LONG GetDialogBaseUnits() noexcept {
    try {
        const SIZE units = UnitsOf(nullptr);
        return MAKELONG(static_cast<std::uint64_t>(units.cx), static_cast<std::uint64_t>(units.cy));
    } catch (...) {
        return MAKELONG(8, 16);
    }
}

BOOL MapDialogRect(HWND handle, RECT* rect) {
    const std::lock_guard guard(Lock());
    const Dialog* const dialog = DialogOf(handle);
    if (dialog == nullptr) return 0;
    const SIZE units = dialog->units;
    *rect = {MulDiv(rect->left, units.cx, 4), MulDiv(rect->top, units.cy, 8),
             MulDiv(rect->right, units.cx, 4), MulDiv(rect->bottom, units.cy, 8)};
    return 1;
}
