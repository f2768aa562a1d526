// How windows that hold others make them.
#ifndef BRCORE8_SRC_VIEWS_PANE_H
#define BRCORE8_SRC_VIEWS_PANE_H

#include <brcore8/window/wnd.h>

#include <memory>

namespace brcore8 {

// A visible child of the class, or null: where it is no creatable window's, or the platform
// refuses.
std::unique_ptr<SWnd> CreatePaneOf(const SClassInfo* info, SWnd* parent, const RECT& place,
                                   UINT id);

}  // namespace brcore8

#endif
