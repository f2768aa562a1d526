#include <brcore8/containers/table.h>

#include <brcore8/core/throw.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr std::int64_t MaxBlock = 0x7FFFFFFF;

// Raw room for one element outside the table, on the stack unless it is large.
class Room {
public:
    explicit Room(int size)
        : large_(size > static_cast<int>(sizeof(small_))
                     ? brcore8::Allocate(static_cast<std::size_t>(size))
                     : nullptr) {}
    Room(const Room&) = delete;
    Room& operator=(const Room&) = delete;
    ~Room() { brcore8::Release(large_); }
    void* Get() { return large_ != nullptr ? large_ : small_; }

private:
    void* large_;
    alignas(std::max_align_t) unsigned char small_[128];
};

}  // namespace

__STable::~__STable() = default;

void* __STable::Allocate(int count) {
    return brcore8::Allocate(Offset(count));
}

void __STable::Free(void* block) {
    brcore8::Release(block);
}

void* __STable::Resize(void*, int) {
    return nullptr;
}

void* __STable::ResizeBytes(void* block, std::size_t size) {
    return brcore8::Reallocate(block, size);
}

void __STable::CheckBlock(std::int64_t count) const {
    if (count < 0 || count * elementSize_ > MaxBlock) brcore8::ThrowOutOfMemory();
}

void* __STable::CheckedAllocate(std::int64_t count) {
    CheckBlock(count);
    void* block = Allocate(static_cast<int>(count));
    if (block == nullptr) brcore8::ThrowOutOfMemory();
    return block;
}

// ---- Move elements ----------------------------------------------------------------------------

void __STable::MoveBytes(void* destination, void* source, int count) {
    if (count > 0) std::memmove(destination, source, Offset(count));
}

void __STable::Relocate(void* destination, void* source, int count, int& moved) {
    auto* to = static_cast<unsigned char*>(destination);
    auto* from = static_cast<unsigned char*>(source);
    const bool apart = to + Offset(count) <= from || from + Offset(count) <= to;
    int copied = 0;
    if (!apart) {
        for (; copied < count; moved = ++copied) {
            const int i = to < from ? copied : count - 1 - copied;
            CopyTo(to + Offset(i), from + Offset(i));
            Destroy(from + Offset(i));
        }
        return;
    }
    try {
        for (; copied < count; ++copied)
            CopyTo(to + Offset(copied), from + Offset(copied));
    } catch (...) {
        while (copied > 0)
            Destroy(to + Offset(--copied));
        throw;
    }
    for (int i = 0; i < count; ++i)
        Destroy(from + Offset(i));
    moved = count;
}

// The slot `gap` holds no element, those from gap + 1 up to `end` do. Moves them down by one; when
// a copy throws on the way, the elements that cannot move any more are destroyed.
void __STable::CloseGap(int gap, int end) {
    int moved = 0;
    try {
        Relocate(GetAt(gap), GetAt(gap + 1), end - gap - 1, moved);
    } catch (...) {
        for (int i = end; --i > gap + moved;)
            Destroy(GetAt(i));
        count_ = gap + moved;
        throw;
    }
    count_ = end - 1;
}

void __STable::CloseSlot(int index) noexcept {
    try {
        CloseGap(index, count_);
    } catch (...) {
        // The caller is about to report the first failure; the table is valid, if shorter.
    }
}

// ---- Create and empty -------------------------------------------------------------------------

__STable& __STable::operator=(const __STable& other) {
    if (this == &other) return *this;
    const std::int32_t ownSize = std::exchange(elementSize_, other.elementSize_);
    unsigned char* copies = nullptr;
    int copied = 0;
    try {
        if (other.count_ > 0) copies = static_cast<unsigned char*>(CheckedAllocate(other.count_));
        for (; copied < other.count_; ++copied)
            CopyTo(copies + Offset(copied), other.GetAt(copied));
    } catch (...) {
        while (copied > 0)
            Destroy(copies + Offset(--copied));
        Free(copies);
        elementSize_ = ownSize;
        throw;
    }
    elementSize_ = ownSize;
    Clear();
    elementSize_ = other.elementSize_;
    data_ = copies;
    capacity_ = count_ = copied;
    return *this;
}

void __STable::Clear() {
    if (data_ == nullptr) return;
    while (count_ > 0)
        Destroy(GetAt(--count_));
    Free(std::exchange(data_, nullptr));
    capacity_ = 0;
}

void __STable::SwapBlocks(__STable& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(capacity_, other.capacity_);
    std::swap(count_, other.count_);
    std::swap(elementSize_, other.elementSize_);
}

// ---- Grow and open slots ----------------------------------------------------------------------

