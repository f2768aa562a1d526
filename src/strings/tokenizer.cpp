#include <brcore8/strings/tokenizer.h>

#include <algorithm>
#include <utility>

#include "strings/mbs.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

namespace {

constexpr std::string_view kSpaces = " \t\n\r";

}  // namespace

// ---- What characters are ------------------------------------------------------------------------

void SStringTokenizer::Rules::TakePage() {
    const CodePage& page = CodePage::Ansi();
    Remove(Lead);
    for (unsigned byte = 0; byte < 256; ++byte)
        if (page.IsLead(static_cast<unsigned char>(byte))) bytes[byte] |= Lead;
}

void SStringTokenizer::Rules::Add(std::string_view set, unsigned char as) {
    const CodePage& page = CodePage::Ansi();
    const char* const end = set.data() + set.size();
    const int known = pairs.GetCount();
    for (const char* p = set.data(); p < end; p += mbs::CharBytes(page, p, end)) {
        const unsigned code = mbs::UnsignedCodeAt(page, p, end);
        if (code < 256)
            bytes[code] |= as;
        else
            pairs.Add({code, as});
    }
    if (pairs.GetCount() == known) return;
    std::sort(pairs.begin(), pairs.end(),
              [](const Pair& left, const Pair& right) { return left.code < right.code; });
    STable<Pair> merged;
    merged.GrowTo(pairs.GetCount());
    for (const Pair& pair : pairs) {
        if (!merged.IsEmpty() && merged.end()[-1].code == pair.code)
            merged.end()[-1].is |= pair.is;
        else
            merged.Add(pair);
    }
    pairs = std::move(merged);
}

void SStringTokenizer::Rules::Remove(unsigned char as) noexcept {
    for (unsigned char& is : bytes)
        is &= static_cast<unsigned char>(~as);
    for (Pair& pair : pairs)
        pair.is &= static_cast<unsigned char>(~as);
}

void SStringTokenizer::Rules::SetDelimiters(std::string_view set, int returnDelimiters,
                                            int addToSeparators) {
    TakePage();
    Remove(addToSeparators || set.empty() ? Delimiter : Delimiter | Separator);
    Add(set, Delimiter | Separator);
    returned = returnDelimiters != 0;
}

unsigned char SStringTokenizer::Rules::IsPair(unsigned int code) const noexcept {
    const Pair* const found =
        std::lower_bound(pairs.begin(), pairs.end(), code,
                         [](const Pair& pair, unsigned int wanted) { return pair.code < wanted; });
    return found != pairs.end() && found->code == code ? found->is : 0;
}

bool SStringTokenizer::Rules::Skips(unsigned char is) const noexcept {
    if (is & Delimiter) return !returned;
    return (is & Separator) != 0;
}

// ---- Text and sets ------------------------------------------------------------------------------

void SStringTokenizer::Start(const SString& text, Rules&& rules) {
    text_ = text;
    rules_ = std::move(rules);
    position_ = 0;
}

void SStringTokenizer::Init(const SString& text, int returnDelimiters) {
    Rules rules = rules_;
    rules.TakePage();
    rules.Remove(Rules::Separator);
    rules.Add(kSpaces, Rules::Separator);
    rules.returned = returnDelimiters != 0;
    Start(text, std::move(rules));
}

void SStringTokenizer::Init(const SString& text, const SString& delimiters, int returnDelimiters,
                            int addToSeparators) {
    Rules rules = rules_;
    rules.Remove(Rules::Separator);
    rules.Add(kSpaces, Rules::Separator);
    rules.SetDelimiters(delimiters.View(), returnDelimiters, addToSeparators);
    Start(text, std::move(rules));
}

void SStringTokenizer::SetDelimiters(const SString& delimiters, int returnDelimiters,
                                     int addToSeparators) {
    Rules rules = rules_;
    rules.SetDelimiters(delimiters.View(), returnDelimiters, addToSeparators);
    rules_ = std::move(rules);
}

void SStringTokenizer::Done() {
    text_.Done();
    position_ = 0;
    rules_.Remove(Rules::Separator | Rules::Delimiter);
    rules_.pairs.Clear();
}

// ---- Register tokens ----------------------------------------------------------------------------

void SStringTokenizer::AddSimpleToken(const SString& text, long id) {
    Register({text, text, SString(), 1, id});
}

void SStringTokenizer::AddDelimitedToken(const SString& name, const SString& start,
                                         const SString& end, int keepDelimiters, long id) {
    Register({name, start, end, keepDelimiters, id});
}

void SStringTokenizer::Register(const SDelimitedToken& token) {
    if (token.start.IsEmpty()) return;
    int at = 0;
    while (at < registered_.GetCount() &&
           registered_[at].start.LengthByte() >= token.start.LengthByte()) {
        if (registered_[at].start.View() == token.start.View()) {
            registered_[at] = token;
            return;
        }
        ++at;
    }
    registered_.Insert(at, token);
    rules_.bytes[mbs::Byte(token.start)] |= Rules::Starts;
}

const SDelimitedToken* SStringTokenizer::RegisteredHere() const noexcept {
    const std::string_view rest = text_.View().substr(position_);
    for (const SDelimitedToken& token : registered_)
        if (rest.starts_with(token.start.View())) return &token;
    return nullptr;
}

