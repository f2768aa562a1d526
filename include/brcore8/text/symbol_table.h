// SKeywordTable, from spellings to numbers, and SSymbolTable, named values grouped by category.
//
// Names are kept and compared exactly as given, case included, by character code in the process's
// code page; a zero byte in a name counts. Both tables own what they hold; pointers to items stay
// good until the item is removed or replaced.
// Threads: a table that nobody changes may be read by several. Errors: SEOutOfMemory.
//
//     SSymbolTable symbols;
//     symbols.AddSymbol("WIDTH", 12, 0);
//     if (SSTItem* width = symbols.RetrieveSymbol("WIDTH", 0)) Use(width->value);      // "12"
#ifndef BRCORE8_TEXT_SYMBOL_TABLE_H
#define BRCORE8_TEXT_SYMBOL_TABLE_H

#include <brcore8/containers/rb_tree.h>
#include <brcore8/strings/string.h>

#include <cstdint>
#include <utility>

// The order of names in both tables.
struct BRCORE8_API SSymbolOrder {
    int operator()(const SString& left, const SString& right) const noexcept;
};

// ---- Keywords ---------------------------------------------------------------------------------

struct SKTItem {
    long id;
};

// Range-for yields elements with `key` and `value` (the SKTItem) in ascending key order.
class BRCORE8_API SKeywordTable : public STreeMap<SString, SKTItem, SSymbolOrder> {
public:
    class const_iterator;

    SKeywordTable() = default;
    SKeywordTable(const SKeywordTable& other) : STreeMap(other) {}
    SKeywordTable(SKeywordTable&& other) noexcept : STreeMap(std::move(other)) { other.Change(); }
    ~SKeywordTable() override { Clear(); }
    SKeywordTable& operator=(const SKeywordTable& other) {
        STreeMap::operator=(other);
        return Change(), *this;
    }
    SKeywordTable& operator=(SKeywordTable&& other) noexcept {
        STreeMap::operator=(std::move(other));
        other.Change();
        return Change(), *this;
    }

    // Remove every keyword; the last form takes copies of another table's instead.
    void Init() { Clear(); }
    void Done() { Clear(); }
    void Init(const SKeywordTable& other) { *this = other; }

    // An id given to a keyword replaces the one it had.
    void AddKeyword(const SString& key, long id) { Add(key, SKTItem{id}); }
    void RemoveKeyword(const SString& key) { Remove(key); }
    // The keyword's item, or null.
    SKTItem* RetrieveKeyword(const SString& key) { return Find(key); }
    const SKTItem* RetrieveKeyword(const SString& key) const { return Find(key); }
    bool IsKeywordDefined(const SString& key) const { return Contains(key); }

private:
    friend class SScanner;
    void FreeEntry(Entry* entry) override {
        Change();
        STreeMap::FreeEntry(entry);
    }
    void Change() noexcept { changes_ = NextChange(); }
    static std::uint64_t NextChange() noexcept;

    // Another number, in the whole process, whenever keywords go: a scanner that knows it and the
    // count knows whether its own view of the table still holds.
    std::uint64_t changes_ = NextChange();
};

// Walks the keywords in ascending order. Removing the keyword it stands on makes it useless.
class BRCORE8_API SKeywordTable::const_iterator {
public:
    explicit const_iterator(const SKeywordTable& table) : table_(&table), at_(table.begin()) {}

    const SKTItem& operator*() const { return at_->value; }
    SString GetKey() const { return at_->key; }
    const_iterator& operator++() { return ++at_, *this; }
    bool operator==(const const_iterator& other) const = default;
    // Whether it has not passed the last keyword.
    operator bool() const { return static_cast<bool>(at_); }
    void reset() { at_ = table_->begin(); }

private:
    const SKeywordTable* table_;
    STreeMap::const_iterator at_;
};

// ---- Symbols ----------------------------------------------------------------------------------

struct SSTItem {
    long category;
    int numeric;  // 1 when the value was given as a number, else 0
    SString name;
    SString value;  // a number as its decimal digits

    // Stores another category in the item alone, which stays filed where it is. Returns the old.
    long SetCategory(long other) { return std::exchange(category, other); }
};

using SSymbolCategory = STreeMap<SString, SSTItem, SSymbolOrder>;

// Range-for yields elements with `key` (the category) and `value` (its symbols by name), in
// ascending order.
class BRCORE8_API SSymbolTable : public STreeMap<long, SSymbolCategory> {
public:
    // Where RetrieveSymbol and RemoveSymbol take it, every category.
    enum : long { AllCategories = -2 };

    SSymbolTable() = default;

    // Remove every symbol and category; the last form takes copies of another table's instead.
    void Init() { Clear(); }
    void Done() { Clear(); }
    void Init(const SSymbolTable& other) { *this = other; }

    // A symbol replaces the one of its name in the category.
    void AddSymbol(const SString& name, const SString& value, long category);
    void AddSymbol(const SString& name, long value, long category);
    void AddSymbol(const SString& name, int value, long category) {
        AddSymbol(name, static_cast<long>(value), category);
    }
    void AddSymbol(const SString& name, const char* value, long category) {
        AddSymbol(name, SString(value), category);
    }
    // Adds four symbols to the category: "name" and "code" with these two texts less one leading
    // "_" and then one leading "m_", and "Name" and "Code" with the same and the first character
    // in upper case.
    void AddNameCodeSymbols(const SString& name, const SString& code, long category);

    // Removes the name from one category, or from AllCategories; and a whole category.
    void RemoveSymbol(const SString& name, long category);
    void RemoveSymbol(long category) { Remove(category); }

    // The item, or null. In AllCategories the highest category that has the name is taken.
    SSTItem* RetrieveSymbol(const SString& name, long category) const;
    // In that very category: AllCategories is one like any other here.
    bool IsSymbolDefined(const SString& name, long category) const;
    // Symbols in the category; 0 when nothing was ever put there.
    int GetCount(long category) const;
};

#endif
