#include "inputs/xmdf_selection.h"

#include "inputs/xmdf_search.h"
#include "run_control/read_switches.h"
#include "services/files.h"
#include "services/options.h"
#include "testing.h"
#include "text_utils/numbers.h"
#include "xmdf/make_xmdf.h"

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
    std::vector<TestDataset> datasets;
    for (const Row& row : rowsOf(R"(
/run/Maximums/Depth | 99999
/run/Maximums/Only Max | 99999
/run/Maximums/Vector Velocity | 99999
/run/Minimums/Depth | -99999
/run/Temporal/Depth | 0 0.99 1.01 2
/run/Temporal/Manning n | 0 0.99 1.01 2
/run/Temporal/Manning n2 | 0 0.99 1.01 2
/run/Temporal/Mass Error % | 0 100800 | seconds
/run/Temporal/Vector Velocity | 0 0.99 1.01 2
/run/Temporal/Velocity | 0 0.99 1.01 2
/run/Temporal/Water Level | 0 0.99 1.01 2
/run/Times/Dur a | 200000.5
/run/Times/Dur b | 200000.5
/run/Times/Time of Peak V | 0
/run/Times/Time of Peak h | 900001
/z odd | 1 2
/z one | 7
)"))
        datasets.push_back(dataset(row[0], listOf(row[1]), holds(row[0], "Vector"), row[2].empty() ? "Hours" : row[2]));
    return datasets;
}

const char* readName(XmdfRead read) {
    constexpr const char* NAMES[] = {"max", "min", "single", "time", "tempmax", "all"};
    return NAMES[static_cast<std::size_t>(read)];
}

/// "path read time tag;" for each item of a run with these switches, without the folder /run and the times of maximums
/// and minimums, and what the run printed.
struct Selected {
    std::string items;
    std::string console;
};
Selected selected(const std::string& file, const std::vector<std::string>& switches, const std::string& type) {
    Selected result;
    readSwitches(switches);
    result.console = consoleOf([&] {
        INITIALISE_FILES();
        XmdfCatalogue catalogue = OPEN_XMDF_FILES({file});
        for (const XmdfItem& item : SELECT_XMDF_OUTPUTS(catalogue, OPTIONS(), type)) {
            const bool marked = item.time == TIME_MAXIMUM || item.time == TIME_MINIMUM;
            result.items +=
                (item.path.starts_with("/run/") ? item.path.substr(4) : item.path) + " " + readName(item.read);
            if (item.read == XmdfRead::Time) result.items += AINTEGER(item.step);
            result.items += (marked ? " " : " " + AREAL8(item.time.number) + " ") + item.tag + ";";
        }
    });
    return result;
}

/// console: "$" ends a line.
void checkRow(const std::string& file, const std::string& switches, const std::string& type, const std::string& items,
              const std::string& console) {
    CAPTURE(switches);
    const Selected result = selected(file, switchesOf(switches), type);
    CHECK(result.items == items);
    CHECK_MESSAGE(holds(result.console, replaced(replaced(console, "$", "\n"), "FILE", file)), result.console);
    CHECK(openHandles() == 0);
}

}  // namespace

