#include "xmdf/xmdf.h"

#include "services/workers.h"
#include "testing.h"
#include "xmdf/make_xmdf.h"

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
    XmdfStatus status;
    if ((status = xfopengroup_f(file, path, group)) < 0 || (status = xfgetdatasetnumvals_f(*group, values)) < 0 ||
        (status = xfgetdatasetnumactive_f(*group, active)) < 0 ||
        (status = xfgetdatasettimeunits_f(*group, units)) < 0 || (status = xfgetdatasetnumtimes_f(*group, times)) < 0 ||
        (status = xfgetdatasettimes_f(*group, list)) < 0)
        return status;
    std::vector<float> row(static_cast<std::size_t>(values) * (vector ? 2 : 1));
    std::vector<std::uint8_t> flags(static_cast<std::size_t>(active));
    for (std::int32_t step = 1; step <= times && status >= 0; ++step) {
        XMDF_READ_AHEAD(*group, step);
        status =
            vector ? xfreadvectorvaluestimestep_f(*group, step, row) : xfreadscalarvaluestimestep_f(*group, step, row);
        if (active > 0 && status >= 0) status = xfreadactivitytimestep_f(*group, step, flags);
    }
    return status < 0 ? status : xfclosegroup_f(group);
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
    const hid_t types[] = {-1, H5T_IEEE_F64BE, H5T_STD_I8LE, H5T_STD_U16BE, H5T_STD_I64LE, -1, -1, -1};
    const TextForm forms[] = {TextForm::FixedNul, TextForm::FixedBlank, TextForm::OneElementArray, TextForm::Variable};
    const std::vector<hsize_t> chunks[] = {{}, {1, 3}, {2, 2}, {2, 1}, {1, 2}, {1, 3}, {1, 2}, {1, 2}};
    for (std::size_t row = 0; row < 8; ++row) {
        CAPTURE(row);
        SET_JOBS(row == 6 ? 1 : 3);
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
        if (row % 2 == 1) XMDF_READ_AHEAD(*group, 2);
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
    SET_JOBS(1);
    CHECK(openHandles() == 0);
}

