// Which modules the process's resources come from. A module (the library, a program, another
// library) describes itself in an SModuleState; resource lookups without a module of their own use
// the current state's resource module.
//
// Threads: the current state is one for the process; set it before other threads look things up.
// Ownership: handles are the platform's and owned by nobody; a state must outlive its being
// current.
#ifndef BRCORE8_CORE_MODULE_H
#define BRCORE8_CORE_MODULE_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/types.h>

// One module's record; all zero until Init.
class BRCORE8_API SModuleState {
public:
    constexpr SModuleState() noexcept = default;

    // Makes `instance` the module and its own source of resources. Only the first call counts.
    void Init(HINSTANCE instance) noexcept;

    // Each stores the handle and returns the previous one; null is ignored and null returned.
    HINSTANCE SetResInstance(HINSTANCE instance) noexcept;
    HINSTANCE SetLangResInstance(HINSTANCE instance) noexcept;

    HINSTANCE GetInstance() const noexcept { return instance_; }
    HINSTANCE GetResInstance() const noexcept { return resInstance_; }
    HINSTANCE GetLangResInstance() const noexcept { return langResInstance_; }
    int IsInitialized() const noexcept { return initialized_; }

private:
    int initialized_ = 0;
    HINSTANCE instance_ = nullptr;
    HINSTANCE resInstance_ = nullptr;
    HINSTANCE langResInstance_ = nullptr;
};
static_assert(sizeof(SModuleState) == 4 * sizeof(void*));

// The current state: the library's own until a program sets another. Never null.
BRCORE8_API SModuleState* SGetModuleState();

// Makes `state` current (null: the library's own) and returns the previous one.
BRCORE8_API SModuleState* SSetModuleState(SModuleState* state);

// The library's own state, initialised with the library's handle.
BRCORE8_API SModuleState* SCoreGetModuleState();

// --- The library itself ----------------------------------------------------------------------

// The library's own module handle, as its start-up recorded it.
extern "C" BRCORE8_API HINSTANCE SGetCoreInstance();

// What the platform calls when the library is loaded (1) and unloaded (0); other reasons do
// nothing. Loading records the module handle and the platform's version (see
// brcore8/core/version.h), reads the trace masks of the environment (see brcore8/core/trace.h), and
// counts; unloading counts back, and the last one empties the trace table. Returns 1.
extern "C" BRCORE8_ENTRY int BRCORE8_STDCALL CoreLibMain(HINSTANCE instance, unsigned long reason,
                                                         void* reserved) noexcept;

// How often the library was loaded and not unloaded: 1 in an ordinary program.
BRCORE8_API long SCoreAttachCount() noexcept;

// The address of a function that `module` exports by that very name, or null. A module that is not
// loaded is looked for as the platform looks for libraries, and stays loaded. Null stands for this
// library itself.
extern "C" BRCORE8_API void* SGetProcAddress(const char* module, const char* function) noexcept;

namespace brcore8 {

// Where resources are looked up when no module is named: the current state's resource module, or
// the library when that state names none.
BRCORE8_API HINSTANCE ResourceInstance();

}  // namespace brcore8

#endif
