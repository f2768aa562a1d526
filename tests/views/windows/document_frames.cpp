// The platform's window of documents, in a frame with bars and keys.

#include <brcore8/bars/ctrl_bar.h>
#include <brcore8/views/frames.h>

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

class DocumentFrames : public testing::Test {
protected:
    DocumentFrames() {
        EXPECT_EQ(frame.CreateFrame("Documents"), 1);
        frame.SetWindowPos(nullptr, 0, 0, 500, 400, SWP_NOZORDER | SWP_NOACTIVATE);
        EXPECT_EQ(frame.CreateClient(), 1);
        for (SMDIChildWnd* const each : {&first, &second, &third})
            EXPECT_EQ(each->CreateDocument("Document", &frame), 1);
    }
    ~DocumentFrames() override {
        Hold({});
        frame.DestroyWindow();
    }
    static void Hold(std::initializer_list<int> keys) {
        BYTE state[256] = {};
        for (const int key : keys)
            state[key] = 0x80;
        ::SetKeyboardState(state);
    }
    int Press(int key) {
        MSG message{};
        message.hwnd = frame.GetHandle();
        message.message = WM_KEYDOWN;
        message.wParam = static_cast<WPARAM>(key);
        return frame.PreTranslateMessage(&message);
    }
    RECT ClientPlace() const {
        RECT place{};
        ::GetWindowRect(frame.GetClient(), &place);
        ::MapWindowPoints(nullptr, frame.GetHandle(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }

    SMDIFrameWnd frame;
    SMDIChildWnd first, second, third;
};

TEST_F(DocumentFrames, TheDocumentsHaveTheRoomThatBarsLeave) {
    SCtrlBar top, left;
    ASSERT_EQ(top.Create(&frame, SCtrlBar::Top, 30, 1), 1);
    ASSERT_EQ(left.Create(&frame, SCtrlBar::Left, 20, 2), 1);
    frame.RecalcLayout();
    for (const int width : {500, 350}) {
        frame.SetWindowPos(nullptr, 0, 0, width, 300, SWP_NOZORDER | SWP_NOACTIVATE);
        const RECT place = ClientPlace();
        EXPECT_EQ(place.left, 20);
        EXPECT_EQ(place.top, 30);
        EXPECT_EQ(place.right, frame.GetClientRect().right);
        EXPECT_EQ(place.bottom, frame.GetClientRect().bottom);
    }
}

TEST_F(DocumentFrames, KeysGoFromDocumentToDocumentAndCloseThem) {
    first.Activate();
    Hold({});
    EXPECT_EQ(Press(VK_F6), 0);
    Hold({VK_CONTROL, VK_MENU});
    EXPECT_EQ(Press(VK_F4), 0);
    Hold({VK_CONTROL});
    EXPECT_EQ(Press('F'), 0);
    EXPECT_EQ(frame.GetActiveChild(), &first);
    EXPECT_EQ(Press(VK_F6), 1);
    EXPECT_NE(frame.GetActiveChild(), &first);
    Hold({VK_CONTROL, VK_SHIFT});
    EXPECT_EQ(Press(VK_TAB), 1);
    EXPECT_EQ(frame.GetActiveChild(), &first);
    Hold({VK_CONTROL});
    EXPECT_EQ(Press(VK_F4), 1);
    EXPECT_EQ(first.GetHandle(), nullptr);
    EXPECT_NE(frame.GetActiveChild(), nullptr);
}

}  // namespace
