#include "inputs/xmdf_selection.h"
#include "console_of.h"
#include "inputs/xmdf_search.h"
#include "run_control/read_switches.h"
#include "services/files.h"
#include "services/options.h"
#include "temporary_folder.h"
#include "text_utils/numbers.h"
#include "xmdf/make_xmdf.h"

#include <doctest/doctest.h>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace {

TestDataset dataset(const std::string& path, std::vector<double> times, bool vector = false,
                    const std::string& units = "Hours") {
    TestDataset d;
    d.path = path;
    d.units = units;
    d.shape = {times.size(), 2};
    d.values.assign(times.size() * 2, 1.0F);
    d.times = std::move(times);
    if (!vector) return d;
    d.groupType = "DATASET VECTOR";
    d.shape.push_back(2);
    d.values.resize(d.times.size() * 4);
    return d;
}

std::vector<TestDataset> model() {
    const std::vector<double> hours = {0.0, 0.99, 1.01, 2.0};
    return {
        dataset("/run/Maximums/Depth", {99999.0}),
        dataset("/run/Maximums/Only Max", {99999.0}),
        dataset("/run/Maximums/Vector Velocity", {99999.0}, true),
        dataset("/run/Minimums/Depth", {-99999.0}),
        dataset("/run/Temporal/Depth", hours),
        dataset("/run/Temporal/Manning n", hours),
        dataset("/run/Temporal/Manning n2", hours),
        dataset("/run/Temporal/Mass Error %", {0.0, 100800.0}, false, "seconds"),
        dataset("/run/Temporal/Vector Velocity", hours, true),
        dataset("/run/Temporal/Velocity", hours),
        dataset("/run/Temporal/Water Level", hours),
        dataset("/run/Times/Dur a", {200000.5}),
        dataset("/run/Times/Dur b", {200000.5}),
        dataset("/run/Times/Time of Peak V", {0.0}),
        dataset("/run/Times/Time of Peak h", {900001.0}),
        dataset("/z odd", {1.0, 2.0}),
        dataset("/z one", {7.0}),
    };
}

const char* readName(XmdfRead read) {
    constexpr const char* NAMES[] = {"max", "min", "single", "time", "tempmax", "all"};
    return NAMES[static_cast<std::size_t>(read)];
}

/// "path read time tag;" for each item of a run with these switches, and what the run printed.
struct Selected {
    std::string items;
    std::string console;
};
Selected selected(const std::string& file, const std::vector<const char*>& switches, const std::string& type) {
    Selected result;
    readSwitches(switches);
    result.console = consoleOf([&] {
        INITIALISE_FILES();
        XmdfCatalogue catalogue = OPEN_XMDF_FILES({file});
        for (const XmdfItem& item : SELECT_XMDF_OUTPUTS(catalogue, OPTIONS(), type)) {
            result.items += item.path + " " + readName(item.read);
            if (item.read == XmdfRead::Time) result.items += AINTEGER(item.step);
            result.items += " " + AREAL8(item.time.number) + " " + item.tag + ";";
        }
    });
    return result;
}

