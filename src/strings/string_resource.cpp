#include <brcore8/strings/string.h>

int SString::LoadString(unsigned int, HINSTANCE) {
    Done();
    return 0;
}
