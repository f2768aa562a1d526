// SOutputBinaryStream and SInputBinaryStream: values as bytes, and back. Saved layouts and states
// are written through them.
//
//     value    := its 1, 2 or 4 bytes, low byte first
//     string   := length, the text as UTF-8, a zero byte
//     length   := 1 byte, below 255            number of bytes that follow it,
//               | FF, 2 bytes, below 65535     the zero byte counted
//               | FF, FF FF, 4 bytes, below 2^31
//     table    := 4-byte count, strings
//     map      := 4-byte count, pairs of strings: key, value, in the map's order
//
// Bitmaps and icons travel too: see graphics/bitmap.h and graphics/icon.h.
// The bytes are the same on every system. Text is that of the process's code page.
//
// Threads: a stream belongs to one thread at a time.
// Memory: no count and no length in the input is believed: memory follows the bytes that arrived.
// Errors: SEOutOfMemory; whatever the wrapped stream throws; and those named below. What was to be
// read is then empty (a plain value: as it was), and the stream stands somewhere in the value.
//
//     SOutputBinaryStream out(file);
//     out << std::int32_t{3} << SString("left") << recentFiles;
//     ...
//     SInputBinaryStream in(file);
//     std::int32_t version;
//     in >> version >> side >> recentFiles;
#ifndef BRCORE8_STREAMS_BINARY_STREAM_H
#define BRCORE8_STREAMS_BINARY_STREAM_H

#include <brcore8/streams/input_filters.h>
#include <brcore8/streams/output_filters.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/string_map.h>
#include <brcore8/strings/string_table.h>

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace brcore8 {

// Integers of the same size on every system: `long`, `wchar_t` and `bool` are none.
template <class T>
concept BinaryValue = std::same_as<T, char> || std::same_as<T, signed char> ||
    std::same_as<T, unsigned char> || std::same_as<T, short> || std::same_as<T, unsigned short> ||
    std::same_as<T, int> || std::same_as<T, unsigned int>;

}  // namespace brcore8

class BRCORE8_API SOutputBinaryStream : public SOutputFilterStream {
    SDECLARE_CLASS(SOutputBinaryStream);

    explicit SOutputBinaryStream(SOutputStream& stream) noexcept;
    SOutputBinaryStream(SOutputStream* stream, bool own) noexcept;
    ~SOutputBinaryStream() override;

    // All throw SEIOException "Write failed" when the wrapped stream takes less than given.

    template <brcore8::BinaryValue T>
    SOutputBinaryStream& operator<<(T value) {
        WriteValue(static_cast<std::uint32_t>(value), sizeof(T));
        return *this;
    }
    // The text to its first zero byte, at which a reader ends too. Throws SEIOException "Invalid
    // string in binary stream" for a text that no length can tell; nothing is written then.
    SOutputBinaryStream& operator<<(const SString& text);
    SOutputBinaryStream& operator<<(const SStringTable& table);
    // Any of the four string maps, in its order.
    template <class Map>
    SOutputBinaryStream& operator<<(const __SStringMap<Map>& map) {
        *this << map.GetCount();
        for (const auto& [key, value] : map)
            *this << key << value;
        return *this;
    }

    // A string whose text is UTF-8 already, with what no code page holds; the same errors.
    void WriteUtf8(std::string_view text);

    // The bytes as they are.
    void WriteBytes(const void* data, std::size_t size);

private:
    void WriteText(const char* text, std::size_t size);
    void WriteValue(std::uint32_t value, unsigned long bytes);
};

class BRCORE8_API SInputBinaryStream : public SInputFilterStream {
    SDECLARE_CLASS(SInputBinaryStream);

    // Up to this length a string is read as far as there are bytes; a longer one only when the
    // wrapped stream says that so many are available.
    enum : std::uint32_t { TrustedLength = 0x300000 };

    explicit SInputBinaryStream(SInputStream& stream) noexcept;
    SInputBinaryStream(SInputStream* stream, bool own) noexcept;
    ~SInputBinaryStream() override;

    // All throw SEEOFException "Unexpected end of file" when the input ends within a value. A
    // source that gives fewer bytes than asked for is asked again.

    template <brcore8::BinaryValue T>
    SInputBinaryStream& operator>>(T& value) {
        value = static_cast<T>(ReadValue(sizeof(T)));
        return *this;
    }
    // The text to its first zero byte, whatever the length says; every malformed sequence of UTF-8
    // and every character that the page does not have becomes its default character. Length 0 is
    // an empty string. Throws SEIOException "Invalid string in binary stream" for a length of 2^31
    // or more, or above TrustedLength and above the wrapped stream's Available().
    SInputBinaryStream& operator>>(SString& text);
    SInputBinaryStream& operator>>(SStringTable& table);
    // A string's UTF-8 as it stands, to its first zero byte; the same errors.
    std::string ReadUtf8();
    // Any of the four string maps. Of pairs whose keys are equal to it the last stays.
    template <class Map>
    SInputBinaryStream& operator>>(__SStringMap<Map>& map);

private:
    std::uint32_t ReadLength();
    std::uint32_t ReadValue(unsigned long bytes);
};

template <class Map>
SInputBinaryStream& SInputBinaryStream::operator>>(__SStringMap<Map>& map) {
    map.Clear();
    try {
        SString key;
        SString value;
        for (std::uint32_t left = ReadValue(4); left > 0; --left) {
            *this >> key >> value;
            map.Add(key, value);
        }
    } catch (...) {
        map.Clear();
        throw;
    }
    return *this;
}

#endif
