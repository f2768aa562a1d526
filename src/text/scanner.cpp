#include <brcore8/text/scanner.h>

#include <algorithm>
#include <bit>
#include <utility>

#include "strings/mbs.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

const SString gSN_Delimiters = "()[]+-*/%^={}\"'";

// ---- Keywords by hash ---------------------------------------------------------------------------

namespace {

// A keyword whose slots are taken this far is left to the table.
constexpr std::size_t kProbes = 16;
// A buffer beyond this is not kept for the next run.
constexpr std::int32_t kKeptRun = 1 << 16;

std::uint32_t Hash(const unsigned char* fold, std::string_view word) noexcept {
    std::uint64_t hash = word.size();
    for (const char byte : word)
        hash = (hash ^ fold[mbs::Byte(&byte)]) * 0x9E3779B97F4A7C15u;
    return static_cast<std::uint32_t>(hash >> 32);
}

// Of the length of a word; lengths from 63 on share one.
std::uint64_t LengthBit(std::string_view word) noexcept {
    return std::uint64_t{1} << std::min<std::size_t>(word.size(), 63);
}

unsigned char FirstByte(std::string_view word) noexcept {
    return word.empty() ? 0 : mbs::Byte(word.data());
}

bool IsFolded(const unsigned char* fold, std::string_view lower, std::string_view word) noexcept {
    return std::equal(lower.begin(), lower.end(), word.begin(), word.end(),
                      [fold](char l, char r) { return mbs::Byte(&l) == fold[mbs::Byte(&r)]; });
}

}  // namespace

bool SScanner::KeywordIndex::IsOf(const SKeywordTable& other) const noexcept {
    return table == &other && changes == other.changes_ && count == other.GetCount() &&
           fold == CodePage::Ansi().LowerBytes();
}

void SScanner::KeywordIndex::Build(const SKeywordTable& other) {
    table = nullptr;
    fold = CodePage::Ansi().LowerBytes();
    std::fill(std::begin(lengths), std::end(lengths), 0);
    crowded = false;
    const std::size_t size = std::bit_ceil(static_cast<std::size_t>(other.GetCount()) * 2 + 1);
    slots.Clear();
    slots.GrowTo(static_cast<int>(size));
    for (std::size_t i = 0; i < size; ++i)
        slots.Add({0, nullptr});
    for (const SKeywordTable::Element& keyword : other) {
        const std::string_view word = keyword.key.View();
        if (!IsFolded(fold, word, word)) continue;  // no word in lower case equals it
        lengths[FirstByte(word)] |= LengthBit(word);
        if (!Put({Hash(fold, word), &keyword})) crowded = true;
    }
    table = &other;
    changes = other.changes_;
    count = other.GetCount();
}

bool SScanner::KeywordIndex::Put(const Slot& slot) noexcept {
    const auto mask = static_cast<std::size_t>(slots.GetCount()) - 1;
    Slot* const all = slots.GetArray();
    for (std::size_t i = 0; i < kProbes; ++i) {
        Slot& place = all[(slot.hash + i) & mask];
        if (place.keyword != nullptr) continue;
        place = slot;
        return true;
    }
    return false;
}

const SKTItem* SScanner::KeywordIndex::Find(std::string_view word) const noexcept {
    if (!(lengths[fold[FirstByte(word)]] & LengthBit(word))) return nullptr;
    const std::uint32_t hash = Hash(fold, word);
    const auto mask = static_cast<std::size_t>(slots.GetCount()) - 1;
    const Slot* const all = slots.GetArray();
    for (std::size_t i = 0; i < kProbes; ++i) {
        const Slot& place = all[(hash + i) & mask];
        if (place.keyword == nullptr) break;
        if (place.hash == hash && IsFolded(fold, place.keyword->key.View(), word))
            return &place.keyword->value;
    }
    return nullptr;
}

// ---- Set up -------------------------------------------------------------------------------------

SScanner::SScanner() = default;

SScanner::SScanner(const SString& text, SKeywordTable* keywords) {
    Init(text, keywords);
}

SScanner::~SScanner() = default;

int SScanner::Init() {
    Done();
    previousTokenID = 0;
    return 1;
}

int SScanner::Init(const SString& text, SKeywordTable* keywords) {
    SString delimiters = gSN_Delimiters;
    return Init(text, keywords, delimiters, 1, 1);
}

