// The entry point that libFuzzer calls; each target compiles it with the name of its body.
#include "tests/fuzz/Fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QUOR_FUZZ_BODY(data, size);
    return 0;
}
