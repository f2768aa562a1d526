// The string maps: SStringMap and SStringMapNoCase in key order, SStringUnsortedMap and
// SStringUnsortedMapNoCase in the order in which keys were first added. They write themselves as,
// and read themselves from, a one-line list: "name=Tower;height=12".
//
// Keys compare by character code in the process's code page, or without case; a zero byte is a
// character like any other. The page must not change while a map holds keys. What takes a key to
// look up takes any text (SString, std::string_view, a literal) and copies none of it.
// Ownership, threads and errors are those of the maps in containers/map.h.
//
//     SStringUnsortedMap settings;
//     settings.AddFromList("name=Tower;height=12", ";", '=', '\\', "%d", 1);
//     if (const SString* height = settings.Retrieve("height")) Use(*height);       // "12"
//     for (auto& [key, value] : settings) Use(key, value);
#ifndef BRCORE8_STRINGS_STRING_MAP_H
#define BRCORE8_STRINGS_STRING_MAP_H

#include <brcore8/containers/map.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/string_buffer.h>
#include <brcore8/strings/string_table.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <typeinfo>

// Where the pairs of string maps live.
class SStringMapAllocator : public STreePool {};

// A key to look up, as it stands; it lives as long as the expression that it is part of. A
// `const char*` means what it means to SString: null is empty, an identifier is loaded.
class BRCORE8_API SStringKey {
public:
    SStringKey(const SString& text) : text_(text.View()), string_(&text) {}
    SStringKey(const char* text);
    template <class Text>
    requires std::convertible_to<const Text&, std::string_view> SStringKey(const Text& text)
        : text_(text) {}
    SStringKey(const SStringKey&) = delete;
    SStringKey& operator=(const SStringKey&) = delete;

    std::string_view View() const noexcept { return text_; }
    // A share of the string that this key was made from, else a copy of the text.
    explicit operator SString() const { return string_ ? *string_ : SString(text_); }

private:
    SString loaded_;
    std::string_view text_;
    const SString* string_ = nullptr;
};

// Whether the format holds exactly one conversion, and that one of an int: "%", flags, a width and
// a precision of at most three digits, then d, i, u, o, x or X. "%%" stands for a percent sign.
BRCORE8_API bool SIsIndexFormat(std::string_view format) noexcept;

namespace brcore8 {

// -1, 0 or 1: the order of keys.
BRCORE8_API int CompareMapKeys(std::string_view left, std::string_view right) noexcept;
BRCORE8_API int CompareMapKeysNoCase(std::string_view left, std::string_view right) noexcept;

// Builds the list of a map, pair by pair.
class BRCORE8_API MapListWriter {
public:
    MapListWriter(unsigned int assign, unsigned int separator, unsigned int escape);
    void Add(std::string_view key, std::string_view value);
    SString Text() const { return list_; }

private:
    void AddEscaped(std::string_view text, unsigned int guarded);

    SStringBuffer list_;
    bool first_ = true;
    unsigned int assign_, separator_, escape_;
};

// Keys and values of a list, in turn.
BRCORE8_API SStringTable ReadMapList(const SString& list, const SString& separators,
                                     unsigned int assign, unsigned int escape,
                                     const SString& keyFormat, int firstIndex);

}  // namespace brcore8

// What the four string maps share; `Map` is one of the two maps of strings.
template <class Map>
class __SStringMap : public Map {
    using Base = Map;

public:
    using typename Map::const_iterator;
    using typename Map::iterator;

    // ---- Find ---------------------------------------------------------------------------------

    // The value of the key, or null.
    SString* Retrieve(const SStringKey& key) { return Base::ValueOrNull(EntryOf(key)); }
    const SString* Retrieve(const SStringKey& key) const { return Base::ValueOrNull(EntryOf(key)); }
    bool Contains(const SStringKey& key) const { return EntryOf(key) != nullptr; }
    // The place of the key, or end().
    iterator Find(const SStringKey& key) { return this->PlaceOf(EntryOf(key)); }
    const_iterator Find(const SStringKey& key) const { return this->PlaceOf(EntryOf(key)); }

    // ---- Change -------------------------------------------------------------------------------

    // The value of the key. A key that is not there is first added with an empty value; in a map
    // that is const the empty string is returned instead.
    SString& operator[](const SStringKey& key) {
        return this->FindOrAdd(LocateText(key.View()), key);
    }
    const SString& operator[](const SStringKey& key) const {
        return Base::ValueOrNone(EntryOf(key));
    }
    // Return whether there was such a pair. The iterator goes on to the next pair.
    int Remove(const SStringKey& key) { return this->RemoveEntry(EntryOf(key)); }
    int Remove(iterator& at) { return Base::Remove(at); }
    int Remove(iterator&& at) { return Base::Remove(at); }

