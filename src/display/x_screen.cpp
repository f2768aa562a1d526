#include "display/x_screen.h"

#include <xcb/xcb.h>
#include <xcb/xcb_cursor.h>
#include <xcb/xcb_icccm.h>

#include <brcore8/platform/posix/window_constants.h>
#include <brcore8/platform/posix/window_messages.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "display/cairo_surface.h"
#include "display/x_keyboard.h"

namespace brcore8::desktop {

namespace {

template <class Reply>
struct Free {
    void operator()(Reply* reply) const noexcept { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free<Reply>>;

template <class Reply>
Owned<Reply> Own(Reply* reply) noexcept {
    return Owned<Reply>(reply);
}

struct XWindow {
    HWND window = nullptr;
    xcb_window_t id = 0;
    RECT rect{};
    std::string title;
    bool isMapped = false;
    bool isFramed = false;
    bool isMinimized = false;
};

constexpr std::uint32_t kEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                  XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_KEY_PRESS |
                                  XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_BUTTON_PRESS |
                                  XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
constexpr std::uint16_t kPointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

// Calls of the desktop hold its lock when they take this one's; the thread of the events holds
// neither when it tells the desktop.
class XScreen final : public Screen {
public:
    explicit XScreen(ScreenListener& listener) : listener_(listener) {}

    bool Open();

    SIZE GetSize() const noexcept override {
        return {screen_->width_in_pixels, screen_->height_in_pixels};
    }
    unsigned GetDpi() const noexcept override { return dpi_; }
    void Show(const WindowLook& look) override;
    void Remove(HWND window) noexcept override;
    void Activate(HWND window) noexcept override;
    void Present(HWND window, Surface& surface, bool isWhole) override;
    void SetCursor(unsigned number) noexcept override;
    void SetPointer(POINT at) noexcept override;
    void Capture(HWND window) noexcept override;
    void OfferText(std::string text) override;
    bool OwnsText() const noexcept override;
    std::string AskForText() override;

private:
    using Guard = std::lock_guard<std::recursive_mutex>;

    xcb_atom_t Atom(const char* name);
    unsigned ReadDpi();
    XWindow* Find(HWND window) noexcept;
    HWND Known(xcb_window_t id) noexcept;
    XWindow& Make(const WindowLook& look);
    void SetTitle(XWindow& window, const std::string& title);
    void SetHints(const XWindow& window, const WindowLook& look);
    xcb_cursor_t CursorOf(unsigned number);

    void Run();
    void Take(const xcb_generic_event_t& event);
    void TakePlace(const xcb_configure_notify_event_t& event);
    void TakeButton(const xcb_button_press_event_t& event, bool isDown);
    void TakeKey(const xcb_key_press_event_t& event, bool isDown);
    void TakeRequest(const xcb_selection_request_event_t& event);
    void TakeSelection(const xcb_selection_notify_event_t& event);

    ScreenListener& listener_;
    mutable std::recursive_mutex lock_;
    xcb_connection_t* connection_ = nullptr;
    xcb_screen_t* screen_ = nullptr;
    xcb_gcontext_t context_ = 0;
    xcb_cursor_context_t* cursors_ = nullptr;
    std::map<unsigned, xcb_cursor_t> loaded_;
    xcb_cursor_t cursor_ = 0;
    unsigned dpi_ = 96;
    XKeyboard keyboard_;
    std::vector<XWindow> windows_;
    std::vector<unsigned char> rows_;

    xcb_atom_t protocols_ = 0, deleteWindow_ = 0, netName_ = 0, utf8_ = 0;
    xcb_atom_t clipboard_ = 0, targets_ = 0, pasted_ = 0, changeState_ = 0;
    xcb_window_t hidden_ = 0;  // owns the clipboard
    std::string offered_;
    bool isOwner_ = false;
    std::condition_variable_any arrived_;
    bool isAsking_ = false;
    std::string answer_;
};

// --- Opening ------------------------------------------------------------------------------------

xcb_atom_t XScreen::Atom(const char* name) {
    const auto reply = Own(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// What the user's settings say, as "Xft.dpi: 144"; else 96.
unsigned XScreen::ReadDpi() {
    const auto reply = Own(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 0, screen_->root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING,
                         0, 65536),
        nullptr));
    if (reply == nullptr) return 96;
    const std::string text(static_cast<const char*>(xcb_get_property_value(reply.get())),
                           static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    constexpr const char* kName = "Xft.dpi:";
    const std::size_t at = text.find(kName);
    if (at == std::string::npos) return 96;
    const long dpi = std::strtol(text.c_str() + at + std::strlen(kName), nullptr, 10);
    return dpi >= 48 && dpi <= 960 ? static_cast<unsigned>(dpi) : 96;
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
    changeState_ = Atom("WM_CHANGE_STATE");
    dpi_ = ReadDpi();
    context_ = xcb_generate_id(connection_);
    xcb_create_gc(connection_, context_, screen_->root, 0, nullptr);
    hidden_ = xcb_generate_id(connection_);
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, hidden_, screen_->root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
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

std::uint16_t Extent(LONG size) noexcept {
    return static_cast<std::uint16_t>(std::clamp<LONG>(size, 1, 32767));
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
        Extent(look.rect.right - look.rect.left), Extent(look.rect.bottom - look.rect.top), 0,
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
    const int width = Extent(look.rect.right - look.rect.left);
    const int height = Extent(look.rect.bottom - look.rect.top);
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
                                        Extent(to.right - to.left), Extent(to.bottom - to.top)};
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
    if (found == nullptr) return;
    const std::size_t stride = static_cast<std::size_t>(part.right - part.left) * 4;
    // A request has its largest size, in units of four bytes; its head takes some of it.
    const std::size_t room = std::size_t{xcb_get_maximum_request_length(connection_)} * 4 - 256;
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
        xcb_grab_pointer_unchecked(connection_, 1, own != nullptr ? own->id : mapped->id,
                                   kPointerEvents, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                   XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    xcb_flush(connection_);
}

// --- The clipboard ------------------------------------------------------------------------------

void XScreen::OfferText(std::string text) {
    const Guard guard(lock_);
    offered_ = std::move(text);
    isOwner_ = true;
    xcb_set_selection_owner(connection_, hidden_, clipboard_, XCB_CURRENT_TIME);
    xcb_flush(connection_);
}

bool XScreen::OwnsText() const noexcept {
    const Guard guard(lock_);
    return isOwner_;
}

std::string XScreen::AskForText() {
    std::unique_lock lock(lock_);
    const auto owner = Own(xcb_get_selection_owner_reply(
        connection_, xcb_get_selection_owner(connection_, clipboard_), nullptr));
    if (owner == nullptr || owner->owner == XCB_NONE) return "";
    isAsking_ = true;
    answer_.clear();
    xcb_convert_selection(connection_, hidden_, clipboard_, utf8_, pasted_, XCB_CURRENT_TIME);
    xcb_flush(connection_);
    arrived_.wait_for(lock, std::chrono::seconds(1), [this] { return !isAsking_; });
    isAsking_ = false;
    return std::move(answer_);
}

void XScreen::TakeSelection(const xcb_selection_notify_event_t& event) {
    const auto reply =
        event.property != XCB_NONE
            ? Own(xcb_get_property_reply(
                  connection_,
                  xcb_get_property(connection_, 1, hidden_, pasted_, utf8_, 0, 0x1000000), nullptr))
            : nullptr;
    const Guard guard(lock_);
    if (reply != nullptr)
        answer_.assign(static_cast<const char*>(xcb_get_property_value(reply.get())),
                       static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    isAsking_ = false;
    arrived_.notify_all();
}

void XScreen::TakeRequest(const xcb_selection_request_event_t& event) {
    const Guard guard(lock_);
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.time = event.time;
    answer.requestor = event.requestor;
    answer.selection = event.selection;
    answer.target = event.target;
    answer.property = event.property != XCB_NONE ? event.property : event.target;
    const xcb_atom_t formats[] = {targets_, utf8_};
    if (event.target == targets_)
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, event.requestor, answer.property,
                            XCB_ATOM_ATOM, 32, 2, formats);
    else if (event.target == utf8_)
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, event.requestor, answer.property,
                            utf8_, 8, static_cast<std::uint32_t>(offered_.size()), offered_.data());
    else
        answer.property = XCB_NONE;
    xcb_send_event(connection_, 0, event.requestor, 0, reinterpret_cast<const char*>(&answer));
    xcb_flush(connection_);
}

// --- Events -------------------------------------------------------------------------------------

void XScreen::Run() {
    while (xcb_generic_event_t* const event = xcb_wait_for_event(connection_)) {
        try {
            Take(*event);
        } catch (const std::exception&) {
            // Without memory an event is lost; the next may find some.
        }
        std::free(event);
    }
    // The server is gone, and nobody can use the windows any more.
    std::vector<HWND> left;
    {
        const Guard guard(lock_);
        for (const XWindow& each : windows_)
            left.push_back(each.window);
    }
    for (const HWND window : left)
        listener_.OnClose(window);
}

template <class Event>
const Event& As(const xcb_generic_event_t& event) noexcept {
    return reinterpret_cast<const Event&>(event);
}

void XScreen::Take(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
        case XCB_EXPOSE:
            listener_.OnExpose(Known(As<xcb_expose_event_t>(event).window));
            break;
        case XCB_CONFIGURE_NOTIFY:
            TakePlace(As<xcb_configure_notify_event_t>(event));
            break;
        // Someone else's doing: our own windows are forgotten before they go.
        case XCB_DESTROY_NOTIFY:
            listener_.OnClose(Known(As<xcb_destroy_notify_event_t>(event).window));
            break;
        case XCB_CLIENT_MESSAGE: {
            const auto& message = As<xcb_client_message_event_t>(event);
            if (message.data.data32[0] == deleteWindow_) listener_.OnClose(Known(message.window));
            break;
        }
        case XCB_FOCUS_IN:
        case XCB_FOCUS_OUT: {
            const auto& focus = As<xcb_focus_in_event_t>(event);
            const bool isReal = (focus.mode == XCB_NOTIFY_MODE_NORMAL ||
                                 focus.mode == XCB_NOTIFY_MODE_WHILE_GRABBED) &&
                                focus.detail != XCB_NOTIFY_DETAIL_POINTER;
            if (isReal)
                listener_.OnActivate(Known(focus.event),
                                     (event.response_type & 0x7F) == XCB_FOCUS_IN);
            break;
        }
        case XCB_BUTTON_PRESS:
        case XCB_BUTTON_RELEASE:
            TakeButton(As<xcb_button_press_event_t>(event),
                       (event.response_type & 0x7F) == XCB_BUTTON_PRESS);
            break;
        case XCB_MOTION_NOTIFY: {
            const auto& motion = As<xcb_motion_notify_event_t>(event);
            Input input;
            input.message = WM_MOUSEMOVE;
            input.at = {motion.root_x, motion.root_y};
            input.window = Known(motion.event);
            listener_.OnInput(input);
            break;
        }
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE:
            TakeKey(As<xcb_key_press_event_t>(event),
                    (event.response_type & 0x7F) == XCB_KEY_PRESS);
            break;
        case XCB_MAPPING_NOTIFY:
            keyboard_.Reload();
            break;
        case XCB_SELECTION_REQUEST:
            TakeRequest(As<xcb_selection_request_event_t>(event));
            break;
        case XCB_SELECTION_NOTIFY:
            TakeSelection(As<xcb_selection_notify_event_t>(event));
            break;
        case XCB_SELECTION_CLEAR: {
            const Guard guard(lock_);
            isOwner_ = false;
            break;
        }
        default:
            break;
    }
}

// Places are told within the manager's frame; on the screen they are asked for.
void XScreen::TakePlace(const xcb_configure_notify_event_t& event) {
    const auto place = Own(xcb_translate_coordinates_reply(
        connection_, xcb_translate_coordinates(connection_, event.window, screen_->root, 0, 0),
        nullptr));
    if (place == nullptr) return;
    const RECT rect{place->dst_x, place->dst_y, place->dst_x + event.width,
                    place->dst_y + event.height};
    HWND window = nullptr;
    {
        const Guard guard(lock_);
        for (XWindow& each : windows_) {
            if (each.id != event.window || std::memcmp(&each.rect, &rect, sizeof rect) == 0)
                continue;
            each.rect = rect;
            window = each.window;
        }
    }
    if (window != nullptr) listener_.OnPlace(window, rect);
}

void XScreen::TakeButton(const xcb_button_press_event_t& event, bool isDown) {
    struct Row {
        int button;
        UINT down, up;
        BYTE key;
        int wheel;
    };
    static constexpr Row kRows[] = {{1, WM_LBUTTONDOWN, WM_LBUTTONUP, VK_LBUTTON, 0},
                                    {2, WM_MBUTTONDOWN, WM_MBUTTONUP, VK_MBUTTON, 0},
                                    {3, WM_RBUTTONDOWN, WM_RBUTTONUP, VK_RBUTTON, 0},
                                    {4, WM_MOUSEWHEEL, 0, 0, WHEEL_DELTA},
                                    {5, WM_MOUSEWHEEL, 0, 0, -WHEEL_DELTA}};
    for (const Row& row : kRows) {
        if (row.button != event.detail) continue;
        Input input;
        input.message = isDown ? row.down : row.up;
        input.key = row.key;
        input.wheel = row.wheel;
        input.at = {event.root_x, event.root_y};
        input.window = Known(event.event);
        if (input.message != 0) listener_.OnInput(input);
    }
}

void XScreen::TakeKey(const xcb_key_press_event_t& event, bool isDown) {
    const Input input = keyboard_.InputOf(event, isDown);
    if (input.key != 0) listener_.OnInput(input);
}

}  // namespace

Screen* OpenXScreen(ScreenListener& listener) noexcept {
    try {
        auto screen = std::make_unique<XScreen>(listener);
        return screen->Open() ? screen.release() : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

}  // namespace brcore8::desktop
