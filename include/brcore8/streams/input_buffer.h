// Input from memory: SInputBuffer over bytes that it does not own, SInputGlobal over a block of
// global memory that it does.
#ifndef BRCORE8_STREAMS_INPUT_BUFFER_H
#define BRCORE8_STREAMS_INPUT_BUFFER_H

#include <brcore8/streams/global.h>
#include <brcore8/streams/input_stream.h>

#include <cstddef>

// Reads bytes in place; they must stay until the stream is closed or gone.
class BRCORE8_API SInputBuffer : public SInputStream {
    SDECLARE_CLASS(SInputBuffer);

    // A length below 1 is an empty input.
    SInputBuffer(const void* data, int length) noexcept;
    ~SInputBuffer() override;

    int Read() override;
    // 0 at the end.
    unsigned long Read(void* buffer, unsigned long count) override;
    // Returns the smaller of `count` and what is left, and always goes to the end: a skip exhausts
    // the buffer.
    unsigned long Skip(unsigned long count) override;
    unsigned long Available() override;
    void Close() override;

    // Without a mark, Reset goes to the start. The limit is ignored.
    void Reset() override;
    void Mark(unsigned long limit) override;
    int MarkSupported() override;  // 1

protected:
    // An empty input until Init gives it memory.
    SInputBuffer() noexcept = default;
    void Init(const void* data, int length) noexcept;
    void InitSize(const void* data, std::size_t size) noexcept;  // the same for any size

private:
    const unsigned char* start_ = nullptr;
    const unsigned char* end_ = nullptr;
    const unsigned char* current_ = nullptr;
    const unsigned char* mark_ = nullptr;
};

// Reads a block of global memory, which stays locked until Close and is freed with the stream.
class BRCORE8_API SInputGlobal : public SInputBuffer {
    SDECLARE_CLASS(SInputGlobal);

    // Takes the block over: all of it, or its first `length` bytes (never more than there are).
    explicit SInputGlobal(void* handle);
    explicit SInputGlobal(SHGlobal block);
    SInputGlobal(void* handle, int length);
    SInputGlobal(SHGlobal block, int length);
    ~SInputGlobal() override;

private:
    SHGlobal block_;
};

#endif
