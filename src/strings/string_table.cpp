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
#include "strings/text_writer.h"

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

void SStringTable::Append(SString&& text) {
    ::new (NewAt(GetCount())) SString(std::move(text));
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
        Append(std::move(text));
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

// Takes a list apart.
class ListReader {
public:
    ListReader(const CodePage& page, std::string_view list, std::string_view separators,
               unsigned escape)
        : page_(page),
          p_(list.data()),
          end_(list.data() + list.size()),
          separators_(page, separators),
          escape_(mbs::Normalize(page, escape)) {
        for (unsigned byte = 0; byte < 256; ++byte)
            plain_[byte] = !page.IsLead(static_cast<unsigned char>(byte)) &&
                           !separators_.Contains(byte) && (escape_ == 0 || byte != escape_);
    }

    bool AtEnd() const noexcept { return p_ == end_; }

    // The next item, read past every separator after it. It is a part of the list, or of `scratch`
    // where an escape had to be left out.
    std::string_view Read(SStringBuffer& scratch) {
        bool escaped = false;
        const char* begin = p_;  // of what is not yet in the scratch
        for (;; Step()) {
            while (p_ < end_ && plain_[mbs::Byte(p_)])
                ++p_;
            if (p_ == end_ || AtSeparator()) break;
            if (escape_ == 0 || Code() != escape_) continue;
            if (!escaped) scratch.Clear();
            escaped = true;
            scratch.Concat(begin, p_);
            Step();
            begin = p_;
            if (p_ == end_) break;
        }
        std::string_view item(begin, static_cast<std::size_t>(p_ - begin));
        if (escaped) {
            scratch += item;
            item = scratch.View();
        }
        while (p_ < end_ && AtSeparator())
            Step();
        return item;
    }

private:
    unsigned Code() const noexcept { return mbs::UnsignedCodeAt(page_, p_, end_); }
    bool AtSeparator() const noexcept { return separators_.Contains(Code()); }
    void Step() noexcept { p_ += mbs::CharBytes(page_, p_, end_); }

    const CodePage& page_;
    const char* p_;
    const char* end_;
    brcore8::CharSet separators_;
    unsigned escape_;  // normalised; 0 is none
    bool plain_[256];  // a character of one byte that is neither separator nor escape
};

}  // namespace

void SStringTable::AddFromList(const SString& list, const SString& separators,
                               unsigned int escape) {
    const SString text = list;  // a share: it may be a string of this table
    ListReader reader(CodePage::Ansi(), text.View(), separators.View(), escape);
    SStringTable parsed;
    SStringBuffer scratch(64);
    while (!reader.AtEnd())
        parsed.Append(SString(reader.Read(scratch)));
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

namespace {

// What stands between the strings of a list, and the escape before a character of a string that is
// one of the two.
struct ListMarks {
    const CodePage& page;
    unsigned separator;
    unsigned escape;  // 0 is none
    char separatorBytes[2];
    char escapeBytes[2];

    ListMarks(const CodePage& codePage, unsigned separatorCode, unsigned escapeCode)
        : page(codePage),
          separator(mbs::Normalize(page, separatorCode)),
          escape(mbs::Normalize(page, escapeCode)) {
        mbs::Put(page, separator, separatorBytes);
        mbs::Put(page, escape, escapeBytes);
    }
    std::string_view Separator() const { return {separatorBytes, separator < 256 ? 1u : 2u}; }
    std::string_view Escape() const { return {escapeBytes, escape < 256 ? 1u : 2u}; }

    // Calls back with each character that needs an escape.
    template <class Found>
    void ForEachEscaped(std::string_view text, Found found) const {
        const char* const end = text.data() + text.size();
        for (const char* p = text.data(); p < end; p += mbs::CharBytes(page, p, end)) {
            const unsigned code = mbs::UnsignedCodeAt(page, p, end);
            if (code == escape || code == separator) found(p);
        }
    }
    // Under a single-byte page, a whole list at once.
    std::int64_t CountEscapedBytes(std::string_view text) const {
        constexpr std::size_t kBlock = 255;  // so many fit in a byte, of which many add up a step
        std::int64_t count = 0;
        for (std::size_t start = 0; start < text.size(); start += kBlock) {
            std::uint8_t found = 0;
            for (const char byte : text.substr(start, kBlock))
                found += (byte == *escapeBytes) | (byte == *separatorBytes);
            count += found;
        }
        return count;
    }
    void PutEscaped(brcore8::TextWriter& list, std::string_view text) const {
        const char* plain = text.data();
        ForEachEscaped(text, [&](const char* p) {
            list.Put({plain, p});
            list.Put(Escape());
            plain = p;
        });
        list.Put({plain, text.data() + text.size()});
    }
};

}  // namespace

SString SStringTable::GetAsList(unsigned int separator, unsigned int escape) const {
    if (IsEmpty()) return SString();
    const ListMarks marks(CodePage::Ansi(), separator, escape);
    const std::string_view cut = marks.Separator();
    SString plain = Format(SString(), SString(cut), SString());
    if (marks.escape == 0) return plain;
    std::int64_t escaped = 0;
    if (marks.page.IsDoubleByte()) {
        for (const SString& text : *this)
            marks.ForEachEscaped(text.View(), [&](const char*) { ++escaped; });
    } else {
        escaped = marks.CountEscapedBytes(plain.View()) - (GetCount() - 1);
    }
    if (escaped == 0) return plain;
    brcore8::TextWriter list(plain.LengthByte() +
                             escaped * static_cast<std::int64_t>(marks.Escape().size()));
    plain.Done();
    for (int i = 0; i < GetCount(); ++i) {
        if (i > 0) list.Put(cut);
        marks.PutEscaped(list, GetAt(i).View());
    }
    return std::move(list).Take();
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
    std::int64_t bytes = prefix.LengthByte() + std::int64_t{suffix.LengthByte()} +
                         (GetCount() - std::int64_t{1}) * separator.LengthByte();
    for (const SString& text : *this)
        bytes += text.LengthByte();
    brcore8::TextWriter all(bytes);
    all.Put(prefix.View());
    for (int i = 0; i < GetCount(); ++i) {
        if (i > 0) all.Put(separator.View());
        all.Put(GetAt(i).View());
    }
    all.Put(suffix.View());
    return std::move(all).Take();
}

// ---- Order --------------------------------------------------------------------------------------

int SStringTable::Compare(const SStringTable& other) const noexcept {
    if (this == &other) return 1;
    int result = GetCount() - other.GetCount();
    for (int i = 0; result == 0 && i < GetCount(); ++i)
        result = mbs::Compare(GetAt(i), other.GetAt(i));
    return result;
}
