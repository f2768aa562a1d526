#include "manager.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

template <class Reply>
std::unique_ptr<Reply, Free> Own(Reply* reply) {
    return std::unique_ptr<Reply, Free>(reply);
}

template <class Event>
const Event& As(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

constexpr std::chrono::seconds kPatience(5);
constexpr std::uint32_t kNormal = 1, kIconic = 3;

}  // namespace

Manager::Manager(const char* dpi) : connection_(xcb_connect(nullptr, nullptr)) {
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    utf8_ = Atom("UTF8_STRING");
    clipboard_ = Atom("CLIPBOARD");
    incr_ = Atom("INCR");
    pasted_ = Atom("PASTED");
    stop_ = Atom("STOP");
    state_ = Atom("WM_STATE");
    changeState_ = Atom("WM_CHANGE_STATE");
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, screen_->root,
                        XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(std::strlen(dpi)), dpi);
    const std::uint32_t events =
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    const auto refused = Own(xcb_request_check(
        connection_, xcb_change_window_attributes_checked(connection_, screen_->root,
                                                          XCB_CW_EVENT_MASK, &events)));
    isManager_ = refused == nullptr;
    own_ = xcb_generate_id(connection_);
    const std::uint32_t own = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, own_, screen_->root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &own);
    xcb_flush(connection_);
    thread_ = std::thread([this] { Run(); });
}

Manager::~Manager() {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = own_;
    event.type = stop_;
    xcb_send_event(connection_, 0, own_, 0, reinterpret_cast<const char*>(&event));
    xcb_flush(connection_);
    thread_.join();
    xcb_disconnect(connection_);
}

xcb_atom_t Manager::Atom(const char* name) {
    const auto reply = Own(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void Manager::Run() {
    for (;;) {
        const auto event = Own(xcb_wait_for_event(connection_));
        if (event == nullptr) return;
        const bool isMessage = (event->response_type & 0x7F) == XCB_CLIENT_MESSAGE;
        if (isMessage && As<xcb_client_message_event_t>(*event).type == stop_) return;
        const std::lock_guard guard(lock_);
        Take(*event);
        xcb_flush(connection_);
        changed_.notify_all();
    }
}

void Manager::Take(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
        case XCB_MAP_REQUEST:
            Frame(As<xcb_map_request_event_t>(event).window);
            break;
        case XCB_CONFIGURE_REQUEST:
            Configure(As<xcb_configure_request_event_t>(event));
            break;
        case XCB_DESTROY_NOTIFY:
        case XCB_UNMAP_NOTIFY: {
            const xcb_window_t gone = As<xcb_unmap_notify_event_t>(event).window;
            if (const xcb_window_t frame = FrameOf(gone); frame != gone)
                xcb_unmap_window(connection_, frame);
            std::erase_if(framed_, [=](const Framed& each) { return each.client == gone; });
            break;
        }
        case XCB_CLIENT_MESSAGE:
            if (As<xcb_client_message_event_t>(event).type != changeState_) break;
            ++iconRequests_;
            SetState(As<xcb_client_message_event_t>(event).window, kIconic);
            break;
        case XCB_SELECTION_REQUEST:
            Serve(As<xcb_selection_request_event_t>(event));
            break;
        case XCB_SELECTION_NOTIFY:
            if (As<xcb_selection_notify_event_t>(event).property == XCB_NONE)
                isAsking_ = false;
            else
                Receive(true);
            break;
        case XCB_PROPERTY_NOTIFY: {
            const auto& property = As<xcb_property_notify_event_t>(event);
            if (property.window == own_ && property.state == XCB_PROPERTY_NEW_VALUE && isComing_)
                Receive(false);
            if (property.window == requestor_ && property.atom == property_ &&
                property.state == XCB_PROPERTY_DELETE)
                ServePiece();
            break;
        }
        default:
            break;
    }
}

// --- Windows ------------------------------------------------------------------------------------

xcb_window_t Manager::FrameOf(xcb_window_t client) {
    for (const Framed& each : framed_)
        if (each.client == client) return each.frame;
    return client;
}

void Manager::Frame(xcb_window_t client) {
    SetState(client, kNormal);
    if (FrameOf(client) != client) {
        xcb_map_window(connection_, client);
        return;
    }
    const auto place =
        Own(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, client), nullptr));
    if (place == nullptr) return;
    const xcb_window_t frame = xcb_generate_id(connection_);
    const std::uint32_t events =
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, frame, screen_->root, place->x, place->y,
                      place->width, static_cast<std::uint16_t>(place->height + kCaption), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen_->root_visual, XCB_CW_EVENT_MASK,
                      &events);
    xcb_reparent_window(connection_, client, frame, 0, kCaption);
    xcb_map_window(connection_, frame);
    xcb_map_window(connection_, client);
    framed_.push_back({client, frame});
    TellPlace(client);
    xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, client, XCB_CURRENT_TIME);
}