bool holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST_CASE("what the switches select, how it is read and what it is called") {
    const TemporaryFolder folder;
    const std::string file = folder.name("x.xmdf");
    makeXmdf(file, model());
    const struct {
        std::vector<const char*> switches;
        const char* type;
        const char* items;    ///< "" when the run stops
        const char* console;  ///< a part of it
    } rows[] = {
        // by type: stored maximums where there are any, else those of the output times
        {{"-max"}, "Depth", "/run/Maximums/Depth max 99999. _d;", "Looking for data in /Maximums/ folder.\n"},
        {{"-max"},
         "water level",
         "/run/Temporal/Water Level tempmax 99999. _h;",
         "Warning - No vector datasets found of type \"water level\"\n"},
        {{"-t99999"}, "Depth", "/run/Maximums/Depth max 99999. _d;", ""},
        {{}, "Depth", "/run/Maximums/Depth max 99999. _d;", "WARNING - No output time specified, using maximums.\n"},
        {{"-min"}, "Depth", "/run/Minimums/Depth min -99999. _d;", ""},
        {{"-t-99999"}, "Depth", "/run/Minimums/Depth min -99999. _d;", ""},
        {{"-min"}, "Water Level", "", "ERROR - Type \"Water Level\" in FILE: no minimums\n"},
        {{"-tmax"}, "Water Level", "/run/Times/Time of Peak h single 900001. ;", ""},
        {{"-tmax"}, "Vector Velocity", "/run/Times/Time of Peak V single 900002. ;", ""},  // its own time is no marker
        {{"-tmax"}, "Depth", "", "Error - Maxtime (-tmax) flag found, with xmdf date type other than"},
        {{"-tAll"}, "Only Max", "", "ERROR - Type \"Only Max\" in FILE: no temporal dataset\n"},
        {{"-t2"}, "Only Max", "", "no temporal dataset to find the output time in\n"},
        {{"-max"}, "Time of Peak", "", "no maximums, and no output times to take them from\n"},
        {{}, "Time of Peak h", "/run/Times/Time of Peak h single 900001. ;", ""},
        // the substring rule, and the name that is not replaced by a longer one
        {{"-tAll"}, "Manning n", "/run/Temporal/Manning n all 0. _n;", "Found: \"/run/Temporal/Manning n2\"\n"},
        {{"-tAll"}, "nning", "/run/Temporal/Manning n2 all 0. _n2;", ""},
        {{"-tAll"},
         "Velocity",
         "/run/Temporal/Velocity all 0. _v;/run/Temporal/Vector Velocity all 0. _Vector_Velocity;",
         ""},
        {{"-tAll"}, "Vector Velocity", "/run/Temporal/Vector Velocity all 0. _v;", ""},
        {{"-max"}, "nothing", "", "ERROR - No datasets found of type \"nothing\" found in FILE\n"},
        {{"-max"},
         "odd",
         "",
         "ERROR - Unknown Data Folder: \"/z odd\"\nExpecting one of: Maximums, Minimums, Times or Temporal.\nIf file "
         "has"},
        // the closest time, the earlier of two; a difference equal to the tolerance is accepted
        {{"-t1", "-dttol0.01"}, "Depth", "/run/Temporal/Depth time2 0.99 _d;", "Found closest time: 0.99\n"},
        {{"-t1", "-dttol0.009"}, "Depth", "", "ERROR - Closest time \"0.99\" is not within time search tolerance\n"},
        {{"-sec", "-t100800"}, "Mass", "/run/Temporal/Mass Error % time2 28. _ME_;", "Found closest time: 100800.\n"},
        // by number, path and folder
        {{"-s1", "-max"},
         "",
         "/run/Maximums/Depth max 99999. _d;",
         "Using specifed scalar dataset: /run/Maximums/Depth\n"},
        {{"-v2"},
         "",
         "/run/Maximums/Vector Velocity max 99999. _v;",
         "Using specifed scalar dataset: /run/Temporal/Vector Velocity\n"},
        {{"-s16"}, "", "", "ERROR - Specifed scalar dataset does not exist.\n   Maximum scalar ID = 15\n"},
        {{"-v3"}, "", "", "ERROR - Specifed vector dataset does not exist.\n   Maximum vector ID = 2\n"},
        {{"-s1", "-t2"}, "", "", "ERROR - Closest time \"99999.\" is not within"},
        {{"-path/z odd"}, "", "/z odd all 0. _z_odd;", ""},
        {{"-pathZ ONE"}, "", "/z one time1 7. _z_one;", ""},
        {{"-path/z odd", "-max"}, "", "/z odd tempmax 99999. _z_odd;", ""},
        {{"-path/z odd", "-min"}, "", "", "ERROR - Dataset \"/z odd\" in FILE: no minimums\n"},
        {{"-path/run/Temporal/Manning n", "-t2"},
         "",
         "/run/Temporal/Manning n time4 2. _n;",
         ""},  // "Manning n2" only contains it
        {{"-path/run/Temporal/Depth", "-max"}, "", "/run/Maximums/Depth max 99999. _d;", ""},
        {{"-path/nowhere"}, "", "", "ERROR - No datasets found of type \"/nowhere\" found in FILE\n"},
        {{"-path"}, "", "", "ERROR - No datasets found of type \"\" found in FILE\n"},
        {{"-Folderminimums"}, "", "/run/Minimums/Depth min -99999. _d;", ""},
        {{"-FolderMaximums", "-tAll"},
         "",
         "/run/Maximums/Depth max 99999. _d;/run/Maximums/Only Max max 99999. _Only_Max;/run/Maximums/Vector Velocity "
         "max 99999. _v;",
         ""},
        {{"-FolderMaximums", "-t2"},
         "",
         "",
         "Warning - Dataset \"/run/Maximums/Only Max\" skipped: no output time 2., the closest is 99999.\n"},
        {{"-FolderTemporal", "-typen", "-t2"}, "Manning n", "/run/Temporal/Manning n time4 2. _n;", ""},
        {{"-FolderTimes"},
         "",
         "/run/Times/Dur a single 200000.5 _Dur_a;/run/Times/Dur b single 200000.5 _Dur_b;/run/Times/Time of Peak V "
         "single 900002. ;"
         "/run/Times/Time of Peak h single 900001. ;",
         ""},
        {{"-FolderRun", "-max"},
         "",
         "/run/Maximums/Depth max 99999. _d;/run/Maximums/Only Max max 99999. _Only_Max;/run/Temporal/Manning n "
         "tempmax 99999. _n;"
         "/run/Temporal/Manning n2 tempmax 99999. _n2;/run/Temporal/Mass Error % tempmax 99999. "
         "_ME_;/run/Temporal/Velocity tempmax 99999. _v;"
         "/run/Temporal/Water Level tempmax 99999. _h;/run/Maximums/Vector Velocity max 99999. _Vector_Velocity;",
         "Warning - Dataset \"/run/Minimums/Depth\" skipped: no maximums"},
        {{"-FolderTimes", "-tmax"},
         "",
         "/run/Times/Time of Peak V single 900002. ;/run/Times/Time of Peak h single 900001. ;",
         "Warning - Dataset \"/run/Times/Dur a\" skipped: no time of peak\n"},
        // all types: every quantity once
        {{"-typeAll", "-min"},
         "",
         "/run/Minimums/Depth min -99999. _d;",
         "Warning - Dataset \"/run/Temporal/Water Level\" skipped: no minimums\n"},
        {{"-typeAll", "-tmax"},
         "",
         "/run/Times/Time of Peak V single 900002. ;/run/Times/Time of Peak h single 900001. ;",
         "Warning - Dataset \"/run/Times/Dur a\" skipped: no time of peak\n"},
        {{"-typeAll", "-t28"},
         "",
         "/run/Temporal/Mass Error % time2 28. _ME_;",
         "Warning - Dataset \"/run/Temporal/Depth\" skipped: no output time 28., the closest is 2.\n"},
        {{"-typeAll"},
         "",
         "/run/Maximums/Depth max 99999. _d;/run/Maximums/Only Max max 99999. _Only_Max;/run/Temporal/Manning n "
         "tempmax 99999. _n;"
         "/run/Temporal/Manning n2 tempmax 99999. _n2;/run/Temporal/Mass Error % tempmax 99999. "
         "_ME_;/run/Temporal/Velocity tempmax 99999. _v;"
         "/run/Temporal/Water Level tempmax 99999. _h;/z odd tempmax 99999. _z_odd;/z one tempmax 99999. _z_one;"
         "/run/Maximums/Vector Velocity max 99999. _Vector_Velocity;",
         "WARNING - No output time specified, using maximums.\n"},
    };
    for (const auto& row : rows) {
        std::string switches;
        for (const char* s : row.switches) switches += std::string(s) + " ";
        CAPTURE(switches);
        const Selected result = selected(file, row.switches, row.type);
        CHECK(result.items == row.items);
        std::string expected = row.console;
        if (const std::size_t at = expected.find("FILE"); at != std::string::npos) expected.replace(at, 4, file);
        CHECK_MESSAGE(holds(result.console, expected), result.console);
        CHECK(openHandles() == 0);
    }
}

