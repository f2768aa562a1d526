// SMap, the map in key order, and SUnsortedMap, the map in the order in which keys came in.
//
// Both hold one pair a key and own their pairs. Adding a key again replaces key and value of its
// pair, which keeps its place in the order. Iterators and addresses of a pair are good until it is
// removed, or replaced by anything but Add and operator[]; by Add too where K or V may throw when
// moved. An argument may be a part of the very map.
// Keys compare with `<`; a derived map may order them differently by overriding CompareKey.
// Threads: a map that nobody changes may be read by several. Errors: SEOutOfMemory, whatever a
// copy of K or V throws, and whatever CompareKey throws; the map is then what it was. (Where many
// pairs are added at once and CompareKey throws, those before are there.)
//
//     SMap<int, int> squares;
//     squares.Add(3, 9);
//     squares[2] = 4;
//     for (auto& [key, value] : squares) Use(key, value);          // 2 4, 3 9
#ifndef BRCORE8_CONTAINERS_MAP_H
#define BRCORE8_CONTAINERS_MAP_H

#include <brcore8/containers/rb_tree.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>
#include <typeinfo>
#include <utility>

template <class K, class V, class Alloc>
class SMap;
template <class K, class V, class Alloc>
class SUnsortedMap;

template <class K, class V>
struct SMapPair {
    const K key;
    V value;
};

// What the two maps share. Every pair stands in the tree; of the map in insertion order each also
// has links to the pairs that came before and after it. `Alloc` is as STreeMap's Allocator.
template <class K, class V, class Alloc, bool InInsertionOrder>
class __SMap : public __STree {
    template <bool Const>
    class Iterator;

public:
    using value_type = SMapPair<K, V>;
    using iterator = Iterator<false>;
    using const_iterator = Iterator<true>;
    using reverse_iterator = std::reverse_iterator<iterator>;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;

    // ---- Iterate in the map's order -----------------------------------------------------------

    iterator begin() { return iterator(this, First()); }
    iterator end() { return iterator(this, nullptr); }
    const_iterator begin() const { return const_iterator(this, First()); }
    const_iterator end() const { return const_iterator(this, nullptr); }
    reverse_iterator rbegin() { return reverse_iterator(end()); }
    reverse_iterator rend() { return reverse_iterator(begin()); }
    const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
    const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

    // ---- Find ---------------------------------------------------------------------------------

    // The value of the key, or null.
    V* Retrieve(const K& key) { return ValueOrNull(LocateKey(key).found); }
    const V* Retrieve(const K& key) const { return ValueOrNull(LocateKey(key).found); }
    bool Contains(const K& key) const { return LocateKey(key).found != nullptr; }
    // The place of the key, or end().
    iterator Find(const K& key) { return PlaceOf(LocateKey(key).found); }
    const_iterator Find(const K& key) const { return PlaceOf(LocateKey(key).found); }

    // ---- Change -------------------------------------------------------------------------------

    // Adds the pair, or replaces key and value of the pair with an equal key, which ends last.
    // Returns the new value; its address is the old one's only where ending a pair runs no code.
    V& Add(const K& key, const V& value);
    // The value of the key. A key that is not there is first added with a value-initialised V; in
    // a map that is const such a value, good forever, is returned instead.
    V& operator[](const K& key) { return FindOrAdd(LocateKey(key), key); }
    const V& operator[](const K& key) const { return ValueOrNone(LocateKey(key).found); }

    // Return whether there was such a pair. The iterator goes on to the next pair.
    int Remove(const K& key) { return RemoveEntry(LocateKey(key).found); }
    int Remove(iterator& at) {
        Entry* const entry = at.entry_;
        ++at;
        return RemoveEntry(entry);
    }
    int Remove(iterator&& at) { return Remove(at); }
    void Clear();

    // ---- Check --------------------------------------------------------------------------------

    // Non-zero when the tree is whole and holds exactly the pairs that iteration meets.
    int AssertValid() const;

protected:
    // Pairs made beforehand, so that nothing can fail for want of memory once the map changes.
    class Batch {
    public:
        explicit Batch(__SMap& map) : map_(map) {}
        ~Batch() {
            while (first_ != nullptr)
                map_.DropEntry(Take());
        }
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

