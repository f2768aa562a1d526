// A program of Windows, as it stands. Whatever it holds, the list of what it needs ends, its texts
// are whole, and the program is found in it again.
#include <brcore8/core/module_dependency.h>
#include <brcore8/strings/string_table.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "fuzz.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

// A file of this process's own, anew for every input: some systems flush a file that is emptied
// and written again.
class InputFile {
public:
    InputFile()
        : path_((std::filesystem::temp_directory_path() /
                 ("brcore8-fuzz-" + std::to_string(std::random_device()()) + ".exe"))
                    .string()) {}
    ~InputFile() { std::filesystem::remove(path_); }
    const std::string& With(const std::uint8_t* data, std::size_t size) {
        std::filesystem::remove(path_);
        std::ofstream(path_, std::ios::binary)
            .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        return path_;
    }

private:
    std::string path_;
};

void CheckTexts(const SModuleFileInfo& module) {
    constexpr std::size_t room = SModuleFileInfo::PathSize;
    Require(std::memchr(module.GetFileName(), 0, room) != nullptr);
    Require(std::memchr(module.GetFullPath(), 0, room) != nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static InputFile file;
    const std::string& path = file.With(data, size);
    using List = SModuleDependencyList;
    const List list(path.c_str(), SStringTable(), List::DelayedImports | List::FoldersOnly);
    Require(list.GetStatus() != List::GeneralFailure);
    Require(list.GetCount() == (list.GetStatus() == List::Done));
    for (const SModuleFileInfo& module : list) {
        CheckTexts(module);
        Require(list.LookupModule(module.GetFileName(), 0) == &module);
        Require(list.LookupModule(path.c_str(), 1) == &module);
        for (const SModuleFileInfo& missing : module)
            CheckTexts(missing);
    }
    return 0;
}
