// modules: what a Windows program needs, and what of it is there.

#include "command.h"
#include "output.h"

#include <brcore8/core/module_dependency.h>
#include <brcore8/strings/string_table.h>

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

namespace tool {
namespace {

struct ModulesOptions {
    std::string program;
    std::vector<std::string> folders;
    bool delayed = false;
};

// The list has what was found last at its front; people read from the program on.
template <typename Range>
std::vector<const SModuleFileInfo*> FirstToLast(const Range& range) {
    std::vector<const SModuleFileInfo*> modules;
    for (const SModuleFileInfo& module : range)
        modules.push_back(&module);
    return {modules.rbegin(), modules.rend()};
}

int Modules(const ModulesOptions& options) {
    SStringTable folders;
    for (const std::string& folder : options.folders)
        folders.Add(SString(folder));
    using List = SModuleDependencyList;
    const List list(options.program.c_str(), folders,
                    options.delayed ? List::DelayedImports : List::Imports);
    if (list.GetStatus() != List::Done) throw Failure{options.program, list.GetErrorString()};

    Output output;
    for (const SModuleFileInfo* module : FirstToLast(list)) {
        output.Write(Row({"found", module->GetFileName(), module->GetFullPath()}));
        for (const SModuleFileInfo* missing : FirstToLast(*module))
            output.Write(Row({"missing", missing->GetFileName(), module->GetFileName()}));
    }
    output.Finish();
    return Done;
}

}  // namespace

Action PrepareModules(CLI::App& parser, const Settings&) {
    auto options = std::make_shared<ModulesOptions>();
    parser.add_option("--path", options->folders, "Look for modules in this folder too")
        ->type_name("DIR")
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    parser.add_flag("--delayed", options->delayed, "Also what is loaded on first use");
    parser.add_option("PROGRAM", options->program, "A program or library of Windows")->required();
    parser.footer(
        "Rows of found, name and path, or of missing, name and importer, with tabs\n"
        "between, in the order in which they are imported. Modules are looked for in\n"
        "the program's own folder, then in every DIR, then where Windows looks;\n"
        "elsewhere than on Windows that is PATH, and names match in any case.");
    return [options] { return Modules(*options); };
}

}  // namespace tool
