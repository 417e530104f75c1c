// One input: a mesh, which is read, listed, and converted to a table of its nodes.
#include "fuzz_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryLimit limit(size);
    writePieces(data, size, std::array{"x.2dm"});
    runFuzzed({"-txt", "x.2dm"});
    return 0;
}
