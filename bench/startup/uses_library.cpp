// A program that uses the library, barely.
#include <brcore8/strings/string.h>

int main() {
    const SString text("started");
    return text.LengthByte() != 7;
}
