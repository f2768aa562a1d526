// A user's first program: a header, a string, an exception that the library throws.
#include <brcore8/brcore8.h>

#include <cstdio>

int main() {
    SString greeting = "Hello";
    greeting += ", world";
    greeting.ReplaceAll("o", "0");
    std::printf("client: %s\n", static_cast<const char*>(greeting));
    return 0;
}
