#include <brcore8/views/frames.h>

#include <brcore8/graphics/window_dc.h>
#include <brcore8/window/scaled.h>

#include "platform/frame_parts.h"

#include <algorithm>

SIMPLEMENT_CREATABLE(SFloatFrameWnd, SFrameWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SFloatFrameWnd, SFrameWnd, SOnSize<&SFloatFrameWnd::OnFill>());
SIMPLEMENT_CREATABLE(SSplashWnd, SFrameWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SSplashWnd, SFrameWnd, SOnPaint<&SSplashWnd::OnPaint>(),
                       SOnTimer<&SSplashWnd::OnTimer>(),
                       SOnLButtonDown<&SSplashWnd::OnLButtonDown>());
SIMPLEMENT_CREATABLE(SMDIFrameWnd, SFrameWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SMDIFrameWnd, SFrameWnd);
SIMPLEMENT_CREATABLE(SMDIChildWnd, SFrameWnd, 2);

namespace {

HWND HandleOf(const SWnd* window) noexcept {
    return window != nullptr ? window->GetHandle() : nullptr;
}

}  // namespace

// --- Floating -----------------------------------------------------------------------------------

int SFloatFrameWnd::CreateFloat(const char* text, const RECT& place, SWnd* owner) {
    return CreateEx(WS_EX_TOOLWINDOW, "S_CtrlWnd", text,
                    WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN,
                    place.left, place.top, place.right - place.left, place.bottom - place.top,
                    HandleOf(owner));
}

void SFloatFrameWnd::SetContent(SWnd* content) {
    if (content_ != nullptr && ::IsWindow(content_)) ::ShowWindow(content_, SW_HIDE);
    content_ = HandleOf(content);
    if (content_ == nullptr) return;
    ::SetParent(content_, GetHandle());
    const RECT client = GetClientRect();
    OnFill(SIZE_RESTORED, client.right, client.bottom);
    ::ShowWindow(content_, SW_SHOWNA);
}

SWnd* SFloatFrameWnd::GetContent() const {
    return FromHandlePermanent(content_);
}

void SFloatFrameWnd::OnFill(UINT, int width, int height) {
    if (content_ != nullptr && ::IsWindow(content_) && ::GetParent(content_) == GetHandle())
        ::MoveWindow(content_, 0, 0, width, height, 1);
}

// --- The splash ---------------------------------------------------------------------------------

int SSplashWnd::ShowSplash(const char* text, const SBitmap* picture, UINT milliseconds,
                           SWnd* owner) {
    picture_ = picture;
    int width = SScaled(320, HandleOf(owner));
    int height = SScaled(120, HandleOf(owner));
    if (picture_ != nullptr && !picture_->IsNull()) {
        width = picture_->GetShape().width;
        height = picture_->GetShape().height;
    }
    const int left = (GetSystemMetrics(SM_CXSCREEN) - width) / 2;
    const int top = (GetSystemMetrics(SM_CYSCREEN) - height) / 2;
    if (!CreateEx(WS_EX_TOOLWINDOW, "S_CliDrawWnd", text, WS_POPUP, std::max(left, 0),
                  std::max(top, 0), width, height, HandleOf(owner)))
        return 0;
    if (milliseconds != 0) SetTimer(1, milliseconds);
    ShowWindow(SW_SHOWNOACTIVATE);
    UpdateWindow();
    return 1;
}

void SSplashWnd::OnPaint() {
    SPaintDC dc(this);
    RECT client = GetClientRect();
    if (picture_ != nullptr && !picture_->IsNull()) {
        SDC memory;
        if (!memory.CreateCompatibleDC(&dc)) return;
        const SSelected selected(memory, *picture_);
        dc.BitBlt(0, 0, client.right, client.bottom, memory, 0, 0);
        return;
    }
    dc.FrameSolidRect(client, ::GetSysColor(COLOR_WINDOWFRAME));
    const SSelected font(dc, ::GetStockObject(SYSTEM_FONT));
    dc.SetBkMode(TRANSPARENT);
    dc.DrawText(GetWindowText(), client, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
}

// --- Documents ----------------------------------------------------------------------------------

int SMDIFrameWnd::CreateClient() {
    if (client_ != nullptr || GetHandle() == nullptr) return 0;
    client_ = brcore8::CreateDocumentClient(GetHandle(), kFirstDocument - 1);
    if (client_ == nullptr) return 0;
    RecalcLayout();
    return 1;
}

SMDIChildWnd* SMDIFrameWnd::GetActiveChild() const {
    const auto active = reinterpret_cast<HWND>(SendClient(WM_MDIGETACTIVE));
    SWnd* const wrapper = FromHandlePermanent(active);
    return wrapper != nullptr && wrapper->IsKindOf(&SMDIChildWnd::m_SMDIChildWnd)
               ? static_cast<SMDIChildWnd*>(wrapper)
               : nullptr;
}

HWND SMDIFrameWnd::FindFiller() const {
    return client_ != nullptr ? client_ : SFrameWnd::FindFiller();
}

int SMDIFrameWnd::PreTranslateMessage(MSG* message) {
    if (SFrameWnd::PreTranslateMessage(message)) return 1;
    const bool hasCtrl = ::GetKeyState(VK_CONTROL) < 0 && ::GetKeyState(VK_MENU) >= 0;
    if (message->message != WM_KEYDOWN || !hasCtrl) return 0;
    const bool isBack = ::GetKeyState(VK_SHIFT) < 0;
    WPARAM command = 0;
    switch (message->wParam) {
        case VK_F4:
            command = SC_CLOSE;
            break;
        case VK_F6:
        case VK_TAB:
            command = isBack ? SC_PREVWINDOW : SC_NEXTWINDOW;
            break;
        default:
            return 0;
    }
    const auto active = reinterpret_cast<HWND>(SendClient(WM_MDIGETACTIVE));
    if (active == nullptr) return 0;
    ::SendMessageA(active, WM_SYSCOMMAND, command, static_cast<LPARAM>(message->wParam));
    return 1;
}

// The platform's would give its client the bars' room too with each size.
LRESULT SMDIFrameWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SIZE) return SFrameWnd::DefWindowProc(message, wParam, lParam);
    if (message == WM_NCDESTROY) client_ = nullptr;
    return brcore8::DefDocumentFrame(GetHandle(), client_, message, wParam, lParam);
}

// The active document is asked first.
int SMDIFrameWnd::OnCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info) {
    const HWND handle = GetHandle();
    if (SCmdTarget* const child = GetActiveChild()) {
        const int handled = child->OnCmdMsg(id, packed, extra, info);
        // A handler that leaves the command to others may have ended the frame.
        if (handled || FromHandlePermanent(handle) != this) return handled;
    }
    return SFrameWnd::OnCmdMsg(id, packed, extra, info);
}

int SMDIChildWnd::CreateDocument(const char* text, SMDIFrameWnd* frame) {
    const HWND client = frame != nullptr ? frame->GetClient() : nullptr;
    if (client == nullptr) return 0;
    return CreateEx(brcore8::DocumentStyle(), "S_CliDrawWnd", text,
                    WS_CHILD | WS_VISIBLE | WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                    CW_USEDEFAULT, CW_USEDEFAULT, client);
}

int SMDIChildWnd::OnCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info) {
    return OfferCmdMsg(id, packed, extra, info);
}

void SMDIChildWnd::Activate() {
    ::SendMessageA(::GetParent(GetHandle()), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(GetHandle()),
                   0);
}

LRESULT SMDIChildWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return brcore8::DefDocumentChild(GetHandle(), message, wParam, lParam);
}
