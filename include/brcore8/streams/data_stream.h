// SDataOutputStream and SDataInputStream: whole numbers, high byte first, and text behind a short
// length.
//
//     int      := 4 bytes, high byte first
//     long     := int (high word), int (low word)
//     utf      := 2-byte length in bytes, high byte first, the text as UTF-8
//     chars    := UTF-16 units, each high byte first
//     unicode  := 2-byte count of units, high byte first, chars
//
// Text is that of the process's code page; zero bytes are text.
// Threads: a stream belongs to one thread at a time.
// Errors: SEOutOfMemory; whatever the wrapped stream throws; and those named below. The stream then
// stands somewhere in the value.
//
//     SDataOutputStream out(file);
//     out.WriteLong(stamp);
//     out.WriteUTF("caf\xE9");                 // 00 05 63 61 66 C3 A9
#ifndef BRCORE8_STREAMS_DATA_STREAM_H
#define BRCORE8_STREAMS_DATA_STREAM_H

#include <brcore8/streams/input_filters.h>
#include <brcore8/streams/output_filters.h>
#include <brcore8/strings/string.h>

#include <cstdint>

class BRCORE8_API SDataOutputStream : public SOutputFilterStream {
    SDECLARE_CLASS(SDataOutputStream);

    explicit SDataOutputStream(SOutputStream& stream) noexcept;
    SDataOutputStream(SOutputStream* stream, bool own) noexcept;
    ~SDataOutputStream() override;

    // All throw SEIOException "Write failed" when the wrapped stream takes less than given.

    void WriteInt(std::int32_t value);
    void WriteLong(std::int64_t value);

    // Throws SEIOException "Text too long for a data stream" when it is longer than 65,535 bytes of
    // UTF-8; nothing is written then.
    void WriteUTF(const SString& text);
    // No length is written: the reader must know it.
    void WriteChars(const SString& text);
    // What ReadUnicode reads. Throws as WriteUTF does, for more than 65,535 units.
    void WriteUnicode(const SString& text);

private:
    void WriteBlock(const void* data, std::size_t size);
};

class BRCORE8_API SDataInputStream : public SInputFilterStream {
    SDECLARE_CLASS(SDataInputStream);

    explicit SDataInputStream(SInputStream& stream) noexcept;
    SDataInputStream(SInputStream* stream, bool own) noexcept;
    ~SDataInputStream() override;

    // All throw SEEOFException "Unexpected end of file" when the input ends within a value.

    std::int32_t ReadInt();
    // The high word shifted, or-ed with the low word extended by its sign: a low word of
    // 0x80000000 or more makes the high word all ones, so that of what WriteLong writes only values
    // from -2^31 to 2^31 - 1, and others with a low word below 0x80000000, come back.
    std::int64_t ReadLong();

    // Characters that the page does not have become its default character. Sequences of one to
    // three bytes, longer than needed perhaps; any other throws SEUTFException "Unexpected UTF
    // encoding!", and so does one that the length cuts short.
    SString ReadUTF();
    SString ReadUnicode();

private:
    std::uint32_t ReadShort();
};

#endif
