#include "viewer_frame.h"

#include <brcore8/core/exception.h>
#include <brcore8/dialogs/common_dlgs.h>
#include <brcore8/routing/cmd_ui.h>
#include <brcore8/settings/registry.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string_view>

namespace viewer {

SIMPLEMENT_MESSAGE_MAP(
    SViewerFrame, SFrameWnd, SOnClose<&SViewerFrame::OnClose>(),
    SOnDestroy<&SViewerFrame::OnDestroy>(), SOnSetFocus<&SViewerFrame::OnSetFocus>(),
    SOnCommand<&SViewerFrame::OnOpen>(kOpen), SOnCommand<&SViewerFrame::OnReload>(kReload),
    SOnCommand<&SViewerFrame::OnCloseDocument>(kClose), SOnCommand<&SViewerFrame::OnExit>(kExit),
    SOnCommand<&SViewerFrame::OnCopy>(kCopy), SOnCommand<&SViewerFrame::OnSelectAll>(kSelectAll),
    SOnCommand<&SViewerFrame::OnLarger>(kLarger), SOnCommand<&SViewerFrame::OnSmaller>(kSmaller),
    SOnCommand<&SViewerFrame::OnDetails>(kDetails),
    SOnCommand<&SViewerFrame::OnShowEntry>(kShowEntry), SOnCommand<&SViewerFrame::OnBack>(kBack),
    SOnCommand<&SViewerFrame::OnAbout>(kAbout), SOnUpdate<&SViewerFrame::OnUpdateDocument>(kReload),
    SOnUpdate<&SViewerFrame::OnUpdateDocument>(kClose),
    SOnUpdate<&SViewerFrame::OnUpdateDocument>(kSelectAll),
    SOnUpdate<&SViewerFrame::OnUpdateCopy>(kCopy),
    SOnUpdate<&SViewerFrame::OnUpdateDetails>(kDetails),
    SOnUpdate<&SViewerFrame::OnUpdateShowEntry>(kShowEntry),
    SOnUpdate<&SViewerFrame::OnUpdateBack>(kBack),
    SOnUpdate<&SViewerFrame::OnUpdatePosition>(kPosition),
    SOnUpdate<&SViewerFrame::OnUpdateFormat>(kFormat),
    SOnUpdate<&SViewerFrame::OnUpdateSize>(kSize),
    SOnUpdate<&SViewerFrame::OnUpdateEntries>(kEntries));

SViewerFrame::SViewerFrame() : settings_(SRegistry::ApplicationRoot() + "Viewer") {}

// --- Its parts ----------------------------------------------------------------------------------

int SViewerFrame::Make() {
    if (!CreateFrame("Viewer") || !MakeMenu() || !MakeView() || !MakeStatusBar()) return 0;
    MakeKeys();
    settings_.Load();
    settings_.Apply(*this);
    RecalcLayout();
    return 1;
}

int SViewerFrame::MakeMenu() {
    struct Row {
        UINT id;  // 0 is a line, or, with a text, the next popup
        const char* text;
    };
    static constexpr Row rows[] = {
        {0, "&File"},
        {kOpen, "&Open...\tCtrl+O"},
        {kReload, "&Reload\tF5"},
        {kClose, "&Close"},
        {0, nullptr},
        {kExit, "E&xit"},
        {0, "&Edit"},
        {kCopy, "&Copy\tCtrl+C"},
        {kSelectAll, "Select &all\tCtrl+A"},
        {0, "&View"},
        {kLarger, "&Larger\tCtrl++"},
        {kSmaller, "&Smaller\tCtrl+-"},
        {0, nullptr},
        {kDetails, "&Details in the status bar"},
        {0, "&Archive"},
        {kShowEntry, "&Show entry\tEnter"},
        {kBack, "&Back to the list\tBackspace"},
        {0, "&Help"},
        {kAbout, "&About"},
    };
    const HMENU bar = ::CreateMenu();
    HMENU popup = nullptr;
    for (const Row& row : rows) {
        if (row.id == 0 && row.text != nullptr) {
            popup = ::CreatePopupMenu();
            if (!::AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), row.text))
                return 0;
        } else {
            ::AppendMenuA(popup, row.text != nullptr ? MF_STRING : MF_SEPARATOR, row.id, row.text);
        }
    }
    return ::SetMenu(GetHandle(), bar);
}

