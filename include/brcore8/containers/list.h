// __SList, the type-erased core of the value lists, and SList<T>, the list that programs use.
//
// A circular doubly linked list around a sentinel that lives inside the object. Elements are
// copied in and belong to the list; their addresses stay until they are erased.
// Threads: one at a time. Every operation that needs memory throws SEOutOfMemory without it, and
// whatever a copy of an element throws; the list is then what it was.
//
//     SList<int> list;
//     list.PushBack(1);
//     for (int& value : list) value += 1;
#ifndef BRCORE8_CONTAINERS_LIST_H
#define BRCORE8_CONTAINERS_LIST_H

#include <brcore8/core/throw.h>
#include <brcore8/platform/export.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

// Invariants, checked by AssertValid: 1. following next from the sentinel comes back to it after
// exactly count nodes; 2. each node's next one has it as its previous one.
class BRCORE8_API __SList {
public:
    int GetCount() const { return count_; }
    int IsEmpty() const { return count_ == 0; }
    // Non-zero when the invariants above hold. Linear.
    int AssertValid() const;

protected:
    // A node's element follows it in memory.
    struct Node {
        Node* next;
        Node* previous;
        void* Element() { return this + 1; }
        const void* Element() const { return this + 1; }
    };

    __SList() noexcept : sentinel_(&ends_), ends_{&ends_, &ends_} {}
    __SList(const __SList&) = delete;
    // Copies the other's elements in, then erases the old ones; nothing on self-assignment.
    __SList& operator=(const __SList& other);

    // Slot order: the destructor and these four. A derived destructor calls Clear: here the
    // derived operations are gone already.
    virtual ~__SList();
    // Releases the storage of a node whose element is destroyed.
    virtual void FreeNode(Node* node) = 0;
    // Ends an element's life in place.
    virtual void DestroyElement(void* element) = 0;
    // Storage for a node and its element, with the node's two links set. The neighbours are not
    // touched.
    virtual Node* AllocateNode(Node* next, Node* previous) = 0;
    // Copy-constructs an element into a new node.
    virtual void CopyElement(void* element, const void* value) = 0;

    // Erases from the front until only the sentinel is left.
    void Clear();
    // The bytes of the first, last or index-th element; null when there is no such element.
    void* GetFront() const;
    void* GetBack() const;
    void* GetAt(int index) const;
    // Copies the value into a new node before the given one (the sentinel appends).
    Node* Insert(Node* before, const void* value);
    // Unlinks the node, destroys its element and releases it; returns the node after it.
    Node* Erase(Node* node);

    Node* Sentinel() const { return sentinel_; }
    // Links a node with a live element before the given one and counts it.
    void Link(Node* node, Node* before);
    // Moves a linked node before another one.
    void MoveBefore(Node* node, Node* before);
    // Exchanges the contents of two lists of one type.
    void SwapNodes(__SList& other) noexcept;

private:
    std::int32_t count_ = 0;
    Node* sentinel_;
    Node ends_;
};
static_assert(sizeof(void*) != 4 || sizeof(__SList) == 20);

// The list of values of type T, which must be copyable (or only movable, if never copied).
template <class T>
class SList : public __SList {
    template <bool Const>
    class Iterator;

public:
    using value_type = T;
    using iterator = Iterator<false>;
    using const_iterator = Iterator<true>;

    SList() = default;
    SList(const SList& other) : __SList() { *this = other; }
    SList(SList&& other) noexcept { SwapNodes(other); }
    ~SList() override { Clear(); }
    SList& operator=(const SList& other) {
        static_assert(std::is_copy_constructible_v<T>);
        __SList::operator=(other);
        return *this;
    }
    // Takes the other's elements and leaves it empty.
    SList& operator=(SList&& other) noexcept {
        SList taken(std::move(other));
        SwapNodes(taken);
        return *this;
    }

    // ---- Iterate ------------------------------------------------------------------------------

    iterator begin() { return iterator(Sentinel()->next); }
    iterator end() { return iterator(Sentinel()); }
    const_iterator begin() const { return const_iterator(Sentinel()->next); }
    const_iterator end() const { return const_iterator(Sentinel()); }

