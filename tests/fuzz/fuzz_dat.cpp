// One input: a .dat file of results on the mesh of fuzz_run.h; its times and its maximums.
#include "fuzz_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryLimit limit(size);
    writeFuzzMesh();
    writePieces(data, size, std::array{"x.dat"});
    runFuzzed({"-txt", "-tAll", "x.dat"});
    runFuzzed({"-asc", "-grid0.7", "-max", "x.dat"});
    return 0;
}
