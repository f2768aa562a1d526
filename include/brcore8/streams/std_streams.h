// Bridges to the streams and spans of the standard library.
//
//     SInputStdStream source(std::cin);              // ours, from theirs
//     SPreprocessor('#').Preprocess(SString(SReadAll(source)), &symbols);
//
//     SInputFile file("names.txt");
//     SInputStreamBuffer buffer(file);               // theirs, from ours
//     for (std::string line; std::istream(&buffer) >> line;) Use(line);
//
// Threads: as the stream behind. Ownership: each refers to the stream behind it, which must outlive
// it. The classes of ours have no descriptor of their own and pass for their base.
#ifndef BRCORE8_STREAMS_STD_STREAMS_H
#define BRCORE8_STREAMS_STD_STREAMS_H

#include <brcore8/platform/export.h>
#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/input_stream.h>
#include <brcore8/streams/output_stream.h>

#include <cstddef>
#include <istream>
#include <ostream>
#include <span>
#include <streambuf>

// Reads what a std::istream reads, without touching its format flags or skipping blanks. When the
// stream turns out broken (badbit), which its own kind would keep silent about, reading throws
// SEIOException "Read failed"; an exception of its buffer sets that state as it does for others.
class BRCORE8_API SInputStdStream : public SInputStream {
public:
    explicit SInputStdStream(std::istream& stream) noexcept : stream_(stream) {}

    int Read() override;
    unsigned long Read(void* buffer, unsigned long count) override;  // 0 at the end
    int IsEOF() override;                                            // looks for a byte
    unsigned long Available() override;  // what its buffer says it holds; 0 when that is unknown
    void Close() override {}             // the other stream stays open

private:
    std::istream& stream_;
};

// Writes to a std::ostream. A write or flush that fails throws SEIOException "Write failed".
class BRCORE8_API SOutputStdStream : public SOutputStream {
public:
    explicit SOutputStdStream(std::ostream& stream) noexcept : stream_(stream) {}

    unsigned long Write(const void* data, unsigned long count) override;
    void Write(int byte) override;
    void Flush() override;
    void Close() override;  // flushes; the other stream stays open

private:
    std::ostream& stream_;
};

// The buffer of a std::istream that reads one of our streams, 4,096 bytes ahead. An exception of
// that stream passes through the buffer; a std::istream catches it and sets badbit.
class BRCORE8_API SInputStreamBuffer : public std::streambuf {
public:
    explicit SInputStreamBuffer(SInputStream& stream) noexcept : stream_(stream) {}

protected:
    int_type underflow() override;

private:
    SInputStream& stream_;
    char buffer_[4096];
};

// The buffer of a std::ostream that writes one of our streams. What was gathered is written when
// 4,096 bytes are together and on flush; the destructor writes the rest and reports nothing.
class BRCORE8_API SOutputStreamBuffer : public std::streambuf {
public:
    explicit SOutputStreamBuffer(SOutputStream& stream) noexcept;
    ~SOutputStreamBuffer() override;

protected:
    int_type overflow(int_type byte) override;
    int sync() override;  // writes what is gathered and flushes our stream

private:
    void WriteGathered();

    SOutputStream& stream_;
    char buffer_[4096];
};

// Reads the bytes of a span in place; they must stay.
class SInputSpan : public SInputBuffer {
public:
    explicit SInputSpan(std::span<const std::byte> bytes) noexcept {
        InitSize(bytes.data(), bytes.size());
    }
};

// Fills a span. What has no room any more throws SEIOException "Write failed", after the part that
// fits was written.
class BRCORE8_API SOutputSpan : public SOutputStream {
public:
    explicit SOutputSpan(std::span<std::byte> room) noexcept : room_(room) {}

    unsigned long Write(const void* data, unsigned long count) override;
    void Write(int byte) override;

    // What was written so far.
    std::span<std::byte> Written() const noexcept { return room_.first(size_); }

private:
    std::span<std::byte> room_;
    std::size_t size_ = 0;
};

#endif
