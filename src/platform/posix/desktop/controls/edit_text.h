// The text of an edit field: its characters, the lines that they make, and the one step back.
//
// A line ends with a carriage return and a line feed, or where the next word would not fit. The
// starts of all lines are kept: a change lays the lines around it out again, until one begins where
// one began before, and moves the others.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_CONTROLS_EDIT_TEXT_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_CONTROLS_EDIT_TEXT_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace brcore8::desktop {

class EditText {
public:
    // Where the line that begins at `begin` is to end: at most `end`, and after `begin`.
    using Fit = std::function<std::size_t(std::size_t begin, std::size_t end)>;

    const std::string& Get() const noexcept { return text_; }
    std::size_t Size() const noexcept { return text_.size(); }
    // Without a step back.
    void Set(std::string text);
    // The characters from `begin` to `end` become `with`.
    void Replace(std::size_t begin, std::size_t end, std::string_view with, bool keepsUndo);

    // Many lines, or one; `fit` breaks those that are too long, if there is one.
    void SetLayout(bool hasLines, Fit fit);
    void LayOut();
    std::size_t LineCount() const noexcept { return starts_.size(); }
    std::size_t LineStart(std::size_t line) const noexcept { return starts_[line]; }
    // Without its line end.
    std::size_t LineEnd(std::size_t line) const noexcept;
    // The last place that is the line's own: where the next line goes on, before the last
    // character.
    std::size_t LastPlace(std::size_t line) const noexcept;
    // The line of a character; of the end, the last one.
    std::size_t LineOf(std::size_t at) const noexcept;
    // How wide the widest line is. `widthOf` is asked once for each line, until the line changes;
    // the others are not looked at unless the widest one went.
    int Widest(const std::function<int(std::size_t line)>& widthOf);

    // A character's neighbours; a line end is one character, as is a pair of bytes.
    std::size_t Next(std::size_t at) const noexcept;
    std::size_t Previous(std::size_t at) const noexcept;
    // The word, or run of spaces, that the character lies in.
    std::size_t WordBegin(std::size_t at) const noexcept;
    std::size_t WordEnd(std::size_t at) const noexcept;

    bool CanUndo() const noexcept { return undoInserted_ > 0 || !undoText_.empty(); }
    void ForgetUndo() noexcept;
    // Undoes the last change, which can be undone too, and tells what came back.
    std::pair<std::size_t, std::size_t> Undo();

private:
    bool IsHardStart(std::size_t at) const noexcept;
    // The starts of the lines from `from` on, up to one that is known; false without one.
    bool LayOutFrom(std::size_t from, const std::function<bool(std::size_t start)>& isKnown,
                    std::vector<std::size_t>& out) const;
    void LayOutAround(std::size_t at, std::size_t oldEnd, std::size_t newEnd);
    // `gone` lines at `first` became `come` others.
    void ForgetWidths(std::size_t first, std::size_t gone, std::size_t come);
    void Remember(std::size_t begin, std::size_t end, std::size_t inserted);

    std::string text_;
    std::vector<int> widths_;  // of the lines, -1 for those not measured; empty while nobody asks
    int widest_ = 0;           // of those that were measured when it was last asked for
    bool isWidestGone_ = false;
    std::size_t changedFrom_ = 0;  // all lines that are not measured are from here
    std::size_t changedTo_ = 0;    // to here
    std::vector<std::size_t> starts_{0};
    bool hasLines_ = false;
    Fit fit_;
    // To undo, `undoInserted_` characters at `undoAt_` become `undoText_`.
    std::string undoText_;
    std::size_t undoAt_ = 0;
    std::size_t undoInserted_ = 0;
};

}  // namespace brcore8::desktop

#endif