// Rows of switches, type, items ("" when the run stops) and a part of the console; FILE stands for the name of the
// file.
TEST_CASE("what the switches select, how it is read and what it is called") {
    const TemporaryFolder folder;
    const std::string file = folder.name("x.xmdf");
    makeXmdf(file, model());
    forEachRow(R"(
# by type: stored maximums where there are any, else those of the output times
-max | Depth | /Maximums/Depth max _d; | Looking for data in /Maximums/ folder.$
-max | water level | /Temporal/Water Level tempmax _h; | Warning - No vector datasets found of type "water level"$
-t99999 | Depth | /Maximums/Depth max _d;
 | Depth | /Maximums/Depth max _d; | WARNING - No output time specified, using maximums.$
-min | Depth | /Minimums/Depth min _d;
-t-99999 | Depth | /Minimums/Depth min _d;
-min | Water Level |  | ERROR - Type "Water Level" in FILE: no minimums$
-tmax | Water Level | /Times/Time of Peak h single 900001. ;
-tmax | Vector Velocity | /Times/Time of Peak V single 900002. ;
# its own time is no marker
-tmax | Depth |  | Error - Maxtime (-tmax) flag found, with xmdf date type other than
-tAll | Only Max |  | ERROR - Type "Only Max" in FILE: no temporal dataset$
-t2 | Only Max |  | no temporal dataset to find the output time in$
-max | Time of Peak |  | no maximums, and no output times to take them from$
 | Time of Peak h | /Times/Time of Peak h single 900001. ;
# the substring rule, and the name that is not replaced by a longer one
-tAll | Manning n | /Temporal/Manning n all 0. _n; | Found: "/run/Temporal/Manning n2"$
-tAll | nning | /Temporal/Manning n2 all 0. _n2;
-tAll | Velocity | /Temporal/Velocity all 0. _v;/Temporal/Vector Velocity all 0. _Vector_Velocity;
-tAll | Vector Velocity | /Temporal/Vector Velocity all 0. _v;
-max | nothing |  | ERROR - No datasets found of type "nothing" found in FILE$
-max | odd |  | ERROR - Unknown Data Folder: "/z odd"$Expecting one of: Maximums, Minimums, Times or Temporal.$If file has
# the closest time, the earlier of two; a difference equal to the tolerance is accepted
-t1 -dttol0.01 | Depth | /Temporal/Depth time2 0.99 _d; | Found closest time: 0.99$
-t1 -dttol0.009 | Depth |  | ERROR - Closest time "0.99" is not within time search tolerance$
-sec -t100800 | Mass | /Temporal/Mass Error % time2 28. _ME_; | Found closest time: 100800.$
# by number, path and folder
-s1 -max |  | /Maximums/Depth max _d; | Using specifed scalar dataset: /run/Maximums/Depth$
-v2 |  | /Maximums/Vector Velocity max _v; | Using specifed scalar dataset: /run/Temporal/Vector Velocity$
-s16 |  |  | ERROR - Specifed scalar dataset does not exist.$   Maximum scalar ID = 15$
-v3 |  |  | ERROR - Specifed vector dataset does not exist.$   Maximum vector ID = 2$
# a marker is no time that a user could ask for
-s1 -t2 |  |  | ERROR - Closest time "Max" is not within
-path/z odd |  | /z odd all 0. _z_odd;
-pathZ ONE |  | /z one time1 7. _z_one;
-path/z odd -max |  | /z odd tempmax _z_odd;
-path/z odd -min |  |  | ERROR - Dataset "/z odd" in FILE: no minimums$
-path/run/Temporal/Manning n -t2 |  | /Temporal/Manning n time4 2. _n;
# "Manning n2" only contains it
-path/run/Temporal/Depth -max |  | /Maximums/Depth max _d;
-path/nowhere |  |  | ERROR - No datasets found of type "/nowhere" found in FILE$
-path |  |  | ERROR - No datasets found of type "" found in FILE$
-Folderminimums |  | /Minimums/Depth min _d;
-FolderMaximums -tAll |  | /Maximums/Depth max _d;/Maximums/Only Max max _Only_Max;/Maximums/Vector Velocity max _v;
-FolderMaximums -t2 |  |  | Warning - Dataset "/run/Maximums/Only Max" skipped: no output time 2., the closest is Max$
-FolderTemporal -typen -t2 | Manning n | /Temporal/Manning n time4 2. _n;
-FolderTimes |  | /Times/Dur a single 200000.5 _Dur_a;/Times/Dur b single 200000.5 _Dur_b;\
    /Times/Time of Peak V single 900002. ;/Times/Time of Peak h single 900001. ;
-FolderRun -max |  | /Maximums/Depth max _d;/Maximums/Only Max max _Only_Max;/Temporal/Manning n tempmax _n;\
    /Temporal/Manning n2 tempmax _n2;/Temporal/Mass Error % tempmax _ME_;/Temporal/Velocity tempmax _v;\
    /Temporal/Water Level tempmax _h;/Maximums/Vector Velocity max _Vector_Velocity;\
     | Warning - Dataset "/run/Minimums/Depth" skipped: no maximums
-FolderTimes -tmax |  | /Times/Time of Peak V single 900002. ;/Times/Time of Peak h single 900001. ;\
     | Warning - Dataset "/run/Times/Dur a" skipped: no time of peak$
# all types: every quantity once
-typeAll -min |  | /Minimums/Depth min _d; | Warning - Dataset "/run/Temporal/Water Level" skipped: no minimums$
-typeAll -tmax |  | /Times/Time of Peak V single 900002. ;/Times/Time of Peak h single 900001. ;\
     | Warning - Dataset "/run/Times/Dur a" skipped: no time of peak$
-typeAll -t28 |  | /Temporal/Mass Error % time2 28. _ME_;\
     | Warning - Dataset "/run/Temporal/Depth" skipped: no output time 28., the closest is 2.$
-typeAll |  | /Maximums/Depth max _d;/Maximums/Only Max max _Only_Max;/Temporal/Manning n tempmax _n;\
    /Temporal/Manning n2 tempmax _n2;/Temporal/Mass Error % tempmax _ME_;/Temporal/Velocity tempmax _v;\
    /Temporal/Water Level tempmax _h;/z odd tempmax _z_odd;/z one tempmax _z_one;\
    /Maximums/Vector Velocity max _Vector_Velocity; | WARNING - No output time specified, using maximums.$
)",
               [&](const Row& row) { checkRow(file, row[0], row[1], row[2], row[3]); });
}

