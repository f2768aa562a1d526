#include "platform/posix/global.h"

#include <cstdlib>
#include <cstring>

namespace {

struct Block {
    char* data;
    SIZE_T size;
    unsigned locks;
};

Block* BlockOf(HGLOBAL handle) noexcept {
    return static_cast<Block*>(handle);
}

}  // namespace

HGLOBAL GlobalAlloc(unsigned, SIZE_T size) noexcept {
    auto* block = static_cast<Block*>(std::malloc(sizeof(Block)));
    if (block == nullptr) return nullptr;
    *block = {static_cast<char*>(std::calloc(size != 0 ? size : 1, 1)), size, 0};
    if (block->data != nullptr) return block;
    std::free(block);
    return nullptr;
}

HGLOBAL GlobalReAlloc(HGLOBAL handle, SIZE_T size, unsigned) noexcept {
    if (handle == nullptr) return nullptr;
    Block* const block = BlockOf(handle);
    auto* const data = static_cast<char*>(std::realloc(block->data, size != 0 ? size : 1));
    if (data == nullptr) return nullptr;
    if (size > block->size) std::memset(data + block->size, 0, size - block->size);
    block->data = data;
    block->size = size;
    return handle;
}

HGLOBAL GlobalFree(HGLOBAL handle) noexcept {
    if (handle != nullptr) std::free(BlockOf(handle)->data);
    std::free(handle);
    return nullptr;
}

void* GlobalLock(HGLOBAL handle) noexcept {
    if (handle == nullptr) return nullptr;
    ++BlockOf(handle)->locks;
    return BlockOf(handle)->data;
}

int GlobalUnlock(HGLOBAL handle) noexcept {
    if (handle == nullptr || BlockOf(handle)->locks == 0) return 0;
    return --BlockOf(handle)->locks != 0;
}

SIZE_T GlobalSize(HGLOBAL handle) noexcept {
    return handle != nullptr ? BlockOf(handle)->size : 0;
}
