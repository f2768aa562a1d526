#include <brcore8/views/docking.h>

#include <brcore8/graphics/window_dc.h>
#include <brcore8/window/scaled.h>

#include "views/pane.h"

#include <algorithm>
#include <utility>

SIMPLEMENT_CREATABLE(SMiniDockFrameWnd, SFloatFrameWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SMiniDockFrameWnd, SFloatFrameWnd, SOnClose<&SMiniDockFrameWnd::OnClose>());
SIMPLEMENT_CREATABLE(SDockHostWnd, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SDockHostWnd, SWnd, SOnSize<&SDockHostWnd::OnSize>(),
                       SOnDestroy<&SDockHostWnd::OnDestroy>());
SIMPLEMENT_CLASS(SDockWnd, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SDockWnd, SWnd, SOnSize<&SDockWnd::OnSize>(), SOnPaint<&SDockWnd::OnPaint>(),
                       SOnLButtonDblClk<&SDockWnd::OnLButtonDblClk>(),
                       SOnDestroy<&SDockWnd::OnDestroy>());

void SMiniDockFrameWnd::OnClose() {
    SWnd* const content = GetContent();
    if (content == nullptr || !content->IsKindOf(&SDockWnd::m_SDockWnd) ||
        !static_cast<SDockWnd*>(content)->DockBack())
        ShowWindow(SW_HIDE);
}

// --- The host -----------------------------------------------------------------------------------

SDockHostWnd::~SDockHostWnd() {
    for (SDockWnd* const window : windows_)
        window->host_ = nullptr;
    const std::unique_ptr<SWnd> leaving = std::move(center_);
}

void SDockHostWnd::Forget(SDockWnd* window) {
    std::erase(windows_, window);
    Undock(window);
}

SWnd* SDockHostWnd::CreateCenter(const SClassInfo* info) {
    std::unique_ptr<SWnd> made = brcore8::CreatePaneOf(info, this, {}, 0xE900);
    if (made == nullptr) return nullptr;
    center_ = std::move(made);
    RecalcLayout();
    return center_.get();
}

int SDockHostWnd::Dock(SDockWnd* window, Side side, int size) {
    if (window == nullptr || window->host_ != this || window->GetHandle() == nullptr ||
        GetHandle() == nullptr)
        return 0;
    Undock(window);
    if (window->frame_.GetHandle() != nullptr) window->frame_.ShowWindow(SW_HIDE);
    window->side_ = side;
    window->size_ = std::max(size, SScaled(SDockWnd::kCaption, GetHandle()));
    strips_.push_back({window, side, window->size_});
    window->SetParent(this);
    RecalcLayout();
    window->ShowWindow(SW_SHOWNA);
    return 1;
}

int SDockHostWnd::Undock(SDockWnd* window) {
    const auto found = std::find_if(strips_.begin(), strips_.end(), [window](const Strip& strip) {
        return strip.window == window;
    });
    if (found == strips_.end()) return 0;
    strips_.erase(found);
    RecalcLayout();
    return 1;
}

// Each strip cuts its part off what is left.
void SDockHostWnd::RecalcLayout() {
    if (GetHandle() == nullptr) return;
    RECT left = GetClientRect();
    const std::vector<Strip> strips = strips_;
    for (const Strip& strip : strips) {
        RECT place = left;
        const int width = std::min<int>(strip.size, left.right - left.left);
        const int height = std::min<int>(strip.size, left.bottom - left.top);
        if (strip.side == kLeft) place.right = left.left += width;
        if (strip.side == kRight) place.left = left.right -= width;
        if (strip.side == kTop) place.bottom = left.top += height;
        if (strip.side == kBottom) place.top = left.bottom -= height;
        strip.window->MoveWindow(place);
    }
    if (center_ != nullptr) center_->MoveWindow(left);
}

void SDockHostWnd::OnSize(UINT, int, int) {
    RecalcLayout();
}

void SDockHostWnd::OnDestroy() {
    const std::unique_ptr<SWnd> leaving = std::move(center_);
}

// --- Docked windows -----------------------------------------------------------------------------

SDockWnd::~SDockWnd() {
    if (host_ != nullptr) std::exchange(host_, nullptr)->Forget(this);
    if (GetHandle() != nullptr) DestroyWindow();
}

int SDockWnd::CreateDock(SDockHostWnd* host, const SClassInfo* content) {
    if (host == nullptr) return 0;
    if (!SWnd::Create("S_CtrlWndEx", title_, WS_CHILD | WS_CLIPCHILDREN, {}, host, 0)) return 0;
    content_ = brcore8::CreatePaneOf(content, this, {}, 1);
    if (content_ == nullptr) {
        DestroyWindow();
        return 0;
    }
    host_ = host;
    host_->windows_.push_back(this);
    return 1;
}

int SDockWnd::Float(const RECT& place) {
    if (GetHandle() == nullptr || host_ == nullptr) return 0;
    if (frame_.GetHandle() == nullptr) {
        if (!frame_.CreateFloat(title_, place,
                                SWnd::FromHandle(::GetAncestor(host_->GetHandle(), GA_ROOT))))
            return 0;
    } else {
        frame_.MoveWindow(place);
    }
    host_->Undock(this);
    frame_.SetContent(this);
    frame_.ShowWindow(SW_SHOWNA);
    return 1;
}

int SDockWnd::IsFloating() const {
    return frame_.GetHandle() != nullptr && ::GetParent(GetHandle()) == frame_.GetHandle();
}

int SDockWnd::DockBack() {
    return host_ != nullptr && size_ > 0 && host_->Dock(this, side_, size_);
}

void SDockWnd::OnDestroy() {
    if (host_ != nullptr) std::exchange(host_, nullptr)->Forget(this);
    const std::unique_ptr<SWnd> leaving = std::move(content_);
}

void SDockWnd::OnSize(UINT, int width, int height) {
    const int caption = SScaled(kCaption, GetHandle());
    if (content_ != nullptr) content_->MoveWindow({0, caption, width, std::max(height, caption)});
    Invalidate(1);
}

// On the caption: floats it, or puts it back.
void SDockWnd::OnLButtonDblClk(UINT, int, int y) {
    if (y >= SScaled(kCaption, GetHandle())) return;
    if (IsFloating()) {
        DockBack();
        return;
    }
    Float(GetWindowRect());
}

void SDockWnd::OnPaint() {
    SPaintDC dc(this);
    RECT caption{0, 0, GetClientRect().right, SScaled(kCaption, GetHandle())};
    dc.FillSolidRect(caption, ::GetSysColor(COLOR_INACTIVECAPTION));
    const SSelected font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(::GetSysColor(COLOR_INACTIVECAPTIONTEXT));
    caption.left += SScaled(4, GetHandle());
    dc.DrawText(title_, caption, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}
