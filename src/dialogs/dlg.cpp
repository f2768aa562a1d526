#include <brcore8/app/win_app.h>
#include <brcore8/core/exception.h>
#include <brcore8/core/module.h>
#include <brcore8/dialogs/dlg.h>

#include "platform/common_dialogs.h"
#include "platform/dialog_template.h"
#include "window/thread_state.h"

#include <cstdint>
#include <cstring>
#include <vector>

SIMPLEMENT_CLASS(SDlg, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SDlg, SWnd, SOnMessage<&SDlg::HandleInitDialog>(WM_INITDIALOG),
                       SOnCommand<&SDlg::OnOK>(IDOK), SOnCommand<&SDlg::OnCancel>(IDCANCEL));

namespace {

// The message maps do what dialog procedures do elsewhere.
INT_PTR CALLBACK NoProcedure(HWND, UINT, WPARAM, LPARAM) {
    return 0;
}

// Keeps a window from input for a scope.
class Disabled {
public:
    explicit Disabled(HWND window) : window_(window) {
        if (window_ != nullptr && IsWindowEnabled(window_))
            EnableWindow(window_, 0);
        else
            window_ = nullptr;
    }
    Disabled(const Disabled&) = delete;
    Disabled& operator=(const Disabled&) = delete;
    ~Disabled() { End(); }

    void End() {
        if (window_ != nullptr && IsWindow(window_)) EnableWindow(window_, 1);
        window_ = nullptr;
    }

private:
    HWND window_;
};

}  // namespace

HWND SDlg::FindOwner() const {
    const SWinApp* const app = SGetApp();
    SWnd* const main = app != nullptr ? SGetApp()->GetMainWnd() : nullptr;
    const SWnd* const parent = parent_ != nullptr ? parent_ : main;
    const HWND handle = parent != nullptr ? parent->GetHandle() : nullptr;
    return handle != nullptr ? GetAncestor(handle, GA_ROOT) : nullptr;
}

const void* SDlg::FindTemplate(std::size_t& size) const {
    size = templateSize_;
    if (template_ != nullptr) return template_;
    return brcore8::FindDialogTemplate(brcore8::ResourceInstance(), resource_, size);
}

HWND SDlg::Make(HWND owner) {
    if (GetHandle() != nullptr || !brcore8::RegisterWindowClasses()) throw SEConstructor();
    std::size_t size = 0;
    const void* const bytes = FindTemplate(size);
    if (bytes == nullptr) return nullptr;
    if (!brcore8::ReadDialogTemplate(bytes, size)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    // The platform wants it on a multiple of four.
    std::vector<std::uint32_t> aligned(size / 4 + 2);
    std::memcpy(aligned.data(), bytes, size);
    isEnded_ = false;
    result_ = -1;
    brcore8::ExpectWindow(this);
    const HWND handle = CreateDialogIndirectParamA(
        SGetModuleState()->GetInstance(), reinterpret_cast<const DLGTEMPLATE*>(aligned.data()),
        owner, &NoProcedure, 0);
    // A handler may have let go of it, or deleted this.
    if (!brcore8::WindowCame() || FromHandlePermanent(handle) != this) return nullptr;
    Own();
    return handle;
}

int SDlg::DoModal() {
    // The mouse is the dialog's, whoever held it.
    if (const HWND holder = ::GetCapture()) ::SendMessageA(holder, WM_CANCELMODE, 0, 0);
    const HWND owner = FindOwner();
    isModal_ = true;
    Disabled disabled(owner);
    const HWND handle = Make(owner);
    if (handle == nullptr) return -1;
    if (!isEnded_) {
        ShowWindow(SW_SHOW);
        const int looped = FromHandlePermanent(handle) == this ? RunModalLoop() : -1;
        // The dialog's window, and this with it, may be gone.
        if (FromHandlePermanent(handle) != this) return looped;
    }
    const int result = result_;
    // The owner is active next.
    disabled.End();
    if (FromHandlePermanent(handle) == this) DestroyWindow();
    return result;
}

int SDlg::CreateModeless(SWnd* parent) {
    if (parent != nullptr) parent_ = parent;
    isModal_ = false;
    return Make(parent_ != nullptr ? parent_->GetHandle() : nullptr) != nullptr;
}

int SDlg::CreateModeless(const void* bytes, std::size_t size, SWnd* parent) {
    template_ = bytes;
    templateSize_ = size;
    return CreateModeless(parent);
}

void SDlg::EndDialog(int result) {
    if (GetHandle() == nullptr) return;
    if (!isModal_) {
        DestroyWindow();
        return;
    }
    isEnded_ = true;
    result_ = result;
    EndModalLoop(result);
}

int SDlg::PreTranslateMessage(MSG* message) {
    const bool isKey = message->message >= WM_KEYFIRST && message->message <= WM_KEYLAST;
    return isKey && ::IsDialogMessageA(GetHandle(), message);
}

SString SDlg::GetDlgItemText(int id) const {
    const SWnd* const item = GetDlgItem(id);
    return item != nullptr ? item->GetWindowText() : SString();
}

LRESULT SDlg::HandleInitDialog(WPARAM, LPARAM) {
    return OnInitDialog();
}

int SDlg::OnInitDialog() {
    return 1;
}

void SDlg::OnOK() {
    EndDialog(IDOK);
}

void SDlg::OnCancel() {
    EndDialog(IDCANCEL);
}
