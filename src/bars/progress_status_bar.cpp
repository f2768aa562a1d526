#include <brcore8/app/win_app.h>
#include <brcore8/bars/progress_status_bar.h>
#include <brcore8/core/module.h>
#include <brcore8/window/scaled.h>

#include "routing/routing.h"

#include <algorithm>
#include <utility>

namespace {
constexpr UINT kProgressId = 0xE810, kCancelId = 0xE811;

// Pixels of 96 an inch, but for the edge.
constexpr int kMostProgress = 200, kGap = 4, kEdge = 2;
}  // namespace

SIMPLEMENT_CREATABLE(SProgressStatusBar, SStatusBar, 2);
SIMPLEMENT_MESSAGE_MAP(SProgressStatusBar, SStatusBar, SOnSize<&SProgressStatusBar::OnSize>(),
                       SOnCommand<&SProgressStatusBar::OnCancel>(kCancelId),
                       SOnNotify<&SProgressStatusBar::OnCancelNotify>(BN_CLICKED, kCancelId));

// A poll that runs, for as long as it does. The bar tells it of its end.
struct SProgressStatusBar::Poll {
    explicit Poll(SProgressStatusBar& owner) noexcept : bar(&owner), app(SGetApp()) {
        owner.poll_ = this;
    }
    Poll(const Poll&) = delete;
    Poll& operator=(const Poll&) = delete;
    ~Poll() {
        if (bar != nullptr) bar->poll_ = nullptr;
    }
    // Whether there is still someone to ask and something to do it for.
    bool IsAlone() const noexcept {
        return bar == nullptr || bar->GetHandle() == nullptr || SGetApp() != app;
    }

    SProgressStatusBar* bar;
    SWinApp* const app;
};

SProgressStatusBar::~SProgressStatusBar() {
    if (poll_ != nullptr) poll_->bar = nullptr;
}

int SProgressStatusBar::Create(SWnd* parent, unsigned long style, unsigned long controlStyle,
                               unsigned int id) {
    if (!SStatusBar::Create(parent, style, controlStyle, id)) return 0;
    if (!progress_.Create(0, RECT{}, this, kProgressId) ||
        !cancel_.Create("Cancel", BS_PUSHBUTTON, RECT{}, this, kCancelId))
        return 0;
    cancel_.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(::GetStockObject(DEFAULT_GUI_FONT)));
    const HDC context = ::GetDC(cancel_.GetHandle());
    const HGDIOBJ old = ::SelectObject(context, ::GetStockObject(DEFAULT_GUI_FONT));
    const SString caption = cancel_.GetWindowText();
    SIZE extent{};
    ::GetTextExtentPoint32A(context, caption, caption.LengthByte(), &extent);
    ::SelectObject(context, old);
    ::ReleaseDC(cancel_.GetHandle(), context);
    RECT around{0, 0, extent.cx, extent.cy};
    cancel_.CalcWindowRect(&around);
    buttonSize_ = {around.right - around.left, around.bottom - around.top};
    return 1;
}

// --- Progress ------------------------------------------------------------------------------------

void SProgressStatusBar::StartProgress(int cancellable) {
    const int wanted = InProgressBit | (cancellable ? int{CancellableBit} : 0);
    if ((state_ & (InProgressBit | CancellableBit)) != wanted) {
        state_ = wanted;
        LayoutProgress();
    }
    progress_.EnableWindow(1);
    if (cancellable) {
        cancel_.EnableWindow(1);
        const HWND cancel = cancel_.GetHandle(), old = ::GetFocus();
        if (cancel == nullptr || old == cancel) return;
        oldFocus_ = old;
        ::SetFocus(cancel);
    }
}

void SProgressStatusBar::EndProgress() {
    if (!InProgress()) return;
    state_ = 0;
    const HWND bar = GetHandle(), cancel = cancel_.GetHandle();
    HWND back = std::exchange(oldFocus_, nullptr);
    if (cancel != nullptr && ::GetFocus() == cancel) {
        if (!::IsWindow(back)) back = ::GetAncestor(bar, GA_ROOT);
        // Before the button is hidden, which would move the focus too.
        ::SetFocus(back);
        // Whoever has it now may have ended the bar.
        if (FromHandlePermanent(bar) != this) return;
    }
    LayoutProgress();
}

void SProgressStatusBar::GetSetProgressStatus(Status* get, const Status* set) {
    if (get != nullptr) *get = {progress_.GetStatus(), state_};
    if (set == nullptr) return;
    progress_.SetStatus(set->progress);
    const int changed = state_ ^ set->state;
    state_ = set->state & (InProgressBit | CancellableBit | CancelRequestedBit);
    if ((changed & (InProgressBit | CancellableBit)) != 0) LayoutProgress();
}

