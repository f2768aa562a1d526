#include <brcore8/strings/string_map.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>

#include "strings/char_set.h"
#include "strings/mbs.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

// ---- Keys ---------------------------------------------------------------------------------------

SStringKey::SStringKey(const char* text) {
    if (reinterpret_cast<std::uintptr_t>(text) < 0x10000) {
        loaded_ = SString(text);
        string_ = &loaded_;
        text_ = loaded_.View();
    } else {
        text_ = text;
    }
}

int brcore8::CompareMapKeys(std::string_view left, std::string_view right) noexcept {
    return mbs::CompareWhole(left, right);
}

int brcore8::CompareMapKeysNoCase(std::string_view left, std::string_view right) noexcept {
    return mbs::CompareWholeNoCase(left, right);
}

namespace {

// Eight bytes, as a number that orders as they do.
std::uint64_t Word(const char* text) noexcept {
    std::uint64_t word;
    std::memcpy(&word, text, sizeof word);
    return std::endian::native == std::endian::little ? __builtin_bswap64(word) : word;
}

// As CompareMapKeys, made for the many short comparisons of a descent. Keys have beginnings in
// common and mostly differ within a few words.
int CompareKeys(std::string_view left, std::string_view right) noexcept {
    if (CodePage::Ansi().IsDoubleByte()) return mbs::CompareWhole(left, right);
    const std::size_t limit = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < limit; i += sizeof(std::uint64_t)) {
        if (limit < sizeof(std::uint64_t)) return left.compare(right);
        // The last word reaches back into the one before.
        const std::size_t at = std::min(i, limit - sizeof(std::uint64_t));
        const std::uint64_t a = Word(left.data() + at), b = Word(right.data() + at);
        if (a != b) return a < b ? -1 : 1;
    }
    return (left.size() > limit) - (right.size() > limit);
}

}  // namespace

int SStringMap::CompareKey(std::intptr_t left, std::intptr_t right) const {
    return CompareKeys(KeyText(left), KeyText(right));
}

int SStringMapNoCase::CompareKey(std::intptr_t left, std::intptr_t right) const {
    return mbs::CompareWholeNoCase(KeyText(left), KeyText(right));
}

int SStringUnsortedMap::CompareKey(std::intptr_t left, std::intptr_t right) const {
    return CompareKeys(KeyText(left), KeyText(right));
}

int SStringUnsortedMapNoCase::CompareKey(std::intptr_t left, std::intptr_t right) const {
    return mbs::CompareWholeNoCase(KeyText(left), KeyText(right));
}

auto SStringMap::Locate(std::intptr_t key) const -> Place {
    return LocateBy(typeid(SStringMap), key, CompareKeys);
}

auto SStringMapNoCase::Locate(std::intptr_t key) const -> Place {
    return LocateBy(typeid(SStringMapNoCase), key, mbs::CompareWholeNoCase);
}

auto SStringUnsortedMap::Locate(std::intptr_t key) const -> Place {
    return LocateBy(typeid(SStringUnsortedMap), key, CompareKeys);
}

auto SStringUnsortedMapNoCase::Locate(std::intptr_t key) const -> Place {
    return LocateBy(typeid(SStringUnsortedMapNoCase), key, mbs::CompareWholeNoCase);
}

// ---- Key formats --------------------------------------------------------------------------------

namespace {

// "%", five flags, three digits, a point, three digits and a letter at most.
constexpr std::size_t kLongestConversion = 14;

std::size_t CountOf(std::string_view set, std::size_t limit, std::string_view text) {
    return std::min({text.find_first_not_of(set), text.size(), limit});
}

// The length of "%-08.3d" and the like at the start of the text; 0 when it is anything else.
std::size_t ConversionLength(std::string_view text) {
    std::size_t i = 1 + CountOf("-+ #0", 5, text.substr(1));
    i += CountOf("0123456789", 3, text.substr(i));
    if (text.substr(i).starts_with('.')) i += 1 + CountOf("0123456789", 3, text.substr(i + 1));
    return CountOf("diuoxX", 1, text.substr(i)) != 0 ? i + 1 : 0;
}

// A format cut at its one conversion, which is empty when there is none.
struct IndexFormat {
    std::string_view before, conversion, after;
    bool refused = false;

    explicit IndexFormat(std::string_view format) : before(format) {
        for (std::size_t i = 0; (i = format.find('%', i)) < format.size();) {
            if (format.substr(i).starts_with("%%")) {
                i += 2;
                continue;
            }
            const std::size_t length = ConversionLength(format.substr(i));
            refused = length == 0 || !conversion.empty();
            if (refused) return;
            before = format.substr(0, i);
            conversion = format.substr(i, length);
            i += length;
            after = format.substr(i);
        }
    }
};

SString WithSinglePercents(std::string_view text) {
    SStringBuffer plain(64);
    for (std::size_t i = 0; i < text.size(); ++i) {
        plain += text[i];
        if (text.substr(i).starts_with("%%")) ++i;
    }
    return plain;
}

// Makes the keys of values that came without.
class KeyMaker {
public:
    explicit KeyMaker(std::string_view text) {
        const IndexFormat format(text);
        before_ = format.refused ? SString(text) : WithSinglePercents(format.before);
        if (format.refused) return;
        after_ = WithSinglePercents(format.after);
        format.conversion.copy(conversion_, kLongestConversion);
    }

