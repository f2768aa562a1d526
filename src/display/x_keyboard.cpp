#include "display/x_keyboard.h"

#include <brcore8/platform/posix/input_calls.h>
#include <brcore8/platform/posix/window_messages.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <clocale>
#include <cstdlib>

#include "display/xkb_protocol.h"

namespace brcore8::desktop {

namespace {

// X counts the system's key codes from 8; up to this one they are a keyboard's scan codes.
constexpr unsigned kFirstCode = 8;
constexpr unsigned kLastPlainCode = 88;
// What follows from 96 on: the keypad's Enter, Ctrl and Alt on the right, the block of arrows.
constexpr unsigned kFirstLaterCode = 96;
constexpr unsigned char kLaterScans[] = {0x1C, 0x1D, 0x35, 0x37, 0x38, 0,    0x47, 0x48,
                                         0x49, 0x4B, 0x4D, 0x4F, 0x50, 0x51, 0x52, 0x53};

struct Key {
    xkb_keysym_t symbol;
    int key;
    bool isExtended;
};

// Keys that are no characters. Both meanings of the keypad's are here.
constexpr Key kKeys[] = {
    {XKB_KEY_BackSpace, VK_BACK, false},
    {XKB_KEY_Tab, VK_TAB, false},
    {XKB_KEY_ISO_Left_Tab, VK_TAB, false},
    {XKB_KEY_Return, VK_RETURN, false},
    {XKB_KEY_KP_Enter, VK_RETURN, true},
    {XKB_KEY_Escape, VK_ESCAPE, false},
    {XKB_KEY_space, VK_SPACE, false},
    {XKB_KEY_Pause, VK_PAUSE, false},
    {XKB_KEY_Home, VK_HOME, true},
    {XKB_KEY_End, VK_END, true},
    {XKB_KEY_Prior, VK_PRIOR, true},
    {XKB_KEY_Next, VK_NEXT, true},
    {XKB_KEY_Left, VK_LEFT, true},
    {XKB_KEY_Right, VK_RIGHT, true},
    {XKB_KEY_Up, VK_UP, true},
    {XKB_KEY_Down, VK_DOWN, true},
    {XKB_KEY_Insert, VK_INSERT, true},
    {XKB_KEY_Delete, VK_DELETE, true},
    {XKB_KEY_KP_Home, VK_HOME, false},
    {XKB_KEY_KP_End, VK_END, false},
    {XKB_KEY_KP_Prior, VK_PRIOR, false},
    {XKB_KEY_KP_Next, VK_NEXT, false},
    {XKB_KEY_KP_Left, VK_LEFT, false},
    {XKB_KEY_KP_Right, VK_RIGHT, false},
    {XKB_KEY_KP_Up, VK_UP, false},
    {XKB_KEY_KP_Down, VK_DOWN, false},
    {XKB_KEY_KP_Insert, VK_INSERT, false},
    {XKB_KEY_KP_Delete, VK_DELETE, false},
    {XKB_KEY_KP_Begin, VK_CLEAR, false},
    {XKB_KEY_KP_Decimal, VK_DECIMAL, false},
    {XKB_KEY_KP_Add, VK_ADD, false},
    {XKB_KEY_KP_Subtract, VK_SUBTRACT, false},
    {XKB_KEY_KP_Multiply, VK_MULTIPLY, false},
    {XKB_KEY_KP_Divide, VK_DIVIDE, true},
    {XKB_KEY_Shift_L, VK_LSHIFT, false},
    {XKB_KEY_Shift_R, VK_RSHIFT, false},
    {XKB_KEY_Control_L, VK_LCONTROL, false},
    {XKB_KEY_Control_R, VK_RCONTROL, true},
    {XKB_KEY_Alt_L, VK_LMENU, false},
    {XKB_KEY_Meta_L, VK_LMENU, false},
    {XKB_KEY_Alt_R, VK_RMENU, true},
    {XKB_KEY_Caps_Lock, VK_CAPITAL, false},
    {XKB_KEY_Num_Lock, VK_NUMLOCK, true},
    {XKB_KEY_Scroll_Lock, VK_SCROLL, false},
    {XKB_KEY_Super_L, VK_LWIN, true},
    {XKB_KEY_Super_R, VK_RWIN, true},
    {XKB_KEY_Menu, VK_APPS, true},
    {XKB_KEY_Print, VK_SNAPSHOT, true},
    {XKB_KEY_semicolon, VK_OEM_1, false},
    {XKB_KEY_equal, VK_OEM_PLUS, false},
    {XKB_KEY_plus, VK_OEM_PLUS, false},
    {XKB_KEY_comma, VK_OEM_COMMA, false},
    {XKB_KEY_minus, VK_OEM_MINUS, false},
    {XKB_KEY_period, VK_OEM_PERIOD, false},
    {XKB_KEY_slash, VK_OEM_2, false},
    {XKB_KEY_grave, VK_OEM_3, false},
    {XKB_KEY_bracketleft, VK_OEM_4, false},
    {XKB_KEY_backslash, VK_OEM_5, false},
    {XKB_KEY_bracketright, VK_OEM_6, false},
    {XKB_KEY_apostrophe, VK_OEM_7, false},
};

// The key of what a symbol is without Shift; 0 for one that has none here.
void Recognise(xkb_keysym_t symbol, Input& input) noexcept {
    const auto in = [symbol](xkb_keysym_t first, xkb_keysym_t last) {
        return symbol >= first && symbol <= last;
    };
    if (in(XKB_KEY_a, XKB_KEY_z)) input.key = static_cast<BYTE>(symbol - XKB_KEY_a + 'A');
    if (in(XKB_KEY_A, XKB_KEY_Z)) input.key = static_cast<BYTE>(symbol);
    if (in(XKB_KEY_0, XKB_KEY_9)) input.key = static_cast<BYTE>(symbol);
    if (in(XKB_KEY_F1, XKB_KEY_F12)) input.key = static_cast<BYTE>(symbol - XKB_KEY_F1 + VK_F1);
    if (in(XKB_KEY_KP_0, XKB_KEY_KP_9))
        input.key = static_cast<BYTE>(symbol - XKB_KEY_KP_0 + VK_NUMPAD0);
    for (const Key& key : kKeys) {
        if (key.symbol != symbol) continue;
        input.key = static_cast<BYTE>(key.key);
        input.isExtended = key.isExtended;
    }
}

const char* UserLocale() noexcept {
    for (const char* const name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value != nullptr && *value != '\0') return value;
    }
    return "C";
}

}  // namespace

