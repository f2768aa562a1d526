// SFrameWnd: a top-level window of the application, its main window as a rule. Frames take part in
// the idle updates.
#ifndef BRCORE8_APP_FRAME_WND_H
#define BRCORE8_APP_FRAME_WND_H

#include <brcore8/window/wnd.h>

class BRCORE8_API SFrameWnd : public SWnd {
    SDECLARE_CREATABLE(SFrameWnd);
    SDECLARE_MESSAGE_MAP(SFrameWnd);

public:
    SFrameWnd() noexcept = default;
    // An overlapped window of "S_Window", placed by the platform. 1 or 0.
    int CreateFrame(const char* text, SWnd* owner = nullptr);

protected:
    // The frame is asked first, then the application.
    int OnCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info) override;
};

#endif
