// An edit field: one line, or many. What it answers is in edit.cpp, how it changes in
// edit_change.cpp, keys and mouse in edit_input.cpp, and how it looks in edit_view.cpp.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_CONTROLS_EDIT_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_CONTROLS_EDIT_H

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "platform/posix/desktop/controls/control.h"
#include "platform/posix/desktop/controls/edit_text.h"

namespace brcore8::desktop {

class Edit final : public Control {
public:
    using Control::Control;
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool HasLines() const noexcept { return (Style() & ES_MULTILINE) != 0; }
    bool IsReadOnly() const noexcept { return (Style() & ES_READONLY) != 0; }
    bool IsWrapping() const noexcept;
    std::size_t SelectionBegin() const noexcept { return std::min(anchor_, caret_); }
    std::size_t SelectionEnd() const noexcept { return std::max(anchor_, caret_); }

    // --- Messages by family
    void Create();
    std::optional<LRESULT> AnswerText(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> AnswerEdit(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> AnswerLines(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> AnswerLook(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> AnswerInput(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT DialogCode() const noexcept;
    LRESULT GetText(WPARAM size, char* out) const;
    LRESULT GetSelection(DWORD* begin, DWORD* end) const noexcept;
    LRESULT GetLine(std::size_t line, char* out) const;
    LRESULT LineLength(WPARAM at) const noexcept;
    LRESULT SetPasswordChar(char c);
    LRESULT SetTabStops(WPARAM count, const int* stops);

    // --- Changes
    void SetText(const char* text);
    void Select(std::size_t anchor, std::size_t caret);
    void SetSelection(LPARAM begin, LPARAM end);
    // The selection becomes `with`, as far as the limit lets it.
    void ReplaceSelection(std::string with, bool keepsUndo);
    std::string Fitting(std::string with);
    void Undo();
    void Changed();
    void Copy() const;
    void Paste();
    void Type(char c);
    void DeleteBack();
    void DeleteOn();

    // --- Keys and mouse
    LRESULT PressKey(WPARAM key);
    // What the key does to the dialog that the field is in; false when it is the field's.
    bool PressForDialog(WPARAM key);
    bool IsDialogKey(WPARAM key) const noexcept;
    bool MoveByKey(WPARAM key, bool isWord);
    void MoveTo(std::size_t at);
    void MoveLines(std::int64_t lines);
    void PressMouse(POINT point, bool extends);
    void DragMouse(POINT point);
    void SelectWord(POINT point);
    void Focus(bool gains);
    void PlaceCaret() const;

    // --- Places: pixels of the client area
    void Remeasure();
    void LayOut();
    int WidthOf(std::size_t at, std::size_t bytes) const;
    // How wide the line is from its begin to `at`; a tab goes to its next stop.
    int Advance(int x, std::size_t at, std::size_t bytes) const;
    int WidthUpTo(std::size_t line, std::size_t at) const;
    std::size_t FitLine(std::size_t begin, std::size_t end) const;
    int NextTab(int x) const noexcept;
    RECT FormatRect() const noexcept;
    int VisibleLines() const noexcept;
    // The line on top when the last page shows, or what is on top already.
    std::int64_t LastFirstLine() const noexcept;
    // Where the line begins, as it is aligned and scrolled.
    int LineLeft(std::size_t line) const;
    POINT PlaceOf(std::size_t at) const;
    std::size_t CharacterAt(POINT point) const;
    std::size_t CharacterInLine(std::size_t line, int x) const;

    void ScrollTo(std::int64_t line, int x);
    void ScrollCaret();
    LRESULT ScrollBy(WPARAM what);
    void ScrollAcross(WPARAM what);
    // As far as the text goes, or it is scrolled already.
    int AcrossWithin(std::int64_t x);
    void UpdateBars();
    int WidestLine();
    int TrackOf(int bar, WORD carried) const noexcept;
    void Paint(WPARAM context) const;
    void DrawLine(HDC dc, std::size_t line, int top, bool showsSelection) const;
    // Draws the run and answers where it ends.
    int DrawRun(HDC dc, std::size_t begin, std::size_t end, int x, int top, bool isSelected) const;

    EditText text_;
    std::size_t anchor_ = 0;
    std::size_t caret_ = 0;
    std::size_t limit_ = 30000;
    bool isModified_ = false;
    char password_ = 0;
    char lead_ = 0;  // of a character whose second byte is still to come

    mutable std::array<short, 256> widths_{};  // -1 until it is measured
    mutable std::vector<std::pair<unsigned, int>> pairWidths_;
    int lineHeight_ = 1;
    int averageWidth_ = 1;
    std::vector<int> tabStops_;  // in quarters of an average character
    int marginLeft_ = 0;
    int marginRight_ = 0;
    std::optional<RECT> format_;
    std::size_t firstLine_ = 0;
    int scrollX_ = 0;
    bool hasFocus_ = false;
    bool isInDialog_ = false;
};

}  // namespace brcore8::desktop

#endif
