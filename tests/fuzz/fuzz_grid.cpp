// One input: the header of a template grid, an .asc or a .hdr, a line of "====", its .prj.
#include "fuzz_run.h"
#include "raster/external_grid.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryLimit limit(size);
    writePieces(data, size, std::array{"x.asc", "x.prj"});
    writePieces(data, size, std::array{"x.hdr"});
    fuzzFolder().write("x.flt", "");
    for (const char* name : {"x.asc", "x.hdr", "x.flt"})
        readFuzzed([name] { READ_EXTERNAL_GRID_HEADER(fuzzFolder().name(name)); });
    return 0;
}
