// Windows and their wrappers, as programs meet them.

#include <brcore8/core/exception.h>
#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// What the window below does with a message, by its number.
class STestWindow : public SWnd {
    SDECLARE_MESSAGE_MAP(STestWindow);

public:
    std::vector<UINT> seen;
    int createAnswer = 0;
    int created = 0;
    bool throwInCreate = false;
    bool isDeletingItself = false;
    bool* gone = nullptr;
    int notes = 0;

    ~STestWindow() override {
        if (gone != nullptr) *gone = true;
    }
    int Make(DWORD style = WS_OVERLAPPEDWINDOW, SWnd* parent = nullptr) {
        return CreateEx(0, "S_CliDrawWnd", "A window", style, 10, 20, 300, 200,
                        parent != nullptr ? parent->GetHandle() : nullptr);
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        seen.push_back(message);
        return SWnd::WindowProc(message, wParam, lParam);
    }
    int OnChildNotify(UINT, WPARAM, LPARAM, LRESULT* result) override {
        ++notes;
        *result = 99;
        return 1;
    }
    void PostNcDestroy() override {
        if (isDeletingItself) delete this;
    }

private:
    int OnCreate(CREATESTRUCT* create) {
        ++created;
        EXPECT_STREQ(create->lpszName, "A window");
        EXPECT_EQ(FromHandlePermanent(GetHandle()), this);
        if (throwInCreate) throw std::runtime_error("not today");
        return createAnswer;
    }
    LRESULT OnAsk(WPARAM wParam, LPARAM) {
        switch (wParam) {
            case 1:
                return static_cast<LRESULT>(GetLastMessage().message);
            case 2:
                throw std::runtime_error("escapes");
            case 3:
                DestroyWindow();
                return 3;
            case 4:
                return SendMessage(WM_APP, 1) + static_cast<LRESULT>(GetLastMessage().wParam);
            default:
                return 0;
        }
    }
};
SIMPLEMENT_MESSAGE_MAP(STestWindow, SWnd, SOnCreate<&STestWindow::OnCreate>(),
                       SOnMessage<&STestWindow::OnAsk>(WM_APP));

bool Has(const STestWindow& window, UINT message) {
    return std::find(window.seen.begin(), window.seen.end(), message) != window.seen.end();
}

// Wrappers and hooks are as they were before each test.
class Windows : public testing::Test {
protected:
    void TearDown() override {
        SWnd::DeleteTempMap();
        EXPECT_EQ(SWnd::GetHandleMap().GetPermanentCount(), 0);
        EXPECT_EQ(SWnd::GetHandleMap().GetTemporaryCount(), 0);
    }
};

TEST_F(Windows, AWindowIsMadeShownAndDestroyed) {
    STestWindow window;
    ASSERT_EQ(window.Make(), 1);
    const HWND handle = window.GetHandle();
    EXPECT_EQ(window.created, 1);
    EXPECT_TRUE(Has(window, WM_NCCREATE));
    EXPECT_STREQ(window.GetWindowText(), "A window");
    window.SetWindowText("Another");
    EXPECT_STREQ(window.GetWindowText(), "Another");
    EXPECT_EQ(SWnd::FromHandle(handle), &window);
    EXPECT_FALSE(window.IsWindowVisible());
    window.ShowWindow(SW_SHOWNOACTIVATE);
    EXPECT_TRUE(window.IsWindowVisible());
    EXPECT_TRUE(Has(window, WM_SIZE));
    EXPECT_EQ(window.DestroyWindow(), 1);
    EXPECT_EQ(window.GetHandle(), nullptr);
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_TRUE(Has(window, WM_DESTROY));
    EXPECT_EQ(window.seen.back(), static_cast<UINT>(WM_NCDESTROY));
    EXPECT_EQ(window.DestroyWindow(), 0);
    // The wrapper may be used again.
    EXPECT_EQ(window.Make(), 1);
    EXPECT_THROW(window.Make(), SEConstructor);
}

TEST_F(Windows, ARefusedCreationLeavesNothing) {
    for (const bool throws : {false, true}) {
        STestWindow window;
        window.createAnswer = -1;
        window.throwInCreate = throws;
        EXPECT_EQ(window.Make(), 0);
        EXPECT_EQ(window.created, 1);
        EXPECT_EQ(window.GetHandle(), nullptr);
    }
    STestWindow unknown;
    EXPECT_EQ(unknown.CreateEx(0, "No such class", "", 0, 0, 0, 0, 0), 0);
    // The platform's versions differ in the code.
    const DWORD code = GetLastError();
    EXPECT_TRUE(code == ERROR_CANNOT_FIND_WND_CLASS || code == ERROR_CLASS_DOES_NOT_EXIST) << code;
    // The expected window did not come: the next one is not taken for it.
    STestWindow next;
    EXPECT_EQ(next.Make(), 1);
    EXPECT_EQ(unknown.GetHandle(), nullptr);
}

