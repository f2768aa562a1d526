// A log that keeps the last run beside it, and an object that describes itself to it.
#include <brcore8/brcore8.h>

#include <fstream>
#include <iostream>

class SShape : public SObject {
    SDECLARE_CLASS(SShape);

    explicit SShape(double radius) : radius_(radius) {}
    void Dump(SDump& dump) const override {
        dump << GetClassInfo()->className << " of radius " << radius_;
    }

private:
    double radius_;
};
SIMPLEMENT_CLASS(SShape, SObject, 2);

int main() {
    constexpr int drawing = 2;  // a category of trace messages
    SSetTraceMask(0, drawing);  // or BRCORE8_TRACE=0=2 in the environment
    const SShape shape(2.5);
    SDumpFile log("example.log", 1);  // what was there is now in example_log.bak
    if (STrace(drawing, 0)) log << &shape << "\n";
    log.Done();
    std::cout << std::ifstream(log.GetPath()).rdbuf();  // "SShape of radius 2.5"
}
