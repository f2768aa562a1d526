// __STree, the type-erased red-black tree under every sorted container, and STreeMap, the sorted
// map that programs and other containers use.
//
// An entry's element follows it in memory and stays there until it is removed. There is one
// element a key: adding a key again replaces its element.
// Threads: one at a time. Adding throws SEOutOfMemory without memory, and whatever a copy of an
// element throws; the tree is then what it was.
//
//     STreeMap<int, SString> names;
//     names.Add(2, "two");
//     for (auto& [key, value] : names) { ... }  // ascending keys
#ifndef BRCORE8_CONTAINERS_RB_TREE_H
#define BRCORE8_CONTAINERS_RB_TREE_H

#include <brcore8/core/throw.h>
#include <brcore8/platform/export.h>
#include <brcore8/platform/select.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

// The core orders and balances entries; the derived container knows their elements. A key travels
// as an integer that can hold a pointer to the real key.
// Invariants, checked by AssertValid: 1. the root is black and has no parent; 2. an entry's parent
// has it as a child; 3. a red entry has no red child; 4. every way down from the root to an empty
// link passes the same number of black entries; 5. keys ascend strictly; 6. count entries.
class BRCORE8_API __STree {
public:
    enum _Redbl { red = 0, black = 1 };

    int GetCount() const { return count_; }
    int IsEmpty() const { return count_ == 0; }
    // Non-zero when the invariants above hold. n log n, and n comparisons.
    int AssertValid() const;

protected:
    struct Entry {
        Entry* left;
        Entry* parent;
        Entry* right;
        std::int32_t color;
        void* Element() { return this + 1; }
        const void* Element() const { return this + 1; }
    };
    static_assert(sizeof(void*) != 4 || sizeof(Entry) == 16);

    // Stands on an entry, or past the last one; -- from there goes to the last one.
    struct iterator {
        const __STree* tree;
        Entry* entry;
        iterator& operator++() {
            entry = Successor(entry);
            return *this;
        }
        iterator& operator--() {
            entry = entry != nullptr ? Predecessor(entry) : tree->GetLastEntry();
            return *this;
        }
        bool operator==(const iterator&) const = default;
    };

    __STree() = default;
    __STree(const __STree&) = delete;
    // Copies the other's elements, then clears the old ones; nothing on self-assignment.
    __STree& operator=(const __STree& other);

    // A derived destructor calls Clear: here the derived operations are gone already.
    virtual ~__STree();
    // The key of an element.
    virtual std::intptr_t GetKey(const void* element) const = 0;
    // Negative, zero or positive as the left key comes before, equals or comes after the right.
    virtual int CompareKey(std::intptr_t left, std::intptr_t right) const = 0;
    // Ends an element's life in place; must not throw.
    virtual void Destroy(void* element) = 0;
    // Copy-constructs an element into the storage of a new entry.
    virtual void CopyTo(void* element, const void* source) = 0;
    // Storage for an entry and its element, and its release. Nothing in it is constructed yet.
    virtual void* AllocateEntry() = 0;
    virtual void FreeEntry(Entry* entry) = 0;

    // ---- Find: null when there is none --------------------------------------------------------

    void* Find(std::intptr_t key) const;
    int Contains(std::intptr_t key) const { return GetEntry(key) != nullptr; }
    Entry* GetEntry(std::intptr_t key) const;
    Entry* GetRootEntry() const { return root_; }
    Entry* GetFirstEntry() const { return GetMinimum(root_); }
    Entry* GetLastEntry() const { return GetMaximum(root_); }
    static Entry* GetMinimum(Entry* entry) { return GetEnd<&Entry::left>(entry); }
    static Entry* GetMaximum(Entry* entry) { return GetEnd<&Entry::right>(entry); }
    // The neighbours in key order; null for null and past the ends.
    static Entry* Successor(Entry* entry) {
        return GetNeighbour<&Entry::right, &Entry::left>(entry);
    }
    static Entry* Predecessor(Entry* entry) {
        return GetNeighbour<&Entry::left, &Entry::right>(entry);
    }

    // ---- Add ----------------------------------------------------------------------------------

    // Storage for the element with the key, which the caller must construct at once, with an
    // equal key, or give back with Abandon. An element that had the key is destroyed: nothing the
    // caller is about to construct from may live in it.
    void* AddVoid(std::intptr_t key);
    // Removes the entry of storage from AddVoid that holds no element.
    void Abandon(void* storage);
    // Adds a copy of the value, which may live in this tree, and returns it. An element that had
    // the key is destroyed after the copy is made; the copy then has an address of its own.
    void* AddCopy(std::intptr_t key, const void* value);
    void* AddCopy(const void* value) { return AddCopy(GetKey(value), value); }

    // ---- Remove -------------------------------------------------------------------------------

