// SOutputGlobal: bytes into a growing block of global memory.
#ifndef BRCORE8_STREAMS_OUTPUT_MEMORY_H
#define BRCORE8_STREAMS_OUTPUT_MEMORY_H

#include <brcore8/streams/global.h>
#include <brcore8/streams/output_stream.h>

//     SOutputGlobal out;
//     out.Write("hello", 5);
//     SInputGlobal in(out.Detach());           // the block changes hands, uncopied
class BRCORE8_API SOutputGlobal : public SOutputStream {
    SDECLARE_CLASS(SOutputGlobal);

    // The unit in which the block grows, and its first size.
    enum : unsigned long { Unit = 8192 };

    // Throws SEOutOfMemory.
    SOutputGlobal();
    ~SOutputGlobal() override;

    // Throw SEOutOfMemory, and nothing is written then. A closed or detached stream begins a new
    // block.
    unsigned long Write(const void* data, unsigned long count) override;
    void Write(int byte) override;
    // Frees the block.
    void Close() override;

    // Takes a block over in place of the present one, which is freed; writing starts at its
    // beginning.
    void Attach(void* handle);
    // The block, cut to the bytes written unless there are none; the caller owns it. Null when no
    // block is held.
    void* Detach();

    unsigned long UsedSize() const noexcept {
        return static_cast<unsigned long>(current_ - start_);
    }
    // The block's size, of which UsedSize() bytes are written.
    unsigned long BlockSize() const noexcept { return static_cast<unsigned long>(end_ - start_); }

protected:
    // Gives the block a new size, of which the first `used` bytes stay written.
    void Resize(unsigned long size, unsigned long used);

private:
    void Adopt(unsigned long used) noexcept;
    void Grow(unsigned long count);

    SHGlobal block_;
    unsigned char* start_ = nullptr;
    unsigned char* end_ = nullptr;
    unsigned char* current_ = nullptr;
};

#endif
