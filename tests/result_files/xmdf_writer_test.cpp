#include "result_files/xmdf_writer.h"

#include "profiles/small_flood.h"
#include "testing.h"
#include "xmdf/h5_text.h"
#include "xmdf/make_xmdf.h"

TEST_CASE("An .xmdf is read back as it was written, in the folders that its times belong to") {
    const TemporaryFolder folder;
    const std::string name = folder.name("x.xmdf");
    Results results = scalarResults({1, NO_VALUE, 3, 4, 5, 6});
    results.nodes = 6;
    results.quantity = "Depth";
    results.units = "m";
    const std::vector<std::uint8_t> flags = {1, 0};
    const std::string said = consoleOf([&] {
        XmdfWriter writer(name, "run", name);
        writer.write(results, "/a/Temporal/Depth", flags);
        results.time = {1.0 / 3.0};
        results.x[1] = -1.0F;
        writer.write(results, "/a/Temporal/Depth", flags);
        results.time = TIME_MAXIMUM;
        writer.write(results, "/a/Maximums/Depth", {});
        results.time = {};
        writer.write(results, "/b/Temporal/Depth", flags);  // called alike
        results.time = TIME_OF_MAXIMUM;                     // of a .dat: a time of peak here
        results.quantity = "Water Level";
        writer.write(results, "", flags);
        writer.close();
    });
    CHECK(said == "WARNING - Another dataset of Temporal is called Depth: /b/Temporal/Depth is written as Depth_2.\n");
    CHECK(openHandles() == 0);
    XmdfFile file;
    REQUIRE(xfopenfile_f(name, file) >= 0);
    std::vector<std::string> paths;
    REQUIRE(xfgetscalardatasetpaths_f(*file, paths) >= 0);
    CHECK(paths == std::vector<std::string>{"/run/Maximums/Depth", "/run/Temporal/Depth", "/run/Temporal/Depth_2",
                                            "/run/Times/Time of Peak h"});
    // path, flags, times, then the smallest and the largest value of the last
    const std::tuple<const char*, int, std::vector<double>, float> rows[] = {
        {"/run/Maximums/Depth", 0, {99999.0}, -1.0F},
        {"/run/Temporal/Depth", 2, {0.0, 1.0 / 3.0}, -1.0F},
        {"/run/Times/Time of Peak h", 2, {900001.0}, -1.0F},
    };
    for (const auto& [path, flagged, expected, least] : rows) {
        CAPTURE(path);
        XmdfGroup group;
        std::int32_t cells = -1;
        std::vector<double> times;
        std::vector<float> mins, maxs, values(6);
        std::string unit;
        REQUIRE(xfopengroup_f(*file, path, group) >= 0);
        CHECK((xfgetdatasetnumactive_f(*group, cells) >= 0 && cells == flagged));
        CHECK((xfgetdatasettimes_f(*group, times) >= 0 && times == expected));
        CHECK((xfgetdatasettimeunits_f(*group, unit) >= 0 && unit == "Hours"));
        CHECK((xfgetdatasetunits_f(*group, unit) >= 0 && unit == "m"));
        CHECK(xfgetdatasetextremes_f(*group, mins, maxs) >= 0);
        CHECK((mins.size() == times.size() && mins.back() == least && maxs.back() == 6.0F));
        if (times.size() == 2) CHECK(mins.front() == 1.0F);  // -99999 is no value
        CHECK(xfreadscalarvaluestimestep_f(*group, static_cast<std::int32_t>(times.size()), values) >= 0);
        CHECK(values == std::vector<float>{-1, NO_VALUE, 3, 4, 5, 6});
    }
}

TEST_CASE("A file that cannot be written ends the run with the reason") {
    const TemporaryFolder folder;
    const std::string said = consoleOf([&] { XmdfWriter(folder.name("no folder/x.xmdf"), "run", "x.xmdf"); });
    CHECK(said.starts_with("ERROR - Could not write x.xmdf. The file is incomplete.\n        \""));
    CHECK_MESSAGE(holds(said, "No such file or directory"), said);
    CHECK(said.ends_with("<stopped>"));
}
