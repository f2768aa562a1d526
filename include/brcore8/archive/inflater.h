// SInflater: one decompression of deflated data, step by step over blocks of the caller's.
//
//     SInflater inflater;                       // raw data, as archives hold it
//     inflater.SetInput(packed, packedSize);
//     inflater.Inflate(out, outSize);
//     use(out, inflater.GetTotalOut());         // also what the last step produced
//
// Threads: one object serves one thread at a time.
// Ownership: the input belongs to the caller and must live until it is consumed.
// Errors: SEZipException "zlib error!!!" for data that is not deflated, SEOutOfMemory when the
// state cannot be allocated.
#ifndef BRCORE8_ARCHIVE_INFLATER_H
#define BRCORE8_ARCHIVE_INFLATER_H

#include <brcore8/platform/export.h>

#include <cstdint>

struct z_stream_s;

class BRCORE8_API SInflater {
public:
    // Data without header and trailer when `raw` is not 0, else with those of zlib.
    explicit SInflater(int raw = 1) { Init(raw); }
    SInflater(const SInflater&) = delete;
    SInflater& operator=(const SInflater&) = delete;
    ~SInflater() { End(); }

    // What is decompressed next, in the place of what is left of the last input; none for null or
    // a negative length.
    void SetInput(const void* data, int length) noexcept;
    // Decompresses into up to `length` bytes and returns how many it produced; 0 when more input
    // is needed. It also returns 0 for the step that reaches the end of the data, although that
    // step mostly produces bytes: GetTotalOut() counts them.
    int Inflate(void* out, int length);
    // Whether the end of the data has been reached.
    bool IsFinished() const noexcept { return finished_ != 0; }

    // Whether the data cannot go on without a dictionary: 1 or 0.
    int NeedsDictionary() noexcept;
    // 1 when the dictionary is the one that the data needs.
    int SetDictionary(const void* dictionary, int length) noexcept;

    // Forgets the input and begins anew, with the state that is allocated already.
    void Reset() noexcept;
    // Gives the state back; what follows finds no data.
    void End() noexcept;

    // The bytes of all steps since the start or the last Reset.
    std::uint64_t GetTotalIn() const noexcept { return totalIn_; }
    std::uint64_t GetTotalOut() const noexcept { return totalOut_; }
    // The input that is not consumed yet.
    const void* GetInput() const noexcept;
    int GetInputLength() const noexcept;

protected:
    void Init(int raw);

private:
    int Step(void* out, int length, int flush) noexcept;

    z_stream_s* stream_ = nullptr;
    int finished_ = 0;
    std::uint64_t totalIn_ = 0;
    std::uint64_t totalOut_ = 0;
};

#endif
