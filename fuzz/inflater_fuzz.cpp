// Two bytes for the sizes of buffer and block, then deflated data, which may be none. Neither size
// may make a difference to what comes out, up to where it ends or fails.
#include <brcore8/archive/inflater_stream.h>
#include <brcore8/core/exception.h>
#include <brcore8/streams/input_buffer.h>

#include <cstdlib>
#include <string>

#include "fuzz.h"

namespace {

std::string Inflated(const char* data, std::size_t size, unsigned long buffer,
                     unsigned long block) {
    constexpr std::size_t enough = 1 << 20;
    std::string all;
    std::string part(block, '\0');
    try {
        SInputBuffer source(data, static_cast<int>(size));
        SInflaterInputStream stream(source, buffer);
        while (all.size() < enough) {
            const unsigned long count = stream.Read(part.data(), block);
            if (count == 0) return all + "end";
            all.append(part, 0, count);
        }
        all.resize(enough);
    } catch (const SException& error) {
        all += error.GetText();
    }
    return all;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const char* const packed = reinterpret_cast<const char*>(data) + 2;
    const std::string small = Inflated(packed, size - 2, 1 + data[0], 1 + data[1]);
    const std::string large = Inflated(packed, size - 2, 1 << 16, 1 << 16);
    // What a damaged block gives before it fails depends on the room for it.
    const bool failed = large.ends_with("format");
    if (failed ? !small.ends_with("format") : small != large) std::abort();
    return 0;
}
