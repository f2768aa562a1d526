#include "platform/common_dialogs.h"

#include <commdlg.h>
#include <prsht.h>
#include <shlobj.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

namespace brcore8 {

namespace {

// The platform's records begin with their size and the owner.
template <class Record>
Record Begin(HWND owner) {
    Record record{};
    record.lStructSize = sizeof record;
    record.hwndOwner = owner;
    return record;
}

// The program's bars end the parts of a filter; the platform's are zeros.
std::string Zeros(std::string filter) {
    std::replace(filter.begin(), filter.end(), '|', '\0');
    return filter + '\0';
}

}  // namespace

const void* FindDialogTemplate(HINSTANCE module, unsigned id, std::size_t& size) noexcept {
    size = 0;
    const HRSRC place = FindResourceA(module, MAKEINTRESOURCEA(id), MAKEINTRESOURCEA(5));
    const HGLOBAL loaded = place != nullptr ? LoadResource(module, place) : nullptr;
    if (loaded == nullptr) return nullptr;
    size = SizeofResource(module, place);
    return LockResource(loaded);
}

bool AskColor(HWND owner, COLORREF& color) {
    static COLORREF own[16] = {};
    auto record = Begin<CHOOSECOLORA>(owner);
    record.rgbResult = color;
    record.lpCustColors = own;
    record.Flags = CC_RGBINIT | CC_FULLOPEN;
    if (!ChooseColorA(&record)) return false;
    color = record.rgbResult;
    return true;
}

bool AskFont(HWND owner, LOGFONTA& font, COLORREF& color) {
    auto record = Begin<CHOOSEFONTA>(owner);
    LOGFONTA chosen = font;
    record.lpLogFont = &chosen;
    record.rgbColors = color;
    record.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_EFFECTS;
    if (!ChooseFontA(&record)) return false;
    font = chosen;
    color = record.rgbColors;
    return true;
}

bool AskFile(HWND owner, const FileQuestion& question, std::string& path) {
    const std::string filter = Zeros(question.filter);
    std::vector<char> chosen(32768);
    std::copy_n(path.begin(), std::min(path.size(), chosen.size() - 1), chosen.begin());
    auto record = Begin<OPENFILENAMEA>(owner);
    record.lpstrFilter = question.filter.empty() ? nullptr : filter.c_str();
    record.lpstrFile = chosen.data();
    record.nMaxFile = static_cast<DWORD>(chosen.size());
    record.lpstrDefExt = question.extension.empty() ? nullptr : question.extension.c_str();
    record.lpstrTitle = question.title.empty() ? nullptr : question.title.c_str();
    record.Flags = question.flags | OFN_EXPLORER | OFN_NOCHANGEDIR;
    if (!(question.isOpen ? GetOpenFileNameA(&record) : GetSaveFileNameA(&record))) return false;
    path = chosen.data();
    return true;
}

bool AskFolder(HWND owner, const std::string& title, std::string& path) {
    const bool isInitialized = SUCCEEDED(CoInitialize(nullptr));
    char name[MAX_PATH] = "";
    BROWSEINFOA record{};
    record.hwndOwner = owner;
    record.pszDisplayName = name;
    record.lpszTitle = title.c_str();
    record.ulFlags = BIF_RETURNONLYFSDIRS;
    const LPITEMIDLIST chosen = SHBrowseForFolderA(&record);
    const bool isChosen = chosen != nullptr && SHGetPathFromIDListA(chosen, name);
    if (chosen != nullptr) CoTaskMemFree(chosen);
    if (isChosen) path = name;
    if (isInitialized) CoUninitialize();
    return isChosen;
}

bool AskPrint(HWND owner, PrintAnswer& answer) {
    auto record = Begin<PRINTDLGA>(owner);
    record.Flags = PD_RETURNDC | PD_USEDEVMODECOPIES;
    record.nCopies = static_cast<WORD>(answer.copies);
    record.nFromPage = static_cast<WORD>(answer.firstPage);
    record.nToPage = static_cast<WORD>(answer.lastPage);
    record.nMinPage = 1;
    record.nMaxPage = 0xFFFF;
    if (!PrintDlgA(&record)) return false;
    const bool isAll = (record.Flags & PD_PAGENUMS) == 0;
    answer = {record.nCopies, isAll ? 0 : record.nFromPage, isAll ? 0 : record.nToPage, record.hDC};
    GlobalFree(record.hDevMode);
    GlobalFree(record.hDevNames);
    return true;
}

bool AskPageSetup(HWND owner, RECT& margins) {
    auto record = Begin<PAGESETUPDLGA>(owner);
    record.Flags = PSD_INHUNDREDTHSOFMILLIMETERS | PSD_MARGINS;
    record.rtMargin = {margins.left / 10, margins.top / 10, margins.right / 10,
                       margins.bottom / 10};
    if (!PageSetupDlgA(&record)) return false;
    margins = {record.rtMargin.left * 10, record.rtMargin.top * 10, record.rtMargin.right * 10,
               record.rtMargin.bottom * 10};
    GlobalFree(record.hDevMode);
    GlobalFree(record.hDevNames);
    return true;
}

// --- Finding ------------------------------------------------------------------------------------

struct FindState {
    FINDREPLACEA record;
    char text[256];
    char replacement[256];
};

HWND ShowFind(HWND owner, FindState*& state, const char* text, const char* replacement,
              bool isReplacing, DWORD flags) {
    auto made = std::make_unique<FindState>();
    made->record = Begin<FINDREPLACEA>(owner);
    std::strncpy(made->text, text, sizeof made->text - 1);
    std::strncpy(made->replacement, replacement, sizeof made->replacement - 1);
    made->record.lpstrFindWhat = made->text;
    made->record.wFindWhatLen = sizeof made->text;
    made->record.lpstrReplaceWith = made->replacement;
    made->record.wReplaceWithLen = sizeof made->replacement;
    made->record.Flags = flags;
    const HWND window = isReplacing ? ReplaceTextA(&made->record) : FindTextA(&made->record);
    if (window != nullptr) state = made.release();
    return window;
}

const char* WantedText(const FindState& state) noexcept {
    return state.text;
}

const char* ReplacementText(const FindState& state) noexcept {
    return state.replacement;
}

DWORD FindFlags(const FindState& state) noexcept {
    return state.record.Flags;
}

void FreeFind(FindState* state) noexcept {
    delete state;
}

// --- Sheets -------------------------------------------------------------------------------------

namespace {

INT_PTR CALLBACK NoPageProcedure(HWND, UINT, WPARAM, LPARAM) {
    return 0;
}

UINT CALLBACK SeePage(HWND, UINT message, LPPROPSHEETPAGEA page) {
    const auto* const from = reinterpret_cast<const SheetPage*>(page->lParam);
    if (message == PSPCB_CREATE) from->expect(from->param);
    return 1;
}

}  // namespace

int RunSheet(HWND owner, const char* title, const std::vector<SheetPage>& pages, int first) {
    std::vector<PROPSHEETPAGEA> records;
    // Copies, for the platform writes into templates.
    std::vector<std::vector<std::uint32_t>> templates;
    for (const SheetPage& page : pages) {
        templates.emplace_back(page.size / 4 + 2);
        std::memcpy(templates.back().data(), page.bytes, page.size);
        PROPSHEETPAGEA record{};
        record.dwSize = sizeof record;
        record.dwFlags = PSP_DLGINDIRECT | PSP_USECALLBACK | (page.title ? PSP_USETITLE : 0u);
        record.pResource = reinterpret_cast<PROPSHEETPAGE_RESOURCE>(templates.back().data());
        record.pszTitle = page.title;
        record.pfnDlgProc = &NoPageProcedure;
        record.lParam = reinterpret_cast<LPARAM>(&page);
        record.pfnCallback = &SeePage;
        records.push_back(record);
    }
    PROPSHEETHEADERA header{};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW;
    header.hwndParent = owner;
    header.pszCaption = title;
    header.nPages = static_cast<UINT>(records.size());
    header.nStartPage = static_cast<UINT>(first);
    header.ppsp = records.data();
    const INT_PTR answer = PropertySheetA(&header);
    return answer < 0 ? -1 : answer > 0;
}

}  // namespace brcore8
