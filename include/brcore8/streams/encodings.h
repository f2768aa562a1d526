// Text in byte streams: finding a stream's format, reading it as text of the process's code page,
// writing such text in a chosen format.
//
// The readers keep some rules that lose bytes, each stated where it applies. To lose none, give the
// format as known (SKnownFormat), take blocks instead of single bytes, or read everything
// (SReadAll) and cut lines yourself (text_lines.h). Errors: SEUTFException "Unexpected UTF
// encoding!" with the bytes of the sequence; SEEOFException "Unexpected end of file" for half a
// UTF-16 unit; what the wrapped stream throws; SEOutOfMemory.
#ifndef BRCORE8_STREAMS_ENCODINGS_H
#define BRCORE8_STREAMS_ENCODINGS_H

#include <brcore8/streams/input_filters.h>
#include <brcore8/streams/output_filters.h>
#include <brcore8/strings/string.h>

#include <cstdint>
#include <string_view>

namespace SAbstractIO {

struct SMultiFormatSupport {
    enum Format : std::int32_t {
        FormatAnsi = 0,   // 8-bit text in the process's code page
        FormatOem = 1,    // 8-bit text in the OEM code page; readers do not convert it
        FormatUtf16 = 2,  // two-byte units, low byte first
        FormatUtf8 = 3
    };
};

}  // namespace SAbstractIO

// Says that the format given is the stream's own: nothing is looked at, nothing is consumed.
struct SKnownFormat {};

// A push-back stream that knows the format of its text.
//
// Without SKnownFormat the constructor looks at the first three bytes of the source. EF BB BF means
// UTF-8; FE FF means UTF-16, low byte first all the same, and the byte behind it is lost. All else,
// FF FE too, is pushed back and leaves the default: the format given, or FormatAnsi. A source of
// fewer than three bytes leaves the default too, and its bytes are lost.
// The push-back capacity is at least 3.
class BRCORE8_API SInputMultiFormat : public SInputPushbackStream,
                                      public SAbstractIO::SMultiFormatSupport {
    SDECLARE_CLASS(SInputMultiFormat);

    SInputMultiFormat(SInputStream& stream, unsigned long capacity);
    SInputMultiFormat(SInputStream& stream, unsigned long capacity, Format format);
    SInputMultiFormat(SInputStream& stream, unsigned long capacity, Format format, SKnownFormat);
    SInputMultiFormat(SInputStream* stream, bool own, unsigned long capacity);
    SInputMultiFormat(SInputStream* stream, bool own, unsigned long capacity, Format format);
    SInputMultiFormat(SInputStream* stream, bool own, unsigned long capacity, Format format,
                      SKnownFormat);
    ~SInputMultiFormat() override;

    Format GetFormat() const noexcept { return format_; }

protected:
    enum : unsigned { EndOfText = 0xFFFF };
    bool IsUnicode() const noexcept { return format_ >= FormatUtf16; }

    // The next UTF-16 unit of UTF-16 text, else the next character of UTF-8 (up to three bytes),
    // or EndOfText.
    unsigned ReadCharacter();
    // After a line end that began with `first`: passes over what else belongs to it. After CR every
    // CR, then one LF; after LF one CR. In Unicode formats this looks at single bytes, so that a
    // UTF-16 unit whose low byte is CR or LF is taken for one.
    void ConsumeLineEnd(int first);

    // Bytes of the wrapped stream that a derived class has read in a block: they come after what is
    // pushed back and before the rest of the stream.
    struct Ahead {
        const unsigned char* next = nullptr;
        const unsigned char* end = nullptr;
        unsigned long Count() const noexcept { return static_cast<unsigned long>(end - next); }
    };
    Ahead ahead_;

    // The next byte of the text as it stands, or -1.
    int ReadByte();

private:
    void Detect();

    Format format_;
};

// Any text as bytes of the process's code page, every line end (U+2028 too) as CR LF.
class BRCORE8_API SInputForcedANSIStream : public SInputMultiFormat {
    SDECLARE_CLASS(SInputForcedANSIStream);

    using SInputMultiFormat::SInputMultiFormat;
    ~SInputForcedANSIStream() override;

    // The next byte, sign-extended: 0x80 to 0xFF come as negative values, 0xFF as -1, the end.
    int Read() override;
    // The same bytes as they are, 0xFF among them; 0 at the end.
    unsigned long Read(void* buffer, unsigned long count) override;
    // Counts converted bytes, as Read gives them.
    unsigned long Skip(unsigned long count) override;
    int IsEOF() override;
    // Bytes of the source: the text may come out longer or shorter.
    unsigned long Available() override;
    // Back to the very byte: between the CR and the LF of a line end, or behind malformed text,
    // too.
    void Mark(unsigned long limit) override;
    void Reset() override;

private:
    int Next();  // 0 to 255, or -1
    void ReadAhead(unsigned long room);
    unsigned long ConvertAhead(unsigned char* out, unsigned long room);

    unsigned char* block_ = nullptr;
    int pending_ = -1;  // the byte that follows the one returned last; below 1 when none
    // What was read ahead, and the byte that was due, when the mark was set.
    unsigned char* marked_ = nullptr;
    unsigned long markedCount_ = 0;
    int markedPending_ = -1;
};

// Lines of any text.
class BRCORE8_API SInputStringStream : public SInputMultiFormat {
    SDECLARE_CLASS(SInputStringStream);

    using SInputMultiFormat::SInputMultiFormat;
    ~SInputStringStream() override;

    // The text up to the next CR or LF (in Unicode formats also U+2028), which is consumed as
    // ConsumeLineEnd says; zero bytes are text. Unicode text is converted to the process's code
    // page; U+FFFF ends it. Empty at the end of the input; IsEOF() tells.
    SString ReadLn();

private:
    SString ReadBytes();
    SString ReadUnicode();
};

// Text of the process's code page, written in a format. No byte-order mark is written.
class BRCORE8_API SOutputStringStream : public SOutputFilterStream,
                                        public SAbstractIO::SMultiFormatSupport {
    SDECLARE_CLASS(SOutputStringStream);

    explicit SOutputStringStream(SOutputStream& stream, Format format = FormatAnsi) noexcept;
    SOutputStringStream(SOutputStream* stream, bool own, Format format = FormatAnsi) noexcept;
    ~SOutputStringStream() override;

    using SOutputFilterStream::Write;
    // The text in one block of the wrapped stream; zero bytes are text. UTF-8 is the standard form.
    // Throws SEIOException "Write failed" when the block is not taken whole.
    void Write(const SString& text);
    // The text, then CR LF.
    void WriteLn();
    void WriteLn(const SString& text);

    // For what is written from now on.
    void SetFormat(Format format) noexcept { format_ = format; }
    Format GetFormat() const noexcept { return format_; }

private:
    void WriteBlock(std::string_view bytes);
    void WriteUtf8(std::string_view text);

    Format format_;
};

#endif
