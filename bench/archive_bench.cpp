// The archive reader beside libzip, minizip, libarchive and bare zlib.
#include <brcore8/archive/zip_file.h>
#include <brcore8/strings/string.h>

#include <archive.h>
#include <archive_entry.h>
#include <minizip/unzip.h>
#include <zip.h>
#include <zlib.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bench.h"

namespace {

using bench::DataFile;
using bench::Expect;

constexpr std::size_t kBlock = 256 << 10;

std::string SmallFiles(std::int64_t count) {
    return DataFile("small_" + std::to_string(count) + ".zip");
}

// ---- List: name and size of every entry ---------------------------------------------------------

void List(benchmark::State& state) {
    const SString path(std::string_view(SmallFiles(state.range(0))));
    for (auto _ : state) {
        SZipFile archive(path);
        std::uint64_t size = 0;
        std::int64_t count = 0;
        for (const SZipEntry& entry : archive) {
            benchmark::DoNotOptimize(entry.GetName().GetSafePointer());
            size += entry.GetSize();
            ++count;
        }
        Expect(count == state.range(0) && size > 0, "entries");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
// Called "growth/..." too, so that the three sizes stand in a table of their own.
BENCHMARK(List)->Name("archive/list_60k:brcore8")->Arg(60000)->Unit(benchmark::kMillisecond);
BENCHMARK(List)->Name("growth/archive_list:brcore8")->Arg(6000)->Arg(20000)->Arg(60000);

void ListWithLibzip(benchmark::State& state) {
    const std::string path = SmallFiles(60000);
    for (auto _ : state) {
        zip_t* const archive = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
        Expect(archive != nullptr, "zip_open");
        const zip_int64_t count = zip_get_num_entries(archive, 0);
        std::uint64_t size = 0;
        for (zip_int64_t i = 0; i < count; ++i) {
            zip_stat_t entry;
            zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &entry);
            benchmark::DoNotOptimize(entry.name);
            size += entry.size;
        }
        Expect(count == 60000 && size > 0, "libzip");
        zip_discard(archive);
    }
}
BENCHMARK(ListWithLibzip)->Name("archive/list_60k:libzip")->Unit(benchmark::kMillisecond);

void ListWithMinizip(benchmark::State& state) {
    const std::string path = SmallFiles(60000);
    for (auto _ : state) {
        const unzFile archive = unzOpen64(path.c_str());
        int count = 0;
        std::uint64_t size = 0;
        char name[512];
        for (int at = unzGoToFirstFile(archive); at == UNZ_OK; at = unzGoToNextFile(archive)) {
            unz_file_info64 entry;
            unzGetCurrentFileInfo64(archive, &entry, name, sizeof name, nullptr, 0, nullptr, 0);
            size += entry.uncompressed_size;
            ++count;
        }
        Expect(count == 60000 && size > 0, "minizip");
        unzClose(archive);
    }
}
BENCHMARK(ListWithMinizip)->Name("archive/list_60k:minizip")->Unit(benchmark::kMillisecond);

using LibarchiveReader = std::unique_ptr<archive, int (*)(archive*)>;

LibarchiveReader OpenWithLibarchive(const std::string& path) {
    LibarchiveReader reader(archive_read_new(), archive_read_free);
    archive_read_support_format_zip_seekable(reader.get());
    Expect(archive_read_open_filename(reader.get(), path.c_str(), kBlock) == ARCHIVE_OK, "open");
    return reader;
}

void ListWithLibarchive(benchmark::State& state) {
    const std::string path = SmallFiles(60000);
    for (auto _ : state) {
        const LibarchiveReader reader = OpenWithLibarchive(path);
        archive_entry* entry = nullptr;
        int count = 0;
        std::int64_t size = 0;
        while (archive_read_next_header(reader.get(), &entry) == ARCHIVE_OK) {
            benchmark::DoNotOptimize(archive_entry_pathname(entry));
            size += archive_entry_size(entry);
            ++count;
        }
        Expect(count == 60000 && size > 0, "libarchive");
    }
}
BENCHMARK(ListWithLibarchive)->Name("archive/list_60k:libarchive")->Unit(benchmark::kMillisecond);

// ---- Read: every byte of every entry, its CRC-32 compared ---------------------------------------

std::uint64_t ReadAll(const std::string& path) {
    static std::vector<char> block(kBlock);
    SZipFile archive{SString(std::string_view(path))};
    std::uint64_t size = 0;
    for (const SZipEntry& entry : archive) {
        const std::unique_ptr<SInputStream> data = archive.Open(entry);
        while (const unsigned long read = SBytesOf(data->Read(block.data(), kBlock)))
            size += read;
    }
    return size;
}

std::uint32_t Low(const unsigned char* p, int bytes) {
    std::uint32_t value = 0;
    for (int i = bytes - 1; i >= 0; --i)
        value = value << 8 | p[i];
    return value;
}

// What is left when nobody parses, checks or allocates more than the data needs.
class BareZlib {
public:
    explicit BareZlib(const std::string& path) : file_(std::fopen(path.c_str(), "rb")) {
        Expect(file_ != nullptr && inflateInit2(&stream_, -15) == Z_OK, "zlib");
    }
    BareZlib(const BareZlib&) = delete;
    BareZlib& operator=(const BareZlib&) = delete;
    ~BareZlib() {
        inflateEnd(&stream_);
        std::fclose(file_);
    }

    // All entries, one local header after the other: these archives have nothing in between.
    std::uint64_t ReadAll() {
        std::uint64_t size = 0;
        for (;;) {
            Need(30);
            if (Low(stream_.next_in, 4) != 0x04034B50) return size;
            const unsigned char* const header = stream_.next_in;
            const std::uint32_t crc = Low(header + 14, 4);
            const std::uint32_t names = Low(header + 26, 2) + Low(header + 28, 2);
            Need(30 + names);
            stream_.next_in += 30 + names;
            stream_.avail_in -= 30 + names;
            size += Inflate(crc);
        }
    }

private:
    void Need(std::size_t bytes) {
        if (stream_.avail_in >= bytes) return;
        std::memmove(in_.data(), stream_.next_in, stream_.avail_in);
        stream_.next_in = in_.data();
        stream_.avail_in += static_cast<unsigned>(
            std::fread(in_.data() + stream_.avail_in, 1, in_.size() - stream_.avail_in, file_));
    }
    std::uint64_t Inflate(std::uint32_t expected) {
        inflateReset(&stream_);
        uLong crc = 0;
        std::uint64_t size = 0;
        for (int status = Z_OK; status != Z_STREAM_END;) {
            if (stream_.avail_in == 0) Need(1);
            stream_.next_out = out_.data();
            stream_.avail_out = static_cast<unsigned>(out_.size());
            status = inflate(&stream_, Z_NO_FLUSH);
            Expect(status == Z_OK || status == Z_STREAM_END, "inflate");
            const std::size_t made = out_.size() - stream_.avail_out;
            crc = crc32(crc, out_.data(), static_cast<unsigned>(made));
            size += made;
        }
        Expect(crc == expected, "CRC-32");
        return size;
    }

    std::FILE* file_;
    std::vector<unsigned char> in_ = std::vector<unsigned char>(kBlock);
    std::vector<unsigned char> out_ = std::vector<unsigned char>(kBlock);
    z_stream stream_ = {};
};

std::uint64_t ReadWithLibzip(const std::string& path) {
    static std::vector<char> block(kBlock);
    zip_t* const archive = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    std::uint64_t size = 0;
    for (zip_int64_t i = 0; i < count; ++i) {
        zip_file_t* const entry = zip_fopen_index(archive, static_cast<zip_uint64_t>(i), 0);
        for (zip_int64_t read; (read = zip_fread(entry, block.data(), kBlock)) > 0;)
            size += static_cast<std::uint64_t>(read);
        Expect(zip_fclose(entry) == 0, "libzip");
    }
    zip_discard(archive);
    return size;
}

std::uint64_t ReadWithMinizip(const std::string& path) {
    static std::vector<char> block(kBlock);
    const unzFile archive = unzOpen64(path.c_str());
    std::uint64_t size = 0;
    for (int at = unzGoToFirstFile(archive); at == UNZ_OK; at = unzGoToNextFile(archive)) {
        unzOpenCurrentFile(archive);
        for (int read; (read = unzReadCurrentFile(archive, block.data(), kBlock)) > 0;)
            size += static_cast<std::uint64_t>(read);
        Expect(unzCloseCurrentFile(archive) == UNZ_OK, "minizip");
    }
    unzClose(archive);
    return size;
}

std::uint64_t ReadWithLibarchive(const std::string& path) {
    static std::vector<char> block(kBlock);
    const LibarchiveReader reader = OpenWithLibarchive(path);
    archive_entry* entry = nullptr;
    std::uint64_t size = 0;
    while (archive_read_next_header(reader.get(), &entry) == ARCHIVE_OK)
        for (la_ssize_t read;
             (read = archive_read_data(reader.get(), block.data(), kBlock)) != 0;) {
            Expect(read > 0, "libarchive");
            size += static_cast<std::uint64_t>(read);
        }
    return size;
}

std::uint64_t ReadBare(const std::string& path) {
    return BareZlib(path).ReadAll();
}

using Reader = std::uint64_t (*)(const std::string& path);

void Read(benchmark::State& state, const char* file, std::uint64_t least, Reader reader) {
    const std::string path = DataFile(file);
    for (auto _ : state)
        Expect(reader(path) >= least, "bytes of all entries");
}

[[maybe_unused]] const bool registered = [] {
    const struct {
        const char* name;
        Reader reader;
    } readers[] = {{"brcore8", ReadAll},
                   {"zlib", ReadBare},
                   {"libzip", ReadWithLibzip},
                   {"minizip", ReadWithMinizip},
                   {"libarchive", ReadWithLibarchive}};
    const struct {
        const char* workload;
        const char* file;
        std::uint64_t least;
    } workloads[] = {{"archive/inflate_200m:", "inflate_200m.zip", 200 << 20},
                     {"archive/read_60k_small:", "small_60000.zip", 60000 * 100}};
    for (const auto& workload : workloads)
        for (const auto& reader : readers)
            benchmark::RegisterBenchmark((std::string(workload.workload) + reader.name).c_str(),
                                         Read, workload.file, workload.least, reader.reader)
                ->Unit(benchmark::kMillisecond);
    return true;
}();

}  // namespace
