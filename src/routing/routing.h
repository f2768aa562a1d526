// What the rooms of the window half tell one another.
#ifndef BRCORE8_ROUTING_ROUTING_H
#define BRCORE8_ROUTING_ROUTING_H

#include <brcore8/platform/windows.h>

namespace brcore8 {

// The application's wait cursor: 1 and -1 begin and end a wait, 0 ends them all. Nothing without an
// application.
void ChangeWaitCursor(int delta);

// Tells the observer, inside a catch.
void TellOfEscape(UINT message, UINT id) noexcept;

// Waits for a message and deals with it, as the application does. False for the quit message, whose
// code is then in *quitCode.
bool PumpOneMessage(int* quitCode);

}  // namespace brcore8

#endif