    // Returns whether there was such a key.
    int Remove(std::intptr_t key);
    // Removes the entry under the iterator and returns the place after it.
    iterator Remove(iterator at);
    void Clear();

    // ---- For descents of the derived container's own ------------------------------------------

    // Where a key is, or would be linked.
    struct Place {
        Entry* found;
        Entry* parent;
        int left;
    };
    // `order` tells of an element whether the key comes before it (negative), is its own (zero) or
    // comes after it (positive).
    template <class Order>
    Place Descend(Order order) const;
    // The same for numbers as keys; `keyOf` gives an element's. One comparison a level, without a
    // jump: whether the keys are equal is asked at the end.
    template <class Key, class KeyOf>
    Place DescendStraight(Key key, KeyOf keyOf) const;

    // Links a new entry with a live element under `parent`, whose link on that side is empty (a
    // null parent: as the root of an empty tree), and balances.
    void LinkEntry(Entry* entry, Entry* parent, int left);
    // Unlinks an entry and balances; its element and storage are the caller's.
    void UnlinkEntry(Entry* entry);
    // Puts a new entry with a live element and an equal key in the place of another, which is then
    // the caller's.
    void ReplaceEntry(Entry* old, Entry* entry);
    // Destroys the element of an unlinked entry and frees the entry.
    void DropEntry(Entry* entry);
    // Exchanges the contents of two trees of one type.
    void SwapEntries(__STree& other) noexcept;

    // ---- Entries, where null is a black entry with null links ---------------------------------

    static Entry* _Left(const Entry* entry) { return entry != nullptr ? entry->left : nullptr; }
    static Entry* _Right(const Entry* entry) { return entry != nullptr ? entry->right : nullptr; }
    static Entry* _Parent(const Entry* entry) { return entry != nullptr ? entry->parent : nullptr; }
    static _Redbl _Color(const Entry* entry) {
        return entry != nullptr && entry->color == red ? red : black;
    }
    static void _SetColor(Entry* entry, _Redbl color) {
        if (entry != nullptr) entry->color = color;
    }

private:
    template <Entry* Entry::*Link>
    static Entry* GetEnd(Entry* entry) {
        while (entry != nullptr && entry->*Link != nullptr)
            entry = entry->*Link;
        return entry;
    }
    template <Entry* Entry::*Forward, Entry* Entry::*Back>
    static Entry* GetNeighbour(Entry* entry) {
        if (entry == nullptr) return nullptr;
        if (entry->*Forward != nullptr) return GetEnd<Back>(entry->*Forward);
        Entry* parent = entry->parent;
        for (; parent != nullptr && parent->*Forward == entry; parent = entry->parent)
            entry = parent;
        return parent;
    }
    Place PlaceOf(std::intptr_t key) const;
    Entry* NewCopy(const void* value);
    Entry* CloneEntries(const __STree& other);
    void DropAll(Entry* root);
    Entry*& LinkTo(Entry* entry);
    void RotateLeft(Entry* entry);
    void RotateRight(Entry* entry);
    void FixAfterInsertion(Entry* entry);
    void FixAfterDelete(Entry* entry, Entry* parent);
    void SwapPosition(Entry* entry, Entry* successor);

    std::int32_t count_ = 0;
    Entry* root_ = nullptr;
};
static_assert(sizeof(void*) != 4 || sizeof(__STree) == 12);

template <class Order>
__STree::Place __STree::Descend(Order order) const {
    Place place{nullptr, nullptr, 0};
    for (Entry* entry = root_; entry != nullptr;) {
        const int side = order(entry->Element());
        if (side == 0) {
            place.found = entry;
            break;
        }
        place.parent = entry;
        place.left = side < 0;
        entry = side < 0 ? entry->left : entry->right;
    }
    return place;
}

template <class Key, class KeyOf>
__STree::Place __STree::DescendStraight(Key key, KeyOf keyOf) const {
    Entry* parent = nullptr;
    Entry* notLess = nullptr;  // the last one whose key is not less
    for (Entry* entry = root_; entry != nullptr;) {
        parent = entry;
        Entry* next = entry->left;
        Entry* candidate = entry;
        brcore8::SelectIfLess(keyOf(entry->Element()), key, next, entry->right, candidate, notLess);
        notLess = candidate;
        entry = next;
    }
    const int left = notLess == parent;
    const bool isFound = notLess != nullptr && !(key < keyOf(notLess->Element()));
    return {isFound ? notLess : nullptr, parent, left};
}

namespace brcore8 {

// Whether a value may be overwritten where it lies: its end runs no code, which might look into
// the container or change it, and the next one is there at once.
template <class T>
concept EndsSilently =
    std::is_trivially_destructible_v<T> && std::is_nothrow_move_constructible_v<T>;

}  // namespace brcore8

