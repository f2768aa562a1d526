#ifndef BRCORE8_TESTS_DIALOGS_ANSWER_H
#define BRCORE8_TESTS_DIALOGS_ANSWER_H

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <cstring>

// While it lives, a button of whatever dialog of this thread shows is pressed: the dialogs that the
// platform brings have a loop of their own.
class Pressing {
public:
    explicit Pressing(int id) {
        button_ = id;
        timer_ = ::SetTimer(nullptr, 0, 20, &OnTimer);
    }
    Pressing(const Pressing&) = delete;
    Pressing& operator=(const Pressing&) = delete;
    ~Pressing() { ::KillTimer(nullptr, timer_); }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
        for (HWND top = ::GetTopWindow(nullptr); top != nullptr;
             top = ::GetWindow(top, GW_HWNDNEXT)) {
            char name[16] = "";
            ::GetClassNameA(top, name, sizeof name);
            const bool isMine = ::GetWindowThreadProcessId(top, nullptr) == ::GetCurrentThreadId();
            if (!isMine || !::IsWindowVisible(top) || std::strcmp(name, "#32770") != 0) continue;
            ::PostMessageA(top, WM_COMMAND, static_cast<WPARAM>(button_), 0);
            return;
        }
    }

    static inline int button_ = 0;
    UINT_PTR timer_;
};

// A window for the dialogs to belong to.
class OwnedDialogs : public testing::Test {
protected:
    OwnedDialogs() {
        EXPECT_EQ(owner.CreateEx(0, "S_Window", "Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                 300, 200),
                  1);
    }
    ~OwnedDialogs() override {
        owner.DestroyWindow();
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessageA(&message);
        SWnd::DeleteTempMap();
    }

    // What a dialog answers when that button is pressed.
    template <class Dialog>
    static int Answer(Dialog& dialog, int button) {
        const Pressing pressing(button);
        return dialog.DoModal();
    }

    SWnd owner;
};

#endif
