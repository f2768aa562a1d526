// What the tests of settings need of the system.
#ifndef BRCORE8_TESTS_SUPPORT_SETTINGS_SYSTEM_H
#define BRCORE8_TESTS_SUPPORT_SETTINGS_SYSTEM_H

#include <windows.h>

#include <brcore8/strings/string.h>

#include <cstdlib>
#include <cstring>

// An empty value takes the variable away.
inline void SetVariable(const char* name, const char* value) {
    _putenv_s(name, value);
}

// A key of the machine's tree with one string value, as an administrator makes it.
inline void MakeMachineKey(const SString& path, const char* name, const char* value) {
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_LOCAL_MACHINE, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                    nullptr);
    RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value),
                   static_cast<DWORD>(std::strlen(value) + 1));
    RegCloseKey(key);
}

#endif
