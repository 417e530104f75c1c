#include "run_control/sample_stage.h"

#include "gis/layer_test.h"
#include "profiles/small_flood.h"
#include "testing.h"

TEST_CASE("A run none of whose datasets could be read writes no profiles, not even of the bed") {
    const LayerTest test;
    RunOptions options;
    options.outputs = {"lp"};
    options.lpFile =
        test.folder.write("l.mif", "Version 300\nDelimiter \",\"\nColumns 1\n  N Integer\nData\nLine 1 5 19 5\n");
    test.folder.write("l.mid", "7\n");
    const Mesh mesh = smallMesh();
    const auto files = [&] {
        const std::filesystem::directory_iterator folder(test.folder.name("")), end;
        return std::distance(folder, end);
    };
    for (const bool meshAlone : {false, true}) {
        const std::string said = consoleOf([&] {
            const Projection projection;
            SampleStage stage(options, projection);
            stage.begin(mesh, {});
            OutputLabel label;
            label.base = test.folder.name("x");
            label.timed = false;
            if (meshAlone) stage.takeMesh(mesh, label);
            stage.finish();
        });
        CHECK_FALSE(holds(said, "<stopped>"));
        CHECK(files() == (meshAlone ? 3 : 2));
    }
}