// Orders keys of any two types that compare with <. A comparison of one's own is such a class:
// default-constructible, called with two keys, returning negative, zero or positive as strcmp does.
struct STreeCompare {
    template <class A, class B>
    int operator()(const A& left, const B& right) const {
        return left < right ? -1 : right < left ? 1 : 0;
    }
};

// Takes entries from the general heap. A pool of one's own is such a class; `Allocate` throws
// SEOutOfMemory.
struct STreeHeap {
    static void* Allocate(std::size_t size) { return brcore8::Allocate(size); }
    static void Free(void* block, std::size_t) noexcept { brcore8::Release(block); }
};

// Takes small entries from pools that all containers of the process share, from any thread; larger
// ones from the general heap. Throws SEOutOfMemory.
struct BRCORE8_API STreePool {
    static void* Allocate(std::size_t size);
    static void Free(void* block, std::size_t size) noexcept;
};

// The sorted map from Key to T. What takes a key takes any type that Compare accepts together with
// Key, so a lookup makes no temporary. Finding makes no virtual call.
template <class Key, class T, class Compare = STreeCompare, class Allocator = STreeHeap>
class STreeMap : public __STree {
    template <bool Const>
    class Iterator;

public:
    struct Element {
        const Key key;
        T value;
    };
    using value_type = Element;
    using iterator = Iterator<false>;
    using const_iterator = Iterator<true>;
    using reverse_iterator = std::reverse_iterator<iterator>;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;

    STreeMap() = default;
    STreeMap(const STreeMap& other) : __STree() { *this = other; }
    STreeMap(STreeMap&& other) noexcept { SwapEntries(other); }
    ~STreeMap() override { Clear(); }
    STreeMap& operator=(const STreeMap& other) {
        static_assert(std::is_copy_constructible_v<Key> && std::is_copy_constructible_v<T>);
        __STree::operator=(other);
        return *this;
    }
    // Takes the other's elements and leaves it empty.
    STreeMap& operator=(STreeMap&& other) noexcept {
        STreeMap taken(std::move(other));
        SwapEntries(taken);
        return *this;
    }

    // ---- Iterate in ascending key order -------------------------------------------------------

    iterator begin() { return iterator(this, GetFirstEntry()); }
    iterator end() { return iterator(this, nullptr); }
    const_iterator begin() const { return const_iterator(this, GetFirstEntry()); }
    const_iterator end() const { return const_iterator(this, nullptr); }
    reverse_iterator rbegin() { return reverse_iterator(end()); }
    reverse_iterator rend() { return reverse_iterator(begin()); }
    const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
    const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

    // ---- Find ---------------------------------------------------------------------------------

    // The value of the key, or null.
    template <class K>
    T* Find(const K& key) {
        Entry* entry = Locate(key).found;
        return entry != nullptr ? &ElementOf(entry).value : nullptr;
    }
    template <class K>
    const T* Find(const K& key) const {
        return const_cast<STreeMap*>(this)->Find(key);
    }
    template <class K>
    int Contains(const K& key) const {
        return Locate(key).found != nullptr;
    }
    // The place of the key, or end().
    template <class K>
    iterator FindElement(const K& key) {
        return iterator(this, Locate(key).found);
    }
    template <class K>
    const_iterator FindElement(const K& key) const {
        return const_iterator(this, Locate(key).found);
    }

    // ---- Add and remove: arguments may live in this map ---------------------------------------

    // Adds the pair and returns its value. Of an equal key both key and value are replaced: in
    // their place when ending them runs no code, else by an entry at another address, and the old
    // ones end last, so that their destructors may change the map.
    template <class K, class V>
    T& Add(K&& key, V&& value);
    // The value of the key, which is first added with a value-initialised T when absent.
    template <class K>
    T& FindOrAdd(K&& key);
    // Returns whether there was such a key.
    template <class K>
    int Remove(const K& key) {
        Entry* entry = Locate(key).found;
        if (entry == nullptr) return 0;
        UnlinkEntry(entry);
        DropEntry(entry);
        return 1;
    }
    // Removes the element at the place and returns the place after it.
    iterator Remove(iterator at) { return iterator(this, __STree::Remove(at.at_).entry); }
    using __STree::Clear;

protected:
    void FreeEntry(Entry* entry) override { Allocator::Free(entry, EntrySize()); }

private:
    static Element& ElementOf(Entry* entry) { return *static_cast<Element*>(entry->Element()); }
    template <class K>
    Place Locate(const K& key) const;
    template <class K, class V>
    Entry* NewEntry(K&& key, V&& value);

