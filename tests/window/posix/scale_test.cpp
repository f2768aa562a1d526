// Screens with more pixels an inch: fonts, measures and layout grow together.

#include <brcore8/app/frame_wnd.h>
#include <brcore8/bars/progress_status_bar.h>
#include <brcore8/bars/tool_bar.h>
#include <brcore8/dialogs/dlg.h>
#include <brcore8/graphics/window_dc.h>
#include <brcore8/platform/posix/desktop_testing.h>
#include <brcore8/window/scaled.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

class Scale : public testing::Test {
protected:
    ~Scale() override { SSetDesktopDpi(96); }
};

struct Measure {
    std::string name;
    int pixels;
    int slack;  // of the doubled value: fonts round to whole pixels
};

class Measures {
public:
    void Exact(const char* name, int pixels) { list.push_back({name, pixels, 0}); }
    void Near(const char* name, int pixels) { list.push_back({name, pixels, 2 + pixels / 10}); }
    // What is made of a small font's height, which is a whole number already.
    void Roughly(const char* name, int pixels) { list.push_back({name, pixels, 2 + pixels / 3}); }
    std::vector<Measure> list;
};

void MeasureSystem(Measures& to) {
    const struct {
        const char* name;
        int index;
    } rows[] = {
        {"caption", SM_CYCAPTION},
        {"frame", SM_CXFRAME},
        {"menu bar", SM_CYMENU},
        {"scroll bar", SM_CXVSCROLL},
        {"lower scroll bar", SM_CYHSCROLL},
        {"icon", SM_CXICON},
        {"small icon", SM_CYSMICON},
        {"least width", SM_CXMIN},
    };
    for (const auto& row : rows)
        to.Exact(row.name, GetSystemMetrics(row.index));
    to.Exact("resolution across", SScreenDC().GetDeviceCaps(LOGPIXELSX));
    to.Exact("resolution down", SScreenDC().GetDeviceCaps(LOGPIXELSY));
    to.Exact("layout", SScaled(7, nullptr));
}

void MeasureFonts(Measures& to) {
    for (const int font : {DEFAULT_GUI_FONT, SYSTEM_FONT}) {
        SScreenDC dc;
        const SSelected selected(dc, ::GetStockObject(font));
        LOGFONTA info{};
        ::GetObjectA(::GetStockObject(font), sizeof info, &info);
        to.Exact("characters", -info.lfHeight);
        to.Near("line", dc.GetTextExtent("Mg").cy);
        to.Near("text", dc.GetTextExtent("The quick brown fox").cx);
    }
}

HWND MakeDialog(HWND owner) {
    static const WORD words[] = {
        // A caption's and a font's style, one control, a place and a title.
        0x0040, 0x80C0, 0, 0, 1, 10, 10, 150, 80, 0, 0, 'D', 0,
        // Eight points.
        8, 'D', 'e', 'j', 'a', 'V', 'u', ' ', 'S', 'a', 'n', 's', 0,
        // A button at 20, 30, of 50 by 14, whose number is 7.
        0, 0x5000, 0, 0, 20, 30, 50, 14, 7, 0xFFFF, 0x0080, 'O', 0, 0};
    alignas(4) static WORD aligned[std::size(words)];
    std::copy(std::begin(words), std::end(words), aligned);
    return CreateDialogIndirectParamA(
        nullptr, reinterpret_cast<const DLGTEMPLATE*>(aligned), owner,
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return 0; }, 0);
}

void MeasureDialog(Measures& to, HWND owner) {
    const HWND dialog = MakeDialog(owner);
    ASSERT_NE(dialog, nullptr);
    RECT client{}, button{};
    ::GetClientRect(dialog, &client);
    ::GetWindowRect(::GetDlgItem(dialog, 7), &button);
    ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&button), 2);
    to.Roughly("dialog's width", client.right);
    to.Roughly("dialog's height", client.bottom);
    to.Roughly("button's left", button.left);
    to.Roughly("button's top", button.top);
    to.Roughly("button's width", button.right - button.left);
    to.Roughly("button's height", button.bottom - button.top);
    ::DestroyWindow(dialog);
}

