// What a Windows program needs beside the modules that are shipped in its folder.
#include <brcore8/brcore8.h>

#include <iostream>

int main(int argc, char** argv) {
    using List = SModuleDependencyList;
    const List modules(argc > 1 ? argv[1] : "", SStringTable(), List::FoldersOnly);
    if (modules.GetStatus() != List::Done) {
        std::cerr << modules.GetErrorString() << '\n';
        return 1;
    }
    for (const SModuleFileInfo& module : modules)
        for (const SModuleFileInfo& missing : module)
            std::cout << module.GetFileName() << " needs " << missing.GetFileName() << '\n';
}