        template <class Map>
        void AddAll(const Map& other) {
            for (const auto& [key, value] : other)
                Add(key, value);
        }
        void Add(const K& key, const V& value) {
            Entry* const entry = map_.NewEntry(key, value);
            entry->right = nullptr;
            (last_ != nullptr ? last_->right : first_) = entry;
            last_ = entry;
        }
        // Moves all pairs into the map.
        void Settle() {
            while (first_ != nullptr) {
                const Place place = map_.Locate(map_.GetKey(first_->Element()));
                map_.Settle(Take(), place);
            }
        }

    private:
        Entry* Take() {
            Entry* const entry = std::exchange(first_, first_->right);
            if (first_ == nullptr) last_ = nullptr;
            return entry;
        }

        __SMap& map_;
        Entry* first_ = nullptr;
        Entry* last_ = nullptr;
    };

    __SMap() = default;
    __SMap(const __SMap& other) : __STree() { Clone(other); }
    __SMap(__SMap&& other) noexcept { Swap(other); }
    ~__SMap() override { Clear(); }
    // Maps of two classes may order their keys differently: then every pair is added anew.
    __SMap& operator=(const __SMap& other);
    __SMap& operator=(__SMap&& other);

    // A key as the core passes it around, and back.
    static std::intptr_t Travel(const K& key) { return reinterpret_cast<std::intptr_t>(&key); }
    static const K& KeyAt(std::intptr_t key) { return *reinterpret_cast<const K*>(key); }

    // The order of two keys, each as Travel gives it: negative, zero or positive.
    int CompareKey(std::intptr_t left, std::intptr_t right) const override {
        return STreeCompare()(KeyAt(left), KeyAt(right));
    }

    // Where a key is that travels; a derived map may find it in a faster way. By CompareKey here.
    virtual Place Locate(std::intptr_t key) const;
    Place LocateKey(const K& key) const;
    static const K& KeyOf(const void* element) {
        return static_cast<const Node*>(element)->pair.key;
    }
    static value_type& PairOf(Entry* entry) { return static_cast<Node*>(entry->Element())->pair; }
    static V* ValueOrNull(Entry* entry) {
        return entry != nullptr ? &PairOf(entry).value : nullptr;
    }
    static const V& ValueOrNone(Entry* entry) {
        return entry != nullptr ? PairOf(entry).value : None();
    }
    iterator PlaceOf(Entry* entry) { return iterator(this, entry); }
    const_iterator PlaceOf(Entry* entry) const { return const_iterator(this, entry); }
    // `key` gives the key of a pair that has to be added: a K, or what makes one.
    template <class Key>
    V& FindOrAdd(const Place& place, const Key& key);
    int RemoveEntry(Entry* entry);
    // Whether the other map has the same keys, by its own comparison, with equal values.
    template <class Equal>
    bool HasEqualPairs(const __SMap& other, Equal equal) const;
    void AddAll(const __SMap& other);

private:
    struct Linked {
        Entry* before;
        Entry* after;
        value_type pair;
    };
    struct Unlinked {
        value_type pair;
    };
    using Node = std::conditional_t<InInsertionOrder, Linked, Unlinked>;
    struct Ends {
        Entry* first = nullptr;
        Entry* last = nullptr;
    };
    struct NoEnds {};

    static Linked& LinksOf(Entry* entry) { return *static_cast<Linked*>(entry->Element()); }
    Entry* First() const;
    Entry* Last() const;
    static Entry* After(Entry* entry);
    static Entry* Before(Entry* entry);
    void Append(Entry* entry);
    void Detach(Entry* entry);
    Entry* Twin(const Entry* entry) const;

    Entry* NewEntry(const K& key, const V& value);
    void Settle(Entry* fresh, const Place& place);
    void Clone(const __SMap& other);
    void Swap(__SMap& other) noexcept;
    static const V& None();

    std::intptr_t GetKey(const void* element) const override { return Travel(KeyOf(element)); }
    void Destroy(void* element) override { std::destroy_at(static_cast<Node*>(element)); }
    void CopyTo(void* element, const void* source) override {
        const value_type& pair = static_cast<const Node*>(source)->pair;
        Construct(element, pair.key, pair.value);
    }
    static void Construct(void* element, const K& key, const V& value) {
        if constexpr (InInsertionOrder)
            ::new (element) Node{nullptr, nullptr, {key, value}};
        else
            ::new (element) Node{{key, value}};
    }
    void* AllocateEntry() override { return Alloc::Allocate(EntrySize()); }
    void FreeEntry(Entry* entry) override { Alloc::Free(entry, EntrySize()); }
    static constexpr std::size_t EntrySize() {
        static_assert(alignof(Node) <= 2 * sizeof(void*), "the heap aligns no further");
        return sizeof(Entry) + sizeof(Node);
    }

