// What the X server tells, and what travels through its clipboard.

#include <xcb/xcb_icccm.h>

#include <brcore8/platform/posix/window_constants.h>
#include <brcore8/platform/posix/window_messages.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

#include "display/x_server.h"

namespace brcore8::desktop {

// --- The clipboard ------------------------------------------------------------------------------

namespace {

// A text above it goes in pieces: a request has its largest size.
constexpr std::size_t kLargestAtOnce = 128 * 1024;

}  // namespace

void XScreen::OfferText(std::optional<std::string> text) {
    const Guard guard(lock_);
    offered_ = std::move(text);
    isOwner_ = true;
    xcb_set_selection_owner(connection_, hidden_, clipboard_, XCB_CURRENT_TIME);
    xcb_flush(connection_);
}

xcb_window_t XScreen::ReadOwner() {
    const auto reply = Own(xcb_get_selection_owner_reply(
        connection_, xcb_get_selection_owner(connection_, clipboard_), nullptr));
    return reply != nullptr ? reply->owner : xcb_window_t{XCB_NONE};
}

bool XScreen::OwnsText() const noexcept {
    const Guard guard(lock_);
    return isOwner_;
}

std::string XScreen::AskForText() {
    const std::lock_guard asking(asking_);
    std::unique_lock lock(lock_);
    if (ReadOwner() == XCB_NONE) return "";
    isAsking_ = true;
    isComingInPieces_ = false;
    answer_.clear();
    xcb_convert_selection(connection_, hidden_, clipboard_, utf8_, pasted_, XCB_CURRENT_TIME);
    xcb_flush(connection_);
    // A program that says nothing for a second is not waited for.
    while (isAsking_ &&
           arrived_.wait_for(lock, std::chrono::seconds(1)) == std::cv_status::no_timeout)
        ;
    if (isAsking_) answer_.clear();
    isAsking_ = false;
    return std::move(answer_);
}

bool XScreen::ReadPasted(std::string& text, bool& isPiecewise) {
    constexpr std::uint32_t kLargest = 0x4000000 / 4;
    const auto reply = Own(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 1, hidden_, pasted_, XCB_GET_PROPERTY_TYPE_ANY, 0, kLargest),
        nullptr));
    if (reply == nullptr) return false;
    isPiecewise = reply->type == pieces_;
    if (reply->type != utf8_) return isPiecewise;
    text.assign(static_cast<const char*>(xcb_get_property_value(reply.get())),
                static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    return true;
}

void XScreen::EndAnswer(bool isGood) {
    if (!isGood) answer_.clear();
    isAsking_ = false;
    isComingInPieces_ = false;
    arrived_.notify_all();
}

void XScreen::TakeSelection(const xcb_selection_notify_event_t& event) {
    std::string text;
    bool isPiecewise = false;
    const bool isText = event.property != XCB_NONE && ReadPasted(text, isPiecewise);
    const Guard guard(lock_);
    if (!isAsking_) return;
    if (isText && isPiecewise) {
        isComingInPieces_ = true;
        arrived_.notify_all();
        return;
    }
    answer_ = std::move(text);
    EndAnswer(isText);
}

// The next piece of what we asked for is there, or the last one that we gave was taken.
void XScreen::TakeProperty(const xcb_property_notify_event_t& event) {
    if (event.window != hidden_) {
        const Guard guard(lock_);
        if (event.state != XCB_PROPERTY_DELETE) return;
        for (Transfer& each : transfers_)
            if (each.requestor == event.window && each.property == event.atom)
                return SendPiece(each);
        return;
    }
    if (event.atom != pasted_ || event.state != XCB_PROPERTY_NEW_VALUE) return;
    {
        const Guard guard(lock_);
        if (!isComingInPieces_) return;
    }
    constexpr std::size_t kMost = 0x10000000;
    std::string text;
    bool isPiecewise = false;
    const bool isText = ReadPasted(text, isPiecewise) && !isPiecewise;
    const Guard guard(lock_);
    if (!isComingInPieces_) return;
    if (!isText || text.empty() || answer_.size() + text.size() > kMost)
        return EndAnswer(isText && text.empty());
    answer_ += text;
    arrived_.notify_all();
}

