// Controls that end while they take the focus: whoever loses it may do anything.

#include <brcore8/controls/drawn_ctrls.h>
#include <brcore8/controls/list_ctrls.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

namespace {

constexpr RECT kPlace{0, 0, 100, 60};

class STestFocusHolder : public SWnd {
    SDECLARE_MESSAGE_MAP(STestFocusHolder);

public:
    std::function<void()> leave;

private:
    void OnKillFocus(SWnd*) {
        if (const auto once = std::exchange(leave, nullptr)) once();
    }
};
SIMPLEMENT_MESSAGE_MAP(STestFocusHolder, SWnd, SOnKillFocus<&STestFocusHolder::OnKillFocus>());

// Counts what its controls tell.
class STestListener : public SWnd {
public:
    int told = 0;

protected:
    int OnCommand(WPARAM, LPARAM) override {
        ++told;
        return 1;
    }
};

std::unique_ptr<SWnd> MakeButton(SWnd* parent) {
    auto button = std::make_unique<SButtonExCtrl>();
    return button->Create("Go", WS_VISIBLE, kPlace, parent, 1) ? std::move(button) : nullptr;
}

std::unique_ptr<SWnd> MakeColor(SWnd* parent) {
    auto color = std::make_unique<SColorWellCtrl>();
    return color->Create(WS_VISIBLE, kPlace, parent, 1) ? std::move(color) : nullptr;
}

std::unique_ptr<SWnd> MakeTabs(SWnd* parent) {
    auto tabs = std::make_unique<STabBeam>();
    if (!tabs->Create(WS_VISIBLE, kPlace, parent, 1)) return nullptr;
    tabs->AddTab("one");
    tabs->AddTab("two");
    tabs->SetCurTab(1);
    return tabs;
}

std::unique_ptr<SWnd> MakeList(SWnd* parent) {
    auto list = std::make_unique<SCheckListBoxCtrl>();
    if (!list->Create(WS_VISIBLE, kPlace, parent, 1)) return nullptr;
    list->AddString("one");
    return list;
}

TEST(ControlsThatEnd, WhileTheyTakeTheFocus) {
    const struct {
        const char* name;
        std::unique_ptr<SWnd> (*make)(SWnd* parent);
    } kinds[] = {
        {"button", &MakeButton}, {"color", &MakeColor}, {"tabs", &MakeTabs}, {"list", &MakeList}};
    for (const auto& kind : kinds) {
        SCOPED_TRACE(kind.name);
        STestListener parent;
        ASSERT_EQ(parent.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200),
                  1);
        STestFocusHolder holder;
        ASSERT_EQ(holder.Create("S_CtrlWnd", "", WS_VISIBLE, {0, 100, 50, 150}, &parent, 2), 1);
        const auto click = [](HWND window) {
            SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
            SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
        };
        std::unique_ptr<SWnd> control = kind.make(&parent);
        ASSERT_NE(control, nullptr);
        click(control->GetHandle());
        EXPECT_EQ(parent.told, 1);

        holder.SetFocus();
        ASSERT_EQ(GetFocus(), holder.GetHandle());
        holder.leave = [&] { control.reset(); };
        click(control->GetHandle());
        EXPECT_EQ(control, nullptr);
        EXPECT_EQ(parent.told, 1);
        EXPECT_EQ(GetCapture(), nullptr);
    }
}

}  // namespace
