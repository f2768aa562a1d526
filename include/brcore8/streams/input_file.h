// Input from files: SInputFile for bytes, SSeekableInputANSIFile for lines of 8-bit text at known
// positions.
//
// Both may report to a progress indicator, which must outlive them and is not owned: after every
// hundredth of the file (after every read of a file below 100 bytes, or of one that cannot tell its
// size) they give it the position and throw SEIOAbortedException "User aborted." when it asks to
// stop. Positions and sizes are 64 bits inside; where an unsigned long is narrower, results stop at
// one below its greatest value.
// Errors: SEIOException "Can't open for reading" when the file cannot be opened (a folder cannot)
// and when a read fails before the end. A closed stream is at its end.
#ifndef BRCORE8_STREAMS_INPUT_FILE_H
#define BRCORE8_STREAMS_INPUT_FILE_H

#include <brcore8/streams/input_stream.h>
#include <brcore8/strings/string.h>

#include <cstdint>
#include <cstdio>

class SProgressIndicatorEx;

namespace brcore8 {

// An open C stream and whom to tell about it: the part that both file sources share.
class InputFileHolder {
public:
    InputFileHolder(const char* path, SProgressIndicatorEx* progress);
    InputFileHolder(const InputFileHolder&) = delete;
    InputFileHolder& operator=(const InputFileHolder&) = delete;
    ~InputFileHolder() { Close(); }

    std::FILE* Stream() const noexcept { return stream_; }
    // Bytes read, fewer than `count` only at the end of the file.
    std::size_t Read(void* buffer, std::size_t count);
    // The same through a buffer of this holder's own, where the file can seek: small reads then
    // cost no call of the C library each. Stream() stands behind what is buffered.
    std::size_t ReadBuffered(void* buffer, std::size_t count);
    int ReadByte();  // the next byte, or -1 at the end
    // Lets the C stream itself read that much at a time. Not together with the two above.
    void BufferStream() noexcept;
    // Whether the next byte is buffered and nobody wants to know of it; then it may be taken.
    bool HasByte() const noexcept { return next_ < silentEnd_; }
    int TakeByte() noexcept { return *next_++; }
    int IsEOF() const noexcept;
    void SetMark(std::fpos_t& mark) noexcept;
    bool ReturnTo(const std::fpos_t& mark) noexcept;
    // From the present position to the end; 0 where the file cannot seek.
    std::uint64_t Remaining() noexcept;
    std::int64_t Position() const noexcept;  // -1 where the file cannot tell
    // The distance moved, less than `count` only at the end, where IsEOF() is then 1; -1 where the
    // file cannot seek.
    std::int64_t Advance(unsigned long count) noexcept;
    bool SeekTo(std::uint64_t position) noexcept;
    // Counts `count` bytes more as read and reports when a step is full.
    void Tick(unsigned long count) {
        if (progress_ != nullptr) Report(count);
    }
    void Close() noexcept;

private:
    explicit InputFileHolder(const char* path);
    void Report(unsigned long count);
    std::int64_t Size() noexcept;  // -1 where the file cannot seek
    std::int64_t Buffered() const noexcept { return end_ - next_; }
    bool Fill();
    void DropBuffered() noexcept;

    std::FILE* stream_;
    unsigned char* buffer_ = nullptr;  // made when it is first of use
    const unsigned char* next_ = nullptr;
    const unsigned char* end_ = nullptr;
    const unsigned char* silentEnd_ = nullptr;  // end_, or with a progress indicator the start
    bool atEnd_ = false;  // a read has met the end
    SProgressIndicatorEx* progress_ = nullptr;
    unsigned long step_ = 0;     // bytes between reports; 0: report every read
    unsigned long counter_ = 0;  // bytes since the last report
};

}  // namespace brcore8

// The bytes of a file.
class BRCORE8_API SInputFile : public SInputStream {
    SDECLARE_CLASS(SInputFile);

    explicit SInputFile(const SString& path, SProgressIndicatorEx* progress = nullptr);
    ~SInputFile() override;

    int Read() override {
        if (file_.HasByte()) [[likely]] return file_.TakeByte();
        return ReadOne();
    }
    // 0 at the end of the file.
    unsigned long Read(void* buffer, unsigned long count) override;
    // The bytes passed over; 0 where the file cannot seek. Throws SEEOFException "Unexpected end
    // of file" when fewer than `count` are left; the stream is then at its end.
    unsigned long Skip(unsigned long count) override;
    // Whether a read has met the end: the last byte read is not yet the end.
    int IsEOF() override;
    // Bytes from here to the end of the file; 0 where it cannot seek.
    unsigned long Available() override;
    void Close() override;

    // Any number of bytes may be read before Reset. Without a mark, Reset goes to the start.
    void Reset() override;
    void Mark(unsigned long limit) override;
    int MarkSupported() override;  // 1

private:
    int ReadOne();

    brcore8::InputFileHolder file_;
    std::fpos_t mark_{};
};

// Lines of 8-bit text through a buffer of its own, in which a whole line always lies.
class BRCORE8_API SSeekableInputANSIFile : public SInputStream {
    SDECLARE_CLASS(SSeekableInputANSIFile);

    explicit SSeekableInputANSIFile(const SString& path, SProgressIndicatorEx* progress = nullptr);
    ~SSeekableInputANSIFile() override;

    int Read() override;
    // The defaults of SInputStream do for blocks, which so go through the buffer too.
    using SInputStream::Read;
    int IsEOF() override;
    unsigned long Available() override;
    void Close() override;

    // The bytes up to the next CR, LF or zero byte, which is consumed: after LF one CR too; after
    // CR or a zero byte every CR, then one LF. Empty at the end of the input; IsEOF() tells.
    SString ReadLn();

    // Goes to `pos`. Returns 1 when that needed no seek, because the buffer holds the byte;
    // otherwise empties the buffer and returns whether the seek failed.
    int SeekPos(unsigned long pos);
    // The position of the byte that is read next.
    unsigned long GetPos();
    int SeekSupported();  // 1

    // The C stream below, which stands behind the buffered bytes; null after Close.
    std::FILE* GetFile() const noexcept { return file_.Stream(); }

private:
    bool Fill();
    bool NextIs(char byte);
    unsigned long ConsumeLineEnd();

    brcore8::InputFileHolder file_;
    unsigned long position_ = 0;
    unsigned long count_ = 0;
    unsigned long capacity_;
    char* buffer_;
};

#endif
