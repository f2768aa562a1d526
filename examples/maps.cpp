// Settings in the order in which they were written, looked up in any case.
#include <brcore8/strings/string_map.h>
#include <iostream>

int main() {
    SStringUnsortedMapNoCase settings;
    settings.AddFromList("Name=Tower;12;Note=a\\;b", ";", '=', '\\', "arg%d", 1);
    settings.Add("NAME", "Bridge");  // replaces, and keeps its place
    for (const auto& [key, value] : settings)
        std::cout << key << ": " << value << ", ";
    std::cout << settings.GetAsList('=', ' ', '\\') << '\n';
}
