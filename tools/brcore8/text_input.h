// Text from a file or standard input, whole: its format recognised by its mark, its lines, and
// what does not survive on the way into a code page.
//
// The stream classes detect a format by reading and drop bytes on the way, as they promise; this
// looks at the mark itself and loses nothing.
#ifndef BRCORE8_TOOLS_TEXT_INPUT_H
#define BRCORE8_TOOLS_TEXT_INPUT_H

#include "command.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

enum class TextFormat { Ansi, Oem, Utf16, Utf8 };

// Says on standard error how many characters did not survive, and the byte offset of the first;
// nothing when none. Throws Failure instead when the settings are strict.
void ReportLoss(std::size_t count, std::size_t first, const std::string& name,
                const Settings& settings);

// Says on standard error how many characters of a text did not survive, and where the first stands;
// a Failure when the settings are strict. Nothing for none.
void ReportLoss(const std::string& name, std::size_t count, const std::string& first,
                const Settings& settings);

class TextInput {
public:
    // Reads all of INPUT ("-" is standard input). `from` decides against any mark, and a
    // mark of `from` itself is skipped. Throws Failure when it cannot be read, or is no text of
    // its format.
    TextInput(const std::string& input, const Settings& settings,
              std::optional<TextFormat> from = std::nullopt);

    // What messages call the input.
    const std::string& Name() const { return name_; }
    TextFormat Format() const { return format_; }
    // The bytes behind the mark, as they were read.
    std::string_view Bytes() const { return std::string_view(bytes_).substr(markLength_); }
    // The whole text in the given format, `lineEnd` (in that format too) after every line.
    // Characters that did not survive are reported on standard error, and fail the work when the
    // settings are strict.
    std::string Text(TextFormat as, std::string_view lineEnd) const;
    // The same of the text as it stands, line ends included.
    std::string Uncut(TextFormat as) const;
    // Whether there is text after the last line end.
    bool EndsOpen() const;

private:
    class LineWriter;

    bool IsUnicode() const { return format_ == TextFormat::Utf16 || format_ == TextFormat::Utf8; }
    std::size_t ByteOffset(std::size_t unit) const;

    const Settings& settings_;
    std::string name_;
    std::string bytes_;  // with the mark, which 8-bit text never has
    std::size_t markLength_ = 0;
    TextFormat format_ = TextFormat::Ansi;
    std::u16string wide_;  // of Unicode formats, without the mark
};

}  // namespace tool

#endif