// The same behind the datasets of the file and their times.
TEST_CASE("names that are not quite those of the datasets, and datasets that would share a name") {
    const TemporaryFolder folder;
    const std::string file = folder.name("x.xmdf");
    forEachRow(R"(
/r/Temporal/Velocity 0 | -typeV -tAll | Vector Velocity | /r/Temporal/Velocity all 0. _v;\
    | WARNING - No datasets of type "Vector Velocity" in FILE, taking the scalar type "Velocity".$
/r/Temporal/Velocity 0 | -typeV -vector -tAll | Vector Velocity | | ERROR - No datasets found of type "Vector Velocity"
/r/Temporal/Velocity 0 | -FolderTemporal -typev | Vector Velocity | /r/Temporal/Velocity time1 0. _v;
/r/Maximums/Depth 99999 | -max | max | /r/Maximums/Depth max _d;\
    | WARNING - "max" is only in the folder part of the dataset "/r/Maximums/Depth".$
/r/x/Depth 0 | -pathr/x | | /r/x/Depth time1 0. _d; | WARNING - "r/x" is only in the folder part of the dataset "/r/x/Depth".$
/a/Temporal/Depth 1;/b/Temporal/Depth 1;/b/Temporal/Höhe% 0 | -typeAll -tAll | | /a/Temporal/Depth all 0. _a_Temporal_d;\
    /b/Temporal/Depth all 0. _b_Temporal_d;/b/Temporal/Höhe% all 0. _Höhe_;
# told apart by their times
/a/Temporal/Depth 0;/b/Temporal/Depth 2 | -typeAll -tAll | | /a/Temporal/Depth all 0. _d;/b/Temporal/Depth all 0. _d;
)",
               [&](const Row& row) {
                   std::vector<TestDataset> datasets;
                   std::istringstream list(row[0]);
                   for (std::string one; std::getline(list, one, ';');) {
                       const std::size_t blank = one.rfind(' ');
                       datasets.push_back(dataset(one.substr(0, blank), {std::stod(one.substr(blank))}));
                   }
                   makeXmdf(file, datasets);
                   checkRow(file, row[1], row[2], row[3], row[4]);
               });
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
    CHECK(result.items == "/r/Maximums/Depth max _d;");
    CHECK(holds(result.console, "WARNING - XMDF file \"" + file + "\" is open in another program"));
}
#endif

