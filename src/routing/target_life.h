#ifndef BRCORE8_ROUTING_TARGET_LIFE_H
#define BRCORE8_ROUTING_TARGET_LIFE_H

#include <brcore8/window/wnd.h>

namespace brcore8 {

// Notices that a handler ended the window that was asked, and maybe deleted its wrapper, which is
// only compared from then on. Targets without a window count as there.
class TargetLife {
public:
    explicit TargetLife(SCmdTarget* target) : target_(target) {
        if (!target->IsKindOf(&SWnd::m_SWnd)) return;
        const HWND handle = static_cast<SWnd*>(target)->GetHandle();
        if (SWnd::FromHandlePermanent(handle) == target) handle_ = handle;
    }
    bool IsOver() const {
        return handle_ != nullptr && SWnd::FromHandlePermanent(handle_) != target_;
    }

private:
    const SCmdTarget* target_;
    HWND handle_ = nullptr;
};

}  // namespace brcore8

#endif
