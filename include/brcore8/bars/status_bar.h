// SStatusBar: the strip at a frame's lower edge, divided into panes. The first pane takes the width
// that the others leave. A pane with the identifier of a command shows that command's updates: its
// text, blank while it is disabled, raised while it is checked.
//
// While a layout of other panes is installed (SStatusBarLayout), the bar shows its own first pane
// and then those. Pane indices are those of the bar's own panes, from 0; -1 is the first one too.
// They are not checked and must be valid.
//
//     constexpr UINT panes[] = {0, ID_LINE, ID_OVERWRITE};
//     status.Create(&frame, WS_CHILD | WS_VISIBLE, SBARS_SIZEGRIP, SStatusBar::DefaultId);
//     status.SetIndicators(panes, 3);
//     status.SetPaneText(0, &message, 1);
//
// Threads: the one that runs the user interface.
// Ownership: the bar owns its panes and no other layout; either may end first.
#ifndef BRCORE8_BARS_STATUS_BAR_H
#define BRCORE8_BARS_STATUS_BAR_H

#include <brcore8/bars/ctrl_bar.h>
#include <brcore8/bars/status_bar_layout.h>

class BRCORE8_API SStatusBar : public SCtrlBar {
    SDECLARE_CREATABLE(SStatusBar);
    SDECLARE_MESSAGE_MAP(SStatusBar);

public:
    static constexpr unsigned int DefaultId = 0xE801;

    // With one pane, which belongs to no command.
    SStatusBar();
    ~SStatusBar() override;

    // The window: `style` is the window's (WS_...), `controlStyle` the control's (SBARS_...,
    // CCS_...). 1 or 0.
    using SCtrlBar::Create;
    virtual int Create(SWnd* parent, unsigned long style, unsigned long controlStyle,
                       unsigned int id);

    // --- Its own panes ------------------------------------------------------------------------

    // Panes for these commands in the place of all; their texts are the string resources of the
    // same numbers, where there are any, and they are as wide as these. 1; 0 for none.
    int SetIndicators(const unsigned int* ids, int count);
    int GetPaneCount() const { return own_.GetPaneCount(); }
    unsigned int GetPaneId(int index) const { return own_.GetPane(Own(index)).id; }
    // As the layout's; the last pane cannot be deleted (0).
    int InsertPane(int index, unsigned int id, unsigned long style) {
        return own_.InsertPane(index, id, style);
    }
    int DeletePane(int index) { return GetPaneCount() > 1 ? own_.DeletePane(Own(index)) : 0; }
    SString GetPaneText(int index) const { return own_.GetPaneText(Own(index)); }
    int SetPaneText(int index, const SString* text, int update) {
        return own_.SetPaneText(Own(index), text, update);
    }
    unsigned long GetPaneStyle(int index) const { return own_.GetPaneStyle(Own(index)); }
    int SetPaneStyle(int index, unsigned long style) {
        return own_.SetPaneStyle(Own(index), style);
    }
    int GetPaneWidth(int index) const { return own_.GetPaneWidth(Own(index)); }
    int SetPaneWidth(int index, int width) { return own_.SetPaneWidth(Own(index), width); }

    // --- What is shown --------------------------------------------------------------------------

    // Shows another layout's panes; null shows the bar's own again. A layout that is not attached
    // to this bar is not taken.
    void SetExtraLayout(SStatusBarLayout* layout);
    SStatusBarLayout* GetExtraLayout() const noexcept { return extra_; }
    // How many panes show, and the place of one in client coordinates; empty for others.
    int GetShownCount() const;
    RECT GetShownRect(int shown) const;
    // The layout of a shown pane; the index becomes that in the layout.
    SStatusBarLayout& LayoutOf(int& shown);

    // Gives each shown pane its place and shows its text. 0 without a window.
    int RecalcPanes();
    // Shows the texts and looks that changed. 0 without a window.
    int RefreshPanes();
    // The width of a text in the platform's font for controls, pixels; 0 without a window.
    int MeasureText(const SString& text) const;

    void OnUpdateCmdUI(SCmdTarget* target, int disableIfNoHandler) override;

protected:
    // The control's own height at the lower edge.
    void TakeRoom(RECT* room) override;
    // Pixels at the right end that panes leave free.
    virtual int GetReservedWidth() const;
    // Those of the size grip; 0 while it does not show.
    int GetGripWidth() const;
    void OnSize(UINT how, int width, int height);

private:
    friend class SStatusBarLayout;

    static int Own(int index) noexcept { return index < 0 ? 0 : index; }
    SStatusBarPane& Shown(int shown);

    SStatusBarLayout own_;
    STable<SStatusBarLayout*> attached_;
    SStatusBarLayout* extra_ = nullptr;
};

#endif