TEST_CASE("bad files end the run with the operation, the file and the dataset, every handle closed") {
    const TemporaryFolder folder;
    const std::string file = folder.name("bad.xmdf");
    TestDataset noTimes = dataset("/r/Temporal/Depth", {0.0});
    noTimes.times.clear();
    const double none = std::numeric_limits<double>::quiet_NaN();
    makeXmdf(file, {dataset("/r/Maximums/Depth", {}), noTimes, dataset("/r/Temporal/Odd", {0.0, none})});
    forEachRow(R"(
-max | Depth | | ERROR - Exracting Number of Values in Dataset [XF_GET_DATASET_NUMVALS].$        "FILE": \
    /r/Maximums/Depth/Values does
-tAll | Depth | | ERROR - Extracting number of times [XF_GET_DATASET_NUM_TIMES] from xmdf file$        "FILE": \
    /r/Temporal/Depth/Times does
-tAll | Odd | | ERROR - Extracting times [XF_GET_DATASET_TIMES] from xmdf file$        "FILE": \
    /r/Temporal/Odd/Times, number 2
)",
               [&](const Row& row) { checkRow(file, row[0], row[1], row[2], row[3]); });
    makeXmdf(file, {});
    checkRow(file, "-typeAll", "Depth", "", "Warning - Number of scalar paths less than or equal to zero.$");
    const std::string text = folder.write("text.xmdf", "no HDF5");
    checkRow(text, "-max", "Depth", "", "ERROR - Could not open XMDF file \"FILE\"$        \"");
}

TEST_CASE("the stated limits count the datasets of /Times/ by sort, never output times") {
    const TemporaryFolder folder;
    const std::tuple<double, int, const char*> rows[] = {{100000.5, 100, "time outputs, limit is 100."},
                                                         {200001.0, 100, "duration outputs, limit is 100."},
                                                         {900001.0, 10, "peak time outputs, limit is 10."}};
    for (const auto& [marker, most, message] : rows)
        for (const int count : {most, most + 1}) {
            const std::string file = folder.name("many.xmdf");
            std::vector<TestDataset> datasets = {dataset("/r/Temporal/Depth", std::vector<double>(150, 1.0))};
            for (int i = 0; i < count; ++i) datasets.push_back(dataset("/r/Times/T" + std::to_string(i), {marker}));
            makeXmdf(file, datasets);
            const Selected result = selected(file, {"-Folderr"}, "");
            CHECK(holds(result.console, std::string("ERROR - Exceeded maximum number of ") + message) ==
                  (count > most));
        }
}

// Path, unit, stored time, hours; a WARNING.
TEST_CASE("times become hours by the file's unit; markers and unknown units") {
    const TemporaryFolder folder;
    const std::string file = folder.name("units.xmdf");
    for (const Row& row : rowsOf(R"(
/r/Temporal/d | MINUTES | 90 | 1.5
/r/Temporal/d | days | 2 | 48
# above every marker's start, yet a time; below Times a threshold
/r/Temporal/d | Seconds | 100800 | 28
/r/Times/d | Seconds | 100800 | 100800
# stored maximums among the times
/r/Temporal/d | Seconds | 99999 | 99999
/r/Temporal/d | s | 7200 | 2
/r/Temporal/d | min | 90 | 1.5
/r/Temporal/d | hrs | 2 | 2
/r/Temporal/d | h | 2 | 2
/r/Temporal/d | fortnights | 2 | 2 | warned
/r/Temporal/d | | 2 | 2 | warned
# no time depends on the unit
/r/Maximums/d | | 99999 | 99999
)")) {
        CAPTURE(row[1]);
        makeXmdf(file, {dataset(row[0], {numberOf(row[2])}, false, row[1])});
        XmdfFacts facts;
        const std::string console = consoleOf([&] {
            XmdfCatalogue catalogue = OPEN_XMDF_FILES({file});
            facts = READ_XMDF_FACTS(catalogue.front(), row[0]);
        });
        CHECK(facts.times.front().number == numberOf(row[3]));
        CHECK(holds(console, "WARNING - Unknown time unit") != row[4].empty());
    }
}
