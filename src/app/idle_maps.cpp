#include "app/idle_maps.h"

#include <brcore8/graphics/dc.h>
#include <brcore8/graphics/font_old.h>
#include <brcore8/graphics/image_list.h>
#include <brcore8/window/menu.h>
#include <brcore8/window/wnd.h>

void brcore8::DeleteTempMaps() {
    // A destructor that runs an idle pass of its own finds the maps held.
    if (SHandleMapLock::GetCount() > 0) return;
    SWnd::DeleteTempMap();
    SImageList::DeleteTempMap();
    SMenu::DeleteTempMap();
    SDC::DeleteTempMap();
    SGdiObject::DeleteTempMap();
    SFontOld::DeleteTempMap();
}
