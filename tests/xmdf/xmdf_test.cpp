#include "xmdf/xmdf.h"
#include "temporary_folder.h"
#include "xmdf/make_xmdf.h"

#include <doctest/doctest.h>

#include <limits>

namespace {

constexpr float MISSING = -99999.0F;

TestDataset scalar(const std::string& path) {
    TestDataset d;
    d.path = path;
    d.times = {0.0, 1.0};
    d.values = {1, 2, 3, 4, 5, MISSING};
    d.shape = {2, 3};
    d.flags = {1, 0, 0, 1};
    return d;
}

TestDataset vectors(const std::string& path) {
    TestDataset d;
    d.path = path;
    d.times = {0.5};
    d.values = {1, 2, 3, 4, 5, 6};
    d.shape = {1, 3, 2};
    d.groupType = "DATASET VECTOR";
    return d;
}

template <typename Change>
TestDataset changed(TestDataset d, Change change) {
    change(d);
    return d;
}

/// Everything a reader asks of a dataset, in a reader's order; stops at the first failure.
XmdfStatus readAll(XmdfFileState& file, const std::string& path, bool vector) {
    XmdfGroup group;
    std::int32_t values = 0, active = 0, times = 0;
    std::string units;
    std::vector<double> list;
    if (xfopengroup_f(file, path, group) < 0 || xfgetdatasetnumvals_f(*group, values) < 0 ||
        xfgetdatasetnumactive_f(*group, active) < 0 || xfgetdatasettimeunits_f(*group, units) < 0 ||
        xfgetdatasetnumtimes_f(*group, times) < 0 || xfgetdatasettimes_f(*group, list) < 0)
        return -1;
    std::vector<float> row(static_cast<std::size_t>(values) * (vector ? 2 : 1));
    std::vector<std::uint8_t> flags(static_cast<std::size_t>(active));
    for (std::int32_t step = 1; step <= times; ++step) {
        if ((vector ? xfreadvectorvaluestimestep_f(*group, step, row)
                    : xfreadscalarvaluestimestep_f(*group, step, row)) < 0)
            return -1;
        if (active > 0 && xfreadactivitytimestep_f(*group, step, flags) < 0) return -1;
    }
    return xfclosegroup_f(group);
}

std::vector<std::string> scalarPaths(const std::string& name, std::vector<std::string>* skipped = nullptr) {
    XmdfFile file;
    std::vector<std::string> paths;
    REQUIRE(xfopenfile_f(name, file) >= 0);
    REQUIRE(xfgetscalardatasetpaths_f(*file, paths) >= 0);
    if (skipped != nullptr) *skipped = XMDF_SKIPPED(*file);
    return paths;
}

}  // namespace

TEST_CASE("datasets are listed as full paths in name order, depth first, scalars apart from vectors") {
    const TemporaryFolder folder;
    const std::string name = folder.name("a.xmdf");
    makeXmdf(name, {scalar("/run/Temporal/b"), scalar("/run/Temporal/B"), vectors("/run/Maximums/V"),
                    scalar("/run/Maximums/b"), scalar("/a"), scalar("/a/PROPERTIES/below a dataset")});
    XmdfFile file;
    std::int32_t count = 0, longest = 0;
    std::vector<std::string> paths;
    REQUIRE(xfopenfile_f(name, file) >= 0);
    CHECK(xfgetscalardatasetsinfo_f(*file, count, longest) >= 0);
    CHECK(count == 4);
    CHECK(longest == 15);
    CHECK(scalarPaths(name) == std::vector<std::string>{"/a", "/run/Maximums/b", "/run/Temporal/B", "/run/Temporal/b"});
    CHECK(xfgetvectordatasetpaths_f(*file, paths) >= 0);
    CHECK(paths == std::vector<std::string>{"/run/Maximums/V"});
    CHECK(xfclosefile_f(file) >= 0);
    CHECK(openHandles() == 0);
}

TEST_CASE("links: each group once, nothing followed out of the file, nothing lost silently") {
    const TemporaryFolder folder;
    const std::string name = folder.name("a.xmdf");
    makeXmdf(folder.name("other.xmdf"), {scalar("/d")});
    makeXmdf(
        name, {scalar("/run/Temporal/d"), changed(scalar("/run/untyped"), [](TestDataset& d) { d.groupType.clear(); })},
        [](hid_t id) {
            H5Lcreate_hard(id, "/run", id, "/run/Temporal/again", H5P_DEFAULT, H5P_DEFAULT);  // a cycle
            H5Lcreate_soft("/run/Temporal", id, "/alias", H5P_DEFAULT, H5P_DEFAULT);  // before its target in name order
            H5Lcreate_soft("/nowhere", id, "/run/dangling", H5P_DEFAULT, H5P_DEFAULT);
            H5Lcreate_external("other.xmdf", "/d", id, "/run/elsewhere", H5P_DEFAULT, H5P_DEFAULT);
        });
    std::vector<std::string> skipped;
    CHECK(scalarPaths(name, &skipped) == std::vector<std::string>{"/run/Temporal/d"});
    CHECK(skipped == std::vector<std::string>{
                         "Warning - Dangling link skipped in \"" + name + "\": /run/dangling",
                         "Warning - External link skipped in \"" + name + "\": /run/elsewhere",
                         "Warning - Group of values without a Grouptype skipped in \"" + name + "\": /run/untyped"});
    CHECK(openHandles() == 0);
}

