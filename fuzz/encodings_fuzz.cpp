// A byte that chooses a format and a way of reading, then text: the readers must end, refuse or
// deliver; the line cutter must keep every unit; what was read and written again is read the same.
#include <brcore8/core/exception.h>
#include <brcore8/streams/encodings.h>
#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/output_memory.h>
#include <brcore8/streams/text_lines.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz.h"

namespace {

using Format = SAbstractIO::SMultiFormatSupport::Format;

void Check(bool truth) {
    if (!truth) std::abort();
}

std::vector<SString> ReadLines(SInputStream& source, Format format, bool known) {
    std::vector<SString> lines;
    const auto read = [&lines](SInputStringStream& in) {
        while (!in.IsEOF())
            lines.push_back(in.ReadLn());
    };
    if (known) {
        SInputStringStream in(source, 3, format, SKnownFormat());
        read(in);
    } else {
        SInputStringStream in(source, 3, format);
        read(in);
    }
    return lines;
}

void CutLines(std::string_view text) {
    std::size_t place = 0;
    const STextLines lines(text);
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        Check(line.Offset() == place);
        Check((*line).find_first_of("\r\n") == std::string_view::npos);
        place += (*line).size() + line.Terminator().size();
    }
    Check(place == text.size());
}

void WriteAndReadAgain(const std::vector<SString>& lines, Format format) {
    SOutputGlobal memory;
    SOutputStringStream out(memory, format);
    for (const SString& line : lines)
        out.WriteLn(line);
    const unsigned long used = memory.UsedSize();
    SHGlobal block(memory.Detach());
    SInputBuffer source(block.Lock(), static_cast<int>(used));
    Check(ReadLines(source, format, true) == lines);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto format = static_cast<Format>(data[0] & 3);
    const bool known = (data[0] & 4) != 0;
    ++data;
    --size;
    CutLines({reinterpret_cast<const char*>(data), size});
    try {
        SInputBuffer source(data, static_cast<int>(size));
        SInputForcedANSIStream forced(source, 3, format);
        SReadAll(forced);
    } catch (const SEIOException&) {
    }
    try {
        SInputBuffer source(data, static_cast<int>(size));
        const std::vector<SString> lines = ReadLines(source, format, known);
        WriteAndReadAgain(lines, Format::FormatAnsi);
        if (format == Format::FormatUtf8) WriteAndReadAgain(lines, Format::FormatUtf8);
    } catch (const SEIOException&) {
    }
    return 0;
}
