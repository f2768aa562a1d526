// Several uses of the registry as one, where it is this library's own: posix/settings_batch.cpp.
// The system's own registry (windows/settings_batch.cpp) does each as it comes.
#ifndef BRCORE8_PLATFORM_SETTINGS_BATCH_H
#define BRCORE8_PLATFORM_SETTINGS_BATCH_H

#include <brcore8/platform/types.h>

namespace brcore8 {

struct SettingsBatch;

// Begins a batch on the tree of an open key: until its end this thread sees one state, and, with
// `write`, changes it in one step. Null when the tree cannot be read, or written, now. May be
// nested.
SettingsBatch* BeginSettingsBatch(HKEY key, bool write) noexcept;

// Ends a batch, on its own thread: keeps what was written, or takes it back. Whether it was kept.
// Null does nothing, successfully.
bool EndSettingsBatch(SettingsBatch* batch, bool keep) noexcept;

}  // namespace brcore8

#endif