    std::intptr_t GetKey(const void* element) const override {
        return reinterpret_cast<std::intptr_t>(&static_cast<const Element*>(element)->key);
    }
    int CompareKey(std::intptr_t left, std::intptr_t right) const override {
        return Compare{}(*reinterpret_cast<const Key*>(left), *reinterpret_cast<const Key*>(right));
    }
    void Destroy(void* element) override { std::destroy_at(static_cast<Element*>(element)); }
    void CopyTo(void* element, const void* source) override {
        if constexpr (std::is_copy_constructible_v<Key> && std::is_copy_constructible_v<T>)
            ::new (element) Element(*static_cast<const Element*>(source));
    }
    void* AllocateEntry() override { return Allocator::Allocate(EntrySize()); }
    static constexpr std::size_t EntrySize() {
        static_assert(alignof(Element) <= 2 * sizeof(void*), "the heap aligns no further");
        return sizeof(Entry) + sizeof(Element);
    }
};

// Walks in key order, both ways; good until its element is removed.
template <class Key, class T, class Compare, class Allocator>
template <bool Const>
class STreeMap<Key, T, Compare, Allocator>::Iterator {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = Element;
    using difference_type = std::ptrdiff_t;
    using pointer = std::conditional_t<Const, const Element*, Element*>;
    using reference = std::conditional_t<Const, const Element&, Element&>;

    Iterator() = default;
    template <bool Mutable>
    requires(Const && !Mutable) Iterator(const Iterator<Mutable>& other) : at_(other.at_) {}

    reference operator*() const { return ElementOf(at_.entry); }
    pointer operator->() const { return &ElementOf(at_.entry); }
    // Whether it stands on an element.
    explicit operator bool() const { return at_.entry != nullptr; }
    Iterator& operator++() {
        ++at_;
        return *this;
    }
    Iterator& operator--() {
        --at_;
        return *this;
    }
    Iterator operator++(int) {
        Iterator old = *this;
        ++at_;
        return old;
    }
    Iterator operator--(int) {
        Iterator old = *this;
        --at_;
        return old;
    }
    bool operator==(const Iterator&) const = default;

private:
    friend class STreeMap;
    template <bool>
    friend class Iterator;
    Iterator(const STreeMap* map, Entry* entry) : at_{map, entry} {}

    __STree::iterator at_{nullptr, nullptr};
};

template <class Key, class T, class Compare, class Allocator>
template <class K>
auto STreeMap<Key, T, Compare, Allocator>::Locate(const K& key) const -> Place {
    constexpr bool isNumber = std::is_integral_v<Key> && std::is_same_v<K, Key>;
    if constexpr (isNumber && std::is_same_v<Compare, STreeCompare>) {
        return DescendStraight(
            key, [](const void* element) { return static_cast<const Element*>(element)->key; });
    } else {
        return Descend([&key](const void* element) {
            return Compare{}(key, static_cast<const Element*>(element)->key);
        });
    }
}

template <class Key, class T, class Compare, class Allocator>
template <class K, class V>
auto STreeMap<Key, T, Compare, Allocator>::NewEntry(K&& key, V&& value) -> Entry* {
    Entry* entry = ::new (Allocator::Allocate(EntrySize())) Entry;
    try {
        ::new (entry->Element())
            Element{static_cast<Key>(std::forward<K>(key)), static_cast<T>(std::forward<V>(value))};
    } catch (...) {
        Allocator::Free(entry, EntrySize());
        throw;
    }
    return entry;
}

template <class Key, class T, class Compare, class Allocator>
template <class K, class V>
T& STreeMap<Key, T, Compare, Allocator>::Add(K&& key, V&& value) {
    const Place place = Locate(key);
    Entry* entry = place.found;
    if (entry == nullptr) {
        entry = NewEntry(std::forward<K>(key), std::forward<V>(value));
        LinkEntry(entry, place.parent, place.left);
    } else if constexpr (brcore8::EndsSilently<Key> && brcore8::EndsSilently<T>) {
        // Both are made before the old pair ends: the arguments may live in it.
        Key newKey = static_cast<Key>(std::forward<K>(key));
        T newValue = static_cast<T>(std::forward<V>(value));
        ::new (entry->Element()) Element{std::move(newKey), std::move(newValue)};
    } else {
        Entry* old = std::exchange(entry, NewEntry(std::forward<K>(key), std::forward<V>(value)));
        ReplaceEntry(old, entry);
        DropEntry(old);
    }
    return ElementOf(entry).value;
}

template <class Key, class T, class Compare, class Allocator>
template <class K>
T& STreeMap<Key, T, Compare, Allocator>::FindOrAdd(K&& key) {
    const Place place = Locate(key);
    Entry* entry = place.found;
    if (entry == nullptr) {
        entry = NewEntry(std::forward<K>(key), T());
        LinkEntry(entry, place.parent, place.left);
    }
    return ElementOf(entry).value;
}

#endif
