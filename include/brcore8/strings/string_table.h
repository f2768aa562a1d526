// SStringTable: a growable array of strings that reads and writes itself as a list in one text.
//
// The table owns its strings. Indices are not checked: they must lie within 0 .. GetCount() - 1
// (within 0 .. GetCount() where something is inserted). An argument may be a string of the very
// table, or share its text.
// Threads: one table serves one thread at a time.
// Errors: SEOutOfMemory; the table is then what it was before.
//
//     SStringTable pages;
//     pages.SetFromList("page10;page9", ";", '\\');
//     pages.SortNumbered();
//     for (const SString& page : pages) Use(page);                 // "page9", "page10"
#ifndef BRCORE8_STRINGS_STRING_TABLE_H
#define BRCORE8_STRINGS_STRING_TABLE_H

#include <brcore8/containers/table.h>
#include <brcore8/strings/string.h>

#include <concepts>
#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

class BRCORE8_API SStringTable : public __STable {
    // Walks the strings by index, up or down, so that it stays usable while the table grows.
    template <class Table, int Step>
    class Walker {
    public:
        using iterator_category = std::bidirectional_iterator_tag;
        using value_type = SString;
        using difference_type = std::ptrdiff_t;
        using reference = std::conditional_t<std::is_const_v<Table>, const SString&, SString&>;
        using pointer = std::remove_reference_t<reference>*;

        Walker() = default;
        // At the first string in walking order, or at one index.
        explicit Walker(Table& table) : Walker(table, Step > 0 ? 0 : table.GetCount() - 1) {}
        Walker(Table& table, int index) : table_(&table), index_(index) {}
        template <class Other>
        requires std::same_as<const Other, Table> Walker(const Walker<Other, Step>& other)
            : table_(other.GetTable()), index_(other.GetIndex()) {}

        reference operator*() const { return (*table_)[index_]; }
        pointer operator->() const { return &(*table_)[index_]; }
        Walker& operator++() { return index_ += Step, *this; }
        Walker& operator--() { return index_ -= Step, *this; }
        Walker operator++(int) { return Walker(*table_, std::exchange(index_, index_ + Step)); }
        Walker operator--(int) { return Walker(*table_, std::exchange(index_, index_ - Step)); }
        bool operator==(const Walker& other) const = default;
        // Whether there is a string here.
        explicit operator bool() const {
            return table_ && index_ >= 0 && index_ < table_->GetCount();
        }

        Table* GetTable() const { return table_; }
        int GetIndex() const { return index_; }

    private:
        Table* table_ = nullptr;
        int index_ = 0;
    };

public:
    using iterator = Walker<SStringTable, 1>;
    using const_iterator = Walker<const SStringTable, 1>;
    using reverse_iterator = Walker<SStringTable, -1>;
    using const_reverse_iterator = Walker<const SStringTable, -1>;
    using value_type = SString;

    // ---- Create -------------------------------------------------------------------------------

    SStringTable() noexcept : __STable(sizeof(SString)) {}
    // Room for `capacity` strings, and `count` empty strings in it.
    SStringTable(int capacity, int count);
    // Copies of the strings from `begin` up to `end`; none when end <= begin.
    SStringTable(const SString* begin, const SString* end);
    SStringTable(const SStringTable& other);
    SStringTable(SStringTable&& other) noexcept : SStringTable() { SwapBlocks(other); }
    ~SStringTable() override;

    SStringTable& operator=(const SStringTable& other);
    SStringTable& operator=(SStringTable&& other) noexcept;
    // Replace the strings, or add: a list with LF between its items and `\` as escape character
    // (see AddFromList), or an array of C strings that ends with null; a null array has none.
    SStringTable& operator=(const SString& list);
    SStringTable& operator+=(const SString& list);
    SStringTable& operator=(const char* const* texts);
    SStringTable& operator+=(const char* const* texts);

    // ---- Read ---------------------------------------------------------------------------------

    SString* GetArray() { return static_cast<SString*>(__STable::GetAt(0)); }
    const SString* GetArray() const { return static_cast<const SString*>(__STable::GetAt(0)); }
    SString& GetAt(int index) { return GetArray()[index]; }
    const SString& GetAt(int index) const { return GetArray()[index]; }
    SString& operator[](int index) { return GetArray()[index]; }
    const SString& operator[](int index) const { return GetArray()[index]; }

