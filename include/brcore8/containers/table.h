// __STable and __STableMem, the type-erased cores of the growable arrays, and STable<T>, the one
// that programs use.
//
// A block of equally sized elements addressed by index. The table owns its elements. Indices are
// not checked: they must lie within 0 .. count - 1. Only where something is inserted, an index
// outside 0 .. count throws SException "Table index out of range".
// Threads: one at a time. Any operation that adds may move the elements.
// Errors: SEOutOfMemory when the heap refuses, or when a block would exceed 2^31 - 1 bytes. What
// throws while it adds, grows or copies leaves the table as it was.
//
//     STable<SString> names;
//     names.Add("one");
//     for (const SString& name : names) { ... }
#ifndef BRCORE8_CONTAINERS_TABLE_H
#define BRCORE8_CONTAINERS_TABLE_H

#include <brcore8/platform/export.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

// Moves elements through the virtual operations alone.
// Invariants, checked by AssertValid: 1. 0 <= count <= capacity and the element size is positive;
// 2. there is a block exactly when the capacity is not 0; 3. a block is at most 2^31 - 1 bytes.
class BRCORE8_API __STable {
public:
    int GetCount() const { return count_; }
    int IsEmpty() const { return count_ == 0; }
    int GetCapacity() const { return capacity_; }
    int GetElementSize() const { return elementSize_; }
    // Non-zero when the invariants above hold.
    int AssertValid() const;

    // Destroys the elements from the last to the first and frees the block.
    void Clear();
    // Reallocates to exactly `capacity` slots, be that more or less than now. 0 does nothing, nor
    // does less than the count. Throws SEOutOfMemory when negative or too large.
    void GrowTo(int capacity);
    // Destroys the element and closes the gap. Should a copy throw on the way (no type that moves
    // without throwing does), the elements that cannot follow are destroyed too.
    void Remove(int index);
    // Moves one element, shifting those between by one place. Should a copy throw on the way, in
    // these three, all elements are still there, in some order, unless the copy back throws too.
    void MoveTo(int from, int to);
    void Swap(int i, int j);
    void Reverse();

protected:
    // An empty table of elements of that many bytes (more than 0).
    explicit __STable(int elementSize) noexcept : elementSize_(elementSize) {}
    // An empty table of the same element size: the derived copy constructor, where the derived
    // operations exist, assigns the elements.
    __STable(const __STable& other) noexcept : elementSize_(other.elementSize_) {}
    // Replaces the elements by copies of the other's, in a block of exactly that many slots;
    // nothing on self-assignment.
    __STable& operator=(const __STable& other);

    // Slot order: the destructor, these four, then the two below. A derived destructor calls Clear:
    // here the derived operations are gone already.
    virtual ~__STable();
    // Ends an element's life in place; must not throw.
    virtual void Destroy(void* element) = 0;
    // Copy-constructs an element into raw storage.
    virtual void CopyTo(void* destination, const void* source) = 0;
    // Storage for count elements, from the general heap here; null or SEOutOfMemory without it.
    virtual void* Allocate(int count);
    // Releases a block from Allocate; null does nothing.
    virtual void Free(void* block);
    // Moves elements to other slots, which may overlap theirs by all but one slot; the slots left
    // hold no elements afterwards. Into overlapping slots, here, each is copied and then destroyed,
    // starting from the end that is free, and `moved` counts them for the case that a copy throws.
    // Into slots apart from theirs all are copied, then all destroyed; a throw then moves none.
    // A table whose elements may be relocated bitwise overrides this with MoveBytes, one that can
    // move them without throwing with a loop: then shifting costs no virtual call an element.
    virtual void Relocate(void* destination, void* source, int count, int& moved);
    void MoveBytes(void* destination, void* source, int count);
    // Makes a block larger or smaller with all its bytes, at once where the heap can move whole
    // pages; null, here, where elements cannot be moved so. Who overrides Allocate and Free
    // overrides this too.
    virtual void* Resize(void* block, int count);
    static void* ResizeBytes(void* block, std::size_t size);

    // Opens a slot at the index and counts it; the caller constructs the element there at once,
    // or gives the slot back with CloseSlot. Growing goes 4, 7, 11, 17, 26, 40 ... slots.
    void* NewAt(int index);
    // The same behind the last element, where the block has room.
    bool HasRoom() const noexcept { return count_ < capacity_; }
    void CountOne() noexcept { ++count_; }
    // Gives back a slot that holds no element.
    void CloseSlot(int index) noexcept;
    // Copies the value, which may lie in this table, into a new slot.
    void Insert(int index, const void* value);
    void* GetAt(int index) { return data_ + Offset(index); }
    const void* GetAt(int index) const { return data_ + Offset(index); }
    // Exchanges the contents of two tables of one type.
    void SwapBlocks(__STable& other) noexcept;

private:
    std::size_t Offset(int index) const {
        return static_cast<std::size_t>(index) * static_cast<std::size_t>(elementSize_);
    }
    void CheckBlock(std::int64_t count) const;
    void* CheckedAllocate(std::int64_t count);
    void* MoveToNewBlock(int capacity);
    void GrowForOne();
    void CloseGap(int gap, int end);
    void Rescue(int gap, void* element) noexcept;
    void SwapThrough(void* scratch, int i, int j);

    unsigned char* data_ = nullptr;
    std::int32_t capacity_ = 0;
    std::int32_t count_ = 0;
    std::int32_t elementSize_;
};
static_assert(sizeof(void*) != 4 || sizeof(__STable) == 20);

