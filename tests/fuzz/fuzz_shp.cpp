// One input: the .shp file, a line of "====", the .shx file, another such line, the .dbf file.
#include "fuzz_layer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryLimit limit(size);
    readFuzzedLayer(data, size, {"x.shp", "x.shx", "x.dbf"}, "x.shp");
    return 0;
}
