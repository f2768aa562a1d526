// SProgressStatusBar: a status bar that shows how far a long operation is, and a button that
// cancels it.
//
//     status.StartProgress(1);
//     status.GetProgress().SetRange(0, files);
//     for (int i = 0; i < files && !status.PollCancel(); ++i) {
//         Read(i);
//         status.GetProgress().SetPos(i + 1);
//     }
//     status.EndProgress();
//
// SProgressScope does the first and the last line also when an exception ends the operation.
//
// Threads: the one that runs the user interface, which is also the operation's: it lives on by the
// messages that PollCancel pumps. Handlers of these may do anything, also end the bar.
#ifndef BRCORE8_BARS_PROGRESS_STATUS_BAR_H
#define BRCORE8_BARS_PROGRESS_STATUS_BAR_H

#include <brcore8/bars/status_bar.h>
#include <brcore8/controls/button_ctrl.h>
#include <brcore8/controls/custom_progress_ctrl.h>

class BRCORE8_API SProgressStatusBar : public SStatusBar {
    SDECLARE_CREATABLE(SProgressStatusBar);
    SDECLARE_MESSAGE_MAP(SProgressStatusBar);

public:
    enum State : int { InProgressBit = 1, CancellableBit = 2, CancelRequestedBit = 4 };

    // How things stand, to be put back later.
    struct Status {
        SCustomProgressCtrl::Status progress;
        int state = 0;  // of State
    };

    SProgressStatusBar() = default;
    ~SProgressStatusBar() override;

    // The bar, and, hidden, the progress control and the button "Cancel". 1 or 0.
    using SStatusBar::Create;
    int Create(SWnd* parent, unsigned long style, unsigned long controlStyle,
               unsigned int id) override;

    // Shows the progress control, and the button when the operation can be cancelled; the button
    // then has the keyboard's focus. Once more with the same argument changes nothing but that.
    void StartProgress(int cancellable);
    // Both disappear, and the focus, if the button has it, goes back to where it was, or to the
    // top-level window when that is gone.
    void EndProgress();
    int InProgress() const noexcept { return (state_ & InProgressBit) != 0; }

    // Pumps what waits in the queue, as far as the user may have cancelled by it: the button, or
    // Escape; and asks whether that was meant. Non-zero when the operation must stop: it was, the
    // program is to end (the quit message is posted again), or this bar or the application is gone.
    // 0 at once while the operation cannot be cancelled, and inside of another poll of this bar.
    int PollCancel();

    // Fills `get` and then takes `set`, each when not null.
    void GetSetProgressStatus(Status* get, const Status* set);

    SCustomProgressCtrl& GetProgress() noexcept { return progress_; }
    SButtonCtrl& GetCancelButton() noexcept { return cancel_; }

protected:
    int GetReservedWidth() const override;
    void OnSize(UINT how, int width, int height);
    // A click, and the same as a notification.
    void OnCancel();
    void OnCancelNotify(NMHDR* header, LRESULT* result);

private:
    struct Poll;

    int PollQueue(Poll& poll);
    int AskWhetherMeant(Poll& poll);
    void LayoutProgress();

    int state_ = 0;
    SIZE buttonSize_{};
    HWND oldFocus_ = nullptr;
    Poll* poll_ = nullptr;  // that runs
    SCustomProgressCtrl progress_;
    SButtonCtrl cancel_;
};

// Progress while it lives, also when an exception ends its scope. The bar must outlive it.
class SProgressScope {
public:
    SProgressScope(SProgressStatusBar& bar, int cancellable) : bar_(bar) {
        bar_.StartProgress(cancellable);
    }
    SProgressScope(const SProgressScope&) = delete;
    SProgressScope& operator=(const SProgressScope&) = delete;
    ~SProgressScope() { bar_.EndProgress(); }

private:
    SProgressStatusBar& bar_;
};

#endif