TEST_CASE("names that are not quite those of the datasets, and datasets that would share a name") {
    const struct {
        std::vector<TestDataset> datasets;
        std::vector<const char*> switches;
        const char* type;
        const char* items;
        const char* console;
    } rows[] = {
        {{dataset("/r/Temporal/Velocity", {0})},
         {"-typeV", "-tAll"},
         "Vector Velocity",
         "/r/Temporal/Velocity all 0. _v;",
         "WARNING - No datasets of type \"Vector Velocity\" in FILE, taking the scalar type \"Velocity\".\n"},
        {{dataset("/r/Temporal/Velocity", {0})},
         {"-typeV", "-vector", "-tAll"},
         "Vector Velocity",
         "",
         "ERROR - No datasets found of type \"Vector Velocity\""},
        {{dataset("/r/Temporal/Velocity", {0})},
         {"-FolderTemporal", "-typev"},
         "Vector Velocity",
         "/r/Temporal/Velocity time1 0. _v;",
         ""},
        {{dataset("/r/Maximums/Depth", {99999})},
         {"-max"},
         "max",
         "/r/Maximums/Depth max 99999. _d;",
         "WARNING - \"max\" is only in the folder part of the dataset \"/r/Maximums/Depth\".\n"},
        {{dataset("/r/x/Depth", {0})},
         {"-pathr/x"},
         "",
         "/r/x/Depth time1 0. _d;",
         "WARNING - \"r/x\" is only in the folder part of the dataset \"/r/x/Depth\".\n"},
        {{dataset("/a/Temporal/Depth", {0, 1}), dataset("/b/Temporal/Depth", {1, 2}),
          dataset("/b/Temporal/Höhe %", {0})},
         {"-typeAll", "-tAll"},
         "",
         "/a/Temporal/Depth all 0. _a_Temporal_d;/b/Temporal/Depth all 0. _b_Temporal_d;/b/Temporal/Höhe % all 0. "
         "_Höhe__;",
         ""},
        {{dataset("/a/Temporal/Depth", {0, 1}), dataset("/b/Temporal/Depth", {2, 3})},
         {"-typeAll", "-tAll"},
         "",
         "/a/Temporal/Depth all 0. _d;/b/Temporal/Depth all 0. _d;",
         ""},  // told apart by their times
    };
    for (const auto& row : rows) {
        const TemporaryFolder folder;
        const std::string file = folder.name("x.xmdf");
        makeXmdf(file, row.datasets);
        const Selected result = selected(file, row.switches, row.type);
        CHECK(result.items == row.items);
        std::string expected = row.console;
        if (const std::size_t at = expected.find("FILE"); at != std::string::npos) expected.replace(at, 4, file);
        CHECK_MESSAGE(holds(result.console, expected), result.console);
    }
}

