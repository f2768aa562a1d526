#include <brcore8/platform/resources.h>

// The linker has put the strings into the module, where the system finds them.
brcore8::StringResources::StringResources(HINSTANCE module, const StringResource* strings,
                                          std::size_t count) noexcept
    : module_(module), strings_(strings), count_(count) {}

brcore8::StringResources::~StringResources() = default;
