// INI files of three sizes, each of their keys read once.
#include <brcore8/brcore8.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

// Twenty keys a section; quiet for long enough that its time stamp is an old one.
class IniFile {
public:
    explicit IniFile(std::int64_t keys)
        : path_((std::filesystem::temp_directory_path() / "brcore8-bench.ini").string()) {
        std::ofstream file(path_);
        for (std::int64_t i = 0; i < keys; ++i) {
            if (i % 20 == 0) file << "[section" << i / 20 << "]\n";
            file << "key" << i << " = value " << i << "\n";
            names_.emplace_back("key" + std::to_string(i));
        }
        file.close();
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
    ~IniFile() { std::filesystem::remove(path_); }

    SString Path() const { return SString(std::string_view(path_)); }
    SString Section(std::size_t key) const {
        return SString(std::string_view("section" + std::to_string(key / 20)));
    }
    SString Key(std::size_t key) const { return SString(std::string_view(names_[key])); }
    std::size_t Count() const { return names_.size(); }

private:
    std::string path_;
    std::vector<std::string> names_;
};

// Every key once, section by section.
void ReadKeys(benchmark::State& state) {
    const IniFile file(state.range(0));
    std::vector<SString> keys;
    for (std::size_t i = 0; i < file.Count(); ++i)
        keys.push_back(file.Key(i));
    SProfile section;
    SString value;
    for (auto _ : state) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (i % 20 == 0) section.Init(file.Path(), file.Section(i), 0);
            section.GetProfile(keys[i], &value, "");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReadKeys)->Name("growth/ini_read:brcore8")->Arg(1000)->Arg(10000)->Arg(100000);

}  // namespace
