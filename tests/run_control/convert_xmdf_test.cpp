// Whole runs over .xmdf files of which not everything can be read.
#include "run_control/driver.h"

#include "run_control/read_switches.h"
#include "testing.h"
#include "xmdf/make_xmdf.h"

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
    std::map<std::string, TestDataset> datasets;
    datasets["cut"] = fourNodes("/r/Temporal/Depth", {0, 1, 2});
    datasets["cut"].written = 2;
    datasets["short"] = fourNodes("/r/Temporal/Short", {0, 1});
    datasets["short"].times.push_back(2);
    datasets["empty"] = fourNodes("/r/Empty/Nothing", {0});
    datasets["empty"].values.clear();
    datasets["whole"] = fourNodes("/r/Temporal/Good", {0, 1});
    datasets["bad"] = fourNodes("/r/Temporal/Bad", {0, 1});
    datasets["stored"] = fourNodes("/r/Maximums/Good", {99999});
    // datasets, switches, status, outputs, a part of the console
    forEachRow(R"(
cut | -b -tAll -typed | 3 | x_d_t000.00_g001.asc x_d_t001.00_g001.asc | WARNING - Dataset "/r/Temporal/Depth" in FILE \
    was not written whole at time number 3 (time 2.). Only the 2 before it can be used.$
# the status does not get lost in the closing pause
cut | -tAll -typed | 3 | x_d_t000.00_g001.asc x_d_t001.00_g001.asc | Finished.$
cut | -b -t1 -typed | 0 | x_d_t001.00_g001.asc
cut | -b -t2 -typed | 1 | | ERROR - Reading data [XF_READ_SCALAR_VALUES_TIMESTEP] while reading FILE$        "FILE": \
    /r/Temporal/Depth/Values, time number 3, was never written$
short | -b -tAll -typeShort | 3 | x_Short_t000.00_g001.asc x_Short_t001.00_g001.asc | WARNING - Dataset \
    "/r/Temporal/Short" was not written to its end: Times has 3 times, Values has 2 times. Only the first 2 can be used.$
short | -b -max -typeShort | 0 | x_Short_Max_g001.asc
bad | -b -tAll -typeBad | 1 | x_Bad_t000.00_g001.asc | ERROR - Reading data [XF_READ_SCALAR_VALUES_TIMESTEP] while \
    reading FILE$        "FILE": /r/Temporal/Bad/Values, time number 2
bad | -b -max -typeBad | 1 | | ERROR - Reading timestep [XF_READ_SCALAR_VALUES_TIMESTEP] while reading FILE$        \
    "FILE": /r/Temporal/Bad/Values, time number
bad whole | -b -FolderTemporal -t1 | 3 | x_Good_t001.00_g001.asc | WARNING - Dataset "/r/Temporal/Bad" could not be \
    read and is left out.$        "FILE": /r/Temporal/Bad/Values, time number 2, could
bad cut | -b -typeAll -max | 1 | | ERROR - No data processed
empty whole | -b -typeAll -max | 3 | x_Good_Max_g001.asc | WARNING - Dataset "/r/Empty/Nothing" could not be \
    read and is left out.$        "FILE": /r/Empty/Nothing/Values does not exist$
empty | -b -typeAll -max | 1 | | ERROR - Exracting Number of Values in Dataset [XF_GET_DATASET_NUMVALS].$
# passed over, which nobody asked for
stored whole | -b -Folderr -t1 | 0 | x_Good_t001.00_g001.asc | Warning - Dataset "/r/Maximums/Good" skipped: no output
)",
               [&](const Row& row) {
                   CAPTURE(row[4]);
                   const TemporaryFolder folder;
                   folder.write("x.2dm", ONE_CELL);
                   const std::string file = folder.name("x.h5");
                   std::vector<TestDataset> held;
                   for (const std::string& name : wordsOf(row[0])) held.push_back(datasets[name]);
                   const bool damaged = row[0].starts_with("bad");
                   makeXmdf(file, held, damaged ? damageSecondTime : std::function<void(hid_t)>());
                   std::vector<std::string> words = wordsOf("-asc -grid1 " + row[1]);
                   words.push_back(file);
                   const std::vector<const char*> arguments = argumentsOf(words);
                   const ConsoleCapture console;
                   int status = -1;
                   try {
                       status = CONVERT(static_cast<int>(arguments.size()), arguments.data());
                   } catch (const RunStopped& stopped) {
                       status = stopped.status;
                   }
                   CHECK_MESSAGE(std::to_string(status) == row[2], console.text());
                   std::set<std::string> outputs;
                   for (const auto& entry : std::filesystem::directory_iterator(folder.name("")))
                       if (entry.path().extension() == ".asc") outputs.insert(entry.path().filename().string());
                   const std::vector<std::string> expected = wordsOf(row[3]);
                   CHECK(outputs == std::set<std::string>(expected.begin(), expected.end()));
                   const std::string part = replaced(replaced(row[4], "$", "\n"), "FILE", file);
                   CHECK_MESSAGE(holds(console.text(), part), console.text());
                   CHECK(openHandles() == 0);
               });
}
