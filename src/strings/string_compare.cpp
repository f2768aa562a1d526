#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/string.h>

#include "strings/mbs.h"

namespace mbs = brcore8::mbs;

namespace {

std::size_t Limit(int bytes) {
    return bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

}  // namespace

// Where a comparison from `start` begins: the empty text beyond the end.
const char* SString::From(int start) const noexcept {
    return text_ + ByteOffset(start);
}

// --- By character code -------------------------------------------------------------------------

int SString::Compare(const char* text) const noexcept {
    return mbs::Compare(text_, text);
}

int SString::Compare(const char* text, int bytes) const noexcept {
    return mbs::CompareBytes(text_, text, Limit(bytes));
}

int SString::Compare(int start, const char* text) const noexcept {
    return mbs::Compare(From(start), text);
}

int SString::Compare(int start, const char* text, int bytes) const noexcept {
    return mbs::CompareBytes(From(start), text, Limit(bytes));
}

int SString::CompareNoCase(const char* text) const noexcept {
    return mbs::CompareNoCase(text_, text);
}

int SString::CompareNoCase(const char* text, int bytes) const noexcept {
    return mbs::CompareNoCaseBytes(text_, text, Limit(bytes));
}

int SString::CompareNoCase(int start, const char* text) const noexcept {
    return mbs::CompareNoCase(From(start), text);
}

int SString::CompareNoCase(int start, const char* text, int bytes) const noexcept {
    return mbs::CompareNoCaseBytes(From(start), text, Limit(bytes));
}

// --- In the order of the user's language -------------------------------------------------------

int SString::Collate(const char* text) const {
    return Collate(0, text);
}

int SString::Collate(const char* text, int bytes) const {
    return Collate(0, text, bytes);
}

int SString::Collate(int start, const char* text) const {
    return mbs::Collate(From(start), text);
}

int SString::Collate(int start, const char* text, int bytes) const {
    return mbs::CollateBytes(From(start), text, Limit(bytes));
}

int SString::CollateNoCase(const char* text) const {
    return CollateNoCase(0, text);
}

int SString::CollateNoCase(const char* text, int bytes) const {
    return CollateNoCase(0, text, bytes);
}

int SString::CollateNoCase(int start, const char* text) const {
    return mbs::CollateNoCase(From(start), text);
}

int SString::CollateNoCase(int start, const char* text, int bytes) const {
    return mbs::CollateNoCaseBytes(From(start), text, Limit(bytes));
}

// --- Digit runs by their value -----------------------------------------------------------------

int SString::CompareNb(const char* text) const noexcept {
    return _tcscmpi(text_, text);
}

int SString::CompareNb(const char* text, int bytes) const noexcept {
    return _tcsncmpi(text_, text, bytes);
}

int SString::CompareNb(int start, const char* text) const noexcept {
    return _tcscmpi(From(start), text);
}

int SString::CompareNb(int start, const char* text, int bytes) const noexcept {
    return _tcsncmpi(From(start), text, bytes);
}

int SString::CompareNbNoCase(const char* text) const noexcept {
    return _tcsicmpi(text_, text);
}

int SString::CompareNbNoCase(const char* text, int bytes) const noexcept {
    return _tcsnicmpi(text_, text, bytes);
}

int SString::CompareNbNoCase(int start, const char* text) const noexcept {
    return _tcsicmpi(From(start), text);
}

int SString::CompareNbNoCase(int start, const char* text, int bytes) const noexcept {
    return _tcsnicmpi(From(start), text, bytes);
}

// --- Free operators ----------------------------------------------------------------------------

namespace {

int Order(const char* left, const char* right) {
    return left == right ? 0 : mbs::Compare(left ? left : "", right ? right : "");
}

}  // namespace

#define BRCORE8_COMPARISON(op)                                             \
    bool operator op(const SString& left, const SString& right) noexcept { \
        return Order(left, right) op 0;                                    \
    }                                                                      \
    bool operator op(const SString& left, const char* right) noexcept {    \
        return Order(left, right) op 0;                                    \
    }                                                                      \
    bool operator op(const char* left, const SString& right) noexcept {    \
        return Order(left, right) op 0;                                    \
    }

BRCORE8_COMPARISON(==)
BRCORE8_COMPARISON(!=)
BRCORE8_COMPARISON(<)
BRCORE8_COMPARISON(>)
BRCORE8_COMPARISON(<=)
BRCORE8_COMPARISON(>=)

#undef BRCORE8_COMPARISON