    SString Make(int index) const {
        if (conversion_[0] == 0) return before_;
        // 999 digits of a precision, a sign or a prefix, and the terminator.
        char digits[1024];
        const int length = Print(digits, sizeof digits, conversion_, index);
        return before_ + SString(digits, digits + length) + after_;
    }

private:
    // A pointer, for a format that no compiler can check.
    static constexpr int (*Print)(char*, std::size_t, const char*, ...) = std::snprintf;

    SString before_, after_;
    char conversion_[kLongestConversion + 1] = {};
};

}  // namespace

bool SIsIndexFormat(std::string_view format) noexcept {
    const IndexFormat parts(format);
    return !parts.refused && !parts.conversion.empty();
}

// ---- Lists --------------------------------------------------------------------------------------

namespace brcore8 {

MapListWriter::MapListWriter(unsigned int assign, unsigned int separator, unsigned int escape)
    : list_(256),
      assign_(mbs::Normalize(CodePage::Ansi(), assign)),
      separator_(mbs::Normalize(CodePage::Ansi(), separator)),
      escape_(mbs::Normalize(CodePage::Ansi(), escape)) {}

void MapListWriter::Add(std::string_view key, std::string_view value) {
    if (!first_) list_ += separator_;
    first_ = false;
    AddEscaped(key, assign_);
    list_ += assign_;
    AddEscaped(value, separator_);
}

void MapListWriter::AddEscaped(std::string_view text, unsigned int guarded) {
    const CodePage& page = CodePage::Ansi();
    const char* const end = text.data() + text.size();
    const char* plain = text.data();
    for (const char* p = plain; p < end && escape_ != 0; p += mbs::CharBytes(page, p, end)) {
        const unsigned code = mbs::UnsignedCodeAt(page, p, end);
        if (code != escape_ && code != guarded) continue;
        list_.Concat(plain, p);
        list_ += escape_;
        plain = p;
    }
    list_.Concat(plain, end);
}

namespace {

// Walks the list of a map character by character.
class MapListReader {
public:
    MapListReader(std::string_view list, std::string_view separators, unsigned assign,
                  unsigned escape)
        : page_(CodePage::Ansi()),
          p_(list.data()),
          end_(list.data() + list.size()),
          separators_(page_, separators),
          assign_(mbs::Normalize(page_, assign)),
          escape_(mbs::Normalize(page_, escape)) {}

    bool AtEnd() const { return p_ == end_; }

    // Takes text up to a separator, or an assignment character where one may stand, and returns
    // whether that ended it; the assignment character is skipped.
    bool Read(SStringBuffer& token, bool mayAssign) {
        token.Clear();
        const char* plain = p_;  // text that is not yet in the token
        for (; p_ < end_; Step()) {
            const unsigned code = Code();
            const bool assigns = mayAssign && code == assign_;
            if (assigns || separators_.Contains(code)) {
                token.Concat(plain, p_);
                if (assigns) Step();
                return assigns;
            }
            if (escape_ == 0 || code != escape_) continue;
            token.Concat(plain, p_);
            Step();
            plain = p_;
            if (p_ == end_) break;
        }
        token.Concat(plain, end_);
        return false;
    }

    void SkipSeparators() {
        while (p_ < end_ && separators_.Contains(Code()))
            Step();
    }

private:
    unsigned Code() const { return mbs::UnsignedCodeAt(page_, p_, end_); }
    void Step() { p_ += mbs::CharBytes(page_, p_, end_); }

    const CodePage& page_;
    const char* p_;
    const char* const end_;
    const CharSet separators_;
    const unsigned assign_, escape_;
};

}  // namespace

SStringTable ReadMapList(const SString& list, const SString& separators, unsigned int assign,
                         unsigned int escape, const SString& keyFormat, int firstIndex) {
    MapListReader reader(list.View(), separators.View(), assign, escape);
    const KeyMaker keys(keyFormat.View());
    // Unsigned, since the index may pass the greatest int.
    auto index = static_cast<std::uint32_t>(firstIndex);
    SStringTable texts;
    SStringBuffer token(64);
    for (; !reader.AtEnd(); ++index) {
        if (reader.Read(token, true)) {
            texts.Add(SString(token));
            reader.Read(token, false);
        } else {
            texts.Add(keys.Make(static_cast<std::int32_t>(index)));
        }
        texts.Add(SString(token));
        reader.SkipSeparators();
    }
    return texts;
}

}  // namespace brcore8
