// SMainWndSettings: where the application's main window stood, and four of its habits, kept in the
// settings store from one run to the next.
//
//     SMainWndSettings settings(SRegistry::ApplicationRoot() + "Main Window");
//     settings.Load();
//     settings.Apply(frame);                       // in a place that the user can see
//     frame.ShowWindow(settings.maximizeApp ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
//     ...
//     settings.Capture(frame);                     // when it closes
//     settings.Save();
//
// The values: the texts "AppWindow" and "AppWindowSize", two decimal numbers with a comma between
// them, and the 32-bit "MaximizeApp", "MaximizeDoc", "FlatToolBars" and "ToolTips".
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_APP_MAIN_WND_SETTINGS_H
#define BRCORE8_APP_MAIN_WND_SETTINGS_H

#include <brcore8/settings/registry.h>
#include <brcore8/window/wnd.h>

#include <cstdint>

struct BRCORE8_API SMainWndSettings {
    // Pixels of the screen; those of the window while it is neither maximised nor minimised.
    std::uint32_t left = 0;
    std::uint32_t top = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int maximizeApp = 0;
    int maximizeDoc = 0;
    int flatToolBars = 0;
    int toolTips = 0;
    SString keyPath;
    HKEY root;

    // The user's tree unless another root is given, which stays the caller's.
    explicit SMainWndSettings(const SString& path, HKEY rootKey = SRegistry::CurrentUser())
        : keyPath(path), root(rootKey) {}

    // Nothing changes when the key cannot be opened for everything. A missing or misshapen place or
    // size leaves the fields as they are; numbers beyond 32 bits are the largest. A missing flag is
    // 1, another 0 or 1. The result is 1 only when "ToolTips" was there, else 0.
    int Load();
    // Makes the key where it is missing; place and size are left alone while `maximizeApp` is set.
    // 1, or 0 at the first value that could not be written.
    int Save() const;

    // Moves the window to the place, or as near to it as leaves all of it on one screen; the fields
    // stay. A window without a size of its own, a new program's, stays where the platform put it.
    void Apply(SWnd& window) const;
    // Takes place, size and whether it is maximised from the window.
    void Capture(const SWnd& window);
};

#endif
