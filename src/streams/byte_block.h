// Bytes in checked memory that grows as they come.
#ifndef BRCORE8_SRC_STREAMS_BYTE_BLOCK_H
#define BRCORE8_SRC_STREAMS_BYTE_BLOCK_H

#include <brcore8/core/throw.h>
#include <brcore8/streams/input_stream.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brcore8 {

class ByteBlock {
public:
    ByteBlock() = default;
    ByteBlock(const ByteBlock&) = delete;
    ByteBlock& operator=(const ByteBlock&) = delete;
    ~ByteBlock() { Release(data_); }

    const char* Data() const noexcept { return data_; }
    char* Data() noexcept { return data_; }
    std::size_t Size() const noexcept { return size_; }
    std::string_view View() const noexcept { return {data_, size_}; }

    // Room for exactly `size` more bytes, given as where they go; Added says how many came. Throws
    // SEOutOfMemory.
    char* Room(std::uint64_t size);
    void Added(std::size_t size) noexcept { size_ += size; }

    // Text of the process's code page as standard UTF-8. Throws SEOutOfMemory.
    void AppendUtf8(std::string_view text);

    // `size` bytes of the stream, by blocks that at most double what is held, since `size` may be a
    // lie. Throws SEEOFException when they do not come.
    void AppendFrom(SInputStream& stream, std::uint64_t size);

private:
    char* data_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace brcore8

#endif