// It stays mapped as an icon too, as managers do that keep its picture.
void Manager::SetState(xcb_window_t client, std::uint32_t state) {
    const std::uint32_t values[] = {state, XCB_NONE};
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, client, state_, state_, 32, 2, values);
}

// As the conventions want it: a client whose frame moves is told of its place on the screen.
void Manager::TellPlace(xcb_window_t client) {
    const auto size =
        Own(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, client), nullptr));
    const auto place = Own(xcb_translate_coordinates_reply(
        connection_, xcb_translate_coordinates(connection_, client, screen_->root, 0, 0), nullptr));
    if (size == nullptr || place == nullptr) return;
    xcb_configure_notify_event_t event{};
    event.response_type = XCB_CONFIGURE_NOTIFY;
    event.event = event.window = client;
    event.x = place->dst_x;
    event.y = place->dst_y;
    event.width = size->width;
    event.height = size->height;
    xcb_send_event(connection_, 0, client, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
}

void Manager::Configure(const xcb_configure_request_event_t& event) {
    const xcb_window_t frame = FrameOf(event.window);
    const bool isFramed = frame != event.window;
    const int caption = isFramed ? kCaption : 0;
    const std::uint16_t wanted = event.value_mask;
    if ((wanted & XCB_CONFIG_WINDOW_STACK_MODE) != 0) {
        const std::uint32_t mode = event.stack_mode;
        xcb_configure_window(connection_, frame, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
    }
    if ((wanted & (XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_WIDTH)) == 0) return;
    const std::uint32_t outer[] = {static_cast<std::uint32_t>(event.x),
                                   static_cast<std::uint32_t>(event.y - caption), event.width,
                                   static_cast<std::uint32_t>(event.height + caption)};
    constexpr std::uint16_t kAll = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y |
                                   XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    xcb_configure_window(connection_, frame, kAll, outer);
    if (!isFramed) return;
    const std::uint32_t inner[] = {event.width, event.height};
    xcb_configure_window(connection_, event.window,
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, inner);
    TellPlace(event.window);
}

xcb_window_t Manager::Client() {
    std::unique_lock guard(lock_);
    const auto isNew = [this] { return !framed_.empty() && framed_.back().client != answered_; };
    if (!changed_.wait_for(guard, kPatience, isNew)) return 0;
    return answered_ = framed_.back().client;
}

void Manager::Close(xcb_window_t client) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = client;
    event.type = Atom("WM_PROTOCOLS");
    event.data.data32[0] = Atom("WM_DELETE_WINDOW");
    xcb_send_event(connection_, 0, client, 0, reinterpret_cast<const char*>(&event));
    xcb_flush(connection_);
}

void Manager::Place(xcb_window_t client, int x, int y, int width, int height) {
    const std::lock_guard guard(lock_);
    xcb_configure_request_event_t event{};
    event.window = client;
    event.x = static_cast<std::int16_t>(x);
    event.y = static_cast<std::int16_t>(y + kCaption);
    event.width = static_cast<std::uint16_t>(width);
    event.height = static_cast<std::uint16_t>(height);
    event.value_mask = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_WIDTH;
    Configure(event);
    xcb_flush(connection_);
}

