#include "platform/posix/desktop/controls/classes.h"

#include <brcore8/platform/posix/control_calls.h>
#include <brcore8/platform/posix/dialog_calls.h>

#include "platform/posix/desktop/controls/control.h"
#include "platform/posix/desktop/menus/menu_tracking.h"

namespace brcore8::desktop {

std::vector<std::unique_ptr<WindowClass>> SystemClasses() {
    constexpr UINT kControl = CS_GLOBALCLASS | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    const struct {
        const char* name;
        WNDPROC procedure;
        const char* cursor;
    } kinds[] = {
        {WC_STATICA, &StaticProcedure, IDC_ARROW},
        {WC_BUTTONA, &ButtonProcedure, IDC_ARROW},
        {WC_EDITA, &EditProcedure, IDC_IBEAM},
        {WC_SCROLLBARA, &ScrollProcedure, IDC_ARROW},
        {STATUSCLASSNAMEA, &StatusBarProcedure, IDC_ARROW},
        {PROGRESS_CLASSA, &ProgressProcedure, IDC_ARROW},
        {"#32768", &PopupMenuProcedure, IDC_ARROW},
        {"#32770", &DefDlgProcA, IDC_ARROW},
    };
    std::vector<std::unique_ptr<WindowClass>> classes;
    ATOM atom = 0xBF00;  // below those of programs
    for (const auto& kind : kinds) {
        auto made = std::make_unique<WindowClass>();
        made->name = kind.name;
        made->isSystem = true;
        made->atom = ++atom;
        made->info = {};
        made->info.cbSize = sizeof made->info;
        made->info.style = kControl;
        made->info.lpfnWndProc = kind.procedure;
        if (kind.procedure == &DefDlgProcA) made->info.cbWndExtra = DLGWINDOWEXTRA;
        made->info.hCursor = LoadCursorA(nullptr, kind.cursor);
        made->info.lpszClassName = made->name.c_str();
        classes.push_back(std::move(made));
    }
    return classes;
}

}  // namespace brcore8::desktop

BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* families) noexcept {
    constexpr DWORD kThere = ICC_BAR_CLASSES | ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES;
    if (families == nullptr || families->dwSize != sizeof *families) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if ((families->dwICC & ~kThere) == 0) return 1;
    SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return 0;
}
