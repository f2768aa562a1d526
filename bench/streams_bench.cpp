// Bytes and blocks of a file, its lines, and files written: beside the C library, the standard
// library, Qt and the bare system calls.
#include <brcore8/streams/input_file.h>
#include <brcore8/streams/output_on_change.h>

#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QString>
#include <fcntl.h>
#include <unistd.h>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "bench.h"

namespace {

using bench::Compete;
using bench::Expect;

constexpr std::size_t kBytes = 64 << 20;

const std::string& InputPath() {
    static const std::string path = bench::DataFile("lines_64m.txt");
    return path;
}

// ---- Bytes --------------------------------------------------------------------------------------

// Reads the file byte by byte; every contestant must have met the same bytes.
template <class Source>
void ReadBytes(benchmark::State& state) {
    static const std::uint64_t expected = [] {
        std::uint64_t sum = 0;
        for (const char byte : bench::ReadBlock(InputPath()))
            sum += static_cast<unsigned char>(byte);
        return sum;
    }();
    for (auto _ : state) {
        Source source;
        std::uint64_t sum = 0;
        for (int byte; (byte = source.Read()) != -1;)
            sum += static_cast<unsigned>(byte);
        Expect(sum == expected, "bytes");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kBytes));
}

struct OurSource {
    std::unique_ptr<SInputFile> file = std::make_unique<SInputFile>(SString(InputPath()));
    int Read() { return file->SInputFile::Read(); }
};
struct GetcSource {
    std::FILE* file = std::fopen(InputPath().c_str(), "rb");
    ~GetcSource() { std::fclose(file); }
    int Read() { return getc_unlocked(file); }
};
struct FilebufSource {
    std::filebuf buffer;
    FilebufSource() { buffer.open(InputPath(), std::ios::in | std::ios::binary); }
    int Read() { return buffer.sbumpc(); }
};
struct QtSource {
    QFile file{QString::fromStdString(InputPath())};
    QtSource() { file.open(QIODevice::ReadOnly); }
    int Read() {
        char byte;
        return file.getChar(&byte) ? static_cast<unsigned char>(byte) : -1;
    }
};

// Through a base class that the compiler does not see through.
template <class Base>
struct Through {
    std::unique_ptr<Base> hidden;
    Base* stream = hidden.get();
    explicit Through(Base* made) : hidden(made) { benchmark::DoNotOptimize(stream); }
    int Read() { return stream->Read(); }
};
struct OurBase : Through<SInputStream> {
    OurBase() : Through(new SInputFile(SString(InputPath()))) {}
};
struct Bytes {
    virtual ~Bytes() = default;
    virtual int Read() = 0;
};
struct BytesInMemory : Bytes {
    static const std::string& Content() {
        static const std::string content = bench::ReadBlock(InputPath());
        return content;
    }
    const char* next = Content().data();
    const char* const end = next + Content().size();
    // Not to be seen through: the compiler knows all classes of this file.
    [[gnu::noipa]] int Read() override {
        return next != end ? static_cast<unsigned char>(*next++) : -1;
    }
};
struct OneVirtualCall : Through<Bytes> {
    OneVirtualCall() : Through(new BytesInMemory) {}
};

// ---- Blocks -------------------------------------------------------------------------------------

template <class Open>
void ReadBlocks(benchmark::State& state, Open open, std::size_t block) {
    std::vector<char> buffer(block);
    for (auto _ : state) {
        auto read = open();
        std::size_t total = 0;
        for (std::size_t got; (got = read(buffer.data(), block)) > 0; total += got)
            benchmark::DoNotOptimize(buffer.data());
        Expect(total == kBytes, "blocks");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kBytes));
}

