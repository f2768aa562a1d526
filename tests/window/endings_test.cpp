// Windows and wrappers that end, or change hands, in the middle of something.

#include <brcore8/app/frame_wnd.h>
#include <brcore8/core/exception.h>
#include <brcore8/core/module.h>
#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "support/failing_allocator.h"

namespace {

// Its handlers delete it and leave the message to others.
class STestLeaver : public SWnd {
    SDECLARE_MESSAGE_MAP(STestLeaver);

public:
    explicit STestLeaver(int& ended) : ended_(ended) {}
    ~STestLeaver() override { ++ended_; }
    static HWND Make(int& ended) {
        auto* const window = new STestLeaver(ended);
        EXPECT_EQ(window->CreateEx(0, "S_Window", "", WS_POPUP, 0, 0, 9, 9), 1);
        return window->GetHandle();
    }

private:
    int OnMouseWheel(UINT, int, int, int) {
        delete this;
        return 0;
    }
    int OnGo() {
        delete this;
        return 0;
    }
    int OnNote(NMHDR*, LRESULT*) {
        delete this;
        return 0;
    }

    int& ended_;
};
SIMPLEMENT_MESSAGE_MAP(STestLeaver, SWnd, SOnMouseWheel<&STestLeaver::OnMouseWheel>(),
                       SOnCommandEx<&STestLeaver::OnGo>(5),
                       SOnNotifyEx<&STestLeaver::OnNote>(1, 6));

TEST(Endings, AHandlerMayDeleteItsWrapperAndLeaveTheMessageToOthers) {
    int ended = 0;
    SendMessageA(STestLeaver::Make(ended), WM_MOUSEWHEEL, 0, 0);
    EXPECT_EQ(ended, 1);
    SendMessageA(STestLeaver::Make(ended), WM_COMMAND, 5, 0);
    EXPECT_EQ(ended, 2);
    NMHDR header{GetDesktopWindow(), 6, 1};
    SendMessageA(STestLeaver::Make(ended), WM_NOTIFY, 6, reinterpret_cast<LPARAM>(&header));
    EXPECT_EQ(ended, 3);
}

// Deletes itself before it is known that its window came.
class STestEarlyLeaver : public SWnd {
    SDECLARE_MESSAGE_MAP(STestEarlyLeaver);

public:
    explicit STestEarlyLeaver(HWND& window) : window_(window) {}

private:
    int OnCreate(CREATESTRUCT*) {
        window_ = GetHandle();
        delete this;
        return 0;
    }

