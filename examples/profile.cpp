// A program that keeps the place of its window in an INI file, beside whatever else stands there.
#include <brcore8/settings/profile.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

int main() {
    const std::string path =
        (std::filesystem::temp_directory_path() / "brcore8-editor.ini").string();
    std::ofstream(path) << "; written by hand\n[Window]\nTitle = \"Drawing\"\n";

    SProfile window(SString(std::string_view(path)), "Window", 0);
    window.WriteProfile("Width", 640L);
    window.WriteProfile("Maximised", 1);

    SString title;
    long width = 0;
    int maximised = 0;
    window.GetProfile("TITLE", &title, "");
    window.GetProfile("width", &width, 320L);
    window.GetProfile("maximised", &maximised, 0);
    std::printf("%s, %ld wide%s\n", static_cast<const char*>(title), width,
                maximised ? ", maximised" : "");
    std::filesystem::remove(path);
}