template <std::size_t Block>
void OurBlocks(benchmark::State& state) {
    const auto open = [] {
        return [file = std::make_unique<SInputFile>(SString(InputPath()))](
                   char* out, std::size_t count) -> std::size_t {
            return file->Read(out, static_cast<unsigned long>(count));
        };
    };
    ReadBlocks(state, open, Block);
}
template <std::size_t Block>
void CBlocks(benchmark::State& state) {
    const auto open = [] {
        return [source = std::make_unique<GetcSource>()](char* out, std::size_t count) {
            return std::fread(out, 1, count, source->file);
        };
    };
    ReadBlocks(state, open, Block);
}
template <std::size_t Block>
void StandardBlocks(benchmark::State& state) {
    const auto open = [] {
        return [file = std::make_unique<std::ifstream>(InputPath(), std::ios::binary)](
                   char* out, std::size_t count) {
            file->read(out, static_cast<std::streamsize>(count));
            return static_cast<std::size_t>(file->gcount());
        };
    };
    ReadBlocks(state, open, Block);
}
template <std::size_t Block>
void QtBlocks(benchmark::State& state) {
    const auto open = [] {
        return [source = std::make_unique<QtSource>()](char* out, std::size_t count) {
            return static_cast<std::size_t>(source->file.read(out, static_cast<qint64>(count)));
        };
    };
    ReadBlocks(state, open, Block);
}
class Descriptor {
public:
    Descriptor(const std::string& path, int flags) : number_(open(path.c_str(), flags, 0666)) {
        Expect(number_ >= 0, path.c_str());
    }
    ~Descriptor() { close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    operator int() const { return number_; }

private:
    int number_;
};
template <std::size_t Block>
void SystemBlocks(benchmark::State& state) {
    const auto open = [] {
        return [file = std::make_unique<Descriptor>(InputPath(), O_RDONLY)](char* out,
                                                                            std::size_t count) {
            return static_cast<std::size_t>(read(*file, out, count));
        };
    };
    ReadBlocks(state, open, Block);
}

template <std::size_t Block>
bool CompeteBlocks(const char* workload) {
    return Compete(workload, {{"brcore8", OurBlocks<Block>},
                              {"fread", CBlocks<Block>},
                              {"std", StandardBlocks<Block>},
                              {"QFile", QtBlocks<Block>},
                              {"read", SystemBlocks<Block>}});
}

// ---- Lines --------------------------------------------------------------------------------------

// The bytes of all lines without their ends, each line a text of its own.
template <class Read>
void ReadLines(benchmark::State& state, Read read) {
    static const std::size_t expected = [] {
        std::size_t bytes = 0;
        for (const char byte : bench::ReadBlock(InputPath()))
            bytes += byte != '\n' && byte != '\r';
        return bytes;
    }();
    for (auto _ : state)
        Expect(read() == expected, "lines");
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kBytes));
}

void OurLines(benchmark::State& state) {
    ReadLines(state, [] {
        SSeekableInputANSIFile file(SString{InputPath()});
        std::size_t bytes = 0;
        while (!file.IsEOF()) {
            const SString line = file.ReadLn();
            bytes += static_cast<std::size_t>(line.LengthByte());
        }
        return bytes;
    });
}
void StandardLines(benchmark::State& state) {
    ReadLines(state, [] {
        std::ifstream file(InputPath(), std::ios::binary);
        std::size_t bytes = 0;
        for (std::string line; std::getline(file, line); line = std::string())
            bytes += line.size() - line.ends_with('\r');
        return bytes;
    });
}
void QtLines(benchmark::State& state) {
    ReadLines(state, [] {
        QtSource source;
        std::size_t bytes = 0;
        while (!source.file.atEnd())
            bytes += static_cast<std::size_t>(source.file.readLine().trimmed().size());
        return bytes;
    });
}
void CLines(benchmark::State& state) {
    ReadLines(state, [] {
        GetcSource source;
        char* line = nullptr;
        std::size_t room = 0, bytes = 0;
        for (ssize_t got; (got = getline(&line, &room, source.file)) > 0;) {
            const std::string text(line, static_cast<std::size_t>(got) - 2);
            bytes += text.size();
        }
        std::free(line);
        return bytes;
    });
}

// ---- Files written ------------------------------------------------------------------------------

enum class Target { Unchanged, Changed, New };

// The file in the state that the workload begins with; that does not count. What is written comes
// in blocks of 64 KB.
template <Target State, class Write>
void WriteFile(benchmark::State& state, Write write) {
    const std::string path = (bench::DataFolder() / "written_16m.bin").string();
    std::string content = bench::ReadBlock(InputPath()).substr(0, 16 << 20);
    std::string other = content;
    other[other.size() / 2] ^= 1;
    for (auto _ : state) {
        state.PauseTiming();
        std::filesystem::remove(path);
        if (State != Target::New)
            std::ofstream(path, std::ios::binary) << (State == Target::Changed ? other : content);
        state.ResumeTiming();
        write(path, content);
    }
    Expect(bench::ReadBlock(path) == content, "content");
    std::filesystem::remove(path);
}

constexpr std::size_t kPart = 64 << 10;

