// One input: an .xmdf file of results on the mesh of fuzz_run.h; all of it, and the list of what it holds.
#include "fuzz_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryLimit limit(size);
    writeFuzzMesh();
    writePieces(data, size, std::array{"x.xmdf"});
    runFuzzed({"-txt", "-typeAll", "-tAll", "x.xmdf"});
    runFuzzed({"-xnfo", "x.xmdf"});
    return 0;
}
