#include "platform/posix/desktop/controls/edit_text.h"

#include <algorithm>
#include <utility>

#include "strings/mbs.h"

namespace brcore8::desktop {

void EditText::Set(std::string text) {
    text_ = std::move(text);
    ForgetUndo();
    LayOut();
}

void EditText::Replace(std::size_t begin, std::size_t end, std::string_view with, bool keepsUndo) {
    if (keepsUndo)
        Remember(begin, end, with.size());
    else
        ForgetUndo();
    text_.replace(begin, end - begin, with);
    LayOutAround(begin, end, begin + with.size());
}

// --- Undo ---------------------------------------------------------------------------------------

void EditText::ForgetUndo() noexcept {
    undoText_.clear();
    undoAt_ = undoInserted_ = 0;
}

// Deleting on either side of what was deleted, and inserting behind what was inserted, is one step.
void EditText::Remember(std::size_t begin, std::size_t end, std::size_t inserted) {
    if (begin != end) {
        const std::string_view gone(text_.data() + begin, end - begin);
        const bool goesOn = undoInserted_ == 0 && !undoText_.empty();
        if (goesOn && begin == undoAt_) {
            undoText_ += gone;
        } else if (goesOn && end == undoAt_) {
            undoText_.insert(0, gone);
            undoAt_ = begin;
        } else {
            undoText_ = gone;
            undoAt_ = begin;
        }
        undoInserted_ = 0;
    }
    if (inserted == 0) return;
    if (begin != undoAt_ + undoInserted_ || !CanUndo()) {
        undoText_.clear();
        undoAt_ = begin;
        undoInserted_ = 0;
    }
    undoInserted_ += inserted;
}

std::pair<std::size_t, std::size_t> EditText::Undo() {
    const std::size_t begin = undoAt_;
    const std::size_t end = begin + undoInserted_;
    const std::string back = std::exchange(undoText_, text_.substr(begin, undoInserted_));
    undoInserted_ = back.size();
    text_.replace(begin, end - begin, back);
    LayOutAround(begin, end, begin + back.size());
    return {begin, begin + back.size()};
}

// --- Lines --------------------------------------------------------------------------------------

void EditText::SetLayout(bool hasLines, Fit fit) {
    hasLines_ = hasLines;
    fit_ = std::move(fit);
}

void EditText::LayOut() {
    widths_.clear();
    starts_.clear();
    LayOutFrom(
        0, [](std::size_t) { return false; }, starts_);
}

bool EditText::IsHardStart(std::size_t at) const noexcept {
    return at == 0 || (hasLines_ && at >= 2 && text_[at - 1] == '\n' && text_[at - 2] == '\r');
}

bool EditText::LayOutFrom(std::size_t from, const std::function<bool(std::size_t start)>& isKnown,
                          std::vector<std::size_t>& out) const {
    while (from < text_.size()) {
        const std::size_t found = hasLines_ ? text_.find("\r\n", from) : std::string::npos;
        const std::size_t end = std::min(found, text_.size());
        do {
            if (isKnown(from)) return true;
            out.push_back(from);
            from = fit_ ? fit_(from, end) : end;
        } while (from < end);
        from = end == text_.size() ? end : end + 2;
    }
    if (IsHardStart(text_.size())) out.push_back(text_.size());
    return false;
}

void EditText::LayOutAround(std::size_t at, std::size_t oldEnd, std::size_t newEnd) {
    // A line's break depends on the text up to the first character that had no room, which is in
    // the next line, or begins the one after it. So only the last lines before `at` may break
    // elsewhere, also when a carriage return there came to end a paragraph.
    constexpr int kDependent = 4;
    std::size_t first = LineOf(at);
    if (first > 0) --first;
    for (int i = 1; i < kDependent && first > 0 && !IsHardStart(starts_[first]); ++i)
        --first;
    // From a line on that begins where one began before, behind the change, nothing is new.
    const std::size_t grown = newEnd - oldEnd;  // may wrap, and wraps back
    auto rest = std::lower_bound(starts_.begin(), starts_.end(), oldEnd + 2);
    const auto isOld = [&](std::size_t start) {
        while (rest != starts_.end() && *rest + grown < start)
            ++rest;
        return rest != starts_.end() && *rest + grown == start;
    };
    std::vector<std::size_t> lines;
    if (!LayOutFrom(starts_[first], isOld, lines)) rest = starts_.end();
    std::for_each(rest, starts_.end(), [grown](std::size_t& start) { start += grown; });
    const auto changed = starts_.begin() + static_cast<std::ptrdiff_t>(first);
    ForgetWidths(first, static_cast<std::size_t>(rest - changed), lines.size());
    starts_.insert(starts_.erase(changed, rest), lines.begin(), lines.end());
}

void EditText::ForgetWidths(std::size_t first, std::size_t gone, std::size_t come) {
    if (widths_.empty()) return;
    const auto begin = widths_.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = begin + static_cast<std::ptrdiff_t>(gone);
    isWidestGone_ = isWidestGone_ || std::find(begin, end, widest_) != end;
    widths_.insert(widths_.erase(begin, end), come, -1);
    // Those that had changed already may lie before, behind and within.
    changedFrom_ = changedFrom_ < changedTo_ ? std::min(changedFrom_, first) : first;
    changedTo_ = std::max(changedTo_, first + gone) - gone + come;
}

int EditText::Widest(const std::function<int(std::size_t line)>& widthOf) {
    if (widths_.empty()) {
        widths_.resize(starts_.size(), -1);
        changedFrom_ = 0;
        changedTo_ = widths_.size();
        widest_ = 0;
    }
    int widest = 0;
    for (std::size_t line = changedFrom_; line < changedTo_; ++line) {
        if (widths_[line] < 0) widths_[line] = widthOf(line);
        widest = std::max(widest, widths_[line]);
    }
    changedFrom_ = changedTo_ = 0;
    // The widest line most often went only to come back longer.
    if (widest < widest_ && isWidestGone_)
        widest = *std::max_element(widths_.begin(), widths_.end());
    else
        widest = std::max(widest, widest_);
    isWidestGone_ = false;
    return widest_ = widest;
}

std::size_t EditText::LineEnd(std::size_t line) const noexcept {
    if (line + 1 >= starts_.size()) return text_.size();
    const std::size_t next = starts_[line + 1];
    return IsHardStart(next) ? next - 2 : next;
}

std::size_t EditText::LastPlace(std::size_t line) const noexcept {
    const std::size_t end = LineEnd(line);
    const bool goesOn = line + 1 < starts_.size() && starts_[line + 1] == end;
    return goesOn ? Previous(end) : end;
}

std::size_t EditText::LineOf(std::size_t at) const noexcept {
    const auto above = std::upper_bound(starts_.begin(), starts_.end(), at);
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(above - starts_.begin(), 1) - 1);
}

