// Tracking: from the moment a menu is entered, the thread's keys and mouse are the menu's, until an
// item was chosen or the menu is left. Menus, popups and the window may all go meanwhile: handlers
// run, so whatever is used is looked up again.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_MENUS_TRACKER_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_MENUS_TRACKER_H

#include "platform/posix/desktop/menus/menu.h"

namespace brcore8::desktop {

class Tracker {
public:
    // `menu` is the bar of `owner`, or a popup that Open has yet to show.
    Tracker(HWND owner, HMENU menu, bool isBar, UINT flags)
        : owner_(owner), isBar_(isBar), flags_(flags), previous_(current) {
        levels_.push_back({menu, kNoItem});
        current = this;
    }
    Tracker(const Tracker&) = delete;
    Tracker& operator=(const Tracker&) = delete;
    ~Tracker() { current = previous_; }

    static thread_local Tracker* current;

    void Begin();
    // Shows the popup of the first level. False when it cannot.
    bool Open(POINT at, const RECT* keepClear);
    // Runs; the identifier that was chosen, or 0.
    UINT Run();
    void End() noexcept { isDone_ = true; }
    // Ends, and gives the mouse and the screen back before the loop goes on: it may be waiting for
    // a dialog that a handler shows.
    void Leave();

    void SelectNext(int step);
    void EnterSelected(bool selectsFirst);
    void HandleCharacter(char character);
    void HandleButton(POINT screen);

private:
    struct Level {
        HMENU menu;
        std::size_t selected;
    };

    LRESULT Tell(UINT message, WPARAM wParam, LPARAM lParam) {
        if ((flags_ & TPM_NONOTIFY) != 0) return 0;
        return SendMessageA(owner_, message, wParam, lParam);
    }
    // Whether all that is being tracked is still there.
    bool Lives();
    std::size_t Deepest() const noexcept { return levels_.size() - 1; }
    MenuPlace Selected(std::size_t level) {
        return FindMenuItem(levels_[level].menu, static_cast<UINT>(levels_[level].selected), true);
    }
    void Select(std::size_t level, std::size_t index);
    void Repaint(std::size_t level);
    void ShowSelected(std::size_t level);
    // Closes the popups behind that level.
    void CloseBehind(std::size_t level);
    bool ShowPopup(HMENU menu, POINT at, const RECT* keepClear);
    void Choose();
    void MoveInBar(int step);
    void HandleMessage(const MSG& message);
    void HandleKey(UINT key);
    void HandleMove(POINT screen);
    void HandleRelease(POINT screen);
    // Scrolls a popup that is higher than the screen.
    void HandleWheel(int turn);
    // The level and item under a point.
    bool Hit(POINT screen, std::size_t& level, std::size_t& index);
    void Finish();

    HWND owner_;
    bool isBar_;
    UINT flags_;
    std::vector<Level> levels_;
    bool isDone_ = false;
    UINT chosen_ = 0;
    Tracker* previous_;
};

}  // namespace brcore8::desktop

#endif