    // Adds every pair of another map, also of the kind that compares keys differently; nothing
    // for itself.
    __SStringMap& operator+=(const Base& other) { return this->AddAll(other), *this; }
    // Whether both hold the same keys, by this map's comparison, with the same values, byte for
    // byte, in whatever order.
    bool operator==(const __SStringMap& other) const {
        return other.HasEqualPairs(*this, [](const SString& left, const SString& right) {
            return left.View() == right.View();
        });
    }

    // ---- Lists --------------------------------------------------------------------------------
    // Characters are codes of the process's page, double-byte ones too; escape 0 is none.

    // The pairs in the map's order as "key=value;key=value". In keys escape characters are doubled
    // and assignment characters escaped; in values escape characters are doubled and separators
    // escaped. AddFromList with the same three, when they differ and none is 0, restores every
    // pair but one kind: a key that holds the separator, which is not escaped there, ends at it.
    // (Nor does half a double-byte character at the end of a text come back: it swallows what
    // follows.)
    SString GetAsList(unsigned int assign, unsigned int separator, unsigned int escape) const {
        brcore8::MapListWriter list(assign, separator, escape);
        for (const auto& [key, value] : *this)
            list.Add(key.View(), value.View());
        return list.Text();
    }
    // Adds the pairs of a list. Text up to the assignment character is a key, and what follows
    // up to the next of the separators its value. Where a separator comes first the text is a
    // value, whose key is made by formatting keyFormat with the pair's index; the first pair of
    // the list has firstIndex, and after the greatest int comes the least. The escape character
    // takes the next character literally; at the end of the list it is dropped. Any number of
    // separators ends a pair. A character given several parts is the assignment character
    // first, then a separator.
    // Of the format at most one conversion, as SIsIndexFormat describes it, is formatted; a format
    // with any other is the key as it stands.
    void AddFromList(const SString& list, const SString& separators, unsigned int assign,
                     unsigned int escape, const SString& keyFormat, int firstIndex) {
        const SStringTable texts =
            brcore8::ReadMapList(list, separators, assign, escape, keyFormat, firstIndex);
        typename Base::Batch batch(*this);
        for (int i = 0; i + 1 < texts.GetCount(); i += 2)
            batch.Add(texts[i], texts[i + 1]);
        batch.Settle();
    }

protected:
    // The text of a key that CompareKey is given: that of a pair's SString, or of a text that is
    // looked up, which travels as an odd address.
    static std::string_view KeyText(std::intptr_t key) noexcept {
        if (key & 1) return *reinterpret_cast<const std::string_view*>(key - 1);
        return reinterpret_cast<const SString*>(key)->View();
    }
    // Finds a key without a virtual call an element, unless the map is of a class derived from the
    // one that compares in this way.
    template <class Compare>
    __STree::Place LocateBy(const std::type_info& comparing, std::intptr_t key,
                            Compare compare) const {
        if (typeid(*this) != comparing) return Base::Locate(key);
        return this->Descend([compare, text = KeyText(key)](const void* element) {
            return compare(text, Base::KeyOf(element).View());
        });
    }

private:
    __STree::Place LocateText(std::string_view text) const {
        return this->Locate(reinterpret_cast<std::intptr_t>(&text) + 1);
    }
    auto* EntryOf(const SStringKey& key) const { return LocateText(key.View()).found; }
};

// A derived map may order keys in another way: it overrides CompareKey and reads the two keys with
// KeyText.
class BRCORE8_API SStringMap : public __SStringMap<SMap<SString, SString, SStringMapAllocator>> {
protected:
    int CompareKey(std::intptr_t left, std::intptr_t right) const override;
    Place Locate(std::intptr_t key) const override;
};

class BRCORE8_API SStringMapNoCase
    : public __SStringMap<SMap<SString, SString, SStringMapAllocator>> {
protected:
    int CompareKey(std::intptr_t left, std::intptr_t right) const override;
    Place Locate(std::intptr_t key) const override;
};

class BRCORE8_API SStringUnsortedMap
    : public __SStringMap<SUnsortedMap<SString, SString, SStringMapAllocator>> {
protected:
    int CompareKey(std::intptr_t left, std::intptr_t right) const override;
    Place Locate(std::intptr_t key) const override;
};

class BRCORE8_API SStringUnsortedMapNoCase
    : public __SStringMap<SUnsortedMap<SString, SString, SStringMapAllocator>> {
protected:
    int CompareKey(std::intptr_t left, std::intptr_t right) const override;
    Place Locate(std::intptr_t key) const override;
};

#endif