// --- Characters and words -----------------------------------------------------------------------

std::size_t EditText::Next(std::size_t at) const noexcept {
    if (at >= text_.size()) return text_.size();
    if (hasLines_ && text_[at] == '\r' && at + 1 < text_.size() && text_[at + 1] == '\n')
        return at + 2;
    return at + mbs::CharBytes(CodePage::Ansi(), text_.data() + at, text_.data() + text_.size());
}

std::size_t EditText::Previous(std::size_t at) const noexcept {
    if (at < 2) return 0;
    if (IsHardStart(at)) return at - 2;
    const std::size_t line = starts_[LineOf(at - 1)];
    const bool isPair =
        at - line >= 2 &&
        mbs::IsBoundary(CodePage::Ansi(), text_.data() + line, text_.data() + at - 2) &&
        mbs::CharBytes(CodePage::Ansi(), text_.data() + at - 2, text_.data() + at) == 2;
    return at - (isPair ? 2 : 1);
}

namespace {

bool IsSpace(char c) noexcept {
    return c == ' ' || c == '\t';
}

bool IsEnd(char c) noexcept {
    return c == '\r' || c == '\n';
}

// Of words, of spaces, and of line ends.
int KindOf(char c) noexcept {
    return IsEnd(c) ? 2 : IsSpace(c) ? 1 : 0;
}

}  // namespace

std::size_t EditText::WordBegin(std::size_t at) const noexcept {
    at = std::min(at, text_.size());
    while (at > 0 && IsSpace(text_[at - 1]))
        --at;
    if (at > 0 && IsEnd(text_[at - 1])) return Previous(at);
    while (at > 0 && KindOf(text_[at - 1]) == 0)
        --at;
    return at;
}

// With the spaces behind it.
std::size_t EditText::WordEnd(std::size_t at) const noexcept {
    if (at < text_.size() && IsEnd(text_[at])) return Next(at);
    while (at < text_.size() && KindOf(text_[at]) == 0)
        ++at;
    while (at < text_.size() && IsSpace(text_[at]))
        ++at;
    return at;
}

}  // namespace brcore8::desktop
