#include "display/x_screen.h"

#include <xcb/xcb_icccm.h>

#include <brcore8/platform/posix/window_constants.h>

#include <algorithm>
#include <cstring>
#include <thread>

#include "display/cairo_surface.h"
#include "display/x_server.h"

namespace brcore8::desktop {

namespace {

constexpr std::uint32_t kEvents =
    XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_FOCUS_CHANGE |
    XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_BUTTON_PRESS |
    XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_PROPERTY_CHANGE;
constexpr std::uint16_t kPointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

// As large as a window of the server may be.
std::uint16_t Extent(LONG begin, LONG end) noexcept {
    return static_cast<std::uint16_t>(
        std::clamp<std::int64_t>(std::int64_t{end} - begin, 1, 32767));
}

}  // namespace

// --- Opening ------------------------------------------------------------------------------------

xcb_atom_t XScreen::Atom(const char* name) {
    const auto reply = Own(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// What the user's settings say, as "Xft.dpi: 144".
unsigned XScreen::ReadDpi() {
    const auto reply = Own(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 0, screen_->root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING,
                         0, 65536),
        nullptr));
    if (reply == nullptr) return kUsualDpi;
    const std::string text(static_cast<const char*>(xcb_get_property_value(reply.get())),
                           static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    constexpr const char* kName = "Xft.dpi:";
    const std::size_t at = text.find(kName);
    if (at == std::string::npos) return kUsualDpi;
    return UsableDpi(std::strtol(text.c_str() + at + std::strlen(kName), nullptr, 10));
}

bool XScreen::Open() {
    int number = 0;
    connection_ = xcb_connect(nullptr, &number);
    if (xcb_connection_has_error(connection_) != 0) {
        xcb_disconnect(connection_);
        return false;
    }
    xcb_screen_iterator_t at = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (; at.rem > 1 && number > 0; --number)
        xcb_screen_next(&at);
    screen_ = at.data;
    // Pictures go as they are in memory: four bytes a pixel.
    const bool isPlain = screen_ != nullptr && screen_->root_depth == 24 &&
                         xcb_get_setup(connection_)->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    if (!isPlain || !keyboard_.Open(connection_)) {
        xcb_disconnect(connection_);
        return false;
    }
    protocols_ = Atom("WM_PROTOCOLS");
    deleteWindow_ = Atom("WM_DELETE_WINDOW");
    netName_ = Atom("_NET_WM_NAME");
    utf8_ = Atom("UTF8_STRING");
    clipboard_ = Atom("CLIPBOARD");
    targets_ = Atom("TARGETS");
    pasted_ = Atom("BRCORE8_PASTED");
    state_ = Atom("WM_STATE");
    changeState_ = Atom("WM_CHANGE_STATE");
    pieces_ = Atom("INCR");
    dpi_ = ReadDpi();
    context_ = xcb_generate_id(connection_);
    xcb_create_gc(connection_, context_, screen_->root, 0, nullptr);
    hidden_ = xcb_generate_id(connection_);
    const std::uint32_t hiddenEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, hidden_, screen_->root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &hiddenEvents);
    xcb_cursor_context_new(connection_, screen_, &cursors_);
    xcb_flush(connection_);
    std::thread([this] { Run(); }).detach();
    return true;
}

// --- Windows ------------------------------------------------------------------------------------

XWindow* XScreen::Find(HWND window) noexcept {
    for (XWindow& each : windows_)
        if (each.window == window) return &each;
    return nullptr;
}

HWND XScreen::Known(xcb_window_t id) noexcept {
    const Guard guard(lock_);
    for (const XWindow& each : windows_)
        if (each.id == id) return each.window;
    return nullptr;
}

XWindow& XScreen::Make(const WindowLook& look) {
    XWindow made;
    made.window = look.window;
    made.id = xcb_generate_id(connection_);
    made.rect = look.rect;
    made.isFramed = look.isFramed;
    const std::uint32_t values[] = {XCB_GRAVITY_NORTH_WEST, look.isFramed ? 0u : 1u, kEvents};
    xcb_create_window(
        connection_, XCB_COPY_FROM_PARENT, made.id, screen_->root,
        static_cast<std::int16_t>(look.rect.left), static_cast<std::int16_t>(look.rect.top),
        Extent(look.rect.left, look.rect.right), Extent(look.rect.top, look.rect.bottom), 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, screen_->root_visual,
        XCB_CW_BIT_GRAVITY | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_icccm_set_wm_protocols(connection_, made.id, protocols_, 1, &deleteWindow_);
    constexpr char kClass[] = "brcore8\0Brcore8";
    xcb_icccm_set_wm_class(connection_, made.id, sizeof kClass, kClass);
    if (const XWindow* const owner = Find(look.owner))
        xcb_icccm_set_wm_transient_for(connection_, made.id, owner->id);
    return windows_.emplace_back(std::move(made));
}

void XScreen::SetTitle(XWindow& window, const std::string& title) {
    if (window.title == title) return;
    window.title = title;
    const auto size = static_cast<std::uint32_t>(title.size());
    for (const xcb_atom_t name : {xcb_atom_t{XCB_ATOM_WM_NAME}, netName_})
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window.id, name, utf8_, 8, size,
                            title.data());
}

void XScreen::SetHints(const XWindow& window, const WindowLook& look) {
    xcb_size_hints_t hints{};
    const int width = Extent(look.rect.left, look.rect.right);
    const int height = Extent(look.rect.top, look.rect.bottom);
    xcb_icccm_size_hints_set_position(&hints, 1, look.rect.left, look.rect.top);
    xcb_icccm_size_hints_set_size(&hints, 1, width, height);
    if (!look.isSizable) {
        xcb_icccm_size_hints_set_min_size(&hints, width, height);
        xcb_icccm_size_hints_set_max_size(&hints, width, height);
    }
    xcb_icccm_set_wm_normal_hints(connection_, window.id, &hints);
}

void XScreen::Show(const WindowLook& look) {
    const Guard guard(lock_);
    XWindow* window = Find(look.window);
    if (window == nullptr) {
        if (!look.isShown) return;
        window = &Make(look);
    }
    SetTitle(*window, look.title);
    SetHints(*window, look);
    const RECT& to = look.rect;
    if (std::memcmp(&window->rect, &to, sizeof to) != 0) {
        window->rect = to;
        const std::uint32_t values[] = {static_cast<std::uint32_t>(to.left),
                                        static_cast<std::uint32_t>(to.top),
                                        Extent(to.left, to.right), Extent(to.top, to.bottom)};
        xcb_configure_window(connection_, window->id,
                             XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                 XCB_CONFIG_WINDOW_HEIGHT,
                             values);
    }
    if (look.isShown != window->isMapped) {
        window->isMapped = look.isShown;
        look.isShown ? xcb_map_window(connection_, window->id)
                     : xcb_unmap_window(connection_, window->id);
    }
    if (look.isMinimized && !window->isMinimized) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window->id;
        event.type = changeState_;
        event.data.data32[0] = XCB_ICCCM_WM_STATE_ICONIC;
        xcb_send_event(connection_, 0, screen_->root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&event));
    } else if (!look.isMinimized && window->isMinimized && look.isShown) {
        xcb_map_window(connection_, window->id);
    }
    window->isMinimized = look.isMinimized;
    xcb_flush(connection_);
}

