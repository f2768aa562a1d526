#include "platform/settings_batch.h"

namespace brcore8 {

struct SettingsBatch {};

SettingsBatch* BeginSettingsBatch(HKEY, bool) noexcept {
    static SettingsBatch every;
    return &every;
}

bool EndSettingsBatch(SettingsBatch*, bool) noexcept {
    return true;
}

}  // namespace brcore8
