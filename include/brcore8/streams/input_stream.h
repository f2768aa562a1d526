// SInputStream: the byte source that every reader consumes.
//
// A pull interface of single bytes and blocks, with an optional mark to which a reader can return.
// A byte travels as an int, 0 to 255; -1 is the end of the input. A block read that has nothing
// left returns 0 or EndOfData, as each class says; SBytesOf makes a plain count of both.
//
// Threads: a stream belongs to one thread at a time.
// Errors: those of each class (see exception.h); reading at the end is none.
#ifndef BRCORE8_STREAMS_INPUT_STREAM_H
#define BRCORE8_STREAMS_INPUT_STREAM_H

#include <brcore8/core/object.h>
#include <brcore8/platform/export.h>

#include <string>

namespace SAbstractIO {

// The reading operations, in slot order.
class BRCORE8_API SInputOperations {
public:
    virtual ~SInputOperations();
    // Up to `count` bytes into `buffer`; the number stored.
    virtual unsigned long Read(void* buffer, unsigned long count) = 0;
    // The next byte, or -1 at the end.
    virtual int Read() = 0;
    // Passes over up to `count` bytes; how many.
    virtual unsigned long Skip(unsigned long count) = 0;
    // Whether the end has been reached: 1 or 0.
    virtual int IsEOF() = 0;
    // Bytes that can be read without waiting; at most one below the greatest unsigned long.
    virtual unsigned long Available() = 0;
    // Gives back what the stream holds; closing twice is harmless.
    virtual void Close() = 0;
};

// The operations of a mark, in slot order.
class BRCORE8_API SMarkOperations {
public:
    virtual ~SMarkOperations();
    // Returns to the mark.
    virtual void Reset() = 0;
    // Sets the mark here. It need not outlive the reading of `limit` bytes.
    virtual void Mark(unsigned long limit) = 0;
    // 1 when marks work on this stream, else 0.
    virtual int MarkSupported() = 0;
};

}  // namespace SAbstractIO

class BRCORE8_API SInputStream : public SObject,
                                 public SAbstractIO::SInputOperations,
                                 public SAbstractIO::SMarkOperations {
    SDECLARE_CLASS(SInputStream);

    // What a block read may return at the end: all bits set.
    enum : unsigned long { EndOfData = static_cast<unsigned long>(-1) };

    SInputStream(const SInputStream&) = delete;
    SInputStream& operator=(const SInputStream&) = delete;
    ~SInputStream() override;

    // The defaults. Read and Skip take single bytes until the first -1.
    unsigned long Read(void* buffer, unsigned long count) override;
    int Read() override = 0;
    unsigned long Skip(unsigned long count) override;
    int IsEOF() override;                // whether Available() is 0
    unsigned long Available() override;  // 0

    void Reset() override;                    // throws SENotImplemented
    void Mark(unsigned long limit) override;  // throws SENotImplemented
    int MarkSupported() override;             // 0

protected:
    SInputStream() noexcept = default;
};

// The count of a block read: 0 instead of EndOfData.
inline unsigned long SBytesOf(unsigned long blockResult) noexcept {
    return blockResult == SInputStream::EndOfData ? 0 : blockResult;
}

// All the bytes from here to the end, by block reads, so that none is taken for the end. Throws
// what the stream throws, and SEOutOfMemory.
BRCORE8_API std::string SReadAll(SInputStream& stream);

#endif