void SProgressStatusBar::OnCancel() {
    if ((state_ & CancellableBit) != 0) state_ |= CancelRequestedBit;
}

void SProgressStatusBar::OnCancelNotify(NMHDR*, LRESULT* result) {
    OnCancel();
    *result = 0;
}

// --- The poll ------------------------------------------------------------------------------------

int SProgressStatusBar::PollCancel() {
    if ((state_ & CancellableBit) == 0 || poll_ != nullptr) return 0;
    Poll poll(*this);
    const int ended = PollQueue(poll);
    if (ended || poll.bar == nullptr) return 1;
    return (state_ & CancelRequestedBit) != 0 ? AskWhetherMeant(poll) : 0;
}

// 1 when there is nothing to go on with.
int SProgressStatusBar::PollQueue(Poll& poll) {
    MSG next;
    while ((state_ & CancelRequestedBit) == 0 &&
           ::PeekMessageA(&next, nullptr, 0, 0, PM_NOREMOVE)) {
        if (next.message == WM_KEYDOWN && next.wParam == VK_ESCAPE) state_ |= CancelRequestedBit;
        int quitCode = 0;
        if (!brcore8::PumpOneMessage(&quitCode)) {
            ::PostQuitMessage(quitCode);
            if (poll.bar != nullptr) state_ |= CancelRequestedBit;
            return 1;
        }
        if (poll.IsAlone()) return 1;
    }
    return 0;
}

// The value of CancelRequestedBit that the user's answer leaves.
int SProgressStatusBar::AskWhetherMeant(Poll& poll) {
    progress_.EnableWindow(1);
    const bool hadFocus = ::GetFocus() == cancel_.GetHandle();
    cancel_.EnableWindow(0);
    SModuleState* const state = SSetModuleState(SCoreGetModuleState());
    const HWND owner = ::GetAncestor(GetHandle(), GA_ROOT);
    const int answer = ::MessageBoxA(owner, "Do you really want to cancel operation?",
                                     poll.app != nullptr ? poll.app->GetName() : nullptr,
                                     MB_YESNO | MB_ICONQUESTION);
    SSetModuleState(state);
    if (poll.IsAlone()) return 1;
    // The box leaves a quit message that it met in the queue.
    MSG quit;
    const bool isQuitting =
        ::PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) && quit.message == WM_QUIT;
    if (answer != IDYES && !isQuitting) state_ &= ~int{CancelRequestedBit};
    cancel_.EnableWindow(1);
    if (hadFocus && (state_ & CancellableBit) != 0) {
        ::SetFocus(cancel_.GetHandle());
        if (poll.IsAlone()) return 1;
    }
    return isQuitting ? 1 : state_ & CancelRequestedBit;
}

// --- Place ---------------------------------------------------------------------------------------

int SProgressStatusBar::GetReservedWidth() const {
    const int grip = GetGripWidth();
    if (!InProgress()) return grip;
    const int most = SScaled(kMostProgress, GetHandle()), gap = SScaled(kGap, GetHandle());
    const int width = GetClientRect().right;
    const int button = (state_ & CancellableBit) != 0 ? static_cast<int>(buttonSize_.cx) + gap : 0;
    return grip + button + std::min(width / 3, most) + gap;
}

void SProgressStatusBar::LayoutProgress() {
    if (GetHandle() == nullptr || progress_.GetHandle() == nullptr) return;
    const bool hasButton = InProgress() && (state_ & CancellableBit) != 0;
    if (InProgress()) {
        const int gap = SScaled(kGap, GetHandle());
        const RECT client = GetClientRect();
        const int height = std::max<int>(client.bottom - 2 * kEdge, 0);
        const int left = client.right - GetReservedWidth() + gap;
        int right = client.right - GetGripWidth();
        if (hasButton) {
            const int width = static_cast<int>(buttonSize_.cx);
            right -= width;
            cancel_.SetWindowPos(nullptr, right, kEdge, width, height,
                                 SWP_NOZORDER | SWP_NOACTIVATE);
            right -= gap;
        }
        progress_.SetWindowPos(nullptr, left, kEdge, std::max(right - left, 0), height,
                               SWP_NOZORDER | SWP_NOACTIVATE);
    }
    progress_.ShowWindow(InProgress() ? SW_SHOWNA : SW_HIDE);
    cancel_.ShowWindow(hasButton ? SW_SHOWNA : SW_HIDE);
    RecalcPanes();
}

void SProgressStatusBar::OnSize(UINT how, int width, int height) {
    SStatusBar::OnSize(how, width, height);
    if (InProgress()) LayoutProgress();
}