void XScreen::Remove(HWND window) noexcept {
    const Guard guard(lock_);
    if (const XWindow* const found = Find(window)) {
        xcb_destroy_window(connection_, found->id);
        xcb_flush(connection_);
    }
    std::erase_if(windows_, [window](const XWindow& each) { return each.window == window; });
}

void XScreen::Activate(HWND window) noexcept {
    const Guard guard(lock_);
    const XWindow* const found = Find(window);
    if (found == nullptr || !found->isMapped) return;
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_, found->id, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    if (found->isFramed)
        xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, found->id, XCB_CURRENT_TIME);
    xcb_flush(connection_);
}

void XScreen::Present(HWND window, Surface& surface, bool isWhole) {
    auto& picture = static_cast<CairoSurface&>(surface);
    RECT part = picture.TakeDamage();
    const SIZE size = picture.GetSize();
    if (isWhole) part = {0, 0, size.cx, size.cy};
    if (part.left >= part.right || part.top >= part.bottom) return;
    const Guard guard(lock_);
    const XWindow* const found = Find(window);
    // A request has its largest size, in units of four bytes; its head takes some of it. Without a
    // server there is none.
    constexpr std::size_t kHead = 256;
    const std::size_t largest = std::size_t{xcb_get_maximum_request_length(connection_)} * 4;
    if (found == nullptr || largest <= kHead || xcb_connection_has_error(connection_) != 0) return;
    const std::size_t stride = static_cast<std::size_t>(part.right - part.left) * 4;
    const std::size_t room = largest - kHead;
    const LONG most = static_cast<LONG>(std::max<std::size_t>(room / stride, 1));
    for (LONG top = part.top; top < part.bottom; top += most) {
        const LONG count = std::min(most, part.bottom - top);
        rows_.resize(stride * static_cast<std::size_t>(count));
        for (LONG row = 0; row < count; ++row)
            std::memcpy(rows_.data() + stride * static_cast<std::size_t>(row),
                        picture.Pixels() + std::ptrdiff_t{picture.Stride()} * (top + row) +
                            std::ptrdiff_t{4} * part.left,
                        stride);
        xcb_put_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, found->id, context_,
                      static_cast<std::uint16_t>(part.right - part.left),
                      static_cast<std::uint16_t>(count), static_cast<std::int16_t>(part.left),
                      static_cast<std::int16_t>(top), 0, 24,
                      static_cast<std::uint32_t>(rows_.size()), rows_.data());
    }
    xcb_flush(connection_);
}

