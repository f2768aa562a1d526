// The first byte chooses the size of the buffer; the rest is an archive that is read in sequence.
// The buffer must make no difference, except to how far damaged data gets before it fails.
#include <brcore8/archive/zip_stream.h>
#include <brcore8/core/exception.h>
#include <brcore8/streams/input_buffer.h>

#include <cstdlib>
#include <string>

#include "fuzz.h"

namespace {

// Names, bytes and how it ended.
std::string Read(const char* data, std::size_t size, unsigned long buffer) {
    std::string all;
    try {
        SInputBuffer source(data, static_cast<int>(size));
        SZipInputStream stream(source, buffer);
        stream.SetLimits({1 << 20, 1 << 22, 0});
        while (const SZipEntry* entry = stream.GetNextEntry()) {
            all += entry->GetName().View();
            for (int byte = stream.Read(); byte >= 0; byte = stream.Read())
                all += static_cast<char>(byte);
        }
    } catch (const SException& error) {
        all += error.GetText();
    }
    return all;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const char* const archive = reinterpret_cast<const char*>(data) + 1;
    const std::string small = Read(archive, size - 1, 1 + data[0]);
    const std::string large = Read(archive, size - 1, 1 << 16);
    const bool failed = large.ends_with("Invalid ZLIB data format");
    if (failed ? !small.ends_with("Invalid ZLIB data format") : small != large) std::abort();
    return 0;
}
