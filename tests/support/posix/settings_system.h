// What the tests of settings need of the system.
#ifndef BRCORE8_TESTS_SUPPORT_SETTINGS_SYSTEM_H
#define BRCORE8_TESTS_SUPPORT_SETTINGS_SYSTEM_H

#include <brcore8/settings/registry.h>

#include <cstdlib>
#include <string>

// An empty value takes the variable away.
inline void SetVariable(const char* name, const char* value) {
    if (*value != '\0')
        setenv(name, value, 1);
    else
        unsetenv(name);
}

// A key of the machine's tree with one string value, as an administrator makes it: both trees are
// files of one form.
inline void MakeMachineKey(const SString& path, const char* name, const char* value) {
    const std::string user = std::getenv("BRCORE8_SETTINGS");
    SetVariable("BRCORE8_SETTINGS", std::getenv("BRCORE8_MACHINE_SETTINGS"));
    SRegistry(SRegistry::CurrentUser(), path, 1).WriteProfile(name, value);
    SetVariable("BRCORE8_SETTINGS", user.c_str());
}

#endif
