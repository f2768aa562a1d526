// What the operations on settings return: never negative when they succeeded.
#ifndef BRCORE8_SETTINGS_STATUS_H
#define BRCORE8_SETTINGS_STATUS_H

namespace brcore8 {

enum SettingsStatus : long {
    SettingsDone = 0,
    SettingsFailed = -2147467259,       // 0x80004005
    SettingsNullPointer = -2147467261,  // 0x80004003
    SettingsNotWritten = -1073741824    // 0xC0000000: an INI file could not be written
};

}  // namespace brcore8

#endif
