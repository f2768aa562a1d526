#include "text_input.h"

#include <brcore8/core/exception.h>
#include <brcore8/streams/encodings.h>
#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/input_file.h>
#include <brcore8/streams/progress.h>
#include <brcore8/streams/text_lines.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>

#include <algorithm>
#include <cstdio>

namespace tool {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view MarkUtf8 = "\xEF\xBB\xBF"sv;
constexpr std::string_view MarkLowFirst = "\xFF\xFE"sv;
constexpr std::string_view MarkHighFirst = "\xFE\xFF"sv;
constexpr std::size_t ReadStep = 1 << 16;

bool IsStandardInput(const std::string& input) {
    return input.empty() || input == "-";
}

std::string ReadStandardInput() {
    std::string bytes;
    std::vector<char> block(ReadStep);
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), stdin))
        bytes.append(block.data(), count);
    if (std::ferror(stdin)) throw Failure{"standard input", "Can't open for reading"};
    return bytes;
}

std::string ReadFile(const std::string& path) {
    try {
        STerminalProgress progress(path.c_str());
        SInputFile file(path.c_str(), &progress);
        return SReadAll(file);
    } catch (const SException& error) {
        throw Failure{path, error.GetText()};
    }
}

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

// The index of the first surrogate without its partner; npos when there is none.
std::size_t FindLoneSurrogate(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]))
            ++i;
        else if (IsHighSurrogate(text[i]) || IsLowSurrogate(text[i]))
            return i;
    }
    return std::u16string_view::npos;
}

std::u16string DecodeUtf16(const std::string& name, std::string_view bytes, bool highFirst) {
    if (bytes.size() % 2 != 0) throw Failure{name, SEEOFException().GetText()};
    std::u16string text(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        text[i] = static_cast<char16_t>(highFirst ? first << 8 | second : second << 8 | first);
    }
    const std::size_t lone = FindLoneSurrogate(text);
    if (lone != std::u16string_view::npos)
        throw Failure{name, SEUTFException(text[lone], 0, 0).GetText()};
    return text;
}

std::u16string DecodeUtf8(const std::string& name, std::string_view bytes) {
    std::size_t malformed = std::string_view::npos;
    std::u16string text = SUtf16FromUtf8(bytes, &malformed);
    if (malformed != std::string_view::npos) throw Failure{name, SEUTFException(0, 0, 0).GetText()};
    return text;
}

std::string EncodeUtf16(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

SCodePageKind PageOf(TextFormat format) {
    return format == TextFormat::Oem ? SCodePageKind::Oem : SCodePageKind::Ansi;
}

std::string Encode(std::u16string_view text, TextFormat as, SConversionLoss& loss) {
    if (as == TextFormat::Utf8) return SUtf8FromUtf16(text);
    if (as == TextFormat::Utf16) return EncodeUtf16(text);
    return STextFromUtf16(text, &loss, PageOf(as));
}

// The byte of the line where its n-th unit begins: the last byte of the shortest part of the line
// that gives more than n units is the first one of the character.
std::size_t ByteOfUnit(std::string_view line, SCodePageKind page, std::size_t unit) {
    std::size_t low = 0, high = line.size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (SUtf16FromText(line.substr(0, middle), nullptr, page).size() > unit)
            high = middle;
        else
            low = middle + 1;
    }
    return low - 1;
}

// 8-bit text as the library's readers deliver it, every line end as CR LF.
std::string ForcedAnsi(const std::string& bytes) {
    if (bytes.size() > SString::MaxBytes) throw SEOutOfMemory();
    SInputBuffer source(bytes.data(), static_cast<int>(bytes.size()));
    SInputForcedANSIStream text(source, 0, SInputMultiFormat::FormatAnsi, SKnownFormat());
    return SReadAll(text);
}

}  // namespace