    HWND& window_;
};
SIMPLEMENT_MESSAGE_MAP(STestEarlyLeaver, SWnd, SOnCreate<&STestEarlyLeaver::OnCreate>());

TEST(Endings, AWrapperMayEndWhileItsWindowIsMade) {
    HWND window = nullptr;
    auto* const wrapper = new STestEarlyLeaver(window);
    EXPECT_EQ(wrapper->CreateEx(0, "S_Window", "", WS_POPUP, 0, 0, 9, 9), 1);
    EXPECT_EQ(SWnd::FromHandlePermanent(window), nullptr);
    EXPECT_TRUE(DestroyWindow(window)) << "it was nobody's yet";
}

// The last messages that the procedure of a class got.
std::vector<UINT> g_lastMessages;

LRESULT CALLBACK NoteEnd(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY || message == WM_NCDESTROY) g_lastMessages.push_back(message);
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST(Endings, AWindowsOwnProcedureIsToldOfItsEnd) {
    WNDCLASSEXA info{};
    info.cbSize = sizeof info;
    info.lpfnWndProc = &NoteEnd;
    info.hInstance = SGetModuleState()->GetInstance();
    info.lpszClassName = "TestNoteEnd";
    ASSERT_NE(RegisterClassExA(&info), 0);
    const std::vector<UINT> both{WM_DESTROY, WM_NCDESTROY};
    for (const bool byWrapper : {false, true}) {
        SCOPED_TRACE(byWrapper);
        g_lastMessages.clear();
        auto wrapper = std::make_unique<SWnd>();
        ASSERT_EQ(wrapper->CreateEx(0, "TestNoteEnd", "", WS_POPUP, 0, 0, 9, 9), 1);
        if (byWrapper)
            wrapper.reset();
        else
            wrapper->DestroyWindow();
        EXPECT_EQ(g_lastMessages, both);
    }
    EXPECT_TRUE(UnregisterClassA("TestNoteEnd", info.hInstance));
}

HWND MakePopup(SWnd& wrapper) {
    EXPECT_EQ(wrapper.CreateEx(0, "S_Window", "", WS_POPUP, 0, 0, 9, 9), 1);
    return wrapper.GetHandle();
}

TEST(Endings, AWrapperThatGoesToAnotherWindowLetsGoOfTheFirst) {
    auto wrapper = std::make_unique<SWnd>();
    const HWND first = MakePopup(*wrapper);
    SWnd other;
    const HWND second = MakePopup(other);
    EXPECT_EQ(wrapper->Attach(second), 1);
    EXPECT_EQ(SWnd::FromHandlePermanent(first), nullptr);
    EXPECT_EQ(SWnd::FromHandlePermanent(second), wrapper.get());
    wrapper.reset();
    // It made neither of them its own by that, nor does anything lead to it now.
    EXPECT_TRUE(IsWindow(first));
    EXPECT_TRUE(IsWindow(second));
    EXPECT_EQ(SWnd::FromHandlePermanent(second), nullptr);
    SendMessageA(first, WM_APP, 0, 0);
    EXPECT_TRUE(DestroyWindow(first));
    EXPECT_TRUE(DestroyWindow(second));
}

TEST(Endings, AWindowThatWasDetachedIsNobodysToDestroy) {
    HWND handle = nullptr, foreign = nullptr;
    SWnd owner;
    foreign = MakePopup(owner);
    {
        SWnd wrapper;
        handle = MakePopup(wrapper);
        EXPECT_EQ(wrapper.Detach(), handle);
        owner.Detach();
        EXPECT_EQ(wrapper.Attach(foreign), 1);
    }
    EXPECT_TRUE(DestroyWindow(handle));
    EXPECT_TRUE(DestroyWindow(foreign));
}

TEST(Endings, AWindowThatCannotBeAttachedIsNotMade) {
    const int before = SWnd::GetHandleMap().GetPermanentCount();
    SWnd window;
    // No block for an entry of the handle map.
    std::vector<void*> blocks;
    while (SHandleMapAllocator::m_Nodes.GetStats().free > 0)
        blocks.push_back(SHandleMapAllocator::m_Nodes.Alloc());
    {
        const FailNthAllocation fail(1, true);
        EXPECT_EQ(window.CreateEx(0, "S_Window", "", WS_POPUP, 0, 0, 9, 9), 0);
        EXPECT_TRUE(fail.Triggered());
    }
    for (void* const block : blocks)
        SHandleMapAllocator::m_Nodes.Free(block);
    EXPECT_EQ(window.GetHandle(), nullptr);
    EXPECT_EQ(SWnd::GetHandleMap().GetPermanentCount(), before);
    MakePopup(window);
}

// A bar that closes its frame when it is given its place.
class STestCloser : public SWnd {
    SDECLARE_MESSAGE_MAP(STestCloser);

public:
    bool closes = false;
    int placed = 0;

private:
    LRESULT OnLayout(WPARAM, LPARAM) {
        ++placed;
        if (closes) ::DestroyWindow(::GetParent(GetHandle()));
        return 1;
    }
};
SIMPLEMENT_MESSAGE_MAP(STestCloser, SWnd, SOnMessage<&STestCloser::OnLayout>(kLayoutBarsMessage));

TEST(Endings, AFrameThatEndedInItsLayoutIsLaidOutWhenItIsMadeAgain) {
    SFrameWnd frame;
    STestCloser bar;
    const auto make = [&] {
        ASSERT_EQ(frame.CreateFrame("Frame"), 1);
        ASSERT_EQ(bar.Create("S_CtrlWnd", nullptr, WS_VISIBLE, RECT{}, &frame, 7), 1);
    };
    make();
    bar.closes = true;
    frame.RecalcLayout();
    EXPECT_EQ(frame.GetHandle(), nullptr);
    bar.closes = false;
    make();
    const int before = bar.placed;
    frame.RecalcLayout();
    EXPECT_GT(bar.placed, before);
}

}  // namespace
