// What the keys of an X server mean.
#ifndef BRCORE8_SRC_DISPLAY_X_KEYBOARD_H
#define BRCORE8_SRC_DISPLAY_X_KEYBOARD_H

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon-x11.h>

#include "platform/posix/desktop/input.h"

namespace brcore8::desktop {

// Used by the thread that takes the server's events.
class XKeyboard {
public:
    // False when the server's keyboards cannot be asked about.
    bool Open(xcb_connection_t* connection);
    // Follows an event that tells of another layout.
    void Hear(const xcb_generic_event_t& event);
    // The input that a key's event means; its key is 0 when it means nothing here.
    Input InputOf(const xcb_key_press_event_t& event, bool isDown);

private:
    void SelectChanges();
    void Reload();
    char32_t TextOf(xkb_keysym_t symbol, xkb_keycode_t code);

    std::uint8_t firstEvent_ = 0;  // of the extension
    xcb_connection_t* connection_ = nullptr;
    xkb_context* context_ = nullptr;
    xkb_keymap* keymap_ = nullptr;
    xkb_state* state_ = nullptr;
    xkb_compose_state* compose_ = nullptr;
};

}  // namespace brcore8::desktop

#endif
