// What the parts of the X server's screen share.
#ifndef BRCORE8_SRC_DISPLAY_X_SERVER_H
#define BRCORE8_SRC_DISPLAY_X_SERVER_H

#include <xcb/xcb.h>
#include <xcb/xcb_cursor.h>

#include <condition_variable>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "display/x_keyboard.h"
#include "platform/posix/desktop/scale.h"
#include "platform/posix/desktop/screen.h"

namespace brcore8::desktop {

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
    bool isIcon = false;  // as its manager says
};

// A text that goes to another program piece by piece: each when the one before was taken away.
struct Transfer {
    xcb_window_t requestor = 0;
    xcb_atom_t property = 0;
    std::string text;
    std::size_t sent = 0;
};

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
    void OfferText(std::optional<std::string> text) override;
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
    void TakeState(xcb_window_t id);
    void TakePlace(const xcb_configure_notify_event_t& event);
    void TakeButton(const xcb_button_press_event_t& event, bool isDown);
    void TakeKey(const xcb_key_press_event_t& event, bool isDown);
    void TakeRequest(const xcb_selection_request_event_t& event);
    void TakeSelection(const xcb_selection_notify_event_t& event);
    void TakeProperty(const xcb_property_notify_event_t& event);
    // Who has the clipboard.
    xcb_window_t ReadOwner();
    // What the other program put on our window; false when that is no text.
    bool ReadPasted(std::string& text, bool& isPiecewise);
    void EndAnswer(bool isGood);
    void BeginTransfer(xcb_window_t requestor, xcb_atom_t property);
    void SendPiece(Transfer& transfer);
    void ForgetTransfers(xcb_window_t requestor);

    ScreenListener& listener_;
    mutable std::recursive_mutex lock_;
    xcb_connection_t* connection_ = nullptr;
    xcb_screen_t* screen_ = nullptr;
    xcb_gcontext_t context_ = 0;
    xcb_cursor_context_t* cursors_ = nullptr;
    std::map<unsigned, xcb_cursor_t> loaded_;
    xcb_cursor_t cursor_ = 0;
    unsigned dpi_ = kUsualDpi;
    XKeyboard keyboard_;
    std::vector<XWindow> windows_;
    std::vector<unsigned char> rows_;

    xcb_atom_t protocols_ = 0, deleteWindow_ = 0, netName_ = 0, utf8_ = 0;
    xcb_atom_t clipboard_ = 0, targets_ = 0, pasted_ = 0, pieces_ = 0;
    xcb_atom_t state_ = 0, changeState_ = 0;
    xcb_window_t hidden_ = 0;  // owns the clipboard
    std::optional<std::string> offered_;
    bool isOwner_ = false;
    std::mutex asking_;  // one thread at a time asks; taken before the lock
    std::condition_variable_any arrived_;
    bool isAsking_ = false;
    bool isComingInPieces_ = false;
    std::string answer_;
    std::vector<Transfer> transfers_;
};

}  // namespace brcore8::desktop

#endif
