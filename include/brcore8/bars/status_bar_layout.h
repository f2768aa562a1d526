// SStatusBarLayout: a set of panes for a status bar, switched in and out.
//
//     SStatusBarLayout reading(&status);            // attached and shown
//     reading.InsertPane(0, ID_POSITION, SStatusBarPane::SizeToText);
//     reading.Activate(0);                          // the bar's own panes again
//
// Indices are not checked and must be valid. A layout without a bar keeps its panes all the same.
//
// Threads: the one that runs the user interface.
// Ownership: owns its panes, not the bar; either may end first.
#ifndef BRCORE8_BARS_STATUS_BAR_LAYOUT_H
#define BRCORE8_BARS_STATUS_BAR_LAYOUT_H

#include <brcore8/containers/table.h>
#include <brcore8/core/object.h>
#include <brcore8/strings/string.h>

class SStatusBar;

struct SStatusBarPane {
    enum Style : unsigned long {
        NoBorders = 0x00000100,
        PopOut = 0x00000200,
        Disabled = 0x04000000,   // shows no text, and when sized to it takes no room
        SizeToText = 0x08000000  // as wide as the text
    };

    unsigned int id = 0;  // of the command whose updates it shows; 0 is none
    int width = 0;        // of the room for the text, in pixels
    unsigned long style = 0;
    int changed = 1;  // since the bar showed it
    SString text;
};

class BRCORE8_API SStatusBarLayout : public SObject {
    SDECLARE_CREATABLE(SStatusBarLayout);

    SStatusBarLayout() = default;
    // Attach, when the bar is not null.
    explicit SStatusBarLayout(SStatusBar* bar);
    SStatusBarLayout(const SStatusBarLayout&) = delete;
    SStatusBarLayout& operator=(const SStatusBarLayout&) = delete;
    ~SStatusBarLayout() override { Detach(); }

    // Keeps the bar, leaving one from before, and shows this layout in it; null leaves only. 1.
    int Attach(SStatusBar* bar);
    // Leaves the bar, which shows its own panes if it showed these, and returns it.
    SStatusBar* Detach();
    // Shows this layout in the bar, or with 0 removes any extra layout. 0 without a bar, else 1.
    int Activate(int on);
    SStatusBar* GetStatusBar() const noexcept { return bar_; }

    int GetPaneCount() const { return panes_.GetCount(); }
    const SStatusBarPane& GetPane(int index) const { return panes_[index]; }
    // 0 pixels wide when sized to its text, else 80. 1; 0 when memory is short.
    int InsertPane(int index, unsigned int id, unsigned long style);
    // 1.
    int DeletePane(int index);

    int GetPaneText(int index, SString* text) const;
    SString GetPaneText(int index) const { return panes_[index].text; }
    // Measures a text that its pane is sized to. With `update` the bar shows a change at once, else
    // when it refreshes its panes. 1; 0 when memory is short.
    int SetPaneText(int index, const SString* text, int update);
    unsigned long GetPaneStyle(int index) const { return panes_[index].style; }
    int SetPaneStyle(int index, unsigned long style);
    int GetPaneWidth(int index) const { return panes_[index].width; }
    int SetPaneWidth(int index, int width);
    // The text of the bar's own first pane. 0 without a bar that has a window.
    int SetMainPaneText(const SString* text, int update);

private:
    friend class SStatusBar;

    void Recalc();
    void Refresh();

    STable<SStatusBarPane> panes_;
    SStatusBar* bar_ = nullptr;
};

#endif