bool XKeyboard::Open(xcb_connection_t* connection) {
    connection_ = connection;
    if (xkb_x11_setup_xkb_extension(
            connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent_, nullptr) == 0)
        return false;
    // A key that is held goes down again and again, without coming up between.
    constexpr unsigned kFlag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    xcb_discard_reply(connection, xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD,
                                                           kFlag, kFlag, 0, 0, 0)
                                      .sequence);
    context_ = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    if (context_ == nullptr) return false;
    xkb_compose_table* const table =
        xkb_compose_table_new_from_locale(context_, UserLocale(), XKB_COMPOSE_COMPILE_NO_FLAGS);
    if (table != nullptr) compose_ = xkb_compose_state_new(table, XKB_COMPOSE_STATE_NO_FLAGS);
    xkb_compose_table_unref(table);
    SelectChanges();
    Reload();
    return state_ != nullptr;
}

// Programs that know the extension are told of another layout by its events alone.
void XKeyboard::SelectChanges() {
    constexpr std::uint16_t kEvents =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t kParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                     XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS;
    xcb_xkb_select_events(connection_, XCB_XKB_ID_USE_CORE_KBD, kEvents, 0, kEvents, kParts, kParts,
                          nullptr);
}

void XKeyboard::Hear(const xcb_generic_event_t& event) {
    const int kind = event.response_type & 0x7F;
    // The second byte of each of the extension's events is its own kind.
    const bool isChange = kind == firstEvent_ && (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY ||
                                                  event.pad0 == XCB_XKB_MAP_NOTIFY);
    if (isChange || kind == XCB_MAPPING_NOTIFY) Reload();
}

void XKeyboard::Reload() {
    const std::int32_t device = xkb_x11_get_core_keyboard_device_id(connection_);
    xkb_keymap* const keymap = device >= 0
                                   ? xkb_x11_keymap_new_from_device(context_, connection_, device,
                                                                    XKB_KEYMAP_COMPILE_NO_FLAGS)
                                   : nullptr;
    xkb_state* const state =
        keymap != nullptr ? xkb_x11_state_new_from_device(keymap, connection_, device) : nullptr;
    // A layout that cannot be read leaves the one before.
    if (state == nullptr) {
        xkb_keymap_unref(keymap);
        return;
    }
    xkb_state_unref(state_);
    xkb_keymap_unref(keymap_);
    keymap_ = keymap;
    state_ = state;
}

// Dead keys join with the next one.
char32_t XKeyboard::TextOf(xkb_keysym_t symbol, xkb_keycode_t code) {
    if (compose_ != nullptr &&
        xkb_compose_state_feed(compose_, symbol) == XKB_COMPOSE_FEED_ACCEPTED) {
        switch (xkb_compose_state_get_status(compose_)) {
            case XKB_COMPOSE_COMPOSING:
            case XKB_COMPOSE_CANCELLED:
                return 0;
            case XKB_COMPOSE_COMPOSED:
                return xkb_keysym_to_utf32(xkb_compose_state_get_one_sym(compose_));
            default:
                break;
        }
    }
    const char32_t text = xkb_state_key_get_utf32(state_, code);
    return text == 0x7F && symbol == XKB_KEY_Delete ? 0 : text;
}

Input XKeyboard::InputOf(const xcb_key_press_event_t& event, bool isDown) {
    Input input;
    input.message = isDown ? WM_KEYDOWN : WM_KEYUP;
    // The event says which modifiers were down before it, and which group is chosen.
    xkb_state_update_mask(state_, event.state & 0xFF, 0, 0, 0, 0, event.state >> 13 & 3);
    const xkb_keycode_t code = event.detail;
    const xkb_keysym_t symbol = xkb_state_key_get_one_sym(state_, code);
    Recognise(symbol, input);
    if (input.key == 0) {
        const xkb_keysym_t* plain = nullptr;
        const xkb_layout_index_t layout = xkb_state_key_get_layout(state_, code);
        if (xkb_keymap_key_get_syms_by_level(keymap_, code, layout, 0, &plain) > 0)
            Recognise(plain[0], input);
        // A layout without Latin letters keeps the places of the first.
        if (input.key == 0 && xkb_keymap_key_get_syms_by_level(keymap_, code, 0, 0, &plain) > 0)
            Recognise(plain[0], input);
    }
    const unsigned scan = code - kFirstCode;
    if (scan <= kLastPlainCode) input.scan = static_cast<WORD>(scan);
    if (scan >= kFirstLaterCode && scan - kFirstLaterCode < sizeof kLaterScans)
        input.scan = kLaterScans[scan - kFirstLaterCode];
    if (isDown) input.text = TextOf(symbol, code);
    input.knowsText = true;
    if (input.key == 0 && input.text != 0) input.key = VK_PACKET;
    return input;
}

}  // namespace brcore8::desktop
