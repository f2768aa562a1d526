// What a test writes down of the input, to play it again.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_RECORDING_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_RECORDING_H

#include "platform/posix/desktop/input.h"

namespace brcore8::desktop {

// Adds the input to the recording, when one runs. Under the lock.
void RecordInput(const Input& input);

}  // namespace brcore8::desktop

#endif
