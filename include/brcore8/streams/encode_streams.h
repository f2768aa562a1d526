// Streams that change bytes on their way: an encoder stands between them and the stream that they
// wrap.
//
//     class SXor : public SEncoder {
//         unsigned char Encode(unsigned char byte) override { return byte ^ 0x5A; }
//     };
//     SXor xored;
//     SOutputStreamEncode out(file, xored);
//     out.Write(data, size);
//
// An encoder makes one byte of each byte, so that counts, Skip and Available are the wrapped
// stream's. It may remember what went before (a running key): then bytes must not be passed over,
// and marks are refused.
//
// Threads: a stream belongs to one thread at a time. Errors: the wrapped stream's.
#ifndef BRCORE8_STREAMS_ENCODE_STREAMS_H
#define BRCORE8_STREAMS_ENCODE_STREAMS_H

#include <brcore8/streams/input_filters.h>
#include <brcore8/streams/output_filters.h>

class BRCORE8_API SEncoder {
public:
    virtual ~SEncoder();
    // The byte in the place of this one, in the order of the stream.
    virtual unsigned char Encode(unsigned char byte) = 0;
    // Whether the answer depends on the bytes before; 0 here.
    virtual int HasMemory() const;
};

// Bytes read are encoded: for texts that were, the encoder that undoes it. It must outlive this.
class BRCORE8_API SInputStreamEncode : public SInputFilterStream {
    SDECLARE_CLASS(SInputStreamEncode);

    SInputStreamEncode(SInputStream& stream, SEncoder& encoder) noexcept
        : SInputFilterStream(stream), encoder_(encoder) {}
    SInputStreamEncode(SInputStream* stream, SEncoder& encoder, bool own) noexcept
        : SInputFilterStream(stream, own), encoder_(encoder) {}

    int Read() override;
    unsigned long Read(void* buffer, unsigned long count) override;
    // Reads what an encoder with memory must see.
    unsigned long Skip(unsigned long count) override;
    // An encoder with memory supports no marks: Mark and Reset throw SENotImplemented then.
    void Reset() override;
    void Mark(unsigned long limit) override;
    int MarkSupported() override;

private:
    SEncoder& encoder_;
};

// Bytes written are encoded. Where the wrapped stream takes fewer bytes than it was given, those
// that it did not take were seen by the encoder all the same.
class BRCORE8_API SOutputStreamEncode : public SOutputFilterStream {
    SDECLARE_CLASS(SOutputStreamEncode);

    SOutputStreamEncode(SOutputStream& stream, SEncoder& encoder) noexcept
        : SOutputFilterStream(stream), encoder_(encoder) {}
    SOutputStreamEncode(SOutputStream* stream, SEncoder& encoder, bool own) noexcept
        : SOutputFilterStream(stream, own), encoder_(encoder) {}

    unsigned long Write(const void* data, unsigned long count) override;
    void Write(int byte) override;

private:
    SEncoder& encoder_;
};

#endif
