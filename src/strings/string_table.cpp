#include <brcore8/strings/string_table.h>

#include <brcore8/core/throw.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/string_buffer.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <utility>

#include "strings/char_set.h"
#include "strings/mbs.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

// ---- Create -------------------------------------------------------------------------------------

SStringTable::SStringTable(int capacity, int count) : SStringTable() {
    GrowTo(std::max({capacity, count, 0}));
    for (int i = 0; i < count; ++i)
        Add(SString());
}

SStringTable::SStringTable(const SString* begin, const SString* end) : SStringTable() {
    if (!std::less<const SString*>()(begin, end)) return;
    GrowTo(static_cast<int>(std::min<std::ptrdiff_t>(end - begin, 0x7FFFFFFF)));
    for (; begin != end; ++begin)
        Add(*begin);
}

SStringTable::SStringTable(const SStringTable& other) : __STable(other) {
    __STable::operator=(other);
}

SStringTable::~SStringTable() {
    Clear();
}

SStringTable& SStringTable::operator=(const SStringTable& other) {
    __STable::operator=(other);
    return *this;
}

SStringTable& SStringTable::operator=(SStringTable&& other) noexcept {
    SStringTable taken(std::move(other));
    SwapBlocks(taken);
    return *this;
}

SStringTable& SStringTable::operator=(const SString& list) {
    SetFromList(list, "\n", '\\');
    return *this;
}

SStringTable& SStringTable::operator+=(const SString& list) {
    AddFromList(list, "\n", '\\');
    return *this;
}

SStringTable& SStringTable::operator=(const char* const* texts) {
    SStringTable fresh;
    fresh += texts;
    return *this = std::move(fresh);
}

SStringTable& SStringTable::operator+=(const char* const* texts) {
    SStringTable added;
    for (; texts && *texts; ++texts)
        added.Add(*texts);
    Take(added);
    return *this;
}

// ---- Change -------------------------------------------------------------------------------------

SString& SStringTable::Insert(int index, const SString& text) {
    // Made first: opening the slot may move the very text.
    SString copy(text);
    return *::new (NewAt(index)) SString(std::move(copy));
}

// Room for more strings, growing by at least half, so that many small additions stay linear.
void SStringTable::ReserveFor(int added) {
    const std::int64_t needed = std::int64_t{GetCount()} + added;
    if (needed <= GetCapacity()) return;
    if (needed > 0x7FFFFFFF) brcore8::ThrowOutOfMemory();
    const std::int64_t grown = std::int64_t{GetCapacity()} * 3 / 2 + 1;
    GrowTo(static_cast<int>(std::clamp<std::int64_t>(grown, needed, 0x7FFFFFFF)));
}

// Moves another table's strings behind the present ones, all or none.
void SStringTable::Take(SStringTable& other) {
    if (IsEmpty()) {
        SwapBlocks(other);
        return;
    }
    ReserveFor(other.GetCount());
    for (SString& text : other)
        ::new (NewAt(GetCount())) SString(std::move(text));
}

void SStringTable::Destroy(void* element) {
    std::destroy_at(static_cast<SString*>(element));
}

void SStringTable::CopyTo(void* destination, const void* source) {
    ::new (destination) SString(*static_cast<const SString*>(source));
}

void* SStringTable::Allocate(int count) {
    return __STable::Allocate(count);
}

void SStringTable::Free(void* block) {
    __STable::Free(block);
}

// A string is one pointer that nothing points back at.
void SStringTable::Relocate(void* destination, void* source, int count, int&) {
    MoveBytes(destination, source, count);
}

// ---- Lists --------------------------------------------------------------------------------------

namespace {

// Walks a list character by character.
struct ListReader {
    const CodePage& page;
    const char* p;
    const char* end;
    brcore8::CharSet separators;
    unsigned escape;  // normalised; 0 is none

    unsigned Code() const noexcept { return mbs::UnsignedCodeAt(page, p, end); }
    bool AtSeparator() const noexcept { return separators.Contains(Code()); }
    void Step() noexcept { p += mbs::CharBytes(page, p, end); }

    // The next item into `item`, and every separator after it.
    void Read(SStringBuffer& item) {
        item.Clear();
        const char* plain = p;  // text that is not yet in the item
        while (p < end && !AtSeparator()) {
            if (escape != 0 && Code() == escape) {
                item.Concat(plain, p);
                Step();
                plain = p;
                if (p == end) break;
            }
            Step();
        }
        item.Concat(plain, p);
        while (p < end && AtSeparator())
            Step();
    }
};

}  // namespace

void SStringTable::AddFromList(const SString& list, const SString& separators,
                               unsigned int escape) {
    const SString text = list;  // a share: it may be a string of this table
    const CodePage& page = CodePage::Ansi();
    const std::string_view view = text.View();
    ListReader reader{page, view.data(), view.data() + view.size(),
                      brcore8::CharSet(page, separators.View()), mbs::Normalize(page, escape)};
    SStringTable parsed;
    SStringBuffer item(64);
    while (reader.p < reader.end) {
        reader.Read(item);
        parsed.Add(SString(item));
    }
    Take(parsed);
}

void SStringTable::SetFromList(const SString& list, const SString& separators,
                               unsigned int escape) {
    SStringTable fresh;
    fresh.AddFromList(list, separators, escape);
    *this = std::move(fresh);
}

void SStringTable::SetFromList(unsigned int id, const SString& separators, unsigned int escape) {
    SString list;
    list.LoadString(id);
    SetFromList(list, separators, escape);
}

SString SStringTable::GetAsList(unsigned int separator, unsigned int escape) const {
    const CodePage& page = CodePage::Ansi();
    const unsigned cut = mbs::Normalize(page, separator);
    const unsigned guard = mbs::Normalize(page, escape);
    SStringBuffer list(256);
    for (int i = 0; i < GetCount(); ++i) {
        if (i > 0) list += cut;
        const std::string_view text = GetAt(i).View();
        const char* const end = text.data() + text.size();
        const char* plain = text.data();
        for (const char* p = plain; p < end; p += mbs::CharBytes(page, p, end)) {
            const unsigned code = mbs::UnsignedCodeAt(page, p, end);
            if (guard == 0 || (code != guard && code != cut)) continue;
            list.Concat(plain, p);
            list += guard;
            plain = p;
        }
        list.Concat(plain, end);
    }
    return list;
}

SString SStringTable::Format() const {
    return Format("\n");
}

SString SStringTable::Format(const SString& separator) const {
    return Format(separator, separator);
}

SString SStringTable::Format(const SString& separator, const SString& suffix) const {
    return Format(SString(), separator, suffix);
}

SString SStringTable::Format(const SString& prefix, const SString& separator,
                             const SString& suffix) const {
    if (IsEmpty()) return SString();
    SStringBuffer text(256);
    text += prefix;
    for (int i = 0; i < GetCount(); ++i) {
        if (i > 0) text += separator;
        text += GetAt(i);
    }
    text += suffix;
    return text;
}

// ---- Order --------------------------------------------------------------------------------------

int SStringTable::Compare(const SStringTable& other) const noexcept {
    if (this == &other) return 1;
    int result = GetCount() - other.GetCount();
    for (int i = 0; result == 0 && i < GetCount(); ++i)
        result = mbs::Compare(GetAt(i), other.GetAt(i));
    return result;
}
