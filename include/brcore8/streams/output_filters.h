// Output streams around another output stream: forwarding and buffering.
//
// A filter made from a reference never owns the stream it wraps. One made from a pointer and a
// flag owns it when the flag is set, also when the constructor throws, and deletes it at the end.
// The wrapped stream must outlive the filter.
#ifndef BRCORE8_STREAMS_OUTPUT_FILTERS_H
#define BRCORE8_STREAMS_OUTPUT_FILTERS_H

#include <brcore8/streams/output_stream.h>

// Forwards every operation.
class BRCORE8_API SOutputFilterStream : public SOutputStream {
    SDECLARE_CLASS(SOutputFilterStream);

    explicit SOutputFilterStream(SOutputStream& stream) noexcept;
    SOutputFilterStream(SOutputStream* stream, bool own) noexcept;
    ~SOutputFilterStream() override;

    unsigned long Write(const void* data, unsigned long count) override;
    void Write(int byte) override;
    void Close() override;
    void Flush() override;

protected:
    SOutputStream& Wrapped() const noexcept { return *stream_; }

private:
    SOutputStream* stream_;
    bool own_;
};

// Gathers small writes. Flush or Close it: bytes still in the buffer when it is destroyed are
// dropped, since a destructor could not tell that writing them failed.
class BRCORE8_API SOutputBufferStream : public SOutputFilterStream {
    SDECLARE_CLASS(SOutputBufferStream);

    // Size 0 means 256. Throw SEOutOfMemory.
    SOutputBufferStream(SOutputStream& stream, unsigned long size);
    SOutputBufferStream(SOutputStream* stream, unsigned long size, bool own);
    ~SOutputBufferStream() override;

    // A block at least as large as the buffer goes straight on, after what is buffered; the result
    // is then the wrapped stream's.
    unsigned long Write(const void* data, unsigned long count) override;
    void Write(int byte) override;
    void Close() override;
    void Flush() override;

protected:
    // Writes the buffer to the wrapped stream. When that takes fewer bytes, the rest stays and
    // SEIOException "Write failed" is thrown; when it throws, nobody knows how many it took, and
    // the buffer is emptied so that none is written twice.
    void FlushBuffer();

private:
    unsigned long size_;
    unsigned long count_ = 0;
    char* buffer_;
};

#endif
