#include <brcore8/dialogs/common_dlgs.h>

#include "platform/common_dialogs.h"

#include <string>
#include <utility>

SIMPLEMENT_CLASS(SColorDlg, SDlg, 2);
SIMPLEMENT_CLASS(SFontDlg, SDlg, 2);
SIMPLEMENT_CLASS(SFileDlg, SDlg, 2);
SIMPLEMENT_CLASS(SDirectoryDlg, SFileDlg, 2);
SIMPLEMENT_CLASS(SFolderDlg, SDlg, 2);
SIMPLEMENT_CLASS(SPrintDlg, SDlg, 2);
SIMPLEMENT_CLASS(SPageSetupDlg, SDlg, 2);
SIMPLEMENT_CLASS(SFindReplaceDlg, SDlg, 2);

namespace {

int Answer(bool isChosen) noexcept {
    return isChosen ? IDOK : IDCANCEL;
}

std::string Plain(const SString& text) {
    return std::string(static_cast<const char*>(text));
}

bool AskPath(HWND owner, const SString& title, SString& path) {
    std::string chosen = Plain(path);
    if (!brcore8::AskFolder(owner, Plain(title), chosen)) return false;
    path = chosen.c_str();
    return true;
}

const brcore8::FindState& StateOf(const void* state) noexcept {
    return *static_cast<const brcore8::FindState*>(state);
}

}  // namespace

int SColorDlg::DoModal() {
    return Answer(brcore8::AskColor(FindOwner(), color_));
}

int SFontDlg::DoModal() {
    return Answer(brcore8::AskFont(FindOwner(), font_, color_));
}

int SFileDlg::DoModal() {
    const brcore8::FileQuestion question{isOpen_ != 0, Plain(filter_), Plain(extension_),
                                         Plain(title_), flags_};
    std::string path = Plain(path_);
    if (!brcore8::AskFile(FindOwner(), question, path)) return IDCANCEL;
    path_ = path.c_str();
    return IDOK;
}

int SDirectoryDlg::DoModal() {
    return Answer(AskPath(FindOwner(), title_, path_));
}

int SFolderDlg::DoModal() {
    return Answer(AskPath(FindOwner(), title_, path_));
}

int SPrintDlg::DoModal() {
    brcore8::PrintAnswer answer{copies_, firstPage_, lastPage_, nullptr};
    if (!brcore8::AskPrint(FindOwner(), answer)) return IDCANCEL;
    copies_ = answer.copies;
    firstPage_ = answer.firstPage;
    lastPage_ = answer.lastPage;
    context_ = answer.context;
    return IDOK;
}

int SPageSetupDlg::DoModal() {
    return Answer(brcore8::AskPageSetup(FindOwner(), margins_));
}

// --- Finding --------------------------------------------------------------------------------

SFindReplaceDlg::~SFindReplaceDlg() {
    if (GetHandle() != nullptr) ::DestroyWindow(UnsubclassWindow());
    brcore8::FreeFind(static_cast<brcore8::FindState*>(state_));
}

int SFindReplaceDlg::CreateFind(const char* text, const char* replacement, int isReplacing,
                                DWORD flags) {
    if (GetHandle() != nullptr) return 0;
    brcore8::FreeFind(static_cast<brcore8::FindState*>(std::exchange(state_, nullptr)));
    brcore8::FindState* state = nullptr;
    const HWND window =
        brcore8::ShowFind(FindOwner(), state, text != nullptr ? text : "",
                          replacement != nullptr ? replacement : "", isReplacing != 0, flags);
    state_ = state;
    return window != nullptr && SubclassWindow(window);
}

int SFindReplaceDlg::DoModal() {
    return IDCANCEL;
}

void SFindReplaceDlg::OnOK() {
    Default();
}

void SFindReplaceDlg::OnCancel() {
    Default();
}

UINT SFindReplaceDlg::GetFindMessage() {
    static const UINT message = RegisterWindowMessageA("commdlg_FindReplace");
    return message;
}

SString SFindReplaceDlg::GetFindString() const {
    return state_ != nullptr ? SString(brcore8::WantedText(StateOf(state_))) : SString();
}

SString SFindReplaceDlg::GetReplaceString() const {
    return state_ != nullptr ? SString(brcore8::ReplacementText(StateOf(state_))) : SString();
}

DWORD SFindReplaceDlg::GetFlags() const {
    return state_ != nullptr ? brcore8::FindFlags(StateOf(state_)) : 0;
}