// ---- Read tokens --------------------------------------------------------------------------------

// The width of the character at the position, which is not the end, and what it is.
std::size_t SStringTokenizer::CharacterAt(const Rules& rules, unsigned char& is) const noexcept {
    const char* const p = static_cast<const char*>(text_) + position_;
    is = rules.bytes[mbs::Byte(p)];
    // The terminator follows the text, so the second byte may be looked at.
    if (!(is & Rules::Lead) || p[1] == 0) return 1;
    is = static_cast<unsigned char>(rules.IsPair(mbs::Byte(p) * 256u + mbs::Byte(p + 1)) |
                                    (is & Rules::Starts));
    return 2;
}

// Stops at the end, at a registered token, which is returned, or at other text.
const SDelimitedToken* SStringTokenizer::SkipSeparators(const Rules& rules) noexcept {
    const std::string_view text = text_.View();
    const SDelimitedToken* registered = nullptr;
    std::size_t at = position_;
    while (at < text.size()) {
        unsigned char is = rules.bytes[mbs::Byte(&text[at])];
        std::size_t bytes = 1;
        if (is & (Rules::Lead | Rules::Starts)) {
            position_ = at;
            bytes = CharacterAt(rules, is);
            if (is & Rules::Starts) registered = RegisteredHere();
        }
        if (registered || !rules.Skips(is)) break;
        at += bytes;
    }
    position_ = at;
    return registered;
}

std::string_view SStringTokenizer::TakeRegistered(const SDelimitedToken& token) noexcept {
    const std::size_t start = position_;
    position_ += token.start.View().size();
    std::string_view inside;
    if (!token.end.IsEmpty()) RetrieveUntilView(token.end.View(), &inside);
    if (token.end.IsEmpty() || token.keepDelimiters)
        return text_.View().substr(start, position_ - start);
    return inside;
}

// One delimiter, or the text up to whatever cuts it.
std::string_view SStringTokenizer::TakeText(const Rules& rules) noexcept {
    const std::string_view text = text_.View();
    const std::size_t start = position_;
    std::size_t at = start;
    for (;;) {
        while (at < text.size() && rules.bytes[mbs::Byte(&text[at])] == 0)
            ++at;
        if (at == text.size()) break;
        position_ = at;
        unsigned char is;
        const std::size_t bytes = CharacterAt(rules, is);
        if (is & (Rules::Separator | Rules::Delimiter)) {
            if (at == start) at += bytes;
            break;
        }
        if (is & Rules::Starts && at != start && RegisteredHere()) break;
        at += bytes;
    }
    position_ = at;
    return text.substr(start, at - start);
}

long SStringTokenizer::Take(const Rules& rules, std::string_view* token,
                            const SDelimitedToken** matched) noexcept {
    const SDelimitedToken* const registered = SkipSeparators(rules);
    const std::string_view taken = registered ? TakeRegistered(*registered) : TakeText(rules);
    if (token) *token = taken;
    if (matched) *matched = registered;
    return registered ? registered->id : NoId;
}

long SStringTokenizer::TakeCopy(const Rules& rules, SString* token,
                                const SDelimitedToken** matched) {
    const std::size_t before = position_;
    std::string_view taken;
    const long id = Take(rules, &taken, matched);
    try {
        if (token) *token = taken;
    } catch (...) {
        position_ = before;
        throw;
    }
    return id;
}

void SStringTokenizer::SkipSpaces() noexcept {
    position_ = std::min(text_.View().find_first_not_of(kSpaces, position_), text_.View().size());
}

long SStringTokenizer::NextTokenParam(SString* token, const SDelimitedToken** matched) {
    return TakeCopy(rules_, token, matched);
}

long SStringTokenizer::NextTokenParam(SString* token, const SDelimitedToken** matched,
                                      const SString& delimiters, int returnDelimiters) {
    Rules rules = rules_;
    rules.Remove(Rules::Separator);
    rules.Add(kSpaces, Rules::Separator);
    rules.SetDelimiters(delimiters.View(), returnDelimiters, 1);
    return TakeCopy(rules, token, matched);
}

long SStringTokenizer::NextTokenView(std::string_view* token,
                                     const SDelimitedToken** matched) noexcept {
    return Take(rules_, token, matched);
}

SString SStringTokenizer::NextToken() {
    SString token;
    NextTokenParam(&token);
    return token;
}

int SStringTokenizer::RetrieveUntil(const SString& stop, SString* out) {
    const std::size_t before = position_;
    std::string_view taken;
    const int found = RetrieveUntilView(stop.View(), &taken);
    try {
        if (out) *out = taken;
    } catch (...) {
        position_ = before;
        throw;
    }
    return found;
}

int SStringTokenizer::RetrieveUntilView(std::string_view stop, std::string_view* out) noexcept {
    const std::string_view rest = text_.View().substr(position_);
    const char* const found = mbs::FindText(rest.data(), rest.size(), stop.data(), stop.size());
    const std::size_t length = found ? static_cast<std::size_t>(found - rest.data()) : rest.size();
    position_ += length + (found ? stop.size() : 0);
    if (out) *out = rest.substr(0, length);
    return found != nullptr;
}

void SStringTokenizer::RestoreState(unsigned int position) noexcept {
    position_ = std::min<std::size_t>(position, text_.View().size());
}