    [[no_unique_address]] std::conditional_t<InInsertionOrder, Ends, NoEnds> ends_;
};

// The map in ascending key order.
template <class K, class V, class Alloc = STreeHeap>
class SMap : public __SMap<K, V, Alloc, false> {
public:
    // Adds every pair of another map, also of one with another order; nothing for itself.
    SMap& operator+=(const SMap& other) { return this->AddAll(other), *this; }
    // Whether both hold the same keys with equal values.
    bool operator==(const SMap& other) const {
        return this->HasEqualPairs(other, [](const V& a, const V& b) { return a == b; });
    }
};

// The map in the order in which its keys were first added; a key that is removed and added again
// comes last. Finding is as fast as in SMap, and removing any pair needs no search of its place.
template <class K, class V, class Alloc = STreeHeap>
class SUnsortedMap : public __SMap<K, V, Alloc, true> {
public:
    // Adds every pair of another map, also of one that compares keys differently; nothing for
    // itself.
    SUnsortedMap& operator+=(const SUnsortedMap& other) { return this->AddAll(other), *this; }
    // Whether both hold the same keys with equal values, in whatever order.
    bool operator==(const SUnsortedMap& other) const {
        return this->HasEqualPairs(other, [](const V& a, const V& b) { return a == b; });
    }
};

// Walks in the map's order, both ways; good until its pair is removed.
template <class K, class V, class Alloc, bool InInsertionOrder>
template <bool Const>
class __SMap<K, V, Alloc, InInsertionOrder>::Iterator {
    using Map = std::conditional_t<Const, const __SMap, __SMap>;

public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = SMapPair<K, V>;
    using difference_type = std::ptrdiff_t;
    using pointer = std::conditional_t<Const, const value_type*, value_type*>;
    using reference = std::conditional_t<Const, const value_type&, value_type&>;

    Iterator() = default;
    // On the map's first pair.
    explicit Iterator(Map& map) : Iterator(map.begin()) {}
    template <bool Mutable>
    requires(Const && !Mutable) Iterator(const Iterator<Mutable>& other)
        : map_(other.map_), entry_(other.entry_) {}

    reference operator*() const { return PairOf(entry_); }
    pointer operator->() const { return &PairOf(entry_); }
    // Whether it stands on a pair.
    explicit operator bool() const { return entry_ != nullptr; }
    Iterator& operator++() {
        if (entry_ != nullptr) entry_ = After(entry_);
        return *this;
    }
    Iterator& operator--() {
        entry_ = entry_ != nullptr ? Before(entry_) : map_->Last();
        return *this;
    }
    Iterator operator++(int) {
        Iterator old = *this;
        ++*this;
        return old;
    }
    Iterator operator--(int) {
        Iterator old = *this;
        --*this;
        return old;
    }
    bool operator==(const Iterator&) const = default;

private:
    friend class __SMap;
    template <bool>
    friend class Iterator;
    Iterator(const __SMap* map, Entry* entry) : map_(map), entry_(entry) {}

    const __SMap* map_ = nullptr;
    Entry* entry_ = nullptr;
};

// ---- Create -----------------------------------------------------------------------------------

template <class K, class V, class Alloc, bool InInsertionOrder>
auto __SMap<K, V, Alloc, InInsertionOrder>::operator=(const __SMap& other) -> __SMap& {
    if (this == &other) return *this;
    if (typeid(*this) == typeid(other)) {
        Clone(other);
    } else {
        Batch batch(*this);
        batch.AddAll(other);
        Clear();
        batch.Settle();
    }
    return *this;
}

template <class K, class V, class Alloc, bool InInsertionOrder>
auto __SMap<K, V, Alloc, InInsertionOrder>::operator=(__SMap&& other) -> __SMap& {
    if (this == &other) return *this;
    if (typeid(*this) != typeid(other)) {
        *this = std::as_const(other);
        other.Clear();
    } else {
        Clear();
        Swap(other);
    }
    return *this;
}

template <class K, class V, class Alloc, bool InInsertionOrder>
void __SMap<K, V, Alloc, InInsertionOrder>::Swap(__SMap& other) noexcept {
    SwapEntries(other);
    if constexpr (InInsertionOrder) std::swap(ends_, other.ends_);
}

