#include <brcore8/views/wnd_spy.h>

#include <algorithm>
#include <cstdio>
#include <string>

SIMPLEMENT_CREATABLE(SWndSpy, SObject, 2);

namespace {

SWndSpy::Entry EntryOf(HWND window, int depth) {
    SWndSpy::Entry entry{window, depth, {}, {}, {}, {}, 0};
    char name[256] = {};
    ::GetClassNameA(window, name, sizeof name);
    entry.className = name;
    char text[256] = {};
    ::GetWindowTextA(window, text, sizeof text);
    entry.text = text;
    if (const SWnd* const wrapper = SWnd::FromHandlePermanent(window))
        entry.wrapper = wrapper->GetClassInfo()->className;
    ::GetWindowRect(window, &entry.place);
    entry.style = static_cast<DWORD>(::GetWindowLongA(window, GWL_STYLE));
    return entry;
}

}  // namespace

// A stack of its own, the next window on top: windows nest as deep as a program likes.
std::vector<SWndSpy::Entry> SWndSpy::Look(HWND window) const {
    std::vector<Entry> entries;
    std::vector<std::pair<HWND, int>> waiting;
    if (::IsWindow(window)) waiting.emplace_back(window, 0);
    while (!waiting.empty()) {
        const auto [at, depth] = waiting.back();
        waiting.pop_back();
        if (!::IsWindow(at)) continue;
        entries.push_back(EntryOf(at, depth));
        const auto children = static_cast<std::ptrdiff_t>(waiting.size());
        for (HWND child = ::GetTopWindow(at); child != nullptr;
             child = ::GetWindow(child, GW_HWNDNEXT))
            waiting.emplace_back(child, depth + 1);
        std::reverse(waiting.begin() + children, waiting.end());
    }
    return entries;
}

SString SWndSpy::Describe(HWND window) const {
    std::string lines;
    for (const Entry& entry : Look(window)) {
        char place[80];
        std::snprintf(place, sizeof place, " (%d, %d, %d, %d) %08X\n",
                      static_cast<int>(entry.place.left), static_cast<int>(entry.place.top),
                      static_cast<int>(entry.place.right), static_cast<int>(entry.place.bottom),
                      static_cast<unsigned>(entry.style));
        lines.append(static_cast<std::size_t>(entry.depth) * 2, ' ');
        lines += entry.className.View();
        if (entry.wrapper.LengthByte() != 0) lines.append(" ").append(entry.wrapper.View());
        lines.append(" \"").append(entry.text.View()).append("\"").append(place);
    }
    return SString(lines);
}
