// SMenu: the wrapper of a menu.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_WINDOW_MENU_H
#define BRCORE8_WINDOW_MENU_H

#include <brcore8/platform/windows.h>
#include <brcore8/window/handle_map.h>

class BRCORE8_API SMenu : public SObject {
    SDECLARE_CREATABLE(SMenu);

    SMenu() noexcept = default;
    SMenu(const SMenu&) = delete;
    SMenu& operator=(const SMenu&) = delete;
    ~SMenu() override { Detach(); }

    // As SWnd's.
    HMENU GetHandle() const noexcept { return handle_; }
    static SMenu* FromHandle(HMENU handle);
    static void DeleteTempMap();
    static SHandleMap& GetHandleMap();
    int Attach(HMENU handle);
    HMENU Detach();

private:
    template <class>
    friend class brcore8::WrapperMap;

    HMENU handle_ = nullptr;
};

#endif
