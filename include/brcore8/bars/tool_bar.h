// SToolBar: a bar of buttons for commands, with images or short texts. A click sends the bar's
// parent the command; in idle time each button asks whether its command is to be had, and is
// checked.
//
//     SToolBar tools;
//     tools.SetImages(&images);                  // found by the commands
//     tools.AddButton(ID_OPEN, "Open");
//     tools.AddSeparator();
//     tools.Create(&frame, SCtrlBar::Top, 28, 100);
//
// It draws itself and so is the same on every system.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_BARS_TOOL_BAR_H
#define BRCORE8_BARS_TOOL_BAR_H

#include <brcore8/bars/ctrl_bar.h>
#include <brcore8/graphics/image_list.h>

#include <vector>

class BRCORE8_API SToolBar : public SCtrlBar {
    SDECLARE_CREATABLE(SToolBar);
    SDECLARE_MESSAGE_MAP(SToolBar);

public:
    SToolBar() noexcept = default;

    // The list must outlive the bar; a command without an image shows its text.
    void SetImages(const SImageListEx* images);
    // Behind those that there are. 0, and nothing is added, for the command 0.
    int AddButton(UINT command, const char* text);
    void AddSeparator();
    // Separators count; one is the command 0, as are places that there are not.
    int GetButtonCount() const noexcept { return static_cast<int>(buttons_.size()); }
    UINT GetCommand(int index) const noexcept;
    int IsEnabled(UINT command) const noexcept;
    int IsChecked(UINT command) const noexcept;
    // 0 without a button of the command.
    int EnableButton(UINT command, int on);
    int CheckButton(UINT command, int on);
    // In client coordinates; empty for a place that there is not.
    RECT GetButtonRect(int index) const;
    // The place of the button under a point; -1 beside them.
    int HitTest(POINT point) const;

    void OnUpdateCmdUI(SCmdTarget* target, int disableIfNoHandler) override;

private:
    struct Button {
        UINT command;
        SString text;
        int isEnabled;
        int isChecked;
    };
    class ButtonUI;

    // Beside a text or an image, in pixels of 96 an inch.
    static constexpr int kGap = 8;

    Button* Find(UINT command) noexcept;
    const Button* Find(UINT command) const noexcept {
        return const_cast<SToolBar*>(this)->Find(command);
    }
    void Change(int& state, int on);
    int WidthOf(SDC& dc, const Button& button) const;
    void OnPaint();
    void OnLButtonDown(UINT keys, int x, int y);
    void OnLButtonUp(UINT keys, int x, int y);
    void OnCaptureChanged(SWnd* to);

    std::vector<Button> buttons_;
    const SImageListEx* images_ = nullptr;
    int pressed_ = -1;
};

#endif
