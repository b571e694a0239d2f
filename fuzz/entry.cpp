#include <cstring>

#include "targets.h"

// Entry point for the fuzzer. TARNWICK_FUZZ_TARGET is the name of the program's target.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    for (const tarnwick::fuzz::Target& target : tarnwick::fuzz::kTargets)
        if (std::strcmp(target.name, TARNWICK_FUZZ_TARGET) == 0) target.run({bytes, size});
    return 0;
}