    // ---- Read: null when there is no such element ---------------------------------------------

    T* GetFront() { return static_cast<T*>(__SList::GetFront()); }
    T* GetBack() { return static_cast<T*>(__SList::GetBack()); }
    T* GetAt(int index) { return static_cast<T*>(__SList::GetAt(index)); }
    const T* GetFront() const { return static_cast<const T*>(__SList::GetFront()); }
    const T* GetBack() const { return static_cast<const T*>(__SList::GetBack()); }
    const T* GetAt(int index) const { return static_cast<const T*>(__SList::GetAt(index)); }
    // The first element equal to the value, or end().
    iterator Find(const T& value) {
        iterator at = begin();
        while (at != end() && !(*at == value))
            ++at;
        return at;
    }

    // ---- Change: a value may be an element of this list ---------------------------------------

    T& PushFront(const T& value) { return *Emplace(begin(), value); }
    T& PushFront(T&& value) { return *Emplace(begin(), std::move(value)); }
    T& PushBack(const T& value) { return *Emplace(end(), value); }
    T& PushBack(T&& value) { return *Emplace(end(), std::move(value)); }
    iterator Insert(iterator before, const T& value) { return Emplace(before, value); }
    // Constructs an element before the place from the arguments.
    template <class... Args>
    iterator Emplace(iterator before, Args&&... args);
    // Nothing on an empty list.
    void PopFront() {
        if (!IsEmpty()) Erase(begin());
    }
    void PopBack() {
        if (!IsEmpty()) __SList::Erase(Sentinel()->previous);
    }
    // Erases the element at the place and returns the place after it.
    iterator Erase(iterator at) { return iterator(__SList::Erase(at.node_)); }
    // Erases the first element equal to the value; returns whether there was one.
    int Remove(const T& value) {
        iterator at = Find(value);
        if (at == end()) return 0;
        Erase(at);
        return 1;
    }
    // Makes the element at the place the last one; iterators stay good.
    void MoveToBack(iterator at) { MoveBefore(at.node_, Sentinel()); }
    using __SList::Clear;

private:
    void FreeNode(Node* node) override { brcore8::Release(node); }
    void DestroyElement(void* element) override { std::destroy_at(static_cast<T*>(element)); }
    Node* AllocateNode(Node* next, Node* previous) override {
        static_assert(alignof(T) <= sizeof(Node), "an element is as aligned as its node");
        return ::new (brcore8::Allocate(sizeof(Node) + sizeof(T))) Node{next, previous};
    }
    void CopyElement(void* element, const void* value) override {
        if constexpr (std::is_copy_constructible_v<T>)
            ::new (element) T(*static_cast<const T*>(value));
    }
};

// Walks from front to back and back; good until its element is erased.
template <class T>
template <bool Const>
class SList<T>::Iterator {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = std::conditional_t<Const, const T*, T*>;
    using reference = std::conditional_t<Const, const T&, T&>;

    Iterator() = default;
    template <bool Mutable>
    requires(Const && !Mutable) Iterator(const Iterator<Mutable>& other) : node_(other.node_) {}

    reference operator*() const { return *static_cast<pointer>(node_->Element()); }
    pointer operator->() const { return static_cast<pointer>(node_->Element()); }
    Iterator& operator++() {
        node_ = node_->next;
        return *this;
    }
    Iterator& operator--() {
        node_ = node_->previous;
        return *this;
    }
    Iterator operator++(int) { return Iterator(std::exchange(node_, node_->next)); }
    Iterator operator--(int) { return Iterator(std::exchange(node_, node_->previous)); }
    bool operator==(const Iterator&) const = default;

private:
    friend class SList;
    template <bool>
    friend class Iterator;
    explicit Iterator(Node* node) : node_(node) {}

    Node* node_ = nullptr;
};

template <class T>
template <class... Args>
typename SList<T>::iterator SList<T>::Emplace(iterator before, Args&&... args) {
    Node* node = AllocateNode(before.node_, before.node_->previous);
    try {
        ::new (node->Element()) T(std::forward<Args>(args)...);
    } catch (...) {
        FreeNode(node);
        throw;
    }
    Link(node, before.node_);
    return iterator(node);
}

#endif