void __STable::GrowTo(int capacity) {
    if (capacity == 0 || (capacity > 0 && capacity < count_)) return;
    CheckBlock(capacity);
    void* block = data_ != nullptr ? Resize(data_, capacity) : nullptr;
    if (block == nullptr) block = MoveToNewBlock(capacity);
    data_ = static_cast<unsigned char*>(block);
    capacity_ = capacity;
}

void* __STable::MoveToNewBlock(int capacity) {
    void* block = CheckedAllocate(capacity);
    if (data_ != nullptr) {
        int moved = 0;
        try {
            Relocate(block, data_, count_, moved);
        } catch (...) {
            Free(block);
            throw;
        }
        Free(data_);
    }
    return block;
}

void __STable::GrowForOne() {
    // Near the largest block the step is what still fits; beyond it there is no memory to have.
    const std::int64_t most = MaxBlock / elementSize_;
    const std::int64_t wanted = capacity_ == 0 ? 4 : std::int64_t{capacity_} * 3 / 2 + 1;
    if (capacity_ >= most) brcore8::ThrowOutOfMemory();
    GrowTo(static_cast<int>(std::min(wanted, most)));
}

void* __STable::NewAt(int index) {
    if (index < 0 || index > count_) brcore8::ThrowException("Table index out of range");
    if (count_ == capacity_) GrowForOne();
    if (index < count_) {
        int moved = 0;
        try {
            Relocate(GetAt(index + 1), GetAt(index), count_ - index, moved);
        } catch (...) {
            try {
                CloseGap(count_ - moved, count_ + 1);
            } catch (...) {
                // What the first throw says is what the caller gets.
            }
            throw;
        }
    }
    ++count_;
    return GetAt(index);
}

void __STable::Insert(int index, const void* value) {
    // A value in the table moves with its element; its place stays known by index.
    const auto* bytes = static_cast<const unsigned char*>(value);
    const bool inside = data_ != nullptr && bytes >= data_ && bytes < data_ + Offset(count_);
    const int own = inside ? static_cast<int>((bytes - data_) / elementSize_) : -1;
    void* slot = NewAt(index);
    if (inside) value = GetAt(own < index ? own : own + 1);
    try {
        CopyTo(slot, value);
    } catch (...) {
        CloseSlot(index);
        throw;
    }
}

// ---- Remove and reorder -----------------------------------------------------------------------

void __STable::Remove(int index) {
    Destroy(GetAt(index));
    CloseGap(index, count_);
}

// An element is stuck outside the table and a slot stands empty: put it there, or close the slot.
void __STable::Rescue(int gap, void* element) noexcept {
    int moved = 0;
    try {
        Relocate(GetAt(gap), element, 1, moved);
    } catch (...) {
        Destroy(element);
        CloseSlot(gap);
    }
}

void __STable::MoveTo(int from, int to) {
    if (from == to) return;
    Room room(elementSize_);
    int moved = 0;
    Relocate(room.Get(), GetAt(from), 1, moved);
    const int between = from < to ? to - from : from - to;
    moved = 0;
    try {
        if (from < to)
            Relocate(GetAt(from), GetAt(from + 1), between, moved);
        else
            Relocate(GetAt(to + 1), GetAt(to), between, moved);
        moved = between;
        int last = 0;
        Relocate(GetAt(to), room.Get(), 1, last);
    } catch (...) {
        Rescue(from < to ? from + moved : from - moved, room.Get());
        throw;
    }
}

void __STable::SwapThrough(void* scratch, int i, int j) {
    int moved = 0;
    int gap = i;
    Relocate(scratch, GetAt(i), 1, moved);
    try {
        Relocate(GetAt(i), GetAt(j), 1, moved);
        gap = j;
        Relocate(GetAt(j), scratch, 1, moved);
    } catch (...) {
        Rescue(gap, scratch);
        throw;
    }
}

void __STable::Swap(int i, int j) {
    if (i == j) return;
    Room room(elementSize_);
    SwapThrough(room.Get(), i, j);
}

void __STable::Reverse() {
    Room room(elementSize_);
    for (int i = 0, j = count_ - 1; i < j; ++i, --j)
        SwapThrough(room.Get(), i, j);
}

int __STable::AssertValid() const {
    return count_ >= 0 && count_ <= capacity_ && elementSize_ > 0 &&
           (data_ != nullptr) == (capacity_ != 0) &&
           std::int64_t{capacity_} * elementSize_ <= MaxBlock;
}

// ---- __STableMem ------------------------------------------------------------------------------

void __STableMem::Destroy(void*) {}

void __STableMem::CopyTo(void* destination, const void* source) {
    std::memcpy(destination, source, static_cast<std::size_t>(GetElementSize()));
}

void* __STableMem::Allocate(int count) {
    return __STable::Allocate(count);
}

void __STableMem::Free(void* block) {
    __STable::Free(block);
}

void __STableMem::Relocate(void* destination, void* source, int count, int&) {
    MoveBytes(destination, source, count);
}