// Relocates elements as raw bytes. Used as it is, its elements are plain bytes: copying is a copy
// of the bytes and destroying nothing; a derived table may override both.
class BRCORE8_API __STableMem : public __STable {
public:
    explicit __STableMem(int elementSize) noexcept : __STable(elementSize) {}
    __STableMem(const __STableMem& other) : __STable(other) { __STable::operator=(other); }
    __STableMem& operator=(const __STableMem& other) {
        __STable::operator=(other);
        return *this;
    }
    ~__STableMem() override { Clear(); }

    using __STable::CloseSlot;
    using __STable::GetAt;
    using __STable::Insert;
    using __STable::NewAt;

protected:
    void Destroy(void* element) override;
    void CopyTo(void* destination, const void* source) override;
    void* Allocate(int count) override;
    void Free(void* block) override;
    void Relocate(void* destination, void* source, int count, int& moved) override;
};

// The table of values of type T, which must be copyable (or only movable, if never copied).
// Elements move by their move constructor when that does not throw, else by copying.
template <class T>
class STable : public __STable {
public:
    using value_type = T;
    using iterator = T*;
    using const_iterator = const T*;

    STable() noexcept : __STable(sizeof(T)) {
        static_assert(alignof(T) <= 2 * sizeof(void*), "the heap aligns no further");
    }
    STable(std::initializer_list<T> values) : STable() {
        GrowTo(static_cast<int>(values.size()));
        for (const T& value : values)
            Add(value);
    }
    STable(const STable& other) : __STable(other) { *this = other; }
    STable(STable&& other) noexcept : STable() { SwapBlocks(other); }
    ~STable() override { Clear(); }
    STable& operator=(const STable& other) {
        static_assert(std::is_copy_constructible_v<T>);
        __STable::operator=(other);
        return *this;
    }
    // Takes the other's elements and leaves it empty.
    STable& operator=(STable&& other) noexcept {
        STable taken(std::move(other));
        SwapBlocks(taken);
        return *this;
    }

    // ---- Read ---------------------------------------------------------------------------------

    T* GetArray() { return static_cast<T*>(__STable::GetAt(0)); }
    const T* GetArray() const { return static_cast<const T*>(__STable::GetAt(0)); }
    T& GetAt(int index) { return GetArray()[index]; }
    const T& GetAt(int index) const { return GetArray()[index]; }
    T& operator[](int index) { return GetArray()[index]; }
    const T& operator[](int index) const { return GetArray()[index]; }
    iterator begin() { return GetArray(); }
    iterator end() { return GetArray() + GetCount(); }
    const_iterator begin() const { return GetArray(); }
    const_iterator end() const { return GetArray() + GetCount(); }

    // ---- Add: the value may be an element of this table ---------------------------------------
    // Both return the new element.

    T& Add(const T& value) { return Append(value); }
    T& Add(T&& value) { return Append(std::move(value)); }
    T& Insert(int index, const T& value) { return Emplace(index, value); }
    T& Insert(int index, T&& value) { return Emplace(index, std::move(value)); }

private:
    template <class V>
    T& Append(V&& value);
    template <class V>
    T& Emplace(int index, V&& value);

    void Destroy(void* element) override { std::destroy_at(static_cast<T*>(element)); }
    void CopyTo(void* destination, const void* source) override {
        if constexpr (std::is_copy_constructible_v<T>)
            ::new (destination) T(*static_cast<const T*>(source));
    }
    void Relocate(void* destination, void* source, int count, int& moved) override;
    void* Resize(void* block, int count) override {
        if constexpr (std::is_trivially_copyable_v<T>)
            return ResizeBytes(block, static_cast<std::size_t>(count) * sizeof(T));
        return __STable::Resize(block, count);
    }
};

template <class T>
template <class V>
T& STable<T>::Append(V&& value) {
    if constexpr (std::is_trivially_copyable_v<T>) {  // its copy calls nothing that could come back
        if (HasRoom()) {
            T* const slot = ::new (static_cast<void*>(end())) T(value);
            CountOne();
            return *slot;
        }
    }
    return Emplace(GetCount(), std::forward<V>(value));
}

template <class T>
template <class V>
T& STable<T>::Emplace(int index, V&& value) {
    // Made first: opening the slot may move, or free, the very value.
    T made(std::forward<V>(value));
    void* slot = NewAt(index);
    if constexpr (std::is_nothrow_move_constructible_v<T>) {
        return *::new (slot) T(std::move(made));
    } else {
        try {
            return *::new (slot) T(std::move(made));
        } catch (...) {
            CloseSlot(index);
            throw;
        }
    }
}

template <class T>
void STable<T>::Relocate(void* destination, void* source, int count, int& moved) {
    if constexpr (std::is_trivially_copyable_v<T>) {
        MoveBytes(destination, source, count);
    } else if constexpr (std::is_nothrow_move_constructible_v<T>) {
        T* to = static_cast<T*>(destination);
        T* from = static_cast<T*>(source);
        const int step = to < from ? 1 : -1;
        for (int left = count, i = step > 0 ? 0 : count - 1; left > 0; --left, i += step) {
            ::new (static_cast<void*>(to + i)) T(std::move(from[i]));
            std::destroy_at(from + i);
        }
    } else {
        static_assert(std::is_copy_constructible_v<T>,
                      "T must be copyable or move without a throw");
        __STable::Relocate(destination, source, count, moved);
    }
}

#endif
