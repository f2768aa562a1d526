// The process's environment.
#ifndef BRCORE8_TESTS_SUPPORT_ENVIRONMENT_H
#define BRCORE8_TESTS_SUPPORT_ENVIRONMENT_H

#include <cstdlib>

// An empty value takes the variable away.
inline void SetVariable(const char* name, const char* value) {
    _putenv_s(name, value);
}

#endif
