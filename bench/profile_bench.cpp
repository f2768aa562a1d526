// Keys of INI files, read and written through.
#include <brcore8/brcore8.h>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
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
    const std::string& PlainPath() const { return path_; }
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
BENCHMARK(ReadKeys)->Name("settings/ini_read")->Arg(1000)->Arg(10000)->Arg(100000);

constexpr int kWrites = 100;

// A hundred keys changed, each on the disk before the next.
void WriteThrough(benchmark::State& state) {
    const IniFile file(state.range(0));
    long value = 0;
    for (auto _ : state) {
        for (int i = 0; i < kWrites; ++i) {
            const std::size_t key = static_cast<std::size_t>(i) * file.Count() / kWrites;
            SProfile(file.Path(), file.Section(key), 0).WriteProfile(file.Key(key), ++value);
        }
    }
    state.SetItemsProcessed(state.iterations() * kWrites);
}
BENCHMARK(WriteThrough)->Name("settings/ini_write_through_100")->Arg(100)->Arg(1000)->Arg(10000);

// What it is measured against: the same bytes beside the file, seen onto the disk, and renamed.
void WriteAndRename(benchmark::State& state) {
    const IniFile file(state.range(0));
    std::ifstream in(file.PlainPath());
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    const std::string beside = file.PlainPath() + ".new";
    const std::string folder = std::filesystem::path(beside).parent_path().string();
    for (auto _ : state) {
        for (int i = 0; i < kWrites; ++i) {
            const int out = open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
            if (write(out, bytes.data(), bytes.size()) < 0 || fsync(out) != 0) std::abort();
            close(out);
            if (std::rename(beside.c_str(), file.PlainPath().c_str()) != 0) std::abort();
            const int names = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            (void)fsync(names);
            close(names);
        }
    }
    state.SetItemsProcessed(state.iterations() * kWrites);
}
BENCHMARK(WriteAndRename)->Name("settings/write_and_rename_100")->Arg(100)->Arg(1000)->Arg(10000);

}  // namespace
