// Loaded modules: posix/modules.cpp and windows/modules.cpp load this one, and look into others.
#ifndef BRCORE8_PLATFORM_MODULES_H
#define BRCORE8_PLATFORM_MODULES_H

namespace brcore8 {

// The function that a module exports by that name, or null. The module is loaded when it is not
// yet, for good; null is the one that this code is part of.
void* FindFunction(const char* module, const char* function) noexcept;

}  // namespace brcore8

#endif
