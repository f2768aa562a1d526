// SHGlobal: owner of one block of global memory, by its handle. Streams over memory read from and
// write to such blocks, and hand them to other owners as plain handles (void*).
//
// A block is moveable: its address is known only while it is locked, and locks count.
// Threads: none; an owner belongs to one thread at a time.
#ifndef BRCORE8_STREAMS_GLOBAL_H
#define BRCORE8_STREAMS_GLOBAL_H

#include <brcore8/platform/export.h>

#include <cstddef>

class BRCORE8_API SHGlobal {
public:
    // Takes the block over; null holds none.
    explicit SHGlobal(void* handle = nullptr) noexcept : handle_(handle) {}
    // A block of its own with the same bytes. Throws SEOutOfMemory.
    SHGlobal(const SHGlobal& other);
    SHGlobal(SHGlobal&& other) noexcept : handle_(other.Detach()) {}
    SHGlobal& operator=(const SHGlobal& other);
    SHGlobal& operator=(SHGlobal&& other) noexcept;
    ~SHGlobal() { Free(); }

    // A new moveable block of `size` bytes, all zero. Throws SEOutOfMemory.
    static SHGlobal Allocate(std::size_t size);

    // Gives the block held back and takes this one over.
    void Attach(void* handle) noexcept;
    // Gives up the block: the caller owns it from now on.
    void* Detach() noexcept;
    // Gives the block back, whatever locks it has.
    void Free() noexcept;

    // The block's address, valid until as many calls of Unlock; null when no block is held.
    void* Lock() noexcept;
    void Unlock() noexcept;
    // The block's size in bytes; 0 when no block is held.
    std::size_t Size() const noexcept;
    // Changes the size of an unlocked block; bytes gained are zero, the block may move. Throws
    // SEOutOfMemory, and the block is then what it was.
    void Resize(std::size_t size);

    void* Handle() const noexcept { return handle_; }

private:
    void* handle_;
};
static_assert(sizeof(SHGlobal) == sizeof(void*));

#endif