// Pieces are as large as every server takes them.
void XScreen::SendPiece(Transfer& transfer) {
    constexpr std::size_t kPiece = 64 * 1024;
    const std::size_t size = std::min(transfer.text.size() - transfer.sent, kPiece);
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, transfer.requestor, transfer.property,
                        utf8_, 8, static_cast<std::uint32_t>(size),
                        transfer.text.data() + transfer.sent);
    transfer.sent += size;
    // An empty piece is the last one.
    if (size == 0) ForgetTransfers(transfer.requestor);
    xcb_flush(connection_);
}

void XScreen::BeginTransfer(xcb_window_t requestor, xcb_atom_t property) {
    constexpr std::size_t kMostTransfers = 16;
    ForgetTransfers(requestor);
    if (transfers_.size() == kMostTransfers) transfers_.erase(transfers_.begin());
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, requestor, XCB_CW_EVENT_MASK, &events);
    const auto size = static_cast<std::uint32_t>(offered_->size());
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, requestor, property, pieces_, 32, 1,
                        &size);
    transfers_.push_back({requestor, property, *offered_, 0});
}

void XScreen::ForgetTransfers(xcb_window_t requestor) {
    std::erase_if(transfers_,
                  [requestor](const Transfer& each) { return each.requestor == requestor; });
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
    const bool isText = event.target == utf8_ && offered_.has_value();
    if (event.target == targets_)
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, event.requestor, answer.property,
                            XCB_ATOM_ATOM, 32, offered_ ? 2 : 1, formats);
    else if (isText && offered_->size() > kLargestAtOnce)
        BeginTransfer(event.requestor, answer.property);
    else if (isText)
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, event.requestor, answer.property,
                            utf8_, 8, static_cast<std::uint32_t>(offered_->size()),
                            offered_->data());
    else
        answer.property = XCB_NONE;
    // Every event has this size on its way, though not each one's structure.
    char sent[32] = {};
    std::memcpy(sent, &answer, sizeof answer);
    xcb_send_event(connection_, 0, event.requestor, 0, sent);
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

namespace {

template <class Event>
const Event& As(const xcb_generic_event_t& event) noexcept {
    return reinterpret_cast<const Event&>(event);
}

}  // namespace

void XScreen::Take(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
        case XCB_EXPOSE:
            listener_.OnExpose(Known(As<xcb_expose_event_t>(event).window));
            break;
        case XCB_CONFIGURE_NOTIFY:
            TakePlace(As<xcb_configure_notify_event_t>(event));
            break;
        // Someone else's doing: our own windows are forgotten before they go.
        case XCB_DESTROY_NOTIFY: {
            const xcb_window_t gone = As<xcb_destroy_notify_event_t>(event).window;
            {
                const Guard guard(lock_);
                ForgetTransfers(gone);
            }
            listener_.OnClose(Known(gone));
            break;
        }
        case XCB_PROPERTY_NOTIFY: {
            const auto& property = As<xcb_property_notify_event_t>(event);
            property.atom == state_ ? TakeState(property.window) : TakeProperty(property);
            break;
        }
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
        case XCB_SELECTION_REQUEST:
            TakeRequest(As<xcb_selection_request_event_t>(event));
            break;
        case XCB_SELECTION_NOTIFY:
            TakeSelection(As<xcb_selection_notify_event_t>(event));
            break;
        case XCB_SELECTION_CLEAR: {
            // It may tell of a time before we took the clipboard back.
            const Guard guard(lock_);
            isOwner_ = ReadOwner() == hidden_;
            break;
        }
        default:
            keyboard_.Hear(event);
    }
}

// The manager made an icon of the window, or brought it back. Not every manager unmaps icons.
void XScreen::TakeState(xcb_window_t id) {
    const auto reply = Own(xcb_get_property_reply(
        connection_, xcb_get_property(connection_, 0, id, state_, state_, 0, 1), nullptr));
    if (reply == nullptr || xcb_get_property_value_length(reply.get()) < 4) return;
    std::uint32_t state = 0;
    std::memcpy(&state, xcb_get_property_value(reply.get()), sizeof state);
    HWND restored = nullptr;
    {
        const Guard guard(lock_);
        for (XWindow& each : windows_) {
            if (each.id != id) continue;
            const bool wasIcon = std::exchange(each.isIcon, state == XCB_ICCCM_WM_STATE_ICONIC);
            if (wasIcon && !each.isIcon && each.isMinimized) restored = each.window;
        }
    }
    if (restored != nullptr) listener_.OnRestore(restored);
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

}  // namespace brcore8::desktop
