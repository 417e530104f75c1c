#include "services/workers.h"
#include "xmdf/h5_text.h"
#include "xmdf/xmdf_chunks.h"
#include "xmdf/xmdf_failure.h"
#include "xmdf/xmdf_state.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr hsize_t MOST_COUNTED = std::numeric_limits<std::int32_t>::max();
constexpr hsize_t MOST_TIMES = 10'000'000;  // a second apart for four months; more is a damaged file

void checkCount(const H5Table& table, int dimension, hsize_t least, hsize_t most, const char* what) {
    const hsize_t count = table.extent[static_cast<std::size_t>(dimension)];
    if (count < least || count > most) xmdfFailed(table.name + " has " + std::to_string(count) + " " + what);
}

void openValues(XmdfGroupState& g) {
    if (g.values.isOpen()) return;
    H5Table table = h5OpenTable(g.group.id(), g.name, "Values", g.vector ? 3 : 2);
    checkCount(table, 0, 1, MOST_TIMES, "times");
    checkCount(table, 1, 1, MOST_COUNTED, "values per time");
    if (g.vector) checkCount(table, 2, 2, 2, "components, expecting 2");
    g.values = std::move(table);
}

void openTimes(XmdfGroupState& g) {
    if (g.times.isOpen()) return;
    H5Table table = h5OpenTable(g.group.id(), g.name, "Times", 1);
    checkCount(table, 0, 1, MOST_TIMES, "times");
    g.times = std::move(table);
}

/// Opens Active where there is one; a dataset without it leaves the table closed.
void openActive(XmdfGroupState& g) {
    if (g.active.isOpen() || H5Lexists(g.group.id(), "Active", H5P_DEFAULT) <= 0) return;
    H5Table table = h5OpenTable(g.group.id(), g.name, "Active", 2);
    checkCount(table, 0, 1, MOST_TIMES, "times");
    checkCount(table, 1, 0, MOST_COUNTED, "flags per time");
    g.active = std::move(table);
}

/// Opens all members and settles the times that they share: a run that is stopped while it writes leaves one longer
/// than another, or times that were never filled in.
void shareTimes(XmdfGroupState& g) {
    if (g.sharedTimes > 0) return;
    openValues(g);
    openTimes(g);
    openActive(g);
    h5CheckStored(g.times);
    hsize_t shared = std::min(g.times.extent[0], g.values.extent[0]);
    if (g.active.isOpen()) shared = std::min(shared, g.active.extent[0]);
    hsize_t written = 0;
    while (written < shared && h5RowStored(g.times, written + 1) == H5Stored::Written) ++written;
    if (written == 0) xmdfFailed(g.times.name + " was never written");
    g.sharedTimes = written;
}

/// Where a time without values is a legal one, it has no flags either: all cells are dry.
bool timeIsWhole(const XmdfGroupState& g, hsize_t step) {
    const H5Stored values = h5RowStored(g.values, step);
    if (values != H5Stored::Written) return values == H5Stored::Filled;
    return !g.active.isOpen() || h5RowStored(g.active, step) == H5Stored::Written;
}

void checkTimes(XmdfGroupState& g) {
    openValues(g);
    openActive(g);
    h5CheckStored(g.values);
    if (g.active.isOpen()) h5CheckStored(g.active);
}

void checkStep(const XmdfGroupState& g, std::int32_t step) {
    if (step < 1) xmdfFailed(g.name + " has no time number " + std::to_string(step));
}

/// False where the library has to read it.
template <typename Number>
bool readPacked(const H5Table& table, hsize_t row, std::span<Number> to) {
    const PackedRow packed = h5ReadPacked<Number>(table, row, to.size());
    std::atomic<bool> good = packed.count() > 0;
    DO_PIECES(packed.count(), [&](std::size_t chunk) {
        if (!h5Unpack(packed, chunk, to)) good = false;
    });
    return good;
}

/// One time of Values or Active.
template <typename Number>
void readTime(XmdfGroupState& g, const H5Table& table, std::int32_t step, hid_t memoryType, std::span<Number> to) {
    if (g.ahead.take(step, to)) return;
    checkTimes(g);
    const auto row = static_cast<hsize_t>(step);
    if (row <= table.extent[0] && !timeIsWhole(g, row))
        xmdfFailed(table.name + ", time number " + std::to_string(step) + ", was never written");
    if (h5RowStored(table, row) == H5Stored::Written && readPacked(table, row, to)) return;
    h5ReadRows(table, {row, 1}, memoryType, to.data(), to.size());
}

XmdfStatus readValues(XmdfGroupState& g, bool vector, std::int32_t step, std::span<float> values) {
    return xmdfOperation([&] {
        if (g.vector != vector) xmdfFailed(g.name + (vector ? " is no vector dataset" : " is no scalar dataset"));
        checkStep(g, step);
        readTime(g, g.values, step, H5T_NATIVE_FLOAT, values);
    });
}

}  // namespace

XmdfStatus xfgetdatasetnumvals_f(XmdfGroupState& group, std::int32_t& count) {
    return xmdfOperation([&] {
        openValues(group);
        count = static_cast<std::int32_t>(group.values.extent[1]);
    });
}

XmdfStatus xfgetdatasetnumactive_f(XmdfGroupState& group, std::int32_t& count) {
    return xmdfOperation([&] {
        openActive(group);
        count = group.active.isOpen() ? static_cast<std::int32_t>(group.active.extent[1]) : 0;
    });
}

