#include "display/x_screen.h"
namespace brcore8::desktop {
Screen* OpenXScreen(ScreenListener&) noexcept {
    return nullptr;
}
}  // namespace brcore8::desktop