#ifndef _WIN32
TEST_CASE("a file that another program holds locked is read without a lock, which is said") {
    const TemporaryFolder folder;
    const std::string file = folder.name("x.xmdf");
    makeXmdf(file, {dataset("/r/Maximums/Depth", {99999})});
    const int other = open(file.c_str(), O_RDWR);
    REQUIRE(flock(other, LOCK_EX) == 0);
    const Selected result = selected(file, {"-max"}, "Depth");
    close(other);
    CHECK(result.items == "/r/Maximums/Depth max 99999. _d;");
    CHECK(holds(result.console, "WARNING - XMDF file \"" + file + "\" is open in another program"));
}
#endif

TEST_CASE("bad files end the run with the operation, the file and the dataset, every handle closed") {
    const TemporaryFolder folder;
    const struct {
        const char* switches;
        std::vector<TestDataset> datasets;
        const char* message;
    } rows[] = {
        {"-max",
         {dataset("/r/Maximums/Depth", {})},
         "ERROR - Exracting Number of Values in Dataset [XF_GET_DATASET_NUMVALS].\n        \"FILE\": "
         "/r/Maximums/Depth/Values does"},
        {"-tAll",
         {[] {
             auto d = dataset("/r/Temporal/Depth", {0.0});
             d.times.clear();
             return d;
         }()},
         "ERROR - Extracting number of times [XF_GET_DATASET_NUM_TIMES] from xmdf file\n        \"FILE\": "
         "/r/Temporal/Depth/Times does"},
        {"-tAll",
         {dataset("/r/Temporal/Depth", {0.0, std::numeric_limits<double>::quiet_NaN()})},
         "ERROR - Extracting times [XF_GET_DATASET_TIMES] from xmdf file\n        \"FILE\": /r/Temporal/Depth/Times, "
         "number 2"},
        {"-typeAll", {}, "Warning - Number of scalar paths less than or equal to zero.\n"},
    };
    for (const auto& row : rows) {
        const std::string file = folder.name("bad.xmdf");
        makeXmdf(file, row.datasets);
        std::string expected = row.message;
        if (const std::size_t at = expected.find("FILE"); at != std::string::npos) expected.replace(at, 4, file);
        const Selected result = selected(file, {row.switches}, "Depth");
        CHECK(result.items.empty());
        CHECK_MESSAGE(holds(result.console, expected), result.console);
        CHECK(openHandles() == 0);
    }
    const Selected text = selected(folder.write("text.xmdf", "no HDF5"), {"-max"}, "Depth");
    CHECK(holds(text.console, "ERROR - Could not open XMDF file \"" + folder.name("text.xmdf") + "\"\n        \""));
    CHECK(text.console.ends_with("<stopped>"));
}

