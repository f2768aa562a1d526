// The keyboard extension of X, whose header for C has a field that bears a keyword's name. As a
// header of the system it may rename it: compilers warn of that elsewhere.
#ifndef BRCORE8_SRC_DISPLAY_XKB_PROTOCOL_H
#define BRCORE8_SRC_DISPLAY_XKB_PROTOCOL_H

#pragma GCC system_header

#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#endif