XmdfStatus xfgetdatasettimeunits_f(XmdfGroupState& group, std::string& units) {
    units.clear();
    if (H5Aexists(group.group.id(), "TimeUnits") <= 0 || h5ReadText(group.group.id(), "TimeUnits", units)) return {};
    return {-1, group.name + " has an attribute TimeUnits that is no text"};
}

XmdfStatus xfgetdatasetunits_f(XmdfGroupState& group, std::string& units) {
    units.clear();
    h5ReadText(group.group.id(), "DatasetUnits", units);  // nothing is done with it but handing it on
    return {};
}

XmdfStatus xfgetdatasetnumtimes_f(XmdfGroupState& group, std::int32_t& count) {
    return xmdfOperation([&] {
        shareTimes(group);
        count = static_cast<std::int32_t>(group.sharedTimes);
    });
}

std::string XMDF_TIMES_LEFT_OUT(XmdfGroupState& group) {
    if (xmdfOperation([&] { shareTimes(group); }) < 0) return {};
    const auto text = [](const char* name, const H5Table& table) {
        return std::string(name) + " has " + std::to_string(table.extent[0]) + " times";
    };
    const hsize_t shared = group.sharedTimes;
    const bool whole = group.times.extent[0] == shared && group.values.extent[0] == shared &&
                       (!group.active.isOpen() || group.active.extent[0] == shared);
    if (whole) return {};
    return text("Times", group.times) + ", " + text("Values", group.values) +
           (group.active.isOpen() ? ", " + text("Active", group.active) : "");
}

XmdfStatus XMDF_WHOLE_TIMES(XmdfGroupState& group, std::int32_t& count) {
    return xmdfOperation([&] {
        shareTimes(group);
        checkTimes(group);
        hsize_t whole = 0;
        while (whole < group.sharedTimes && timeIsWhole(group, whole + 1)) ++whole;
        count = static_cast<std::int32_t>(whole);
    });
}

XmdfStatus xfgetdatasettimes_f(XmdfGroupState& group, std::vector<double>& times) {
    return xmdfOperation([&] {
        shareTimes(group);
        times.assign(static_cast<std::size_t>(group.sharedTimes), 0.0);
        h5ReadRows(group.times, {1, group.sharedTimes}, H5T_NATIVE_DOUBLE, times.data(), times.size());
        for (std::size_t i = 0; i < times.size(); ++i)
            if (!std::isfinite(times[i]))
                xmdfFailed(group.times.name + ", number " + std::to_string(i + 1) + ", is not a finite number");
    });
}

XmdfStatus xfgetdatasetextremes_f(XmdfGroupState& group, std::vector<float>& mins, std::vector<float>& maxs) {
    const XmdfStatus shared = xmdfOperation([&] { shareTimes(group); });
    if (shared < 0) return shared;
    const XmdfStatus read = xmdfOperation([&] {
        for (const auto& [member, list] : {std::pair{"Mins", &mins}, std::pair{"Maxs", &maxs}}) {
            H5Table table = h5OpenTable(group.group.id(), group.name, member, 1);
            h5CheckStored(table);
            if (table.holes || table.extent[0] < group.sharedTimes) xmdfFailed(table.name + " is not whole");
            list->assign(static_cast<std::size_t>(group.sharedTimes), 0.0F);
            h5ReadRows(table, {1, group.sharedTimes}, H5T_NATIVE_FLOAT, list->data(), list->size());
        }
    });
    if (read < 0) {  // what is not there, or not whole, is not known
        mins.clear();
        maxs.clear();
    }
    return {};
}

XmdfStatus xfreadscalarvaluestimestep_f(XmdfGroupState& group, std::int32_t step, std::span<float> values) {
    return readValues(group, false, step, values);
}
XmdfStatus xfreadvectorvaluestimestep_f(XmdfGroupState& group, std::int32_t step, std::span<float> values) {
    return readValues(group, true, step, values);
}

XmdfStatus xfreadactivitytimestep_f(XmdfGroupState& group, std::int32_t step, std::span<std::uint8_t> flags) {
    return xmdfOperation([&] {
        checkStep(group, step);
        openActive(group);
        if (!group.active.isOpen()) xmdfFailed(group.name + " has no active flags");
        readTime(group, group.active, step, H5T_NATIVE_UINT8, flags);
    });
}

void XMDF_READ_AHEAD(XmdfGroupState& group, std::int32_t step) {
    if (JOBS() == 1 || xmdfOperation([&] { checkTimes(group); }) < 0) return;
    const auto row = static_cast<hsize_t>(step);
    if (step < 1 || row > group.values.extent[0] || h5RowStored(group.values, row) != H5Stored::Written) return;
    const auto values = static_cast<std::size_t>(group.values.extent[1] * group.values.extent[2]);
    PackedRow packedValues = h5ReadPacked<float>(group.values, row, values), packedFlags;
    if (packedValues.count() == 0) return;
    std::size_t flags = 0;
    if (group.active.isOpen()) {
        if (row > group.active.extent[0] || h5RowStored(group.active, row) != H5Stored::Written) return;
        flags = static_cast<std::size_t>(group.active.extent[1]);
        packedFlags = h5ReadPacked<std::uint8_t>(group.active, row, flags);
        if (packedFlags.count() == 0) flags = 0;  // the library reads them
    }
    group.ahead.begin(step, std::move(packedValues), values, std::move(packedFlags), flags);
}
