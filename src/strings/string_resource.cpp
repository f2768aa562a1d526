#include <brcore8/core/module.h>
#include <brcore8/strings/string.h>

#include "platform/platform.h"

int SString::LoadString(unsigned int id, HINSTANCE module) {
    // A text that nearly fills its room may have been cut, perhaps within a character.
    constexpr int kStep = 256;
    constexpr int kNearlyFull = 3;
    if (!module) module = brcore8::ResourceInstance();
    char scratch[kStep];
    int loaded = ::LoadStringA(module, id, scratch, kStep);
    if (loaded < kStep - kNearlyFull) {
        AssignCopy(loaded, scratch);
        return !IsEmpty();
    }
    int size = kStep;
    do {
        size += kStep;
        loaded = ::LoadStringA(module, id, Lock(size), size);
    } while (loaded > size - kNearlyFull);
    SetLength(loaded);
    return !IsEmpty();
}
