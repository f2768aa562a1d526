// classes: the class tree, as the registry has it.

#include "command.h"
#include "output.h"

#include <brcore8/core/object.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

namespace tool {
namespace {

using Children = std::map<const SClassInfo*, std::vector<const SClassInfo*>>;

bool LaterName(const SClassInfo* left, const SClassInfo* right) {
    return std::string_view(left->className) > std::string_view(right->className);
}

std::string Row(const SClassInfo& info, int depth) {
    const std::string name = std::string(static_cast<std::size_t>(depth) * 2, ' ') +
                             info.className + (info.factory ? "*" : "");
    char row[160];
    std::snprintf(row, sizeof row, "%-40s schema %u  %5u bytes\n", name.c_str(),
                  static_cast<unsigned>(info.schema), static_cast<unsigned>(info.objectSize));
    return row;
}

int Classes() {
    Children children;
    for (const SClassInfo* info = g_pClassInfo; info; info = info->next)
        children[info->base].push_back(info);
    for (auto& [base, derived] : children)
        std::sort(derived.begin(), derived.end(), LaterName);

    Output output;
    struct Open {
        const SClassInfo* info;
        int depth;
    };
    std::vector<Open> open;
    for (const SClassInfo* root : children[nullptr])
        open.push_back({root, 0});
    while (!open.empty()) {
        const Open next = open.back();
        open.pop_back();
        output.Write(Row(*next.info, next.depth));
        for (const SClassInfo* derived : children[next.info])
            open.push_back({derived, next.depth + 1});
    }
    output.Finish();
    return Done;
}

}  // namespace

Action PrepareClasses(CLI::App& parser, const Settings&) {
    parser.footer("A star marks the classes that can be created by name.");
    return [] { return Classes(); };
}

}  // namespace tool