// --- The mouse ----------------------------------------------------------------------------------

xcb_cursor_t XScreen::CursorOf(unsigned number) {
    struct Row {
        unsigned number;
        const char* name;
    };
    static constexpr Row kRows[] = {{32512, "left_ptr"},
                                    {32513, "xterm"},
                                    {32514, "watch"},
                                    {32515, "crosshair"},
                                    {32642, "top_left_corner"},
                                    {32643, "top_right_corner"},
                                    {32644, "sb_h_double_arrow"},
                                    {32645, "sb_v_double_arrow"},
                                    {32646, "fleur"},
                                    {32648, "crossed_circle"},
                                    {32649, "hand2"}};
    const auto known = loaded_.find(number);
    if (known != loaded_.end()) return known->second;
    const char* name = "left_ptr";
    for (const Row& row : kRows)
        if (row.number == number) name = row.name;
    return loaded_[number] = cursors_ != nullptr ? xcb_cursor_load_cursor(cursors_, name) : 0;
}

void XScreen::SetCursor(unsigned number) noexcept {
    const Guard guard(lock_);
    cursor_ = CursorOf(number);
    for (const XWindow& each : windows_)
        xcb_change_window_attributes(connection_, each.id, XCB_CW_CURSOR, &cursor_);
    xcb_flush(connection_);
}

void XScreen::SetPointer(POINT at) noexcept {
    xcb_warp_pointer(connection_, XCB_NONE, screen_->root, 0, 0, 0, 0,
                     static_cast<std::int16_t>(at.x), static_cast<std::int16_t>(at.y));
    xcb_flush(connection_);
}

void XScreen::Capture(HWND window) noexcept {
    const Guard guard(lock_);
    // Any window of ours may hold it: the desktop knows whose the events are.
    const auto mapped =
        std::find_if(windows_.begin(), windows_.end(), [](const XWindow& w) { return w.isMapped; });
    const XWindow* const own = Find(window);
    if (window == nullptr || mapped == windows_.end())
        xcb_ungrab_pointer(connection_, XCB_CURRENT_TIME);
    else
        // An answer that nobody reads is kept for ever.
        xcb_discard_reply(connection_, xcb_grab_pointer_unchecked(
                                           connection_, 1, own != nullptr ? own->id : mapped->id,
                                           kPointerEvents, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                           XCB_NONE, XCB_NONE, XCB_CURRENT_TIME)
                                           .sequence);
    xcb_flush(connection_);
}

Screen* OpenXScreen(ScreenListener& listener) noexcept {
    try {
        auto screen = std::make_unique<XScreen>(listener);
        return screen->Open() ? screen.release() : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

}  // namespace brcore8::desktop
