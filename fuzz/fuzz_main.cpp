// The fuzzer's door to a target.
#include "fuzz/fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const u8* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const u8* data, std::size_t size) {
    RunOnBytes(FuzzedBytes({data, size}));
    return 0;
}
