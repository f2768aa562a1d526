#include <brcore8/strings/string_iterators.h>
#include <brcore8/strings/string_views.h>

#include <algorithm>
#include <functional>

#include "strings/mbs.h"

using brcore8::CodePage;
using brcore8::LineCut;
using brcore8::PartCut;
using brcore8::WordCut;
namespace mbs = brcore8::mbs;

// ---- const_iterator -----------------------------------------------------------------------------

SString::const_iterator::const_iterator(const SString& text, int index) noexcept
    // Assignment writes to the string it refers to, a constant one included.
    : string_(const_cast<SString*>(&text)),
      position_(mbs::Advance(CodePage::Ansi(), text.text_, End(), std::max(index, 0))) {}

SString::const_iterator& SString::const_iterator::operator=(const const_iterator& other) {
    const unsigned int offset = other.SaveState();
    if (string_ != other.string_) *string_ = *other.string_;
    // Not the other's pointer: a locked string was copied, not shared.
    RestoreState(offset);
    return *this;
}

const char* SString::const_iterator::Position() const noexcept {
    const std::less<const char*> before;
    const char* const end = End();
    return before(position_, string_->text_) || before(end, position_) ? end : position_;
}

int SString::const_iterator::operator*() const noexcept {
    return mbs::CodeAt(CodePage::Ansi(), Position());
}

SString::const_iterator& SString::const_iterator::operator++() noexcept {
    const char* const position = Position();
    const bool atEnd = position == End();
    position_ = atEnd ? position : position + mbs::CharBytes(CodePage::Ansi(), position);
    return *this;
}

SString::const_iterator SString::const_iterator::operator++(int) noexcept {
    const_iterator old = *this;
    ++*this;
    return old;
}

SString::const_iterator& SString::const_iterator::operator+=(unsigned long count) noexcept {
    const char* const position = Position();
    const char* const end = End();
    const auto left = static_cast<unsigned long>(end - position);
    const int steps = static_cast<int>(std::min(count, left));
    position_ = mbs::Advance(CodePage::Ansi(), position, end, steps);
    return *this;
}

SString::const_iterator::operator bool() const noexcept {
    return *Position() != 0;
}
bool SString::const_iterator::operator==(const const_iterator& other) const noexcept {
    return position_ == other.position_;
}
bool SString::const_iterator::operator!=(const const_iterator& other) const noexcept {
    return position_ != other.position_;
}
bool SString::const_iterator::operator<(const const_iterator& other) const noexcept {
    return position_ < other.position_;
}
bool SString::const_iterator::operator<=(const const_iterator& other) const noexcept {
    return position_ <= other.position_;
}
bool SString::const_iterator::operator>(const const_iterator& other) const noexcept {
    return position_ > other.position_;
}
bool SString::const_iterator::operator>=(const const_iterator& other) const noexcept {
    return position_ >= other.position_;
}

const char* SString::const_iterator::GetPointer() const noexcept {
    return Position();
}
void SString::const_iterator::reset() noexcept {
    position_ = string_->text_;
}
int SString::const_iterator::IsWhitespace() const noexcept {
    return mbs::IsSpace(mbs::UnsignedCodeAt(CodePage::Ansi(), Position()));
}
int SString::const_iterator::IsEoln() const noexcept {
    const char byte = *Position();
    return byte == '\r' || byte == '\n';
}
unsigned int SString::const_iterator::SaveState() const noexcept {
    return static_cast<unsigned int>(Position() - string_->text_);
}
void SString::const_iterator::RestoreState(unsigned int offset) noexcept {
    position_ = string_->text_ + std::min(offset, static_cast<unsigned>(string_->LengthByte()));
}

// ---- item_iterator ------------------------------------------------------------------------------

SString SString::item_iterator::operator*() const {
    return SString(start_.Position(), end_.Position());
}
SString::item_iterator::operator bool() const noexcept {
    return start_.Position() < start_.End();
}
bool SString::item_iterator::operator==(const item_iterator& other) const noexcept {
    return start_ == other.start_;
}
bool SString::item_iterator::operator!=(const item_iterator& other) const noexcept {
    return start_ != other.start_;
}
const char* SString::item_iterator::GetPointer() const noexcept {
    return start_.Position();
}

template <class Cut>
void SString::item_iterator::First(const Cut& cut) noexcept {
    start_.reset();
    end_.position_ = cut.EndOf(start_.position_, start_.End());
}

template <class Cut>
void SString::item_iterator::Advance(const Cut& cut) noexcept {
    const char* const end = start_.End();
    start_.position_ = cut.After(end_.Position(), end);
    end_.position_ = cut.EndOf(start_.position_, end);
}

// ---- line_iterator, word_iterator, parts_iterator -----------------------------------------------

SString::line_iterator::line_iterator(const SString& text) noexcept : item_iterator(text) {
    First(LineCut());
}
SString::line_iterator& SString::line_iterator::operator++() noexcept {
    Advance(LineCut());
    return *this;
}
SString::line_iterator SString::line_iterator::operator++(int) noexcept {
    line_iterator old = *this;
    ++*this;
    return old;
}
void SString::line_iterator::reset() noexcept {
    First(LineCut());
}

SString::word_iterator::word_iterator(const SString& text) noexcept : item_iterator(text) {
    First(WordCut());
}
SString::word_iterator& SString::word_iterator::operator++() noexcept {
    Advance(WordCut());
    return *this;
}
SString::word_iterator SString::word_iterator::operator++(int) noexcept {
    word_iterator old = *this;
    ++*this;
    return old;
}
void SString::word_iterator::reset() noexcept {
    First(WordCut());
}

SString::parts_iterator::parts_iterator(const SString& text, unsigned int separator) noexcept
    : item_iterator(text), separator_(separator) {
    First(PartCut{separator_});
}
SString::parts_iterator& SString::parts_iterator::operator++() noexcept {
    Advance(PartCut{separator_});
    return *this;
}
SString::parts_iterator SString::parts_iterator::operator++(int) noexcept {
    parts_iterator old = *this;
    ++*this;
    return old;
}
void SString::parts_iterator::reset() noexcept {
    First(PartCut{separator_});
}