TEST_CASE("a thousand levels of folders are read without recursion") {
    const TemporaryFolder folder;
    const std::string name = folder.name("deep.xmdf");
    std::string path;
    for (int i = 0; i < 1000; ++i) path += "/f";
    makeXmdf(name, {scalar(path + "/d")});
    CHECK(scalarPaths(name) == std::vector<std::string>{path + "/d"});
}

TEST_CASE("values come back whatever the type, the text form and the storage in the file") {
    const hid_t types[] = {-1, H5T_IEEE_F64BE, H5T_STD_I8LE, H5T_STD_U16BE, H5T_STD_I64LE};
    const TextForm forms[] = {TextForm::FixedNul, TextForm::FixedBlank, TextForm::OneElementArray, TextForm::Variable};
    const std::vector<hsize_t> chunks[] = {{}, {1, 3}, {2, 2}, {2, 1}, {1, 2}};
    for (std::size_t row = 0; row < 5; ++row) {
        CAPTURE(row);
        const TemporaryFolder folder;
        const std::string name = folder.name("a.xmdf");
        TestDataset d = scalar("/d");
        d.values[5] = 6;
        d.storedAs = types[row];
        d.text = forms[row % 4];
        d.chunk = chunks[row];
        makeXmdf(name, {d});
        XmdfFile file;
        XmdfGroup group;
        std::vector<float> values(3);
        std::vector<std::uint8_t> flags(2);
        std::string units;
        REQUIRE(xfopenfile_f(name, file) >= 0);
        REQUIRE(xfopengroup_f(*file, "/d", group) >= 0);
        CHECK(xfgetdatasettimeunits_f(*group, units) >= 0);
        CHECK(units == "Hours");
        CHECK(xfreadscalarvaluestimestep_f(*group, 2, values) >= 0);
        CHECK(values == std::vector<float>{4, 5, 6});
        CHECK(xfreadactivitytimestep_f(*group, 2, flags) >= 0);
        CHECK(flags == std::vector<std::uint8_t>{0, 1});
        CHECK(xfreadscalarvaluestimestep_f(*group, 0, values) < 0);
        CHECK(xfreadscalarvaluestimestep_f(*group, 3, values) < 0);
        CHECK(xfreadvectorvaluestimestep_f(*group, 1, values) < 0);
        values.resize(4);
        CHECK(xfreadscalarvaluestimestep_f(*group, 1, values) < 0);
    }
    CHECK(openHandles() == 0);
}

