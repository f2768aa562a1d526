// A window whose WM_SIZE handler has the form that HANDLER gives it.
#include <brcore8/window/wnd.h>

class STestSized : public SWnd {
    SDECLARE_MESSAGE_MAP(STestSized);
    HANDLER {}
};
SIMPLEMENT_MESSAGE_MAP(STestSized, SWnd, SOnSize<&STestSized::OnSize>());
