// A viewer of text in any format, RTF and ZIP archives.
//
//     viewer [FILE]          shows it
//     viewer -p FILE         prints its text to the standard output
//     viewer /embedding      runs without showing its window until it is closed
//     viewer /unregister     forgets what it kept in the settings
#include <brcore8/app/win_app.h>
#include <brcore8/core/exception.h>
#include <brcore8/core/module.h>
#include <brcore8/settings/registry.h>

#include <filesystem>
#include <iostream>
#include <string>

#include "viewer_frame.h"

namespace {

// Paths may have blanks, and where "/" begins a path it begins no switch.
bool IsFile(const std::string& argument) {
    std::error_code fault;
    return argument[0] != '-' && (argument[0] != '/' || std::filesystem::exists(argument, fault));
}

int Print(const SString& path) {
    try {
        const viewer::Document document =
            viewer::ReadDocument(path, [](std::uint64_t, std::uint64_t) { return true; });
        std::cout << document.text.View() << std::flush;
        return std::cout.good() ? 0 : 1;
    } catch (const SException& fault) {
        std::cerr << path << ": " << fault.GetText() << '\n';
        return 1;
    }
}

int Forget() {
    const SRegistry settings(SRegistry::CurrentUser(), SRegistry::ApplicationRoot(), 1);
    return settings.DeleteTree("Viewer") == 0 ? 0 : 1;
}

int Show(SWinApp& app, const SString& path) {
    viewer::SViewerFrame frame;
    if (!frame.Make()) return 1;
    app.SetMainWnd(&frame);
    if (!app.GetCommmandLine().IsEmbedding() && !app.GetCommmandLine().IsAutomation())
        frame.ShowWindow(frame.GetSettings().maximizeApp ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
    if (!path.IsEmpty()) frame.OpenFile(path);
    return app.Run();
}

}  // namespace

int main(int count, char** arguments) {
    std::string switches, file;
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (argument.empty()) continue;
        if (!IsFile(argument)) {
            switches += argument + ' ';
        } else if (file.empty()) {
            file = argument;
        }
    }
    SWinApp app("Viewer");
    app.Init(SGetCoreInstance(), nullptr, switches.data(), SW_SHOWNORMAL);
    switch (app.GetCommmandLine().GetShellCommand()) {
        case SCommandLine::Print:
        case SCommandLine::PrintTo:
            return Print(SString(file));
        case SCommandLine::Unregister:
            return Forget();
        default:
            return Show(app, SString(file));
    }
}