// Takes copies of another map's pairs in the place of its own, in a tree of the same shape.
template <class K, class V, class Alloc, bool InInsertionOrder>
void __SMap<K, V, Alloc, InInsertionOrder>::Clone(const __SMap& other) {
    __STree::operator=(other);
    if constexpr (InInsertionOrder) {
        ends_ = {};
        for (Entry* entry = other.First(); entry != nullptr; entry = After(entry))
            Append(Twin(entry));
    }
}

// The entry that stands here where the given one stands in a tree of the same shape.
template <class K, class V, class Alloc, bool InInsertionOrder>
auto __SMap<K, V, Alloc, InInsertionOrder>::Twin(const Entry* entry) const -> Entry* {
    // A bit a level, the root's lowest, below a 1. Fewer than 2^31 entries make up to 62 levels.
    std::uint64_t way = 1;
    for (; entry->parent != nullptr; entry = entry->parent)
        way = way << 1 | (entry->parent->right == entry ? 1u : 0u);
    Entry* twin = GetRootEntry();
    for (; way > 1; way >>= 1)
        twin = way & 1 ? twin->right : twin->left;
    return twin;
}

// ---- Order ------------------------------------------------------------------------------------

template <class K, class V, class Alloc, bool InInsertionOrder>
auto __SMap<K, V, Alloc, InInsertionOrder>::First() const -> Entry* {
    if constexpr (InInsertionOrder)
        return ends_.first;
    else
        return GetFirstEntry();
}

template <class K, class V, class Alloc, bool InInsertionOrder>
auto __SMap<K, V, Alloc, InInsertionOrder>::Last() const -> Entry* {
    if constexpr (InInsertionOrder)
        return ends_.last;
    else
        return GetLastEntry();
}

template <class K, class V, class Alloc, bool InInsertionOrder>
auto __SMap<K, V, Alloc, InInsertionOrder>::After(Entry* entry) -> Entry* {
    if constexpr (InInsertionOrder)
        return LinksOf(entry).after;
    else
        return Successor(entry);
}

template <class K, class V, class Alloc, bool InInsertionOrder>
auto __SMap<K, V, Alloc, InInsertionOrder>::Before(Entry* entry) -> Entry* {
    if constexpr (InInsertionOrder)
        return LinksOf(entry).before;
    else
        return Predecessor(entry);
}

template <class K, class V, class Alloc, bool InInsertionOrder>
void __SMap<K, V, Alloc, InInsertionOrder>::Append(Entry* entry) {
    if constexpr (InInsertionOrder) {
        LinksOf(entry).before = ends_.last;
        LinksOf(entry).after = nullptr;
        (ends_.last != nullptr ? LinksOf(ends_.last).after : ends_.first) = entry;
        ends_.last = entry;
    }
}

template <class K, class V, class Alloc, bool InInsertionOrder>
void __SMap<K, V, Alloc, InInsertionOrder>::Detach(Entry* entry) {
    if constexpr (InInsertionOrder) {
        const Linked& links = LinksOf(entry);
        (links.before != nullptr ? LinksOf(links.before).after : ends_.first) = links.after;
        (links.after != nullptr ? LinksOf(links.after).before : ends_.last) = links.before;
    }
}

// ---- Find -------------------------------------------------------------------------------------

template <class K, class V, class Alloc, bool InInsertionOrder>
auto __SMap<K, V, Alloc, InInsertionOrder>::Locate(std::intptr_t key) const -> Place {
    return Descend([this, key](const void* element) { return CompareKey(key, GetKey(element)); });
}

// A map that no class is derived from orders its keys by `<`, which needs no virtual call.
template <class K, class V, class Alloc, bool InInsertionOrder>
auto __SMap<K, V, Alloc, InInsertionOrder>::LocateKey(const K& key) const -> Place {
    using Plain =
        std::conditional_t<InInsertionOrder, SUnsortedMap<K, V, Alloc>, SMap<K, V, Alloc>>;
    if (typeid(*this) != typeid(Plain)) return Locate(Travel(key));
    if constexpr (std::is_integral_v<K>) {
        return DescendStraight(key, [](const void* element) { return KeyOf(element); });
    } else {
        return Descend([&](const void* element) { return STreeCompare()(key, KeyOf(element)); });
    }
}

// Never destroyed: the reference may be used until the process ends.
template <class K, class V, class Alloc, bool InInsertionOrder>
const V& __SMap<K, V, Alloc, InInsertionOrder>::None() {
    alignas(V) static unsigned char storage[sizeof(V)];
    static const V* const none = ::new (storage) V();
    return *none;
}

