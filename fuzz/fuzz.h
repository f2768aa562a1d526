// What a fuzz target defines; the fuzzer or replay_main.cpp calls it. It must take any bytes: an
// exception that the library documents is caught there, anything else is a finding.
#ifndef BRCORE8_FUZZ_FUZZ_H
#define BRCORE8_FUZZ_FUZZ_H

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

#endif