std::string Manager::TitleOf(xcb_window_t client) {
    const auto reply = Own(xcb_get_property_reply(
        connection_, xcb_get_property(connection_, 0, client, Atom("_NET_WM_NAME"), utf8_, 0, 1000),
        nullptr));
    if (reply == nullptr) return "";
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

int Manager::IconRequests() {
    const std::lock_guard guard(lock_);
    return iconRequests_;
}

void Manager::Restore(xcb_window_t client) {
    const std::lock_guard guard(lock_);
    SetState(client, kNormal);
    xcb_flush(connection_);
}

bool Manager::CanGrabPointer() {
    const auto reply = Own(xcb_grab_pointer_reply(
        connection_,
        xcb_grab_pointer(connection_, 0, screen_->root, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                         XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
        nullptr));
    xcb_ungrab_pointer(connection_, XCB_CURRENT_TIME);
    xcb_flush(connection_);
    return reply != nullptr && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

// --- The user -----------------------------------------------------------------------------------

void Manager::Move(int x, int y) {
    xcb_test_fake_input(connection_, XCB_MOTION_NOTIFY, 0, 0, screen_->root,
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    xcb_flush(connection_);
}

void Manager::Button(int button, bool isDown) {
    xcb_test_fake_input(connection_, isDown ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE,
                        static_cast<std::uint8_t>(button), 0, screen_->root, 0, 0, 0);
    xcb_flush(connection_);
}

xcb_keycode_t Manager::CodeOf(xcb_keysym_t symbol) {
    const xcb_setup_t* const setup = xcb_get_setup(connection_);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const auto map = Own(xcb_get_keyboard_mapping_reply(
        connection_,
        xcb_get_keyboard_mapping(connection_, setup->min_keycode, static_cast<std::uint8_t>(count)),
        nullptr));
    if (map == nullptr) return 0;
    const xcb_keysym_t* const symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int i = 0; i < count; ++i)
        if (symbols[i * map->keysyms_per_keycode] == symbol)
            return static_cast<xcb_keycode_t>(setup->min_keycode + i);
    return 0;
}

bool Manager::Key(xcb_keysym_t symbol, bool isDown) {
    const xcb_keycode_t code = CodeOf(symbol);
    if (code == 0) return false;
    xcb_test_fake_input(connection_, isDown ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, 0,
                        screen_->root, 0, 0, 0);
    xcb_flush(connection_);
    return true;
}

bool Manager::Remap(xcb_keysym_t from, xcb_keysym_t to) {
    const xcb_keycode_t code = CodeOf(from);
    if (code == 0) return false;
    const xcb_keysym_t symbols[] = {to, to};
    xcb_change_keyboard_mapping(connection_, 1, code, 2, symbols);
    xcb_flush(connection_);
    return true;
}

// --- The clipboard ------------------------------------------------------------------------------

void Manager::Offer(std::string text, int piece) {
    const std::lock_guard guard(lock_);
    offered_ = std::move(text);
    piece_ = piece;
    xcb_set_selection_owner(connection_, own_, clipboard_, XCB_CURRENT_TIME);
    // Done when the server has it.
    Own(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void Manager::Serve(const xcb_selection_request_event_t& event) {
    if (piece_ < 0) return;
    if (piece_ > 0) {
        requestor_ = event.requestor;
        property_ = event.property;
        sent_ = 0;
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection_, requestor_, XCB_CW_EVENT_MASK, &events);
        const auto size = static_cast<std::uint32_t>(offered_.size());
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, event.requestor, event.property,
                            incr_, 32, 1, &size);
    } else {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, event.requestor, event.property,
                            utf8_, 8, static_cast<std::uint32_t>(offered_.size()), offered_.data());
    }
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.requestor = event.requestor;
    answer.selection = event.selection;
    answer.target = event.target;
    answer.property = event.property;
    xcb_send_event(connection_, 0, event.requestor, 0, reinterpret_cast<const char*>(&answer));
}

void Manager::ServePiece() {
    const std::size_t size = std::min(static_cast<std::size_t>(piece_), offered_.size() - sent_);
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, requestor_, property_, utf8_, 8,
                        static_cast<std::uint32_t>(size), offered_.data() + sent_);
    sent_ += size;
    if (size == 0) requestor_ = 0;
}

std::string Manager::Ask(int* pieces) {
    std::unique_lock guard(lock_);
    isAsking_ = true;
    isComing_ = false;
    pieces_ = 0;
    answer_.clear();
    xcb_convert_selection(connection_, own_, clipboard_, utf8_, pasted_, XCB_CURRENT_TIME);
    xcb_flush(connection_);
    changed_.wait_for(guard, kPatience, [this] { return !isAsking_; });
    *pieces = pieces_;
    return answer_;
}

void Manager::Receive(bool isFirst) {
    const auto reply = Own(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 1, own_, pasted_, XCB_GET_PROPERTY_TYPE_ANY, 0, 0x4000000),
        nullptr));
    if (reply == nullptr) return;
    if (isFirst && reply->type == incr_) {
        isComing_ = true;
        return;
    }
    const int size = xcb_get_property_value_length(reply.get());
    answer_.append(static_cast<const char*>(xcb_get_property_value(reply.get())),
                   static_cast<std::size_t>(size));
    pieces_ += size > 0;
    if (isFirst || size == 0) isAsking_ = isComing_ = false;
}