template <class K, class V, class Alloc, bool InInsertionOrder>
template <class Equal>
bool __SMap<K, V, Alloc, InInsertionOrder>::HasEqualPairs(const __SMap& other, Equal equal) const {
    if (GetCount() != other.GetCount()) return false;
    for (const auto& [key, value] : *this) {
        const V* const twin = other.Retrieve(key);
        if (twin == nullptr || !equal(value, *twin)) return false;
    }
    return true;
}

// ---- Change -----------------------------------------------------------------------------------

template <class K, class V, class Alloc, bool InInsertionOrder>
auto __SMap<K, V, Alloc, InInsertionOrder>::NewEntry(const K& key, const V& value) -> Entry* {
    Entry* entry = ::new (Alloc::Allocate(EntrySize())) Entry;
    try {
        Construct(entry->Element(), key, value);
    } catch (...) {
        Alloc::Free(entry, EntrySize());
        throw;
    }
    return entry;
}

template <class K, class V, class Alloc, bool InInsertionOrder>
V& __SMap<K, V, Alloc, InInsertionOrder>::Add(const K& key, const V& value) {
    const Place place = LocateKey(key);
    if constexpr (brcore8::EndsSilently<K> && brcore8::EndsSilently<V>) {
        if (place.found != nullptr) {
            // Both are made before the old pair ends: the arguments may live in it.
            K newKey(key);
            V newValue(value);
            value_type& pair = PairOf(place.found);
            ::new (&pair) value_type{std::move(newKey), std::move(newValue)};
            return pair.value;
        }
    }
    Entry* const fresh = NewEntry(key, value);
    Settle(fresh, place);
    return PairOf(fresh).value;
}

// Puts a new entry into its place, which may be that of another one.
template <class K, class V, class Alloc, bool InInsertionOrder>
void __SMap<K, V, Alloc, InInsertionOrder>::Settle(Entry* fresh, const Place& place) {
    if (place.found == nullptr) {
        LinkEntry(fresh, place.parent, place.left);
        Append(fresh);
        return;
    }
    ReplaceEntry(place.found, fresh);
    if constexpr (InInsertionOrder) {
        Linked& links = LinksOf(fresh);
        links.before = LinksOf(place.found).before;
        links.after = LinksOf(place.found).after;
        (links.before != nullptr ? LinksOf(links.before).after : ends_.first) = fresh;
        (links.after != nullptr ? LinksOf(links.after).before : ends_.last) = fresh;
    }
    DropEntry(place.found);
}

template <class K, class V, class Alloc, bool InInsertionOrder>
template <class Key>
V& __SMap<K, V, Alloc, InInsertionOrder>::FindOrAdd(const Place& place, const Key& key) {
    if (place.found != nullptr) return PairOf(place.found).value;
    Entry* const fresh = NewEntry(static_cast<K>(key), V());
    Settle(fresh, place);
    return PairOf(fresh).value;
}

template <class K, class V, class Alloc, bool InInsertionOrder>
int __SMap<K, V, Alloc, InInsertionOrder>::RemoveEntry(Entry* entry) {
    if (entry == nullptr) return 0;
    Detach(entry);
    UnlinkEntry(entry);
    DropEntry(entry);
    return 1;
}

template <class K, class V, class Alloc, bool InInsertionOrder>
void __SMap<K, V, Alloc, InInsertionOrder>::Clear() {
    if constexpr (InInsertionOrder) ends_ = {};
    __STree::Clear();
}

template <class K, class V, class Alloc, bool InInsertionOrder>
void __SMap<K, V, Alloc, InInsertionOrder>::AddAll(const __SMap& other) {
    if (this == &other) return;
    Batch batch(*this);
    batch.AddAll(other);
    batch.Settle();
}

// ---- Check ------------------------------------------------------------------------------------

template <class K, class V, class Alloc, bool InInsertionOrder>
int __SMap<K, V, Alloc, InInsertionOrder>::AssertValid() const {
    if (!__STree::AssertValid()) return 0;
    if constexpr (InInsertionOrder) {
        int count = 0;
        const Entry* before = nullptr;
        for (Entry* entry = ends_.first; entry != nullptr; entry = LinksOf(entry).after) {
            if (++count > GetCount() || LinksOf(entry).before != before) return 0;
            if (Locate(GetKey(entry->Element())).found != entry) return 0;
            before = entry;
        }
        return count == GetCount() && ends_.last == before;
    }
    return 1;
}

#endif