TextInput::TextInput(const std::string& input, const Settings& settings,
                     std::optional<TextFormat> from)
    : settings_(settings),
      name_(IsStandardInput(input) ? "standard input" : input),
      bytes_(IsStandardInput(input) ? ReadStandardInput() : ReadFile(input)) {
    const std::string_view all = bytes_;
    bool highFirst = false;
    if (all.starts_with(MarkUtf8) && from.value_or(TextFormat::Utf8) == TextFormat::Utf8) {
        format_ = TextFormat::Utf8;
        markLength_ = MarkUtf8.size();
    } else if (all.starts_with(MarkLowFirst) &&
               from.value_or(TextFormat::Utf16) == TextFormat::Utf16) {
        format_ = TextFormat::Utf16;
        markLength_ = MarkLowFirst.size();
    } else if (all.starts_with(MarkHighFirst) && !from) {
        format_ = TextFormat::Utf16;
        markLength_ = MarkHighFirst.size();
        highFirst = true;
    } else {
        format_ = from.value_or(TextFormat::Ansi);
    }
    const std::string_view content = all.substr(markLength_);
    if (format_ == TextFormat::Utf16) wide_ = DecodeUtf16(name_, content, highFirst);
    if (format_ == TextFormat::Utf8) wide_ = DecodeUtf8(name_, content);
}

// One line on its way out: what was lost of it, and where in the input that was.
class TextInput::LineWriter {
public:
    LineWriter(const TextInput& input, TextFormat as) : input_(input), as_(as) {}

    std::string FromUnicode(std::u16string_view line, std::size_t unit) {
        SConversionLoss loss;
        std::string out = Encode(line, as_, loss);
        if (loss.count) Lose(loss.count, input_.ByteOffset(unit + loss.first));
        return out;
    }

    std::string FromBytes(std::string_view line, std::size_t offset) {
        if (as_ == input_.format_) return std::string(line);
        SConversionLoss undefined, loss;
        const SCodePageKind page = PageOf(input_.format_);
        std::string out = Encode(SUtf16FromText(line, &undefined, page), as_, loss);
        if (undefined.count) Lose(undefined.count, offset + undefined.first);
        if (loss.count) Lose(loss.count, offset + ByteOfUnit(line, page, loss.first));
        return out;
    }

    void Report() const {
        if (!count_) return;
        const std::string what = std::to_string(count_) +
                                 (count_ == 1 ? " character" : " characters") +
                                 " did not survive, the first at byte " + std::to_string(first_);
        if (input_.settings_.strict) throw Failure{input_.name_, what};
        Say("brcore8: " + input_.name_ + ": " + what);
    }

private:
    void Lose(std::size_t count, std::size_t first) {
        first_ = count_ ? std::min(first_, first) : first;
        count_ += count;
    }

    const TextInput& input_;
    TextFormat as_;
    std::size_t count_ = 0;
    std::size_t first_ = 0;
};

std::vector<std::string> TextInput::Lines(TextFormat as) const {
    std::vector<std::string> lines;
    LineWriter writer(*this, as);
    if (IsUnicode()) {
        const SWideTextLines source{std::u16string_view(wide_)};
        for (auto line = source.begin(); line != source.end(); ++line)
            lines.push_back(writer.FromUnicode(*line, line.Offset()));
    } else {
        const STextLines source{std::string_view(bytes_)};
        for (auto line = source.begin(); line != source.end(); ++line)
            lines.push_back(writer.FromBytes(*line, line.Offset()));
    }
    writer.Report();
    return lines;
}

std::string TextInput::AnsiText() const {
    if (format_ == TextFormat::Ansi) return ForcedAnsi(bytes_);
    std::string text;
    for (const std::string& line : Lines(TextFormat::Ansi))
        text += line + "\r\n";
    const bool open = !wide_.empty() && !SIsLineEnd(wide_.back());
    if (open) text.resize(text.size() - 2);
    return text;
}

// The input's byte where a unit of Unicode text came from.
std::size_t TextInput::ByteOffset(std::size_t unit) const {
    if (format_ == TextFormat::Utf16) return markLength_ + 2 * unit;
    std::size_t byte = markLength_;
    for (std::size_t units = 0; units < unit; ++units) {
        const auto lead = static_cast<unsigned char>(bytes_[byte]);
        byte += lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (lead >= 0xF0) ++units;
    }
    return byte;
}

}  // namespace tool
