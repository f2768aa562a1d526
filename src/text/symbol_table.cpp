#include <brcore8/text/symbol_table.h>

#include <atomic>

#include "strings/mbs.h"

int SSymbolOrder::operator()(const SString& left, const SString& right) const noexcept {
    const int result = brcore8::mbs::Compare(left, right);
    if (result != 0) return result;
    // Equal up to the first zero byte of both: what follows it tells names apart too.
    return left.View().compare(right.View());
}

std::uint64_t SKeywordTable::NextChange() noexcept {
    static constinit std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

void SSymbolTable::AddSymbol(const SString& name, const SString& value, long category) {
    FindOrAdd(category).Add(name, SSTItem{category, 0, name, value});
}

void SSymbolTable::AddSymbol(const SString& name, long value, long category) {
    FindOrAdd(category).Add(name, SSTItem{category, 1, name, SString(value)});
}

namespace {

// "_m_Name" to "Name": each prefix once, in this order.
SString WithoutPrefixes(const SString& name) {
    std::string_view text = name.View();
    if (text.starts_with("_")) text.remove_prefix(1);
    if (text.starts_with("m_")) text.remove_prefix(2);
    return SString(text);
}

SString Capitalised(SString name) {
    if (!name.IsEmpty()) name.ToUpper(0);
    return name;
}

}  // namespace

void SSymbolTable::AddNameCodeSymbols(const SString& name, const SString& code, long category) {
    const SString plainName = WithoutPrefixes(name);
    const SString plainCode = WithoutPrefixes(code);
    AddSymbol("name", plainName, category);
    AddSymbol("Name", Capitalised(plainName), category);
    AddSymbol("code", plainCode, category);
    AddSymbol("Code", Capitalised(plainCode), category);
}

void SSymbolTable::RemoveSymbol(const SString& name, long category) {
    const SString key = name;  // a share: it may be the name of the very item
    if (category != AllCategories) {
        FindOrAdd(category).Remove(key);
        return;
    }
    for (auto& [number, symbols] : *this)
        symbols.Remove(key);
}

SSTItem* SSymbolTable::RetrieveSymbol(const SString& name, long category) const {
    auto& self = const_cast<SSymbolTable&>(*this);
    if (category != AllCategories) {
        SSymbolCategory* const symbols = self.Find(category);
        return symbols ? symbols->Find(name) : nullptr;
    }
    for (auto at = self.rbegin(); at != self.rend(); ++at)
        if (SSTItem* const item = at->value.Find(name)) return item;
    return nullptr;
}

bool SSymbolTable::IsSymbolDefined(const SString& name, long category) const {
    const SSymbolCategory* const symbols = Find(category);
    return symbols && symbols->Contains(name);
}

int SSymbolTable::GetCount(long category) const {
    const SSymbolCategory* const symbols = Find(category);
    return symbols ? symbols->GetCount() : 0;
}
