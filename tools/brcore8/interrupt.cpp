#include "interrupt.h"

#include "command.h"

#include <brcore8/core/exception.h>

#include <csignal>
#include <cstdlib>

namespace tool {
namespace {

volatile std::sig_atomic_t deferred = 0;
volatile std::sig_atomic_t interrupted = 0;

extern "C" void OnInterrupt(int signal) {
    if (!deferred || interrupted) std::_Exit(Interrupted);
    interrupted = 1;
    std::signal(signal, OnInterrupt);
}

}  // namespace

void CatchInterrupts() {
    std::signal(SIGINT, OnInterrupt);
}

DeferInterrupts::DeferInterrupts() {
    deferred = 1;
}

DeferInterrupts::~DeferInterrupts() {
    deferred = 0;
}

void ThrowIfInterrupted() {
    if (interrupted) throw SEIOAbortedException();
}

}  // namespace tool
