// Text on its way between encodings, 64 KB at a time, beside the C library's converter, ICU and Qt.
// Of the text of every encoding the lines end with CR LF, which the library's streams also see to.
#include <brcore8/streams/encodings.h>
#include <brcore8/streams/input_buffer.h>

#include <QtCore/QString>
#include <QtCore/QTextCodec>
#include <iconv.h>
#include <unicode/ucnv.h>
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bench.h"

namespace {

using bench::Expect;

constexpr std::size_t kBytes = 64 << 20;
constexpr std::size_t kBlock = 64 << 10;

enum class Encoding { Utf8, Utf16, Ansi };
constexpr const char* kNames[] = {"UTF-8", "UTF-16LE", "windows-1252"};

std::string Convert(std::string_view text, const char* from, const char* to) {
    const iconv_t converter = iconv_open(to, from);
    std::string result(2 * text.size(), '\0');
    char* in = const_cast<char*>(text.data());
    std::size_t left = text.size();
    char* out = result.data();
    std::size_t room = result.size();
    Expect(iconv(converter, &in, &left, &out, &room) == 0, "iconv");
    iconv_close(converter);
    result.resize(result.size() - room);
    return result;
}

// Lines of prose; every eighth word of a mixed text has an accent, and some a dash or a euro sign.
// It has at least as many bytes as asked for in its encoding, and ends with a line.
const std::string& Text(Encoding encoding, bool mixed) {
    static std::string made[3][2];
    std::string& text = made[static_cast<int>(encoding)][mixed];
    if (!text.empty()) return text;
    std::string utf8;
    for (int line = 0; utf8.size() < (1u << 20); ++line)
        utf8 += "The north wing of the " +
                std::string(mixed ? "caf\u00e9 is three meters wide \u2013 na\u00efve, 12 \u20ac"
                                  : "house is three meters wide and naive, 12 EUR") +
                " and the bridge spans " + std::to_string(line) + " meters of water.\r\n";
    const std::string part = Convert(utf8, "UTF-8", kNames[static_cast<int>(encoding)]);
    while (text.size() < kBytes)
        text += part;
    return text;
}

struct Ours {
    Ours(Encoding from, std::string_view) : from_(from) {}
    std::size_t operator()(std::string_view text, Encoding) {
        SInputBuffer source(text.data(), static_cast<int>(text.size()));
        SInputForcedANSIStream stream(source, 0,
                                      from_ == Encoding::Utf8 ? SInputMultiFormat::FormatUtf8
                                                              : SInputMultiFormat::FormatUtf16,
                                      SKnownFormat());
        std::size_t total = 0;
        for (unsigned long got; (got = stream.Read(block_.data(), kBlock)) != 0; total += got)
            benchmark::DoNotOptimize(block_.data());
        return total;
    }

private:
    Encoding from_;
    std::vector<char> block_ = std::vector<char>(kBlock);
};

// Writing: the program has its texts in pieces already.
struct OurWriter {
    OurWriter(Encoding, std::string_view text) {
        for (std::size_t at = 0; at < text.size(); at += kBlock)
            pieces_.emplace_back(text.substr(at, kBlock));
    }
    std::size_t operator()(std::string_view, Encoding) {
        Counter counter;
        SOutputStringStream stream(counter, SOutputStringStream::FormatUtf8);
        for (const SString& piece : pieces_)
            stream.Write(piece);
        return counter.bytes;
    }

private:
    struct Counter : SOutputStream {
        std::size_t bytes = 0;
        unsigned long Write(const void* data, unsigned long count) override {
            benchmark::DoNotOptimize(data);
            bytes += count;
            return count;
        }
        void Write(int) override { ++bytes; }
        void Flush() override {}
        void Close() override {}
    };
    std::vector<SString> pieces_;
};

struct Iconv {
    Iconv(Encoding from, std::string_view) : from_(from) {}
    std::size_t operator()(std::string_view text, Encoding to) {
        const iconv_t converter =
            iconv_open(kNames[static_cast<int>(to)], kNames[static_cast<int>(from_)]);
        char* in = const_cast<char*>(text.data());
        std::size_t left = text.size(), total = 0;
        while (left != 0) {
            char* out = block_.data();
            std::size_t room = kBlock;
            iconv(converter, &in, &left, &out, &room);
            benchmark::DoNotOptimize(block_.data());
            total += kBlock - room;
        }
        iconv_close(converter);
        return total;
    }

private:
    Encoding from_;
    std::vector<char> block_ = std::vector<char>(kBlock);
};

struct Icu {
    Icu(Encoding from, std::string_view) : from_(from) {}
    std::size_t operator()(std::string_view text, Encoding to) {
        UErrorCode error = U_ZERO_ERROR;
        UConverter* const reader = ucnv_open(kNames[static_cast<int>(from_)], &error);
        UConverter* const writer = ucnv_open(kNames[static_cast<int>(to)], &error);
        Expect(U_SUCCESS(error), "ICU");
        const char* in = text.data();
        const char* const end = in + text.size();
        UChar* middle = pivot_.data();
        UChar* middleEnd = pivot_.data();
        std::size_t total = 0;
        do {
            char* out = block_.data();
            error = U_ZERO_ERROR;
            ucnv_convertEx(writer, reader, &out, out + kBlock, &in, end, pivot_.data(), &middle,
                           &middleEnd, pivot_.data() + pivot_.size(), in == text.data(), true,
                           &error);
            benchmark::DoNotOptimize(block_.data());
            total += static_cast<std::size_t>(out - block_.data());
        } while (error == U_BUFFER_OVERFLOW_ERROR);
        Expect(U_SUCCESS(error), "ICU");
        ucnv_close(reader);
        ucnv_close(writer);
        return total;
    }

private:
    Encoding from_;
    std::vector<char> block_ = std::vector<char>(kBlock);
    std::vector<UChar> pivot_ = std::vector<UChar>(kBlock / 2);
};

struct Qt {
    Qt(Encoding from, std::string_view) : from_(from) {}
    std::size_t operator()(std::string_view text, Encoding to) {
        const std::unique_ptr<QTextDecoder> decoder(Codec(from_)->makeDecoder());
        const std::unique_ptr<QTextEncoder> encoder(
            Codec(to)->makeEncoder(QTextCodec::IgnoreHeader));
        std::size_t total = 0;
        for (std::size_t at = 0; at < text.size(); at += kBlock) {
            const std::string_view part = text.substr(at, kBlock);
            const QByteArray converted = encoder->fromUnicode(
                decoder->toUnicode(part.data(), static_cast<int>(part.size())));
            benchmark::DoNotOptimize(converted.constData());
            total += static_cast<std::size_t>(converted.size());
        }
        return total;
    }

private:
    static QTextCodec* Codec(Encoding encoding) {
        return QTextCodec::codecForName(kNames[static_cast<int>(encoding)]);
    }
    Encoding from_;
};

template <class Converter, Encoding From, Encoding To, bool Mixed>
void Run(benchmark::State& state) {
    const std::string& text = Text(From, Mixed);
    static const std::size_t expected =
        Convert(text, kNames[static_cast<int>(From)], kNames[static_cast<int>(To)]).size();
    Converter converter(From, text);
    for (auto _ : state)
        Expect(converter(text, To) == expected, "conversion");
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

template <class Mine, Encoding From, Encoding To, bool Mixed>
bool Compete(const char* workload) {
    return bench::Compete(workload, {{"brcore8", Run<Mine, From, To, Mixed>},
                                     {"iconv", Run<Iconv, From, To, Mixed>},
                                     {"ICU", Run<Icu, From, To, Mixed>},
                                     {"Qt", Run<Qt, From, To, Mixed>}});
}

[[maybe_unused]] const bool encodings[] = {
    Compete<Ours, Encoding::Utf8, Encoding::Ansi, false>("streams/utf8_to_1252_ascii_64m"),
    Compete<Ours, Encoding::Utf8, Encoding::Ansi, true>("streams/utf8_to_1252_mixed_64m"),
    Compete<Ours, Encoding::Utf16, Encoding::Ansi, true>("streams/utf16_to_1252_mixed_64m"),
    Compete<OurWriter, Encoding::Ansi, Encoding::Utf8, true>("streams/1252_to_utf8_mixed_64m"),
};

}  // namespace