void SViewerFrame::MakeKeys() {
    constexpr BYTE kKey = FVIRTKEY, kControl = FVIRTKEY | FCONTROL;
    ACCEL keys[] = {{kControl, 'O', kOpen},
                    {kControl, 'A', kSelectAll},
                    {kControl, VK_OEM_PLUS, kLarger},
                    {kControl, VK_OEM_MINUS, kSmaller},
                    {kKey, VK_F5, kReload},
                    {kKey, VK_RETURN, kShowEntry},
                    {kKey, VK_BACK, kBack}};
    SetAccelTable(::CreateAcceleratorTableA(keys, static_cast<int>(std::size(keys))));
}

int SViewerFrame::MakeView() {
    constexpr DWORD kStyle = WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY |
                             ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL;
    if (!view_.Create("EDIT", nullptr, kStyle, RECT{}, this, ViewId)) return 0;
    view_.SendMessage(EM_SETLIMITTEXT, 0x7FFFFFFE);
    SFont::LoadFixedUIFont();
    UseFont();
    return 1;
}

int SViewerFrame::MakeStatusBar() {
    if (!status_.Create(this, WS_CHILD | WS_VISIBLE, SBARS_SIZEGRIP, SStatusBar::DefaultId))
        return 0;
    constexpr UINT panes[] = {0, kPosition};
    status_.SetIndicators(panes, 2);
    details_.Attach(&status_);
    const UINT shown[] = {kPosition, kFormat, kSize, kEntries};
    for (int i = 0; i < 4; ++i)
        details_.InsertPane(i, shown[i], SStatusBarPane::SizeToText);
    details_.Activate(0);
    return 1;
}

// --- The document -------------------------------------------------------------------------------

int SViewerFrame::Read(const SString& path, int entry) {
    const auto begun = std::chrono::steady_clock::now();
    constexpr int kSteps = 1000;
    if (status_.InProgress()) return 0;
    bool isShown = false;
    const auto progress = [&](std::uint64_t done, std::uint64_t total) {
        if (!isShown && std::chrono::steady_clock::now() - begun < patience_) return true;
        if (!isShown) {
            isShown = true;
            status_.StartProgress(1);
            status_.GetProgress().SetRange(0, kSteps);
        }
        if (total > 0)
            status_.GetProgress().SetPos(static_cast<int>(std::min(done, total) * kSteps / total));
        return status_.PollCancel() == 0;
    };
    int done = 0;
    try {
        ShowDocument(entry < 0 ? ReadDocument(path, progress) : ReadEntry(path, entry, progress));
        done = 1;
    } catch (const SEIOAbortedException&) {
        // The user knows.
    } catch (const SException& fault) {
        status_.EndProgress();
        SString message = fault.GetText();
        if (message.IsEmpty()) message = "It is damaged, or cannot be opened";
        MessageBox(path + ":\n" + message, "Viewer", MB_OK | MB_ICONERROR);
    }
    if (isShown) status_.EndProgress();
    return done;
}

int SViewerFrame::OpenFile(const SString& path) {
    return Read(path, -1);
}

int SViewerFrame::ShowEntry(int index) {
    if (document_.kind != Document::Kind::Archive) return 0;
    Document list = document_;
    if (!Read(document_.path, index)) return 0;
    list_ = std::move(list);
    return 1;
}

void SViewerFrame::ShowDocument(Document&& document) {
    document_ = std::move(document);
    view_.SetWindowText(document_.text);
    view_.SendMessage(EM_SETSEL, 0, 0);
    std::string_view name = document_.entry.IsEmpty() ? document_.path : document_.entry;
    name.remove_prefix(std::min(name.find_last_of("/\\") + 1, name.size()));
    SetWindowText(name.empty() ? SString("Viewer") : SString(name) + " - Viewer");
    const SString& shown = document_.path;
    status_.SetPaneText(0, &shown, 1);
}