TEST_CASE("the stated limits count the datasets of /Times/ by sort, never output times") {
    const TemporaryFolder folder;
    const struct {
        double marker;
        int most;
        const char* message;
    } rows[] = {{100000.5, 100, "time outputs, limit is 100."},
                {200001.0, 100, "duration outputs, limit is 100."},
                {900001.0, 10, "peak time outputs, limit is 10."}};
    for (const auto& row : rows)
        for (const int count : {row.most, row.most + 1}) {
            const std::string file = folder.name("many.xmdf");
            std::vector<TestDataset> datasets = {dataset("/r/Temporal/Depth", std::vector<double>(150, 1.0))};
            for (int i = 0; i < count; ++i) datasets.push_back(dataset("/r/Times/T" + std::to_string(i), {row.marker}));
            makeXmdf(file, datasets);
            const Selected result = selected(file, {"-Folderr"}, "");
            CHECK(holds(result.console, std::string("ERROR - Exceeded maximum number of ") + row.message) ==
                  (count > row.most));
        }
}

TEST_CASE("times become hours by the file's unit; markers and unknown units") {
    const TemporaryFolder folder;
    const struct {
        const char* path;
        const char* unit;
        double time, hours;
        bool warned;
    } rows[] = {
        {"/r/Temporal/d", "MINUTES", 90.0, 1.5, false},
        {"/r/Temporal/d", "days", 2.0, 48.0, false},
        {"/r/Temporal/d", "Seconds", 100800.0, 28.0, false},    // above every marker's start, yet a time
        {"/r/Temporal/d", "Seconds", 99999.0, 99999.0, false},  // stored maximums among the times
        {"/r/Times/d", "Seconds", 100800.0, 100800.0, false},   // below Times a threshold
        {"/r/Temporal/d", "s", 7200.0, 2.0, false},
        {"/r/Temporal/d", "SECS", 7200.0, 2.0, false},
        {"/r/Temporal/d", "min", 90.0, 1.5, false},
        {"/r/Temporal/d", "hrs", 2.0, 2.0, false},
        {"/r/Temporal/d", "h", 2.0, 2.0, false},
        {"/r/Temporal/d", "d", 2.0, 48.0, false},
        {"/r/Temporal/d", "fortnights", 2.0, 2.0, true},
        {"/r/Temporal/d", "", 2.0, 2.0, true},
        {"/r/Maximums/d", "", 99999.0, 99999.0, false},  // no time depends on the unit
    };
    for (const auto& row : rows) {
        CAPTURE(row.unit);
        const std::string file = folder.name("units.xmdf");
        makeXmdf(file, {dataset(row.path, {row.time}, false, row.unit)});
        XmdfFacts facts;
        const std::string console = consoleOf([&] {
            XmdfCatalogue catalogue = OPEN_XMDF_FILES({file});
            facts = READ_XMDF_FACTS(catalogue.front(), row.path);
        });
        CHECK(facts.times.front().number == row.hours);
        CHECK(holds(console, "WARNING - Unknown time unit") == row.warned);
    }
}
