// Input streams around another input stream: forwarding, buffering, pushing back.
//
// A filter made from a reference never owns the stream it wraps. One made from a pointer and a
// flag owns it when the flag is set, also when the constructor throws, and deletes it at the end.
// The wrapped stream must outlive the filter.
// Errors: SEOutOfMemory where a buffer cannot be had; whatever the wrapped stream throws.
#ifndef BRCORE8_STREAMS_INPUT_FILTERS_H
#define BRCORE8_STREAMS_INPUT_FILTERS_H

#include <brcore8/streams/input_stream.h>

// Forwards every operation.
class BRCORE8_API SInputFilterStream : public SInputStream {
    SDECLARE_CLASS(SInputFilterStream);

    explicit SInputFilterStream(SInputStream& stream) noexcept;
    SInputFilterStream(SInputStream* stream, bool own) noexcept;
    ~SInputFilterStream() override;

    unsigned long Read(void* buffer, unsigned long count) override;
    int Read() override;
    unsigned long Skip(unsigned long count) override;
    int IsEOF() override;
    unsigned long Available() override;
    void Close() override;
    void Reset() override;
    void Mark(unsigned long limit) override;
    int MarkSupported() override;

protected:
    SInputStream& Wrapped() const noexcept { return *stream_; }

private:
    SInputStream* stream_;
    bool own_;
};

// Reads ahead, and lets a mark hold more than the wrapped stream's own would.
class BRCORE8_API SInputBufferStream : public SInputFilterStream {
    SDECLARE_CLASS(SInputBufferStream);

    // Size 0 means 256.
    SInputBufferStream(SInputStream& stream, unsigned long size);
    ~SInputBufferStream() override;

    int Read() override;
    // A block at least as large as the buffer passes by it, unless there is a mark. At the end 0,
    // or what the wrapped stream says of it.
    unsigned long Read(void* buffer, unsigned long count) override;
    // What is not in the buffer is skipped in the wrapped stream, mark or no mark.
    unsigned long Skip(unsigned long count) override;
    int IsEOF() override;
    unsigned long Available() override;
    // Throws SException "Resetting to invalid mark" when there is none: none was set, or too much
    // was read since.
    void Reset() override;
    // The mark holds while `limit` bytes are read (0 means 8192), and longer while the buffer has
    // room: the buffer grows up to the limit.
    void Mark(unsigned long limit) override;
    int MarkSupported() override;  // 1

private:
    enum : unsigned long { NoMark = EndOfData };
    void Fill();
    void MakeRoom();

    char* buffer_;
    unsigned long size_;
    unsigned long count_ = 0;
    unsigned long position_ = 0;
    unsigned long mark_ = NoMark;
    unsigned long markLimit_;
};

// Takes bytes back, to be read again before the rest.
class BRCORE8_API SInputPushbackStream : public SInputFilterStream {
    SDECLARE_CLASS(SInputPushbackStream);

    // `capacity`: how many bytes can be pushed back at once.
    SInputPushbackStream(SInputStream& stream, unsigned long capacity);
    SInputPushbackStream(SInputStream* stream, unsigned long capacity, bool own);
    ~SInputPushbackStream() override;

    // Puts bytes in front of what is read next; the first of a block is read first. Throw
    // SException "Push back buffer is full" when there is not enough room, and take none then.
    virtual void Unread(void* data, unsigned long count);
    virtual void Unread(unsigned char byte);

    int Read() override;
    // EndOfData when nothing was pushed back and the wrapped stream says so.
    unsigned long Read(void* buffer, unsigned long count) override;
    // Bytes pushed back count with the wrapped stream's.
    unsigned long Skip(unsigned long count) override;
    int IsEOF() override;
    unsigned long Available() override;

    // Mark and reset the wrapped stream. Of the bytes pushed back their number is remembered, and
    // as many bytes from the start of the push-back area, whose end is where they lie: a mark
    // keeps their values only while the area is full.
    void Reset() override;
    void Mark(unsigned long limit) override;

protected:
    bool HasUnread() const noexcept { return position_ < capacity_; }

private:
    unsigned long capacity_;
    unsigned long position_;
    unsigned char* buffer_;
    unsigned char* saved_ = nullptr;
    unsigned long savedPosition_;
};

#endif
