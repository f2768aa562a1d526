// What is kept of the main window, and what becomes of damaged values and places off the screen.

#include <brcore8/app/frame_wnd.h>
#include <brcore8/app/main_wnd_settings.h>

#include "support/settings_home.h"

namespace {

class MainWndSettings : public SettingsTest {
protected:
    void Write(const char* name, const char* text) {
        SRegistry(SRegistry::CurrentUser(), Path("Main"), 1).WriteProfile(name, SString(text));
    }
    SString Text(const char* name) {
        SString text;
        SRegistry(SRegistry::CurrentUser(), Path("Main"), 0).GetProfile(name, &text, "none");
        return text;
    }
    SMainWndSettings settings{Path("Main")};
};

TEST_F(MainWndSettings, ComeBackAsTheyWereSaved) {
    EXPECT_EQ(settings.Load(), 0) << "no key yet";
    EXPECT_EQ(settings.toolTips, 0) << "and nothing changes";
    settings.left = static_cast<std::uint32_t>(-8);
    settings.top = 20;
    settings.width = 640;
    settings.height = 480;
    settings.toolTips = 5;
    ASSERT_EQ(settings.Save(), 1);
    EXPECT_EQ(Text("AppWindow"), "-8,20");
    EXPECT_EQ(Text("AppWindowSize"), "640,480");

    SMainWndSettings loaded(Path("Main"));
    EXPECT_EQ(loaded.Load(), 1);
    EXPECT_EQ(loaded.left, static_cast<std::uint32_t>(-8));
    EXPECT_EQ(loaded.height, 480u);
    EXPECT_EQ(loaded.toolTips, 1);
    EXPECT_EQ(loaded.maximizeApp, 0);

    // The place from before is kept while the window is maximised.
    loaded.maximizeApp = 1;
    loaded.left = 99;
    ASSERT_EQ(loaded.Save(), 1);
    EXPECT_EQ(Text("AppWindow"), "-8,20");
}

TEST_F(MainWndSettings, MissingFlagsAreSet) {
    Write("AppWindow", "1,2");
    EXPECT_EQ(settings.Load(), 0) << "no tool tips";
    EXPECT_EQ(settings.left, 1u);
    EXPECT_EQ(
        settings.maximizeApp + settings.maximizeDoc + settings.flatToolBars + settings.toolTips, 4);
}

TEST_F(MainWndSettings, DamagedPlacesAreLeftOrSaturate) {
    struct Row {
        const char* text;
        std::uint32_t left, top;
    };
    constexpr Row rows[] = {{"", 7, 7},
                            {"1", 7, 7},
                            {",", 0, 0},
                            {"x,y", 0, 0},
                            {"3,4,5", 3, 4},
                            {"99999999999999999999,1", UINT32_MAX, 1},
                            {"-99999999999999999999,1", 0x80000000u, 1}};
    for (const Row& row : rows) {
        settings.left = settings.top = 7;
        Write("AppWindow", row.text);
        settings.Load();
        EXPECT_EQ(settings.left, row.left) << row.text;
        EXPECT_EQ(settings.top, row.top) << row.text;
    }
    settings.left = 7;
    SRegistry(SRegistry::CurrentUser(), Path("Main"), 1).WriteProfile("AppWindow", 5L, 1);
    settings.Load();
    EXPECT_EQ(settings.left, 7u) << "of another type";
}

TEST_F(MainWndSettings, AWindowComesBackWhereItCanBeSeen) {
    SFrameWnd frame;
    ASSERT_EQ(frame.CreateFrame("Placed"), 1);
    const RECT before = frame.GetWindowRect();
    settings.Apply(frame);
    EXPECT_EQ(frame.GetWindowRect().right, before.right) << "no size, no move";
    struct Row {
        std::uint32_t left, top, width, height;
    };
    constexpr Row rows[] = {{100000, 100000, 300, 200},
                            {0x80000000u, 0xFFFFF000u, 300, 200},
                            {0, 0, UINT32_MAX, UINT32_MAX}};
    const int wide = ::GetSystemMetrics(SM_CXSCREEN), high = ::GetSystemMetrics(SM_CYSCREEN);
    for (const Row& row : rows) {
        settings.left = row.left;
        settings.top = row.top;
        settings.width = row.width;
        settings.height = row.height;
        settings.Apply(frame);
        const RECT place = frame.GetWindowRect();
        EXPECT_GE(place.left, 0);
        EXPECT_GE(place.top, 0);
        EXPECT_LE(place.right, wide);
        EXPECT_LE(place.bottom, high);
        EXPECT_GT(place.right - place.left, 100);
        EXPECT_EQ(settings.left, row.left) << "what was read stays";
    }
}

}  // namespace
