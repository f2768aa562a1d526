// Stands in for the module of the grids: writes down in the current folder when its function is
// called and when it is unloaded.
#include <cstdio>

namespace {

void WriteDown(const char* what) {
    if (std::FILE* const file = std::fopen("grids.txt", "ab")) {
        std::fputs(what, file);
        std::fclose(file);
    }
}

struct Unloading {
    ~Unloading() { WriteDown("unloaded;"); }
} unloading;

}  // namespace

extern "C" void GRID_FUNCTION();
extern "C" void GRID_FUNCTION() {
    WriteDown("changed;");
}