int SViewerFrame::CaretLine() const {
    return static_cast<int>(view_.SendMessage(EM_LINEFROMCHAR, static_cast<WPARAM>(-1)));
}

// --- Fonts --------------------------------------------------------------------------------------

void SViewerFrame::UseFont() {
    font_.Create(SFont::GetFixedUIFontInfo());
    view_.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font_.GetHandle()), 1);
}

void SViewerFrame::ChangeFont(int pixels) {
    LOGFONTA info = SFont::GetFixedUIFontInfo();
    const int height = std::abs(static_cast<int>(info.lfHeight));
    info.lfHeight = -std::clamp(height + pixels, 8, 60);
    SFont::SetFixedUIFontInfo(info);
    SFont::SaveFixedUIFont();
    UseFont();
}

// --- The window ---------------------------------------------------------------------------------

void SViewerFrame::OnClose() {
    if (status_.InProgress()) return;  // Cancel comes first
    settings_.Capture(*this);
    settings_.Save();
    DestroyWindow();
}

void SViewerFrame::OnDestroy() {
    ::PostQuitMessage(0);
}

void SViewerFrame::OnSetFocus(SWnd*) {
    view_.SetFocus();
}

// --- Commands -----------------------------------------------------------------------------------

void SViewerFrame::OnOpen() {
    SFileDlg dialog(1, "All files|*.*", nullptr, this);
    if (dialog.DoModal() == IDOK) OpenFile(dialog.GetPath());
}

void SViewerFrame::OnReload() {
    if (!document_.entry.IsEmpty() || !HasDocument()) return;
    const SString path = document_.path;
    OpenFile(path);
}

void SViewerFrame::OnCloseDocument() {
    ShowDocument(Document());
    list_ = Document();
}

void SViewerFrame::OnDetails() {
    details_.Activate(status_.GetExtraLayout() == nullptr);
}

void SViewerFrame::OnBack() {
    if (document_.kind != Document::Kind::Entry) return;
    ShowDocument(std::move(list_));
    list_ = Document();
}

void SViewerFrame::OnAbout() {
    MessageBox("Shows text, RTF and ZIP archives.", "Viewer", MB_OK | MB_ICONINFORMATION);
}

void SViewerFrame::OnUpdateDocument(SCmdUI* ui) {
    ui->Enable(HasDocument());
}

void SViewerFrame::OnUpdateCopy(SCmdUI* ui) {
    DWORD first = 0, last = 0;
    view_.SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    ui->Enable(first != last);
}

void SViewerFrame::OnUpdateDetails(SCmdUI* ui) {
    ui->SetCheck(status_.GetExtraLayout() != nullptr);
}

void SViewerFrame::OnUpdateShowEntry(SCmdUI* ui) {
    ui->Enable(document_.kind == Document::Kind::Archive && CaretLine() < document_.entries);
}

void SViewerFrame::OnUpdateBack(SCmdUI* ui) {
    ui->Enable(document_.kind == Document::Kind::Entry);
}

void SViewerFrame::OnUpdatePosition(SCmdUI* ui) {
    SString text;
    text.Format("Line %d", CaretLine() + 1);
    ui->SetText(text);
    ui->Enable(HasDocument());
}

void SViewerFrame::OnUpdateFormat(SCmdUI* ui) {
    ui->SetText(document_.format);
}

void SViewerFrame::OnUpdateSize(SCmdUI* ui) {
    SString text;
    text.Format("%llu bytes", static_cast<unsigned long long>(document_.size));
    ui->SetText(text);
    ui->Enable(HasDocument());
}

void SViewerFrame::OnUpdateEntries(SCmdUI* ui) {
    SString text;
    text.Format("%d entries", document_.entries);
    ui->SetText(text);
    ui->Enable(document_.kind == Document::Kind::Archive);
}

}  // namespace viewer
