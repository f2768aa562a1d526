// binary: items as a table of strings in a binary stream, and such a table as items.

#include "command.h"
#include "items.h"
#include "output.h"
#include "progress.h"
#include "text_input.h"

#include <brcore8/core/exception.h>
#include <brcore8/streams/binary_stream.h>
#include <brcore8/streams/output_memory.h>
#include <brcore8/streams/std_streams.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/string_table.h>
#include <brcore8/strings/unicode.h>

#include <CLI/CLI.hpp>

#include <memory>
#include <span>

namespace tool {
namespace {

struct BinaryOptions {
    std::string input = "-";
    std::string output = "-";
    ItemEnd end = ItemEnd::Line;
};

// The strings are UTF-8: of Unicode text nothing is lost on the way.
int Pack(const BinaryOptions& options, const Settings& settings) {
    const SStringTable items = ReadItems(options.input, settings, options.end, TextFormat::Utf8);
    SOutputGlobal packed;
    SOutputBinaryStream stream(packed);
    stream << items.GetCount();
    int number = 0;
    for (const SString& item : items) {
        ++number;
        if (item.View().find('\0') != std::string_view::npos)
            throw Failure{"item " + std::to_string(number), "it holds a zero byte"};
        stream.WriteUtf8(item.View());
    }
    const unsigned long size = packed.UsedSize();
    SHGlobal block(packed.Detach());
    Output output(options.output);
    output.Write({static_cast<const char*>(block.Lock()), size});
    output.Finish();
    return Done;
}

// Reads a table of strings as text of the code page, and notes what was lost.
class TableReader {
public:
    TableReader(const std::string& name, std::string_view bytes)
        : name_(name), bytes_(bytes), source_(std::as_bytes(std::span(bytes))), stream_(source_) {}

    SStringTable Read() {
        SStringTable items;
        std::uint32_t count = 0;
        stream_ >> count;
        BeginStep(bytes_.size());
        for (; count > 0; --count) {
            StepDone(Position());
            items.Add(Next());
        }
        if (Position() != bytes_.size()) throw Failure{name_, "something follows the table"};
        return items;
    }
    const SConversionLoss& Loss() const { return loss_; }

private:
    std::size_t Position() { return bytes_.size() - source_.Available(); }

    SString Next() {
        const std::size_t start = Position();
        const std::string utf8 = stream_.ReadUtf8();
        std::size_t malformed = std::string::npos;
        const std::u16string wide = SUtf16FromUtf8(utf8, &malformed);
        if (malformed != std::string::npos) throw SEUTFException(0, 0, 0);
        SConversionLoss loss;
        const std::string text = STextFromUtf16(wide, &loss);
        if (loss.count && !loss_.count) {
            const std::string kept =
                SUtf8FromUtf16(std::u16string_view(wide).substr(0, loss.first));
            loss_.first = start + PrefixLength(start) + kept.size();
        }
        loss_.count += loss.count;
        return SString(std::string_view(text));
    }

    // Of the length in front of a string.
    std::size_t PrefixLength(std::size_t at) const {
        if (bytes_[at] != '\xFF') return 1;
        return bytes_.substr(at, 3) == "\xFF\xFF\xFF" ? 7 : 3;
    }

    const std::string& name_;
    std::string_view bytes_;
    SInputSpan source_;
    SInputBinaryStream stream_;
    SConversionLoss loss_;
};

int Unpack(const BinaryOptions& options, const Settings& settings) {
    // Bytes, whatever they begin with.
    const TextInput input(options.input, settings, TextFormat::Ansi);
    TableReader reader(input.Name(), input.Bytes());
    try {
        const SStringTable items = reader.Read();
        ReportLoss(reader.Loss().count, reader.Loss().first, input.Name(), settings);
        PrintItems(items, options.end);
    } catch (const SEIOException& error) {
        throw Failure{input.Name(), error.GetText()};
    }
    return Done;
}

Action PreparePack(CLI::App& parser, const Settings& settings) {
    auto options = std::make_shared<BinaryOptions>();
    AddItemEnd(parser, options->end);
    parser.add_option("-o,--output", options->output, "Write there, when the content differs")
        ->type_name("OUTPUT");
    parser.add_option("INPUT", options->input, "A text file; standard input when missing or -");
    parser.footer(
        "The library's binary form: a count of 4 bytes, and each item as UTF-8 behind\n"
        "its length. Unicode comes through whole.");
    return [options, &settings] { return Pack(*options, settings); };
}

Action PrepareUnpack(CLI::App& parser, const Settings& settings) {
    auto options = std::make_shared<BinaryOptions>();
    AddItemEnd(parser, options->end);
    parser.add_option("INPUT", options->input, "A packed table; standard input when missing or -");
    parser.footer("Without -z an item that holds a line end fails.");
    return [options, &settings] { return Unpack(*options, settings); };
}

constexpr Command Parts[] = {
    {"pack", "Make a binary table of strings of items", PreparePack},
    {"unpack", "Print the strings of a binary table", PrepareUnpack},
};

}  // namespace

Action PrepareBinary(CLI::App& parser, const Settings& settings) {
    return PrepareParts(parser, settings, Parts);
}

}  // namespace tool
