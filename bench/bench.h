// What the benchmarks share. A benchmark's name is WORKLOAD:CONTESTANT ("archive/list_60k:libzip"),
// the library's own contestant being "brcore8": ./measure puts those of one workload side by side.
// What counts is the processor's time, or with UseRealTime the clock's: where a contestant waits
// for the disk, or several threads work. Names with a size at their end,
// "growth/WORKLOAD/SIZE:brcore8", show how costs grow.
#ifndef BRCORE8_BENCH_BENCH_H
#define BRCORE8_BENCH_BENCH_H

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>

namespace bench {

// Where bench/make_data.py put the files to work on, and where new ones may be made.
inline std::filesystem::path DataFolder() {
    const char* const folder = std::getenv("BRCORE8_BENCH_DATA");
    return folder ? folder : "build/measure/data";
}

inline std::string DataFile(const std::string& name) {
    const std::filesystem::path path = DataFolder() / name;
    if (!std::filesystem::exists(path)) throw std::runtime_error("no " + path.string());
    return path.string();
}

inline std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The same in one read.
inline std::string ReadBlock(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string content(std::filesystem::file_size(path), '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    return content;
}

// A contestant that did something else than the others is no measure of anything.
inline void Expect(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(std::string("benchmark failed: ") + what);
}

// One workload's contestants.
struct Contestant {
    const char* name;
    void (*run)(benchmark::State& state);
};

// What counts of a workload's time.
enum class Time { Processor, Clock };

// Registers a workload; of use where a file-scope variable is initialised.
inline bool Compete(const std::string& workload, std::initializer_list<Contestant> contestants,
                    Time time = Time::Processor) {
    for (const Contestant& contestant : contestants) {
        auto* const made = benchmark::RegisterBenchmark(
            (workload + ":" + contestant.name).c_str(), contestant.run);
        if (time == Time::Clock) made->UseRealTime();
    }
    return true;
}

// While one lives, the process has a second thread, as most programs have; what is elided in a
// process of one thread must then be done.
class SecondThread {
public:
    SecondThread() : thread_([this] { stop_.wait(false); }) {}
    ~SecondThread() {
        stop_ = true;
        stop_.notify_all();
        thread_.join();
    }
    SecondThread(const SecondThread&) = delete;
    SecondThread& operator=(const SecondThread&) = delete;

private:
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

}  // namespace bench

#endif
