// Archives: listed, read in large and in small entries, beside zlib alone on the same bytes.
#include <brcore8/brcore8.h>

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

std::string Number(std::uint64_t value, int bytes) {
    std::string text;
    for (; bytes > 0; --bytes, value >>= 8)
        text += static_cast<char>(value & 255);
    return text;
}

std::string Deflated(const std::string& data) {
    z_stream stream{};
    deflateInit2(&stream, 6, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, static_cast<uLong>(data.size())) + 16, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

// `count` entries of `size` bytes of text each, and where their data lies.
struct Archive {
    struct Part {
        std::size_t at, packed, size;
    };
    std::string path;
    std::string bytes;
    std::vector<Part> parts;
    std::size_t total = 0;

    Archive(const char* name, int count, std::size_t size)
        : path((std::filesystem::temp_directory_path() / name).string()) {
        std::string directory;
        for (int i = 0; i < count; ++i) {
            const std::string data = Text(size, i);
            const std::string packed = Deflated(data);
            const std::string entry =
                "folder" + std::to_string(i / 1000) + "/file" + std::to_string(i) + ".txt";
            const auto crc = crc32_z(0, reinterpret_cast<const Bytef*>(data.data()), data.size());
            const std::string common = Number(20, 2) + Number(0, 2) + Number(8, 2) +
                                       Number(0x5A5A'6000, 4) + Number(crc, 4) +
                                       Number(packed.size(), 4) + Number(data.size(), 4) +
                                       Number(entry.size(), 2) + Number(0, 2);
            directory +=
                "PK\1\2" + Number(20, 2) + common + Number(0, 10) + Number(bytes.size(), 4) + entry;
            bytes += "PK\3\4" + common + entry;
            parts.push_back({bytes.size(), packed.size(), data.size()});
            bytes += packed;
            total += data.size();
        }
        const std::size_t offset = bytes.size();
        bytes += directory;
        bytes += "PK\5\6" + Number(0, 4) + Number(parts.size(), 2) + Number(parts.size(), 2) +
                 Number(directory.size(), 4) + Number(offset, 4) + Number(0, 2);
        std::ofstream(path, std::ios::binary) << bytes;
    }
    ~Archive() { std::filesystem::remove(path); }

    static std::string Text(std::size_t size, int seed) {
        std::string text;
        text.reserve(size + 32);
        for (unsigned line = static_cast<unsigned>(seed) * 7919; text.size() < size; ++line)
            text += "value_" + std::to_string(line * 2654435761u % 100003) + " = text;\n";
        text.resize(size);
        return text;
    }
};

const Archive& Small() {
    static const Archive archive("brcore8-bench-60k.zip", 60'000, 200);
    return archive;
}

const Archive& Large() {
    static const Archive archive("brcore8-bench-200m.zip", 1, 200 << 20);
    return archive;
}

constexpr unsigned long kBlock = 256 * 1024;

void ListEntries(benchmark::State& state) {
    const std::string& path = Small().path;
    for (auto _ : state) {
        SZipFile archive(path.c_str());
        std::uint64_t total = 0;
        for (const SZipEntry& entry : archive)
            total += entry.GetSize() + static_cast<std::uint64_t>(entry.GetName().LengthByte());
        benchmark::DoNotOptimize(total);
    }
}
BENCHMARK(ListEntries)->Name("archive/list_60k/brcore8")->Unit(benchmark::kMillisecond);

void ReadByDirectory(benchmark::State& state, const Archive& source) {
    std::vector<char> block(kBlock);
    for (auto _ : state) {
        SZipFile archive(source.path.c_str());
        SZipVerifier verifier(archive);
        if (verifier.Verify() != 0) state.SkipWithError("the archive is not sound");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(source.total));
}

void ReadInSequence(benchmark::State& state, const Archive& source) {
    std::vector<char> block(kBlock);
    for (auto _ : state) {
        SInputFile file(source.path.c_str());
        SZipInputStream stream(file, kBlock);
        while (const SZipEntry* entry = stream.GetNextEntry()) {
            while (stream.Read(block.data(), kBlock) != 0) {
            }
            if (stream.GetCrc32() != entry->GetCrc32()) state.SkipWithError("another CRC-32");
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(source.total));
}

// The limit: one inflater, one CRC-32, the bytes in memory.
void ReadRaw(benchmark::State& state, const Archive& source) {
    std::vector<unsigned char> block(kBlock);
    z_stream stream{};
    inflateInit2(&stream, -15);
    for (auto _ : state) {
        for (const Archive::Part& part : source.parts) {
            inflateReset(&stream);
            stream.next_in =
                reinterpret_cast<Bytef*>(const_cast<char*>(source.bytes.data())) + part.at;
            stream.avail_in = static_cast<uInt>(part.packed);
            unsigned long crc = 0;
            int result = Z_OK;
            while (result == Z_OK) {
                stream.next_out = block.data();
                stream.avail_out = kBlock;
                result = inflate(&stream, Z_SYNC_FLUSH);
                crc = crc32_z(crc, block.data(), kBlock - stream.avail_out);
            }
            benchmark::DoNotOptimize(crc);
        }
    }
    inflateEnd(&stream);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(source.total));
}

void InflateVerified(benchmark::State& state) {
    ReadByDirectory(state, Large());
}
void InflateSequence(benchmark::State& state) {
    ReadInSequence(state, Large());
}
void InflateRaw(benchmark::State& state) {
    ReadRaw(state, Large());
}
BENCHMARK(InflateVerified)->Name("archive/inflate_200m/brcore8")->Unit(benchmark::kMillisecond);
BENCHMARK(InflateSequence)
    ->Name("archive/inflate_200m/brcore8_stream")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(InflateRaw)->Name("archive/inflate_200m/zlib")->Unit(benchmark::kMillisecond);

void SmallVerified(benchmark::State& state) {
    ReadByDirectory(state, Small());
}
void SmallSequence(benchmark::State& state) {
    ReadInSequence(state, Small());
}
void SmallRaw(benchmark::State& state) {
    ReadRaw(state, Small());
}
BENCHMARK(SmallVerified)->Name("archive/read_60k_small/brcore8")->Unit(benchmark::kMillisecond);
BENCHMARK(SmallSequence)
    ->Name("archive/read_60k_small/brcore8_stream")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(SmallRaw)->Name("archive/read_60k_small/zlib")->Unit(benchmark::kMillisecond);

}  // namespace
