// Ctrl-C: ends the program at once, except while a result is being written, when the writer
// stops, removes what is half done, and the program ends then. A second Ctrl-C does not wait.
#ifndef BRCORE8_TOOLS_INTERRUPT_H
#define BRCORE8_TOOLS_INTERRUPT_H

namespace tool {

void CatchInterrupts();

// While one lives, Ctrl-C is noted instead of ending the program.
class DeferInterrupts {
public:
    DeferInterrupts();
    ~DeferInterrupts();
    DeferInterrupts(const DeferInterrupts&) = delete;
    DeferInterrupts& operator=(const DeferInterrupts&) = delete;
};

// Throws SEIOAbortedException when a deferred Ctrl-C has come.
void ThrowIfInterrupted();

}  // namespace tool

#endif
