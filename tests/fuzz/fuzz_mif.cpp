// One input: the .mif file, a line of "====", the .mid file.
#include "fuzz_layer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryLimit limit(size);
    readFuzzedLayer(data, size, {"x.mif", "x.mid"}, "x.mif");
    return 0;
}