TEST_CASE("a bad dataset is refused with the file, its path and what is wrong; no handle stays open") {
    using Change = std::function<void(TestDataset&)>;
    const auto shaped = [](std::vector<hsize_t> shape) {
        return [shape](TestDataset& d) {
            d.shape = shape;
            d.flags.clear();
        };
    };
    const Change none = [](TestDataset&) {};
    const Change noValues = [](TestDataset& d) {
        d.values.clear();
        d.flags.clear();
    };
    const Change noTimes = [](TestDataset& d) { d.times.clear(); };
    const Change chunked = [](TestDataset& d) { d.chunk = {1, 3}; };
    const auto secondChunk = [](unsigned mask) {
        return [mask](hid_t id) {
            const hsize_t second[] = {1, 0};
            const H5Dataset data(H5Dopen2(id, "/d/Values", H5P_DEFAULT));
            H5Dwrite_chunk(data.id(), H5P_DEFAULT, mask, second, 7, "damaged");
        };
    };
    const auto table = [](const char* name, hid_t type, std::vector<hsize_t> shape, bool growing) {
        return [=](hid_t id) {
            const std::vector<hsize_t> most(shape.size(), growing ? H5S_UNLIMITED : shape[0]);
            const auto rank = static_cast<int>(shape.size());
            const H5Space space(H5Screate_simple(rank, shape.data(), growing ? most.data() : nullptr));
            const H5Properties layout(H5Pcreate(H5P_DATASET_CREATE));
            if (growing) H5Pset_chunk(layout.id(), rank, shape.data());
            H5Dataset(H5Dcreate2(id, name, type, space.id(), H5P_DEFAULT, layout.id(), H5P_DEFAULT));
        };
    };
    const struct {
        TestDataset dataset;
        Change change;
        const char* reason;
        std::function<void(hid_t)> more{};
    } rows[] = {
        {scalar("/d"), noValues, "/d/Values does not exist"},
        {scalar("/d"), noTimes, "/d/Times does not exist"},
        {scalar("/d"), [](auto& d) { d.times[1] = std::numeric_limits<double>::quiet_NaN(); },
         "/d/Times, number 2, is not a finite number"},
        {scalar("/d"), shaped({6}), "/d/Values has 1 dimensions, expecting 2"},
        {vectors("/d"), shaped({1, 6}), "/d/Values has 2 dimensions, expecting 3"},
        {vectors("/d"), shaped({1, 2, 3}), "/d/Values has 3 components, expecting 2"},
        {scalar("/d"), [](auto& d) { d.groupType.clear(); }, "/d has no Grouptype of a dataset"},
        {scalar("/other"), none, "/d could not be opened (HDF5: "},
        {scalar("/d"), shaped({2, 0}), "/d/Values has 0 values per time"},
        {scalar("/d"), shaped({0, 3}), "/d/Values has 0 times"},
        {scalar("/d"), noValues, "/d/Values does not hold numbers", table("/d/Values", H5T_C_S1, {2, 3}, false)},
        {scalar("/d"), noValues, "/d/Values does not hold numbers",  // as wide as a damaged header says
         [](hid_t id) {
             const H5Type wide(H5Tcopy(H5T_STD_I32LE));
             H5Tset_size(wide.id(), 8);
             H5Tset_precision(wide.id(), 32);
             const hsize_t shape[] = {2, 3};
             const H5Space space(H5Screate_simple(2, shape, nullptr));
             H5Dataset(H5Dcreate2(id, "/d/Values", wide.id(), space.id(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
         }},
        {scalar("/d"), noValues, "/d/Values is stored in chunks of 2301 MB, the limit is 2048 MB",
         table("/d/Values", H5T_IEEE_F32LE, {1, 603000000}, true)},
        {scalar("/d"), noTimes, "/d/Times has 20000000000 times",
         table("/d/Times", H5T_IEEE_F64LE, {20000000000}, false)},
        {scalar("/d"), noTimes, "/d/Times was never written", table("/d/Times", H5T_IEEE_F64LE, {2}, false)},
        {scalar("/d"), chunked, "/d/Values, time number 2, could not be read (HDF5: ", secondChunk(0)},
        // a mask that says that nothing was compressed: the library would hand out memory behind the seven bytes
        {scalar("/d"), chunked, "/d/Values is damaged: chunk number 2 has 7 bytes, expecting 12", secondChunk(1)},
    };
    for (const auto& row : rows) {
        const TemporaryFolder folder;
        const std::string name = folder.name("a.xmdf");
        makeXmdf(name, {changed(row.dataset, row.change)}, row.more);
        CAPTURE(row.reason);
        XmdfFile file;
        REQUIRE(xfopenfile_f(name, file) >= 0);
        SET_JOBS(2);
        const XmdfStatus status = readAll(*file, "/d", row.dataset.groupType == "DATASET VECTOR");
        SET_JOBS(1);
        CHECK_MESSAGE(status.reason.starts_with("\"" + name + "\": " + row.reason), status.reason);
        CHECK(xfclosefile_f(file) >= 0);
        CHECK(openHandles() == 0);
    }
}

TEST_CASE("damaged sizes of chunks are refused: the library believes them") {
    const struct {
        bool compressed;
        std::vector<unsigned> size, damaged;
        const char* reason;
    } rows[] = {
        {true, {1, 3}, {1, 0}, ""},
        {true, {1, 3}, {1, 4}, " is damaged: chunks of 4 in a dimension of 3"},
        {false, {1, 3}, {3, 3}, " is damaged: chunks of 3 in a dimension of 2"},
        {true, {1, 3}, {2, 3}, " is damaged: 2 chunks are stored, its shape holds 1"},
        {true, {1, 3}, {1, 2}, ", time number 1, was never written"},
        {false, {2, 3}, {1, 3}, " is damaged: chunk number 1 has 24 bytes, expecting 12"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.reason);
        const TemporaryFolder folder;
        const std::string name = folder.name("a.xmdf");
        TestDataset d = scalar("/d");
        d.chunk.assign(row.size.begin(), row.size.end());
        d.compressed = row.compressed;
        makeXmdf(name, {d});
        replaceBytes(name, littleEndian(row.size), littleEndian(row.damaged));
        XmdfFile file;
        REQUIRE(xfopenfile_f(name, file) >= 0);
        const XmdfStatus status = readAll(*file, "/d", false);
        CHECK_MESSAGE(status.reason.starts_with("\"" + name + "\": /d/Values" + row.reason), status.reason);
    }
}

TEST_CASE("times that were never written hold no results, but where the table says that nothing is wet") {
    const struct {
        std::vector<hsize_t> chunk;
        hsize_t written;
        std::optional<float> fill;
        int whole;
        const char* leftOut = "";
        std::size_t times = 3, flaggedTimes = 3;
    } rows[] = {
        {{1, 3}, 3, {}, 3},
        {{1, 3}, 1, {}, 1},
        {{1, 2}, 2, {}, 2},
        {{2, 2}, 1, {}, 2},  // the chunk of the first time holds the second
        {{}, 0, {}, 0},      // storage without chunks is all there or not
        {{1, 3}, 1, MISSING, 3},
        {{1, 3}, 1, 0.0F, 1},  // another fill value says nothing
        {{}, 3, {}, 2, "Times has 3 times, Values has 3 times, Active has 2 times", 3, 2},
        {{}, 3, {}, 3, "Times has 4 times, Values has 3 times, Active has 4 times", 4, 4},
    };
    for (const auto& row : rows) {
        CAPTURE(row.leftOut);
        CAPTURE(row.whole);
        const TemporaryFolder folder;
        const std::string name = folder.name("a.xmdf");
        TestDataset d = scalar("/d");
        d.times = {0, 1, 2, 3};
        d.times.resize(row.times);
        d.values = {1, 2, 3, 4, 5, 6, 7, 8, 9};
        d.shape = {3, 3};
        d.flags.assign(row.flaggedTimes * 2, 1);
        d.flaggedTimes = row.flaggedTimes;
        d.chunk = row.chunk;
        d.written = row.written;
        d.fill = row.fill;
        makeXmdf(name, {d});
        XmdfFile file;
        XmdfGroup group;
        std::int32_t whole = -1, times = 0;
        REQUIRE(xfopenfile_f(name, file) >= 0);
        REQUIRE(xfopengroup_f(*file, "/d", group) >= 0);
        CHECK(xfgetdatasetnumtimes_f(*group, times) >= 0);
        CHECK(times == static_cast<int>(std::min({row.times, row.flaggedTimes, std::size_t{3}})));
        CHECK(XMDF_TIMES_LEFT_OUT(*group) == row.leftOut);
        CHECK(XMDF_WHOLE_TIMES(*group, whole) >= 0);
        CHECK(whole == row.whole);
        std::vector<float> values(3);
        const bool readable = xfreadscalarvaluestimestep_f(*group, 3, values) >= 0;
        if (*row.leftOut == '\0') CHECK(readable == (whole == 3));
        if (readable) CHECK(values == (row.fill ? std::vector<float>(3, MISSING) : std::vector<float>{7, 8, 9}));
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
        CHECK(xfopenfile_f(damaged, file).reason.starts_with("\"" + damaged + "\" could not be opened (HDF5: "));
    }
    CHECK(openHandles() == 0);
}
