// The dialogs that the platform brings along. Where it brings none, each answers as if it had been
// cancelled, with ERROR_CALL_NOT_IMPLEMENTED.
#ifndef BRCORE8_PLATFORM_COMMON_DIALOGS_H
#define BRCORE8_PLATFORM_COMMON_DIALOGS_H

#include <brcore8/platform/font_info.h>
#include <brcore8/platform/windows.h>

#include <cstddef>
#include <string>
#include <vector>

namespace brcore8 {

// A dialog template in a module's resources, which owns it; null when it has none of that number.
const void* FindDialogTemplate(HINSTANCE module, unsigned id, std::size_t& size) noexcept;

// Each: whether the user chose.
bool AskColor(HWND owner, COLORREF& color);
bool AskFont(HWND owner, LOGFONTA& font, COLORREF& color);

struct FileQuestion {
    bool isOpen = true;
    std::string filter;  // "Texts|*.txt|All|*.*"
    std::string extension;
    std::string title;
    DWORD flags = 0;
};
// `path` begins with what is proposed.
bool AskFile(HWND owner, const FileQuestion& question, std::string& path);
bool AskFolder(HWND owner, const std::string& title, std::string& path);

struct PrintAnswer {
    int copies = 1;
    int firstPage = 0, lastPage = 0;  // 0: all
    HDC context = nullptr;            // of the printer, the caller's
};
bool AskPrint(HWND owner, PrintAnswer& answer);
// The margins in thousandths of a millimetre.
bool AskPageSetup(HWND owner, RECT& margins);

// A dialog that works beside its owner; `state` lives as long as it. Null when there is none.
struct FindState;
HWND ShowFind(HWND owner, FindState*& state, const char* text, const char* replacement,
              bool isReplacing, DWORD flags);
// What the owner's message said: the state's texts and FR_ flags.
const char* WantedText(const FindState& state) noexcept;
const char* ReplacementText(const FindState& state) noexcept;
DWORD FindFlags(const FindState& state) noexcept;
void FreeFind(FindState* state) noexcept;

struct SheetPage {
    const void* bytes;
    std::size_t size;
    const char* title;  // null: the template's own
    void* param;        // for `expect`, which is called before the page's window is made
    void (*expect)(void* param);
};
// 1 for OK, 0 for Cancel, -1 when it cannot be shown.
int RunSheet(HWND owner, const char* title, const std::vector<SheetPage>& pages, int first);

}  // namespace brcore8

#endif
