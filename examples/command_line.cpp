// What a program was asked for, with a switch of its own. Prints "print plan.brn at scale 50".
#include <brcore8/brcore8.h>
#include <iostream>

class PlotLine : public SCommandLine {
public:
    explicit PlotLine(const char* line) : SCommandLine("") { SetCmdLineString(line); }
    int scale = 100;

protected:
    void ParseParam(const SString& param, int isFlag, int isLast) override {
        if (isFlag && param.Match("scale:*"))
            scale = static_cast<int>(static_cast<long>(param.Mid(6, 9)));
        SCommandLine::ParseParam(param, isFlag, isLast);
    }
};

int main() {
    const PlotLine line("-p plan.brn -scale:50");
    const bool print = line.GetShellCommand() == SCommandLine::Print;
    std::cout << (print ? "print " : "open ") << line.GetFileName() << " at scale " << line.scale
              << '\n';
}
