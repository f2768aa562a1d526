#include "platform/common_dialogs.h"

#include <brcore8/platform/posix/control_messages.h>
#include <brcore8/platform/posix/dialog_calls.h>
#include <brcore8/strings/multibyte.h>

#include <climits>

#include "platform/posix/desktop/display.h"
#include "platform/posix/desktop/screen.h"

namespace brcore8 {

namespace {

bool Refuse() noexcept {
    SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return false;
}

// --- A path, asked for with a field ---------------------------------------------------------

constexpr WORD kPathId = 100;
constexpr WORD kButton = 0x80, kEdit = 0x81, kStatic = 0x82;

// A plain template.
class TemplateWriter {
public:
    explicit TemplateWriter(const std::string& title) {
        Long(WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE | DS_MODALFRAME | DS_CENTER);
        Long(0);
        Words({0, 0, 0, 240, 62, 0, 0});
        Text(title);
    }
    void Item(WORD kind, DWORD style, WORD id, const char* text, const RECT& at) {
        if (words_.size() % 2 != 0) words_.push_back(0);
        Long(style | WS_CHILD | WS_VISIBLE);
        Long(0);
        Words({at.left, at.top, at.right - at.left, at.bottom - at.top, id, 0xFFFF, kind});
        Text(text);
        Words({0});
        ++words_[4];
    }
    const DLGTEMPLATE* Get() const noexcept {
        return reinterpret_cast<const DLGTEMPLATE*>(words_.data());
    }

private:
    void Words(std::initializer_list<int> words) {
        for (const int word : words)
            words_.push_back(static_cast<WORD>(word));
    }
    void Long(DWORD value) { Words({LOWORD(value), HIWORD(value)}); }
    void Text(const std::string& text) {
        for (const char16_t unit : SUtf16FromText(text))
            Words({unit});
        Words({0});
    }

    std::vector<WORD> words_;
};

INT_PTR CALLBACK AskPathProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrA(dialog, DWLP_USER, lParam);
        SetDlgItemTextA(dialog, kPathId, reinterpret_cast<const std::string*>(lParam)->c_str());
        return 1;
    }
    if (message != WM_COMMAND) return 0;
    const int id = LOWORD(wParam);
    if (id == IDCANCEL) EndDialog(dialog, IDCANCEL);
    if (id != IDOK) return 1;
    char text[PATH_MAX] = "";
    GetDlgItemTextA(dialog, kPathId, text, sizeof text);
    if (text[0] == '\0') return 1;
    *reinterpret_cast<std::string*>(GetWindowLongPtrA(dialog, DWLP_USER)) = text;
    EndDialog(dialog, IDOK);
    return 1;
}

bool AskForPath(HWND owner, const std::string& title, const char* label, std::string& path) {
    // As for message boxes: not where nobody could answer.
    if (desktop::TheDisplay() == nullptr || (owner == nullptr && desktop::TheScreen() == nullptr))
        return Refuse();
    TemplateWriter made(title);
    made.Item(kStatic, 0, 0xFFFF, label, {7, 7, 233, 16});
    made.Item(kEdit, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, kPathId, "", {7, 18, 233, 32});
    made.Item(kButton, BS_DEFPUSHBUTTON | WS_TABSTOP, IDOK, "OK", {127, 41, 177, 55});
    made.Item(kButton, WS_TABSTOP, IDCANCEL, "Cancel", {183, 41, 233, 55});
    return DialogBoxIndirectParamA(nullptr, made.Get(), owner, &AskPathProcedure,
                                   reinterpret_cast<LPARAM>(&path)) == IDOK;
}

}  // namespace

const void* FindDialogTemplate(HINSTANCE, unsigned, std::size_t& size) noexcept {
    size = 0;
    Refuse();
    return nullptr;
}

bool AskColor(HWND, COLORREF&) {
    return Refuse();
}

bool AskFont(HWND, LOGFONTA&, COLORREF&) {
    return Refuse();
}

bool AskFile(HWND owner, const FileQuestion& question, std::string& path) {
    const std::string title = question.isOpen ? "Open" : "Save As";
    if (!AskForPath(owner, question.title.empty() ? title : question.title, "&File name:", path))
        return false;
    const std::size_t name = path.rfind('/') + 1;
    if (!question.extension.empty() && path.find('.', name) == std::string::npos)
        path += "." + question.extension;
    return true;
}

bool AskFolder(HWND owner, const std::string& title, std::string& path) {
    return AskForPath(owner, title.empty() ? "Choose a folder" : title, "&Folder:", path);
}

bool AskPrint(HWND, PrintAnswer&) {
    return Refuse();
}

bool AskPageSetup(HWND, RECT&) {
    return Refuse();
}

HWND ShowFind(HWND, FindState*&, const char*, const char*, bool, DWORD) {
    Refuse();
    return nullptr;
}

const char* WantedText(const FindState&) noexcept {
    return "";
}

const char* ReplacementText(const FindState&) noexcept {
    return "";
}

DWORD FindFlags(const FindState&) noexcept {
    return 0;
}

void FreeFind(FindState*) noexcept {}

int RunSheet(HWND, const char*, const std::vector<SheetPage>&, int) {
    Refuse();
    return -1;
}

}  // namespace brcore8
