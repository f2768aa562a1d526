// The state of a program in a small binary file, the same bytes on every system. Prints
// "version 3, docked left, 2 recent files: tower.brn bridge.brn".
#include <brcore8/brcore8.h>
#include <cstdio>
#include <iostream>

int main() {
    const char* const path = "binary_state.bin";
    {
        SStringTable recent;
        recent.SetFromList("tower.brn;bridge.brn", ";", 0);
        SOutputFile file(path);
        SOutputBinaryStream out(file);
        out << std::int16_t{3} << SString("left") << recent;
        out.Close();  // here a full disk is noticed
    }
    std::int16_t version = 0;
    SString side;
    SStringTable recent;
    {
        SInputFile file(path);
        SInputBinaryStream(file) >> version >> side >> recent;
    }
    std::remove(path);
    std::cout << "version " << version << ", docked " << side << ", " << recent.GetCount()
              << " recent files:" << recent.Format(" ", " ", "") << '\n';
}
