// A module that is loaded while the program runs. Nothing but its functions is visible outside.
#include <brcore8/core/exception.h>
#include <brcore8/core/object.h>

#include <cstdio>

#include "plugin.h"

namespace {

class STestPlugin : public SObject {
    SDECLARE_CREATABLE(STestPlugin);
};
SIMPLEMENT_CREATABLE(STestPlugin, SObject, 7);

}  // namespace

// Throws the exception of that number.
PLUGIN_FUNCTION void ThrowInPlugin(int which);
void ThrowInPlugin(int which) {
    switch (which) {
        case 0:
            throw SException("thrown by a plugin");
        case 1:
            throw SEIOException("thrown by a plugin");
        case 2:
            throw SEEOFException();
        case 3:
            throw SEOutOfMemory();
        default:
            throw SEUTFException(0xE2, 0x41, which);
    }
}

// Calls the program back and writes down what that throws: "IO: text", "other: text".
PLUGIN_FUNCTION void CatchInPlugin(void (*thrower)(), char* said, unsigned size);
void CatchInPlugin(void (*thrower)(), char* said, unsigned size) {
    try {
        thrower();
    } catch (const SEIOException& error) {
        std::snprintf(said, size, "IO: %s", error.GetText());
    } catch (const SException& error) {
        std::snprintf(said, size, "other: %s", error.GetText());
    }
}
