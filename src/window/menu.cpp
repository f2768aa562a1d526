#include <brcore8/window/menu.h>
#include <brcore8/window/wnd.h>

#include "window/wrapper_map.h"

#include <utility>
#include <vector>

SIMPLEMENT_CREATABLE(SMenu, SObject, 2);

using Map = brcore8::WrapperMap<SMenu>;

SMenu* SMenu::FromHandle(HMENU handle) {
    return Map::From(handle);
}

SMenu* SMenu::FromHandlePermanent(HMENU handle) {
    return static_cast<SMenu*>(Map::Get().FromHandlePermanent(handle));
}

void SMenu::DeleteTempMap() {
    Map::Get().DeleteTempMap();
}

SHandleMap& SMenu::GetHandleMap() {
    return Map::Get();
}

SMenu::~SMenu() {
    Own(nullptr);
}

int SMenu::Attach(HMENU handle) {
    return Map::Attach(*this, handle);
}

HMENU SMenu::Detach() {
    owns_ = false;
    return Map::Detach(*this);
}

// Ends what the wrapper has, and takes what was made in its place.
int SMenu::Own(HMENU made) {
    if (const bool owned = owns_; const HMENU old = Detach())
        if (owned) ::DestroyMenu(old);
    owns_ = Attach(made) != 0;
    return owns_;
}

int SMenu::CreateMenu() {
    return Own(::CreateMenu());
}

int SMenu::CreatePopupMenu() {
    return Own(::CreatePopupMenu());
}

BOOL SMenu::DestroyMenu() {
    return ::DestroyMenu(Detach());
}

BOOL SMenu::AppendMenu(UINT flags, SMenu& popup, const char* text) {
    return InsertMenu(static_cast<UINT>(-1), flags | MF_BYPOSITION, popup, text);
}

BOOL SMenu::InsertMenu(UINT item, UINT flags, SMenu& popup, const char* text) {
    const auto id = reinterpret_cast<UINT_PTR>(popup.handle_);
    if (!::InsertMenuA(handle_, item, flags | MF_POPUP, id, text)) return 0;
    popup.Give();
    return 1;
}

SString SMenu::GetMenuString(UINT item, UINT flags) const {
    const int length = ::GetMenuStringA(handle_, item, nullptr, 0, flags);
    if (length <= 0) return SString();
    std::vector<char> text(static_cast<std::size_t>(length) + 1);
    const int taken = ::GetMenuStringA(handle_, item, text.data(), length + 1, flags);
    return SString(text.data(), taken > 0 ? taken : 0);
}

BOOL SMenu::TrackPopupMenu(UINT flags, int x, int y, SWnd* window) {
    return ::TrackPopupMenu(handle_, flags, x, y, 0,
                            window != nullptr ? window->GetHandle() : nullptr, nullptr);
}

SMenu* SWnd::GetMenu() const {
    return SMenu::FromHandle(::GetMenu(handle_));
}

BOOL SWnd::SetMenu(SMenu* menu) {
    if (!::SetMenu(handle_, menu != nullptr ? menu->handle_ : nullptr)) return 0;
    if (menu != nullptr) menu->Give();
    return 1;
}