TEST_F(Windows, AWindowMadeWhileAnotherIsMade) {
    class STestOuter : public STestWindow {
    public:
        STestWindow inner;

    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message == WM_CREATE) {
                EXPECT_EQ(inner.Make(WS_CHILD, this), 1);
            }
            return STestWindow::WindowProc(message, wParam, lParam);
        }
    };
    STestOuter outer;
    ASSERT_EQ(outer.Make(), 1);
    EXPECT_EQ(outer.inner.GetParent(), &outer);
    EXPECT_EQ(outer.IsChild(&outer.inner), 1);
    outer.DestroyWindow();
    EXPECT_EQ(outer.inner.GetHandle(), nullptr);
}

TEST_F(Windows, TheCurrentMessageNests) {
    STestWindow window;
    ASSERT_EQ(window.Make(), 1);
    EXPECT_EQ(window.SendMessage(WM_APP, 1), WM_APP);
    EXPECT_EQ(window.SendMessage(WM_APP, 4), WM_APP + 4);
}

int g_escapes = 0;

TEST_F(Windows, ExceptionsEndInTheProcedure) {
    STestWindow window;
    ASSERT_EQ(window.Make(), 1);
    const SEscapeObserver old = SSetEscapeObserver([](UINT message, UINT) noexcept {
        EXPECT_EQ(message, static_cast<UINT>(WM_APP));
        ++g_escapes;
    });
    EXPECT_EQ(window.SendMessage(WM_APP, 2), 0);
    SSetEscapeObserver(old);
    EXPECT_EQ(g_escapes, 1);
}

TEST_F(Windows, AHandlerMayDestroyItsWindowAndTheWrapperItself) {
    STestWindow window;
    ASSERT_EQ(window.Make(), 1);
    EXPECT_EQ(window.SendMessage(WM_APP, 3), 3);
    EXPECT_EQ(window.GetHandle(), nullptr);

    bool gone = false;
    auto* const heap = new STestWindow;
    heap->isDeletingItself = true;
    heap->gone = &gone;
    ASSERT_EQ(heap->Make(), 1);
    EXPECT_EQ(SendMessageA(heap->GetHandle(), WM_APP, 3, 0), 3);
    EXPECT_TRUE(gone);
}

TEST_F(Windows, AWrapperThatEndsTakesItsWindowAlong) {
    HWND handle = nullptr;
    {
        STestWindow window;
        ASSERT_EQ(window.Make(), 1);
        handle = window.GetHandle();
    }
    EXPECT_FALSE(IsWindow(handle));
}

// --- Handle maps ---------------------------------------------------------------------------------

TEST_F(Windows, TemporaryWrappersLastUntilTheNextIdlePass) {
    const HWND desktop = GetDesktopWindow();
    EXPECT_EQ(SWnd::FromHandle(nullptr), nullptr);
    SWnd* const first = SWnd::FromHandle(desktop);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(SWnd::FromHandle(desktop), first);
    EXPECT_EQ(SWnd::FromHandlePermanent(desktop), nullptr);
    {
        const SHandleMapLock held;
        SWnd::DeleteTempMap();
        EXPECT_EQ(SWnd::FromHandle(desktop), first);
    }
    SWnd::DeleteTempMap();
    EXPECT_EQ(SWnd::GetHandleMap().GetTemporaryCount(), 0);

    // A million lookups and idle passes take no more memory than one.
    const std::size_t before = SHandleMapAllocator::m_Nodes.GetStats().chunks;
    for (int i = 0; i < 100000; ++i) {
        for (int k = 0; k < 10; ++k)
            SWnd::FromHandle(reinterpret_cast<HWND>(std::intptr_t{0x10000} + k));
        SWnd::DeleteTempMap();
    }
    EXPECT_LE(SHandleMapAllocator::m_Nodes.GetStats().chunks, before + 1);
}

TEST_F(Windows, AttachAndDetach) {
    STestWindow window;
    ASSERT_EQ(window.Make(), 1);
    SWnd other;
    EXPECT_EQ(other.Attach(nullptr), 0);
    EXPECT_EQ(other.Detach(), nullptr);
    const HWND handle = window.Detach();
    EXPECT_EQ(SWnd::FromHandlePermanent(handle), nullptr);
    // A message without a wrapper gets the default treatment.
    EXPECT_EQ(SendMessageA(handle, WM_GETTEXTLENGTH, 0, 0), 8);
    EXPECT_EQ(other.Attach(handle), 1);
    EXPECT_EQ(SWnd::FromHandle(handle), &other);
    EXPECT_EQ(window.Attach(handle), 1);
    // The map knows one wrapper a window, the last; the other's end leaves it alone.
    EXPECT_EQ(other.Detach(), handle);
    EXPECT_EQ(SWnd::FromHandle(handle), &window);
    window.DestroyWindow();
}

