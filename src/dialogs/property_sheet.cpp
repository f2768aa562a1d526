#include <brcore8/dialogs/common_dlgs.h>
#include <brcore8/dialogs/property_sheet.h>

#include "platform/common_dialogs.h"
#include "platform/dialog_template.h"
#include "window/thread_state.h"

SIMPLEMENT_CLASS(SPropertyPage, SDlg, 2);
SIMPLEMENT_CLASS(SFontPropertyPage, SPropertyPage, 2);
SIMPLEMENT_CLASS(SPropertySheet, SWnd, 2);

namespace {

// What sheets tell their pages, and what they are told.
constexpr UINT kSetActive = 0u - 200, kKillActive = 0u - 201, kApply = 0u - 202, kReset = 0u - 203;
constexpr LRESULT kInvalid = 1;
constexpr UINT kChanged = WM_USER + 104, kUnchanged = WM_USER + 109;

void ExpectPage(void* page) {
    brcore8::ExpectWindow(static_cast<SPropertyPage*>(page));
}

}  // namespace

void SPropertyPage::SetModified(int on) {
    if (GetHandle() != nullptr)
        ::SendMessageA(::GetParent(GetHandle()), on ? kChanged : kUnchanged,
                       reinterpret_cast<WPARAM>(GetHandle()), 0);
}

int SPropertyPage::OnSetActive() {
    return 1;
}

int SPropertyPage::OnKillActive() {
    return 1;
}

int SPropertyPage::OnApply() {
    return 1;
}

void SPropertyPage::OnReset() {}

int SPropertyPage::OnNotify(WPARAM wParam, NMHDR* header, LRESULT* result) {
    switch (header->code) {
        case kSetActive:
            *result = OnSetActive() ? 0 : -1;
            return 1;
        case kKillActive:
            *result = !OnKillActive();
            return 1;
        case kApply:
            *result = OnApply() ? 0 : kInvalid;
            return 1;
        case kReset:
            OnReset();
            return 1;
        default:
            return SDlg::OnNotify(wParam, header, result);
    }
}

int SFontPropertyPage::ChooseLogFont() {
    SFontDlg dialog(font_, this);
    if (dialog.DoModal() != IDOK) return IDCANCEL;
    font_ = dialog.GetFont();
    SetModified();
    return IDOK;
}

SPropertyPage* SPropertySheet::GetPage(int index) const noexcept {
    return index >= 0 && index < GetPageCount() ? pages_[static_cast<std::size_t>(index)] : nullptr;
}

int SPropertySheet::DoModal() {
    std::vector<brcore8::SheetPage> pages;
    for (SPropertyPage* const page : pages_) {
        std::size_t size = 0;
        const void* const bytes = page->FindTemplate(size);
        if (bytes == nullptr || !brcore8::ReadDialogTemplate(bytes, size)) return -1;
        const char* const title =
            page->title_.IsEmpty() ? nullptr : static_cast<const char*>(page->title_);
        pages.push_back({bytes, size, title, page, &ExpectPage});
    }
    if (pages.empty()) return -1;
    const HWND owner = parent_ != nullptr ? parent_->GetHandle() : nullptr;
    const int answer = brcore8::RunSheet(owner, title_, pages, first_);
    brcore8::WindowCame();
    return answer < 0 ? -1 : answer != 0 ? IDOK : IDCANCEL;
}