int SScanner::Init(const SString& text, SKeywordTable* keywords, SString& delimiters,
                   int returnDelimiters, int addToSeparators) {
    const SString trimmed = delimiters;
    SString single = KeywordDelimiters(keywords);
    tokenizer_.Init(text, trimmed + single, returnDelimiters, addToSeparators);
    token.Done();
    tokenID = previousTokenID = 0;
    keywords_ = keywords;
    keywordDelimiters_ = std::move(single);
    Trim(trimmed);
    return 1;
}

SString SScanner::KeywordDelimiters(const SKeywordTable* keywords) {
    SString single;
    if (keywords == nullptr) return single;
    SStringBuffer joined(64);
    for (SKeywordTable::const_iterator at(*keywords); at; ++at)
        if (const SString key = at.GetKey(); key.Length() == 1) joined += key;
    return joined;
}

int SScanner::InitKeywordsDelimiters() {
    keywordDelimiters_ = KeywordDelimiters(keywords_);
    return 1;
}

void SScanner::SetDelimiters(const SString& delimiters, int returnDelimiters, int addToSeparators) {
    tokenizer_.SetDelimiters(delimiters, returnDelimiters, addToSeparators);
    Trim(delimiters);
}

void SScanner::Trim(const SString& delimiters) {
    delimiters_ = delimiters;
    std::fill(std::begin(trimmed_), std::end(trimmed_), false);
    for (const char byte : delimiters_.View())
        trimmed_[mbs::Byte(&byte)] = true;
}

void SScanner::Done() {
    tokenizer_.Done();
    token.Done();
    keywords_ = nullptr;
    tokenID = 0;
}

// ---- Read ---------------------------------------------------------------------------------------

long SScanner::NextTokenID() {
    const unsigned int start = tokenizer_.SaveState();
    long previous;
    long current = tokenID;
    std::string_view taken;
    try {
        if (keywords_ != nullptr && !index_.IsOf(*keywords_)) index_.Build(*keywords_);
        do {
            previous = current;
            current = TakeToken(taken);
        } while (taken.empty() && tokenizer_.HasMoreTokens());
        token = taken;
    } catch (...) {
        tokenizer_.RestoreState(start);
        throw;
    }
    if (run_.LengthByte() > kKeptRun) run_.Done();
    previousTokenID = previous;
    return tokenID = current;
}

// A keyword, or all words up to the next one; what is left of it after trimming, as a part of the
// text or of the run's buffer.
long SScanner::TakeToken(std::string_view& taken) {
    run_.Clear();
    std::string_view run;  // the last words, as long as they touch in the text
    while (tokenizer_.HasMoreTokens()) {
        const unsigned int before = tokenizer_.SaveState();
        std::string_view word;
        tokenizer_.NextTokenView(&word);
        if (const SKTItem* const keyword = FindKeyword(word)) {
            if (run.empty() && run_.IsEmpty()) {
                taken = Trimmed(word);
                return keyword->id;
            }
            tokenizer_.RestoreState(before);
            break;
        }
        if (run.data() + run.size() == word.data()) {
            run = {run.data(), run.size() + word.size()};
        } else {
            run_ += run;
            run = word;
        }
    }
    if (!run_.IsEmpty()) {
        run_ += run;
        run = run_.View();
    }
    taken = Trimmed(run);
    return NoID;
}

const SKTItem* SScanner::FindKeyword(std::string_view word) const {
    if (keywords_ == nullptr) return nullptr;
    if (!CodePage::Ansi().IsDoubleByte()) {
        const SKTItem* const found = index_.Find(word);
        if (found != nullptr || !index_.crowded) return found;
    }
    SString lower(word);
    lower.ToLower();
    return std::as_const(*keywords_).RetrieveKeyword(lower);
}

std::string_view SScanner::Trimmed(std::string_view text) const {
    if (CodePage::Ansi().IsDoubleByte()) {
        SString trimmed(text);
        trimmed.TrimLeft(delimiters_);
        text.remove_prefix(text.size() - trimmed.View().size());
        trimmed.TrimRight(delimiters_);
        return text.substr(0, trimmed.View().size());
    }
    while (!text.empty() && trimmed_[mbs::Byte(&text.front())])
        text.remove_prefix(1);
    while (!text.empty() && trimmed_[mbs::Byte(&text.back())])
        text.remove_suffix(1);
    return text;
}