void MeasureFrame(Measures& to) {
    SFrameWnd frame;
    ASSERT_EQ(frame.CreateFrame("Scale"), 1);
    const HMENU popup = ::CreatePopupMenu(), bar = ::CreateMenu();
    ::AppendMenuA(popup, MF_STRING, 1, "Open");
    ::AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), "Document");
    const int without = frame.GetClientRect().bottom;
    ::SetMenu(frame.GetHandle(), bar);
    to.Exact("bar of the menu", without - frame.GetClientRect().bottom);
    RECT item{};
    ::GetMenuItemRect(frame.GetHandle(), bar, 0, &item);
    to.Near("item of the bar", item.right - item.left);

    SProgressStatusBar status;
    ASSERT_EQ(status.Create(&frame, WS_CHILD | WS_VISIBLE, 0, SStatusBar::DefaultId), 1);
    to.Near("status bar", status.GetWindowRect().bottom - status.GetWindowRect().top);
    status.StartProgress(1);
    const RECT cancel = SWnd::FromHandle(::GetDlgItem(status.GetHandle(), 0xE811))->GetWindowRect();
    to.Near("button in the status bar", cancel.right - cancel.left);
    SClientDC dc(&status);
    const SSelected font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    EXPECT_GE(cancel.right - cancel.left, dc.GetTextExtent("Cancel").cx);

    SToolBar tools;
    tools.AddButton(1, "Open");
    tools.AddSeparator();
    ASSERT_EQ(tools.Create(&frame, SCtrlBar::Top, SScaled(28, frame.GetHandle()), 90), 1);
    frame.RecalcLayout();
    to.Exact("tool bar", tools.GetClientRect().bottom);
    const RECT open = tools.GetButtonRect(0), line = tools.GetButtonRect(1);
    to.Near("tool", open.right - open.left);
    to.Exact("line between tools", line.right - line.left);
    EXPECT_GT(open.right - open.left, dc.GetTextExtent("Open").cx);
    MeasureDialog(to, frame.GetHandle());
}

std::vector<Measure> MeasureAll(unsigned dpi) {
    SSetDesktopDpi(dpi);
    Measures measures;
    MeasureSystem(measures);
    MeasureFonts(measures);
    MeasureFrame(measures);
    return measures.list;
}

TEST_F(Scale, EverythingGrowsWithTheScreensResolution) {
    const std::vector<Measure> usual = MeasureAll(96);
    const std::vector<Measure> fine = MeasureAll(192);
    ASSERT_EQ(usual.size(), fine.size());
    for (std::size_t i = 0; i < usual.size(); ++i)
        EXPECT_NEAR(fine[i].pixels, 2 * usual[i].pixels, usual[i].slack) << usual[i].name;
    // And back: fonts of an earlier scale are not handed out again.
    const std::vector<Measure> again = MeasureAll(96);
    for (std::size_t i = 0; i < usual.size(); ++i)
        EXPECT_EQ(again[i].pixels, usual[i].pixels) << usual[i].name;
}

TEST_F(Scale, LinesStayThinAndTheScreenKeepsItsSize) {
    const int width = GetSystemMetrics(SM_CXSCREEN);
    SSetDesktopDpi(192);
    EXPECT_EQ(GetSystemMetrics(SM_CXBORDER), 1);
    EXPECT_EQ(GetSystemMetrics(SM_CYEDGE), 2);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), width);
}

TEST_F(Scale, NoResolutionIsOutOfBounds) {
    const struct {
        unsigned wanted, got;
    } rows[] = {{0, 96}, {1, 96}, {95, 96}, {120, 120}, {768, 768}, {10000, 768}, {~0u, 768}};
    for (const auto& row : rows) {
        SSetDesktopDpi(row.wanted);
        EXPECT_EQ(GetDpiForSystem(), row.got) << row.wanted;
        EXPECT_EQ(GetDpiForWindow(GetDesktopWindow()), row.got) << row.wanted;
        // Even the largest makes windows that can be used.
        SFrameWnd frame;
        EXPECT_EQ(frame.CreateFrame("Scale"), 1);
        frame.ShowWindow(SW_SHOWNORMAL);
        EXPECT_TRUE(frame.UpdateWindow());
    }
    EXPECT_EQ(GetDpiForWindow(nullptr), 0u);
}

}  // namespace