template <Target State>
void OurWrite(benchmark::State& state) {
    WriteFile<State>(state, [](const std::string& path, const std::string& content) {
        SOutputFileOnChange file{SString(path)};
        for (std::size_t at = 0; at < content.size(); at += kPart)
            file.Write(content.data() + at, kPart);
        int changed = -1;
        file.Close(&changed);
        Expect(changed == (State != Target::Unchanged), "changed");
    });
}

// What a program would write by hand: the new content collected in memory, the old one read whole
// and compared; where they differ, a new file that is seen onto the disk and takes the old one's
// place.
template <Target State>
void CompareThenWrite(benchmark::State& state) {
    WriteFile<State>(state, [](const std::string& path, const std::string& content) {
        std::string collected;
        for (std::size_t at = 0; at < content.size(); at += kPart)
            collected.append(content, at, kPart);
        if (bench::ReadBlock(path) == collected) return;
        const std::string beside = path + ".new";
        {
            const Descriptor file(beside, O_WRONLY | O_CREAT | O_TRUNC);
            Expect(write(file, collected.data(), collected.size()) > 0, "write");
            Expect(fsync(file) == 0, "fsync");
        }
        std::filesystem::rename(beside, path);
    });
}
// Replaces the file in the same way, without asking whether it differs.
void QtSave(benchmark::State& state) {
    WriteFile<Target::Changed>(state, [](const std::string& path, const std::string& content) {
        QSaveFile file(QString::fromStdString(path));
        Expect(file.open(QIODevice::WriteOnly), "open");
        for (std::size_t at = 0; at < content.size(); at += kPart)
            file.write(content.data() + at, static_cast<qint64>(kPart));
        Expect(file.commit(), "commit");
    });
}

void CWriteNew(benchmark::State& state) {
    WriteFile<Target::New>(state, [](const std::string& path, const std::string& content) {
        std::FILE* const file = std::fopen(path.c_str(), "wb");
        for (std::size_t at = 0; at < content.size(); at += kPart)
            std::fwrite(content.data() + at, 1, kPart, file);
        std::fclose(file);
    });
}
void StandardWriteNew(benchmark::State& state) {
    WriteFile<Target::New>(state, [](const std::string& path, const std::string& content) {
        std::ofstream file(path, std::ios::binary);
        for (std::size_t at = 0; at < content.size(); at += kPart)
            file.write(content.data() + at, static_cast<std::streamsize>(kPart));
    });
}
void QtWriteNew(benchmark::State& state) {
    WriteFile<Target::New>(state, [](const std::string& path, const std::string& content) {
        QFile file(QString::fromStdString(path));
        file.open(QIODevice::WriteOnly);
        for (std::size_t at = 0; at < content.size(); at += kPart)
            file.write(content.data() + at, static_cast<qint64>(kPart));
    });
}

[[maybe_unused]] const bool streams[] = {
    Compete("streams/byte_read_64m", {{"brcore8", ReadBytes<OurSource>},
                                      {"getc_unlocked", ReadBytes<GetcSource>},
                                      {"std::filebuf", ReadBytes<FilebufSource>},
                                      {"QFile", ReadBytes<QtSource>}}),
    Compete("streams/byte_read_base_64m", {{"brcore8", ReadBytes<OurBase>},
                                           {"one virtual call", ReadBytes<OneVirtualCall>}}),
    CompeteBlocks<4096>("streams/block_read_4k_64m"),
    CompeteBlocks<65536>("streams/block_read_64k_64m"),
    Compete("streams/read_lines_64m", {{"brcore8", OurLines},
                                       {"std", StandardLines},
                                       {"QFile", QtLines},
                                       {"getline", CLines}}),
    Compete("streams/write_unchanged_16m",
            {{"brcore8", OurWrite<Target::Unchanged>},
             {"compare, then write", CompareThenWrite<Target::Unchanged>}},
            bench::Time::Clock),
    Compete("streams/write_changed_16m",
            {{"brcore8", OurWrite<Target::Changed>},
             {"compare, then write", CompareThenWrite<Target::Changed>},
             {"QSaveFile", QtSave}},
            bench::Time::Clock),
    Compete("streams/write_new_16m",
            {{"brcore8", OurWrite<Target::New>},
             {"fwrite", CWriteNew},
             {"std", StandardWriteNew},
             {"QFile", QtWriteNew}},
            bench::Time::Clock),
};

}  // namespace
