// Whole runs over .xmdf files of which not everything can be read.
#include "run_control/driver.h"

#include "services/console.h"
#include "services/exits.h"
#include "temporary_folder.h"
#include "xmdf/make_xmdf.h"

#include <doctest/doctest.h>

#include <set>

namespace {

constexpr const char* ONE_CELL = "MESH2D\nE4Q 1 1 2 3 4 1\nND 1 0 0 0\nND 2 4 0 0\nND 3 4 2 0\nND 4 0 2 0\n";

/// Values 1 at every node at the first time, 2 at the second ...
TestDataset fourNodes(const std::string& path, std::vector<double> times) {
    TestDataset d;
    d.path = path;
    d.shape = {times.size(), 4};
    for (std::size_t i = 0; i < times.size(); ++i) d.values.insert(d.values.end(), 4, static_cast<float>(i + 1));
    d.times = std::move(times);
    d.chunk = {1, 4};
    return d;
}

void damageSecondTime(hid_t id) {
    const hsize_t second[] = {1, 0};
    const H5Dataset values(H5Dopen2(id, "/r/Temporal/Bad/Values", H5P_DEFAULT));
    H5Dwrite_chunk(values.id(), H5P_DEFAULT, 0, second, 7, "damaged");
}

}  // namespace

TEST_CASE("what cannot be read is left out with its path and status 3, and ends a run of one dataset with status 1") {
    TestDataset cut = fourNodes("/r/Temporal/Depth", {0, 1, 2});
    cut.written = 2;
    TestDataset shorter = fourNodes("/r/Temporal/Shorter", {0, 1});
    shorter.times.push_back(2);
    TestDataset empty = fourNodes("/r/Empty/Nothing", {0});
    empty.values.clear();
    const TestDataset whole = fourNodes("/r/Temporal/Good", {0, 1});
    const TestDataset bad = fourNodes("/r/Temporal/Bad", {0, 1});
    const TestDataset stored = fourNodes("/r/Maximums/Good", {99999});
    const struct {
        std::vector<TestDataset> datasets;
        std::vector<const char*> switches;
        int status;
        std::set<std::string> outputs;
        const char* console;
    } rows[] = {
        {{cut},
         {"-b", "-tAll", "-typed"},
         3,
         {"x_d_t000.00_g001.asc", "x_d_t001.00_g001.asc"},
         "WARNING - Dataset \"/r/Temporal/Depth\" in FILE was not written whole at time number 3 (time 2.). Only the 2 "
         "before it can be used.\n"},
        {{cut},
         {"-tAll", "-typed"},
         3,
         {"x_d_t000.00_g001.asc", "x_d_t001.00_g001.asc"},
         "Finished.\n"},  // with the pause
        {{cut}, {"-b", "-t1", "-typed"}, 0, {"x_d_t001.00_g001.asc"}, ""},
        {{cut},
         {"-b", "-t2", "-typed"},
         1,
         {},
         "ERROR - Reading data [XF_READ_SCALAR_VALUES_TIMESTEP] while reading FILE\n        \"FILE\": "
         "/r/Temporal/Depth/Values, time number 3, was never written\n"},
        {{shorter},
         {"-b", "-tAll", "-typeShorter"},
         3,
         {"x_Shorter_t000.00_g001.asc", "x_Shorter_t001.00_g001.asc"},
         "WARNING - Dataset \"/r/Temporal/Shorter\" was not written to its end: Times has 3 times, Values has 2 times. "
         "Only the first 2 can be used.\n"},
        {{shorter}, {"-b", "-max", "-typeShorter"}, 0, {"x_Shorter_Max_g001.asc"}, ""},
        {{bad},
         {"-b", "-tAll", "-typeBad"},
         1,
         {"x_Bad_t000.00_g001.asc"},
         "ERROR - Reading data [XF_READ_SCALAR_VALUES_TIMESTEP]"},
        {{bad, whole},
         {"-b", "-FolderTemporal", "-t1"},
         3,
         {"x_Good_t001.00_g001.asc"},
         "WARNING - Dataset \"/r/Temporal/Bad\" could not be read and is left out.\n        \"FILE\": "
         "/r/Temporal/Bad/Values, time number 2, could"},
        {{bad, cut}, {"-b", "-typeAll", "-max"}, 1, {}, "ERROR - No data processed"},
        {{empty, whole},
         {"-b", "-typeAll", "-max"},
         3,
         {"x_Good_Max_g001.asc"},
         "WARNING - Dataset \"/r/Empty/Nothing\" could not be read and is left out.\n        \"FILE\": "
         "/r/Empty/Nothing/Values does not exist\n"},
        {{empty},
         {"-b", "-typeAll", "-max"},
         1,
         {},
         "ERROR - Exracting Number of Values in Dataset [XF_GET_DATASET_NUMVALS].\n"},
        {{stored, whole},
         {"-b", "-Folderr", "-t1"},
         0,
         {"x_Good_t001.00_g001.asc"},
         "Warning - Dataset \"/r/Maximums/Good\" skipped: no output time 1."},  // passed over, which nobody asked for
    };
    for (const auto& row : rows) {
        CAPTURE(std::string(row.console));
        const TemporaryFolder folder;
        folder.write("x.2dm", ONE_CELL);
        const std::string file = folder.name("x.h5");
        const bool damaged = row.datasets.front().path.ends_with("Bad");
        makeXmdf(file, row.datasets, damaged ? damageSecondTime : std::function<void(hid_t)>());
        std::vector<const char*> arguments = {"VORANT_to_GIS", "-asc", "-grid1"};
        arguments.insert(arguments.end(), row.switches.begin(), row.switches.end());
        arguments.push_back(file.c_str());
        const ConsoleCapture console;
        int status = -1;
        try {
            status = CONVERT(static_cast<int>(arguments.size()), arguments.data());
        } catch (const RunStopped& stopped) {
            status = stopped.status;
        }
        CHECK_MESSAGE(status == row.status, console.text());
        std::set<std::string> outputs;
        for (const auto& entry : std::filesystem::directory_iterator(folder.name("")))
            if (entry.path().extension() == ".asc") outputs.insert(entry.path().filename().string());
        CHECK(outputs == row.outputs);
        std::string expected = row.console;
        for (std::size_t at = 0; (at = expected.find("FILE")) != std::string::npos;) expected.replace(at, 4, file);
        CHECK_MESSAGE(console.text().find(expected) != std::string::npos, console.text());
        CHECK(openHandles() == 0);
    }
}
