// SOutputStream: the byte sink that every writer feeds.
//
// Threads: a stream belongs to one thread at a time.
// Errors: those of each class (see exception.h). What was buffered is certain to have arrived only
// after Flush or Close returned; no destructor reports a failure.
#ifndef BRCORE8_STREAMS_OUTPUT_STREAM_H
#define BRCORE8_STREAMS_OUTPUT_STREAM_H

#include <brcore8/core/object.h>
#include <brcore8/platform/export.h>

namespace SAbstractIO {

// The writing operations, in slot order.
class BRCORE8_API SOutputOperations {
public:
    virtual ~SOutputOperations();
    // Writes `count` bytes; how many were written.
    virtual unsigned long Write(const void* data, unsigned long count) = 0;
    // Writes the low 8 bits.
    virtual void Write(int byte) = 0;
    // Ends the output and gives back what the stream holds; closing twice is harmless.
    virtual void Close() = 0;
    // Hands on what is buffered.
    virtual void Flush() = 0;
};

}  // namespace SAbstractIO

class BRCORE8_API SOutputStream : public SObject, public SAbstractIO::SOutputOperations {
    SDECLARE_CLASS(SOutputStream);

    SOutputStream(const SOutputStream&) = delete;
    SOutputStream& operator=(const SOutputStream&) = delete;
    ~SOutputStream() override;

    // The defaults: single bytes, `count` in the end; nothing to close, nothing to flush.
    unsigned long Write(const void* data, unsigned long count) override;
    void Write(int byte) override = 0;
    void Close() override;
    void Flush() override;

protected:
    SOutputStream() noexcept = default;
};

#endif
