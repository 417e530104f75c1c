// One input: a Header.prj, a line of "====", a Header.mif; the first is compared with the second too.
#include "fuzz_run.h"
#include "services/projection.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryLimit limit(size);
    writePieces(data, size, std::array{"Header.prj", "Header.mif"});
    for (const auto need : {ProjectionNeed::Wanted, ProjectionNeed::Taken})
        readFuzzed([need] {
            const Projection found = FIND_PROJECTION(fuzzFolder().name("x.2dm"), {need, need});
            SAME_PROJECTION(found.prj, found.coordSys);
            WRITE_PRJ(fuzzFolder().name("y"), found.prj);
        });
    return 0;
}