    iterator begin() { return iterator(*this, 0); }
    iterator end() { return iterator(*this, GetCount()); }
    const_iterator begin() const { return const_iterator(*this, 0); }
    const_iterator end() const { return const_iterator(*this, GetCount()); }
    reverse_iterator rbegin() { return reverse_iterator(*this); }
    reverse_iterator rend() { return reverse_iterator(*this, -1); }
    const_reverse_iterator rbegin() const { return const_reverse_iterator(*this); }
    const_reverse_iterator rend() const { return const_reverse_iterator(*this, -1); }

    // ---- Change -------------------------------------------------------------------------------

    // Both return the new string.
    SString& Add(const SString& text) { return Insert(GetCount(), text); }
    SString& Insert(int index, const SString& text);
    // An iterator then stands at the string that took the place of the removed one.
    void Remove(int index) { __STable::Remove(index); }
    void Remove(const iterator& at) { __STable::Remove(at.GetIndex()); }
    void Remove(const reverse_iterator& at) { __STable::Remove(at.GetIndex()); }
    // Moves one string, shifting those between by one place.
    void MoveTo(int from, int to) { __STable::MoveTo(from, to); }
    void MoveTo(const iterator& from, int to) { __STable::MoveTo(from.GetIndex(), to); }

    // ---- Lists --------------------------------------------------------------------------------

    // Adds the items of a list. An item runs to the next character of the separator set; after it
    // all separators in a row are skipped, so that only a list that begins with one has an empty
    // item, its first. The escape character makes the next one literal, unless it is itself a
    // separator; at the very end it is dropped. Escape 0 is none. An empty list adds nothing.
    void AddFromList(const SString& list, const SString& separators, unsigned int escape);
    // The same in place of the present strings.
    void SetFromList(const SString& list, const SString& separators, unsigned int escape);
    // The same with string resource `id` as the list.
    void SetFromList(unsigned int id, const SString& separators, unsigned int escape);
    // The strings with one separator between them; escape characters in them are doubled and
    // separators escaped, so that AddFromList with the same two restores the table. What no list
    // can express does not come back: empty strings other than a first one that others follow; a
    // string that ends in half a double-byte character; and, with escape 0 or the separator as
    // escape, separators in strings.
    SString GetAsList(unsigned int separator, unsigned int escape) const;
    operator SString() const { return GetAsList('\n', '\\'); }

    // `prefix`, the strings with `separator` between them, `suffix`; nothing at all for an empty
    // table. With one argument the separator is also the suffix, and LF is the default.
    SString Format() const;
    SString Format(const SString& separator) const;
    SString Format(const SString& separator, const SString& suffix) const;
    SString Format(const SString& prefix, const SString& separator, const SString& suffix) const;

    // ---- Order --------------------------------------------------------------------------------
    // Sort upwards, or downwards with 0, in n log n steps; equal strings keep their order.

    // By character code; the second without case, and equal ones then by code.
    void Sort(int ascending = 1);
    void SortNoCase(int ascending = 1);
    // Runs of digits by their value (see _tcscmpi); the second without case, equal ones then with.
    void SortNumbered(int ascending = 1);
    void SortNumberedNoCase(int ascending = 1);

    // The shorter table is less; tables of one length compare string by string, by character
    // code. A table is greater than itself: 1, and so not equal to itself.
    int Compare(const SStringTable& other) const noexcept;
    bool operator==(const SStringTable& other) const noexcept { return Compare(other) == 0; }
    bool operator!=(const SStringTable& other) const noexcept { return Compare(other) != 0; }
    bool operator<(const SStringTable& other) const noexcept { return Compare(other) < 0; }
    bool operator<=(const SStringTable& other) const noexcept { return Compare(other) <= 0; }
    bool operator>(const SStringTable& other) const noexcept { return Compare(other) > 0; }
    bool operator>=(const SStringTable& other) const noexcept { return Compare(other) >= 0; }

protected:
    void Destroy(void* element) override;
    void CopyTo(void* destination, const void* source) override;
    void* Allocate(int count) override;
    void Free(void* block) override;
    void Relocate(void* destination, void* source, int count, int& moved) override;

private:
    // Puts the strings, all of them, into that order; none: leaves them as they are.
    void Rearrange(const STable<SString*>& order);
    void Append(SString&& text);
    void ReserveFor(int added);
    void Take(SStringTable& other);
};
static_assert(sizeof(void*) != 4 || sizeof(SStringTable) == 20);

#endif
