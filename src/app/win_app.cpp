#include <brcore8/app/frame_wnd.h>
#include <brcore8/app/win_app.h>
#include <brcore8/core/module.h>
#include <brcore8/core/throw.h>

#include "app/idle_maps.h"
#include "routing/routing.h"

#include <cstring>
#include <utility>
#include <vector>

SIMPLEMENT_CREATABLE(SWinApp, SCmdTarget, 2);
SIMPLEMENT_MESSAGE_MAP(SWinApp, SCmdTarget);

namespace {

constinit SWinApp* g_app = nullptr;

// Whether it is owned by `main`, or by a window that is.
bool IsOwnedBy(HWND window, HWND main) {
    while (window != nullptr && window != main)
        window = ::GetWindow(window, GW_OWNER);
    return window != nullptr;
}

char* Duplicate(const char* text) {
    if (text == nullptr) return nullptr;
    const std::size_t size = std::strlen(text) + 1;
    return static_cast<char*>(std::memcpy(brcore8::Allocate(size), text, size));
}

}  // namespace

SWinApp* SGetApp() noexcept {
    return g_app;
}

SWinApp::SWinApp(const char* name)
    : commandLine_(""), name_(Duplicate(name)), previousApp_(std::exchange(g_app, this)) {}

SWinApp::~SWinApp() {
    // They may end in any order.
    SWinApp** place = &g_app;
    while (*place != nullptr && *place != this)
        place = &(*place)->previousApp_;
    if (*place != nullptr) *place = previousApp_;
    brcore8::Release(name_);
}

int SWinApp::Init(HINSTANCE instance, HINSTANCE previous, char* commandLine, int show) {
    instance_ = instance;
    previous_ = previous;
    commandLineText_ = commandLine;
    show_ = show;
    commandLine_.SetCmdLineString(commandLine);
    SModuleState* const state = SGetModuleState();
    state->Init(instance);
    state->SetResInstance(instance);
    return 1;
}

int SWinApp::InitApplication() {
    return 1;
}

int SWinApp::InitInstance() {
    return 1;
}

int SWinApp::ExitInstance() {
    return static_cast<int>(message_.wParam);
}

// --- The loop -----------------------------------------------------------------------------------

int SWinApp::Run() {
    bool idle = true;
    long count = 0;
    MSG waiting;
    for (;;) {
        while (idle && !PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE))
            idle = OnIdle(count++) != 0;
        do {
            if (!PumpMessage()) return ExitInstance();
            if (IsIdleMessage(&message_)) {
                idle = true;
                count = 0;
            }
        } while (PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE));
    }
}

int SWinApp::PumpMessage() {
    const BOOL got = GetMessageA(&message_, nullptr, 0, 0);
    if (got == 0) return 0;
    if (got < 0 || message_.message == kWakeUpMessage) return 1;
    // A handler may run a loop of its own, which leaves another message in message_.
    MSG message = message_;
    if (!PreTranslateMessage(&message)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return 1;
}

int SWinApp::PreTranslateMessage(MSG* message) {
    return SWnd::WalkPreTranslateTree(mainWnd_ != nullptr ? mainWnd_->GetHandle() : nullptr,
                                      message);
}

int SWinApp::IsIdleMessage(MSG* message) {
    constexpr UINT kCaretBlink = 280;
    if (message->message == WM_MOUSEMOVE || message->message == WM_NCMOUSEMOVE) {
        if (message->pt.x == idlePoint_.x && message->pt.y == idlePoint_.y &&
            message->message == idleMessage_)
            return 0;
        idlePoint_ = message->pt;
        idleMessage_ = message->message;
        return 1;
    }
    return message->message != WM_PAINT && message->message != kCaretBlink;
}

int SWinApp::OnIdle(long count) {
    if (count <= 0) {
        UpdateVisibleFrames();
        return 1;
    }
    brcore8::DeleteTempMaps();
    return 0;
}

// Any update may close windows, the main window too: all is asked again after each.
void SWinApp::UpdateVisibleFrames() {
    SWnd* const main = GetMainWnd();
    const HWND mainHandle = main != nullptr ? main->GetHandle() : nullptr;
    if (mainHandle == nullptr) return;
    if (main->IsWindowVisible()) UpdateWindowTree(main);

    std::vector<HWND> windows;
    for (HWND top = ::GetTopWindow(nullptr); top != nullptr; top = ::GetWindow(top, GW_HWNDNEXT))
        if (top != mainHandle) windows.push_back(top);
    for (const HWND top : windows) {
        if (!::IsWindow(top) || !::IsWindowVisible(top)) continue;
        if (!IsOwnedBy(top, mainHandle)) continue;
        SWnd* const wrapper = SWnd::FromHandlePermanent(top);
        if (wrapper != nullptr && wrapper->IsKindOf(&SFrameWnd::m_SFrameWnd))
            UpdateWindowTree(wrapper);
    }
}

void SWinApp::UpdateWindowTree(SWnd* window) {
    const HWND handle = window->GetHandle();
    window->CallWndProc(kIdleUpdateMessage, 1, 0);
    if (SWnd::FromHandlePermanent(handle) == window)
        window->SendMessageToDescendants(kIdleUpdateMessage, 1, 0, 1, 1);
}

SWnd* SWinApp::GetMainWnd() {
    return mainWnd_;
}

int SWinApp::OnDDECommand(char*) {
    return 0;
}

// --- Waiting -------------------------------------------------------------------------------------

void SWinApp::DoWaitCursor(int delta) {
    const long long count = delta == 0 ? 0 : static_cast<long long>(waitCount_) + delta;
    if (count < 1) {
        waitCount_ = 0;
        if (savedCursor_ != nullptr) SetCursor(std::exchange(savedCursor_, nullptr));
        return;
    }
    waitCount_ = static_cast<int>(count <= INT32_MAX ? count : INT32_MAX);
    const HCURSOR replaced = SetCursor(LoadCursorA(nullptr, IDC_WAIT));
    if (delta > 0 && waitCount_ == 1) savedCursor_ = replaced;
}

int SWinApp::GetWaitCount() const {
    return waitCount_;
}

void brcore8::ChangeWaitCursor(int delta) {
    if (g_app != nullptr) g_app->DoWaitCursor(delta);
}

bool brcore8::PumpOneMessage(int* quitCode) {
    if (g_app != nullptr) {
        if (g_app->PumpMessage()) return true;
        *quitCode = g_app != nullptr ? static_cast<int>(g_app->GetCurrentMessage().wParam) : 0;
        return false;
    }
    MSG message;
    if (GetMessageA(&message, nullptr, 0, 0) == 0) {
        *quitCode = static_cast<int>(message.wParam);
        return false;
    }
    if (SWnd::WalkPreTranslateTree(nullptr, &message)) return true;
    TranslateMessage(&message);
    DispatchMessageA(&message);
    return true;
}