LRESULT CALLBACK PlainProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_APP + 1 ? 1234 : DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(Windows, SubclassingKeepsTheOldProcedureForTheDefault) {
    WNDCLASSEXA info{};
    info.cbSize = sizeof info;
    info.lpfnWndProc = &PlainProcedure;
    info.lpszClassName = "Plain";
    ASSERT_NE(RegisterClassExA(&info), 0);
    STestWindow parent;
    ASSERT_EQ(parent.Make(), 1);
    const HWND plain = CreateWindowExA(0, "plain", "", WS_CHILD, 0, 0, 10, 10, parent.GetHandle(),
                                       reinterpret_cast<HMENU>(std::intptr_t{5}), nullptr, nullptr);
    ASSERT_NE(plain, nullptr);
    {
        STestWindow wrapper;
        EXPECT_EQ(parent.SubclassChild(6, &wrapper), 0);
        EXPECT_EQ(parent.SubclassChild(5, nullptr), 0);
        EXPECT_EQ(parent.SubclassChild(5, &wrapper), 1);
        EXPECT_EQ(SendMessageA(plain, WM_APP + 1, 0, 0), 1234);
        EXPECT_EQ(SendMessageA(plain, WM_APP, 1, 0), WM_APP);

        // What it tells its parent comes back to it first.
        NMHDR header{plain, 5, 1};
        EXPECT_EQ(parent.SendMessage(WM_NOTIFY, 5, reinterpret_cast<LPARAM>(&header)), 99);
        EXPECT_EQ(parent.SendMessage(WM_COMMAND, MAKEWPARAM(5, 1), reinterpret_cast<LPARAM>(plain)),
                  1);
        EXPECT_EQ(wrapper.notes, 2);
    }
    // The wrapper is gone, the window has its own procedure back.
    EXPECT_EQ(SendMessageA(plain, WM_APP + 1, 0, 0), 1234);
    EXPECT_EQ(SendMessageA(plain, WM_APP, 1, 0), 0);
    parent.DestroyWindow();
    EXPECT_NE(UnregisterClassA("Plain", nullptr), 0);
}

TEST_F(Windows, StylesPlacesAndChildren) {
    STestWindow window;
    ASSERT_EQ(window.Make(WS_POPUP), 1);
    EXPECT_EQ(window.ModifyStyle(0, WS_TABSTOP), 1);
    EXPECT_EQ(window.ModifyStyle(0, WS_TABSTOP), 0);
    EXPECT_NE(window.GetStyle() & WS_TABSTOP, 0u);
    window.SetWindowPos(nullptr, 30, 40, 120, 90, SWP_NOZORDER | SWP_NOACTIVATE);
    const RECT place = window.GetWindowRect();
    EXPECT_EQ(place.left, 30);
    EXPECT_EQ(place.bottom, 130);
    EXPECT_EQ(window.GetClientRect().right, 120);

    STestWindow children[3];
    for (STestWindow& child : children)
        ASSERT_EQ(child.Make(WS_CHILD | WS_VISIBLE, &window), 1);
    EXPECT_EQ(window.GetTopWindow(), &children[0]);
    EXPECT_EQ(children[0].GetWindow(GW_HWNDNEXT), &children[1]);
    children[2].BringWindowToTop();
    EXPECT_EQ(window.GetTopWindow(), &children[2]);
    POINT point{1, 2};
    children[0].ClientToScreen(&point);
    EXPECT_EQ(point.x, 30 + 10 + 1);
    EXPECT_EQ(point.y, 40 + 20 + 2);

    // Only wrappers, and deep: the message does not pass through the platform.
    for (STestWindow& child : children)
        child.seen.clear();
    window.SendMessageToDescendants(WM_APP, 0, 0, 1, 1);
    for (const STestWindow& child : children)
        EXPECT_EQ(child.seen, std::vector<UINT>{WM_APP});
}

TEST_F(Windows, AModalLoopEndsWithItsResult) {
    STestWindow window;
    ASSERT_EQ(window.Make(), 1);
    class STestModal : public STestWindow {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message == WM_APP + 7) EndModalLoop(static_cast<int>(wParam));
            return STestWindow::WindowProc(message, wParam, lParam);
        }
    } modal;
    ASSERT_EQ(modal.Make(), 1);
    modal.PostMessage(WM_APP + 7, 42);
    EXPECT_EQ(modal.RunModalLoop(), 42);
    PostQuitMessage(5);
    EXPECT_EQ(modal.RunModalLoop(), -1);
    // The quit goes on to the outer loop, with its code.
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT) {
    }
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 5u);
}

}  // namespace