TEST_CASE("a bad dataset is refused with the file, its path and what is wrong; no handle stays open") {
    const struct {
        TestDataset dataset;
        const char* reason;
        std::function<void(hid_t)> more{};
    } rows[] = {
        {changed(scalar("/d"),
                 [](auto& d) {
                     d.values.clear();
                     d.flags.clear();
                 }),
         "/d/Values does not exist"},
        {changed(scalar("/d"), [](auto& d) { d.times.clear(); }), "/d/Times does not exist"},
        {changed(scalar("/d"), [](auto& d) { d.times.push_back(2.0); }),
         "/d/Times has 3 times, but \"FILE\": /d/Values has 2"},
        {changed(scalar("/d"), [](auto& d) { d.times[1] = std::numeric_limits<double>::quiet_NaN(); }),
         "/d/Times, number 2, is not a finite number"},
        {changed(scalar("/d"),
                 [](auto& d) {
                     d.shape = {6};
                     d.flags.clear();
                 }),
         "/d/Values has 1 dimensions, expecting 2"},
        {changed(vectors("/d"),
                 [](auto& d) {
                     d.shape = {1, 6};
                 }),
         "/d/Values has 2 dimensions, expecting 3"},
        {changed(vectors("/d"),
                 [](auto& d) {
                     d.shape = {1, 2, 3};
                 }),
         "/d/Values has 3 components, expecting 2"},
        {changed(scalar("/d"), [](auto& d) { d.groupType.clear(); }), "/d has no Grouptype of a dataset"},
        {changed(scalar("/other"), [](auto&) {}), "/d could not be opened (HDF5: "},
        {changed(scalar("/d"),
                 [](auto& d) {
                     d.shape = {2, 0};
                     d.flags.clear();
                 }),
         "/d/Values has 0 values per time"},
        {changed(scalar("/d"),
                 [](auto& d) {
                     d.shape = {0, 3};
                     d.flags.clear();
                 }),
         "/d/Values has 0 times"},
        {changed(scalar("/d"), [](auto& d) { d.flags.clear(); }),
         "/d/Active has 4 times, but \"FILE\": /d/Values has 2",
         [](hid_t id) { H5Lcreate_hard(id, "/e/Values", id, "/d/Active", H5P_DEFAULT, H5P_DEFAULT); }},
        {changed(scalar("/d"),
                 [](auto& d) {
                     d.values.clear();
                     d.flags.clear();
                 }),
         "/d/Values does not hold numbers",
         [](hid_t id) {
             const hsize_t shape[] = {2, 3};
             const H5Space space(H5Screate_simple(2, shape, nullptr));
             H5Dataset(H5Dcreate2(id, "/d/Values", H5T_C_S1, space.id(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
         }},
        {changed(scalar("/d"),
                 [](auto& d) {
                     d.values.clear();
                     d.flags.clear();
                 }),
         "/d/Values is stored in chunks of 2301 MB, the limit is 2048 MB",
         [](hid_t id) {
             const hsize_t shape[] = {1, 603000000}, most[] = {H5S_UNLIMITED, H5S_UNLIMITED};
             const H5Space space(H5Screate_simple(2, shape, most));
             const H5Properties layout(H5Pcreate(H5P_DATASET_CREATE));
             H5Pset_chunk(layout.id(), 2, shape);
             H5Dataset(H5Dcreate2(id, "/d/Values", H5T_IEEE_F32LE, space.id(), H5P_DEFAULT, layout.id(), H5P_DEFAULT));
         }},
        {changed(scalar("/d"), [](auto& d) { d.times.clear(); }), "/d/Times has 20000000000 times",
         [](hid_t id) {
             const hsize_t shape[] = {20000000000};
             const H5Space space(H5Screate_simple(1, shape, nullptr));
             H5Dataset(H5Dcreate2(id, "/d/Times", H5T_IEEE_F64LE, space.id(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
         }},
        {changed(scalar("/d"),
                 [](auto& d) {
                     d.chunk = {1, 3};
                 }),
         "/d/Values, time number 2, could not be read (HDF5: ",
         [](hid_t id) {
             const hsize_t second[] = {1, 0};
             const H5Dataset data(H5Dopen2(id, "/d/Values", H5P_DEFAULT));
             H5Dwrite_chunk(data.id(), H5P_DEFAULT, 0, second, 7, "damaged");
         }},
    };
    for (const auto& row : rows) {
        const TemporaryFolder folder;
        const std::string name = folder.name("a.xmdf");
        makeXmdf(name,
                 {row.dataset, changed(scalar("/e"),
                                       [](auto& d) {
                                           d.shape = {4, 1};
                                           d.values.resize(4);
                                           d.times = {0, 1, 2, 3};
                                       })},
                 row.more);
        std::string expected = row.reason;
        if (const std::size_t at = expected.find("FILE"); at != std::string::npos) expected.replace(at, 4, name);
        CAPTURE(expected);
        XmdfFile file;
        REQUIRE(xfopenfile_f(name, file) >= 0);
        CHECK(readAll(*file, "/d", row.dataset.groupType == "DATASET VECTOR") < 0);
        CHECK_MESSAGE(XMDF_REASON().starts_with("\"" + name + "\": " + expected), XMDF_REASON());
        CHECK(xfclosefile_f(file) >= 0);
        CHECK(openHandles() == 0);
    }
}

TEST_CASE("what is no whole HDF5 file is refused") {
    const TemporaryFolder folder;
    const std::string whole = folder.name("whole.xmdf");
    TestDataset large = scalar("/run/Temporal/d");
    large.shape = {2, 5000};
    large.values.assign(10000, 1.5F);
    makeXmdf(whole, {large});
    const std::string bytes = folder.read("whole.xmdf");
    const std::string damaged = folder.name("damaged.xmdf");
    for (std::size_t length = 0; length < bytes.size(); length += 1 + length / 16) {
        folder.write("damaged.xmdf", std::string_view(bytes).substr(0, length));
        XmdfFile file;
        CHECK(xfopenfile_f(damaged, file) < 0);
        CHECK(XMDF_REASON().starts_with("\"" + damaged + "\" could not be opened (HDF5: "));
    }
    CHECK(openHandles() == 0);
}
