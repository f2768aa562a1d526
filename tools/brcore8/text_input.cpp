#include "text_input.h"

#include "progress.h"

#include <brcore8/core/exception.h>
#include <brcore8/streams/input_file.h>
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
    return input == "-";
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
        ReadingStep progress;
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
    std::string bytes(text.size() * 2, '\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        bytes[2 * i] = static_cast<char>(text[i] & 0xFF);
        bytes[2 * i + 1] = static_cast<char>(text[i] >> 8);
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

}  // namespace

void ReportLoss(std::size_t count, std::size_t first, const std::string& name,
                const Settings& settings) {
    if (!count) return;
    const std::string what = std::to_string(count) + (count == 1 ? " character" : " characters") +
                             " did not survive, the first at byte " + std::to_string(first);
    if (settings.strict) throw Failure{name, what};
    Say("brcore8: " + name + ": " + what);
}

void ReportLoss(const std::string& name, std::size_t count, const std::string& first,
                const Settings& settings) {
    if (count == 0) return;
    const std::string what = std::to_string(count) + (count == 1 ? " character" : " characters") +
                             " did not survive, the first " + first;
    if (settings.strict) throw Failure{name, what};
    Say("brcore8: " + name + ": " + what);
}

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

// Appends lines to a text, and notes what was lost of them and where in the input the first was.
class TextInput::LineWriter {
public:
    LineWriter(const TextInput& input, TextFormat as, std::string& out)
        : input_(input), as_(as), out_(out) {}

    void FromUnicode(std::u16string_view line, std::size_t unit) {
        SConversionLoss loss;
        out_ += Encode(line, as_, loss);
        // Only once, since finding the byte of a unit walks the input.
        if (loss.count && !count_) first_ = input_.ByteOffset(unit + loss.first);
        count_ += loss.count;
    }

    void FromBytes(std::string_view line, std::size_t offset) {
        if (as_ == input_.format_) {
            out_ += line;
            return;
        }
        SConversionLoss undefined, loss;
        out_ += Encode(SUtf16FromText(line, &undefined, PageOf(input_.format_)), as_, loss);
        // A character that is undefined here may be lost over there too: it is one all the same.
        const bool both = undefined.count && loss.count;
        if (both || (!count_ && undefined.count + loss.count))
            CountEach(line, offset);
        else
            count_ += undefined.count + loss.count;
    }

    void Report() const {
        ReportLoss(input_.name_, count_, "at byte " + std::to_string(first_), input_.settings_);
    }

private:
    // Every page has one unit for each character of one or two bytes.
    void CountEach(std::string_view line, std::size_t offset) {
        const SCodePageKind page = PageOf(input_.format_);
        while (!line.empty()) {
            const bool pair = SUtf16FromText(line.substr(0, 2), nullptr, page).size() == 1;
            const std::size_t bytes = pair ? std::min<std::size_t>(line.size(), 2) : 1;
            SConversionLoss undefined, loss;
            Encode(SUtf16FromText(line.substr(0, bytes), &undefined, page), as_, loss);
            if ((undefined.count || loss.count) && !count_++) first_ = offset;
            offset += bytes;
            line.remove_prefix(bytes);
        }
    }

    const TextInput& input_;
    TextFormat as_;
    std::string& out_;
    std::size_t count_ = 0;
    std::size_t first_ = 0;
};

std::string TextInput::Text(TextFormat as, std::string_view lineEnd) const {
    std::string text;
    text.reserve(bytes_.size());
    LineWriter writer(*this, as, text);
    BeginStep(IsUnicode() ? wide_.size() : bytes_.size());
    if (IsUnicode()) {
        const SWideTextLines source{std::u16string_view(wide_)};
        for (auto line = source.begin(); line != source.end(); ++line) {
            StepDone(line.Offset());
            writer.FromUnicode(*line, line.Offset());
            text += lineEnd;
        }
    } else {
        const STextLines source{std::string_view(bytes_)};
        for (auto line = source.begin(); line != source.end(); ++line) {
            StepDone(line.Offset());
            writer.FromBytes(*line, line.Offset());
            text += lineEnd;
        }
    }
    writer.Report();
    return text;
}

std::string TextInput::Uncut(TextFormat as) const {
    std::string text;
    text.reserve(bytes_.size());
    LineWriter writer(*this, as, text);
    if (IsUnicode())
        writer.FromUnicode(wide_, 0);
    else
        writer.FromBytes(bytes_, 0);
    writer.Report();
    return text;
}

bool TextInput::EndsOpen() const {
    if (IsUnicode()) return !wide_.empty() && !SIsLineEnd(wide_.back());
    return !bytes_.empty() && !SIsLineEnd(bytes_.back());
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
