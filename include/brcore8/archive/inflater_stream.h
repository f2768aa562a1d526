// SInflaterInputStream: the decompressed bytes of raw deflated data that another stream delivers.
//
// The stream reads ahead: at the end of the data up to a buffer of what follows it is taken from
// the wrapped stream too.
// Errors: SEZipException "Invalid ZLIB data format" from every read, whatever went wrong (damaged
// data, data that ends too early, a failure of the wrapped stream); SEOutOfMemory from the
// constructor.
//
//     SInputFile file(path);
//     SInflaterInputStream text(file, 65536);
//     const std::string bytes = SReadAll(text);
#ifndef BRCORE8_ARCHIVE_INFLATER_STREAM_H
#define BRCORE8_ARCHIVE_INFLATER_STREAM_H

#include <brcore8/archive/inflater.h>
#include <brcore8/streams/input_filters.h>

#include <memory>

namespace brcore8 {

struct ReleaseBlock {
    BRCORE8_API void operator()(void* block) const noexcept;
};

}  // namespace brcore8

class BRCORE8_API SInflaterInputStream : public SInputFilterStream {
public:
    // `size` is that of the buffer of compressed data, from 1 (which 0 means too) to 1 GiB.
    SInflaterInputStream(SInputStream& stream, unsigned long size);
    ~SInflaterInputStream() override;

    // At least one byte, unless `count` is 0 or the data has ended, also for want of a dictionary.
    unsigned long Read(void* buffer, unsigned long count) override;
    int Read() override;
    // Fewer than `count` only at the end of the data.
    unsigned long Skip(unsigned long count) override;
    // Whether a read has met the end of the data.
    int IsEOF() override { return inflater_.IsFinished(); }
    // 0: how much the compressed data will give is not known.
    unsigned long Available() override { return 0; }
    // No marks.
    void Reset() override;
    void Mark(unsigned long limit) override;
    int MarkSupported() override { return 0; }

protected:
    // Hands the next bytes of the wrapped stream to the inflater. Throws SEEOFException
    // "Unexpected end of file" when there are none.
    void Fill();
    // The same without the end being an error: how many there were.
    unsigned long FillSome();

    SInflater& Inflater() noexcept { return inflater_; }

private:
    unsigned long ReadSome(void* buffer, int count);

    SInflater inflater_;
    unsigned long size_;
    std::unique_ptr<char, brcore8::ReleaseBlock> buffer_;
};

#endif
