#include "xmdf/h5_text.h"
#include "xmdf/xmdf_reason.h"
#include "xmdf/xmdf_state.h"

#include <cmath>
#include <limits>

namespace {

constexpr hsize_t MOST_COUNTED = std::numeric_limits<std::int32_t>::max();
constexpr hsize_t MOST_TIMES = 10'000'000;  // a second apart for four months; more is a damaged file

bool failed(std::string reason) { return xmdfFailed(std::move(reason)) >= 0; }

bool countFits(const H5Table& table, int dimension, hsize_t least, hsize_t most, const char* what) {
    const hsize_t count = table.extent[static_cast<std::size_t>(dimension)];
    return (count >= least && count <= most) || failed(table.name + " has " + std::to_string(count) + " " + what);
}

bool sameTimes(const H5Table& table, const H5Table& other) {
    return table.extent[0] == other.extent[0] ||
           failed(table.name + " has " + std::to_string(table.extent[0]) + " times, but " + other.name + " has " +
                  std::to_string(other.extent[0]));
}

bool openValues(XmdfGroupState& g) {
    if (g.values.isOpen()) return true;
    H5Table table;
    if (!h5OpenTable(g.group.id(), g.name, "Values", g.vector ? 3 : 2, table)) return false;
    if (!countFits(table, 0, 1, MOST_TIMES, "times") || !countFits(table, 1, 1, MOST_COUNTED, "values per time"))
        return false;
    if (g.vector && !countFits(table, 2, 2, 2, "components, expecting 2")) return false;
    g.values = std::move(table);
    return true;
}

bool openTimes(XmdfGroupState& g) {
    if (g.times.isOpen()) return true;
    H5Table table;
    if (!h5OpenTable(g.group.id(), g.name, "Times", 1, table) || !countFits(table, 0, 1, MOST_TIMES, "times"))
        return false;
    if (!openValues(g) || !sameTimes(table, g.values)) return false;
    g.times = std::move(table);
    return true;
}

/// Opens Active where there is one; a dataset without it leaves the table closed.
bool openActive(XmdfGroupState& g) {
    if (g.active.isOpen() || H5Lexists(g.group.id(), "Active", H5P_DEFAULT) <= 0) return true;
    H5Table table;
    if (!h5OpenTable(g.group.id(), g.name, "Active", 2, table) ||
        !countFits(table, 1, 0, MOST_COUNTED, "flags per time"))
        return false;
    if (!openValues(g) || !sameTimes(table, g.values)) return false;
    g.active = std::move(table);
    return true;
}

XmdfStatus readValues(XmdfGroupState& g, bool vector, std::int32_t step, std::span<float> values) {
    if (g.vector != vector) return xmdfFailed(g.name + (vector ? " is no vector dataset" : " is no scalar dataset"));
    if (step < 1) return xmdfFailed(g.name + " has no time number " + std::to_string(step));
    if (!openValues(g)) return -1;
    return h5ReadRow(g.values, static_cast<hsize_t>(step), H5T_NATIVE_FLOAT, values.data(), values.size()) ? 0 : -1;
}

}  // namespace

XmdfStatus xfgetdatasetnumvals_f(XmdfGroupState& group, std::int32_t& count) {
    if (!openValues(group)) return -1;
    count = static_cast<std::int32_t>(group.values.extent[1]);
    return 0;
}

XmdfStatus xfgetdatasetnumactive_f(XmdfGroupState& group, std::int32_t& count) {
    if (!openActive(group)) return -1;
    count = group.active.isOpen() ? static_cast<std::int32_t>(group.active.extent[1]) : 0;
    return 0;
}

XmdfStatus xfgetdatasettimeunits_f(XmdfGroupState& group, std::string& units) {
    units.clear();
    if (H5Aexists(group.group.id(), "TimeUnits") <= 0 || h5ReadText(group.group.id(), "TimeUnits", units)) return 0;
    return xmdfFailed(group.name + " has an attribute TimeUnits that is no text");
}

XmdfStatus xfgetdatasetnumtimes_f(XmdfGroupState& group, std::int32_t& count) {
    if (!openTimes(group)) return -1;
    count = static_cast<std::int32_t>(group.times.extent[0]);
    return 0;
}

XmdfStatus xfgetdatasettimes_f(XmdfGroupState& group, std::vector<double>& times) {
    if (!openTimes(group)) return -1;
    times.assign(static_cast<std::size_t>(group.times.extent[0]), 0.0);
    if (H5Dread(group.times.data.id(), H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, times.data()) < 0)
        return xmdfFailed(group.times.name + " could not be read" + h5Reason());
    for (std::size_t i = 0; i < times.size(); ++i)
        if (!std::isfinite(times[i]))
            return xmdfFailed(group.times.name + ", number " + std::to_string(i + 1) + ", is not a finite number");
    return 0;
}

XmdfStatus xfreadscalarvaluestimestep_f(XmdfGroupState& group, std::int32_t step, std::span<float> values) {
    return readValues(group, false, step, values);
}
XmdfStatus xfreadvectorvaluestimestep_f(XmdfGroupState& group, std::int32_t step, std::span<float> values) {
    return readValues(group, true, step, values);
}

XmdfStatus xfreadactivitytimestep_f(XmdfGroupState& group, std::int32_t step, std::span<std::uint8_t> flags) {
    if (step < 1) return xmdfFailed(group.name + " has no time number " + std::to_string(step));
    if (!openActive(group)) return -1;
    if (!group.active.isOpen()) return xmdfFailed(group.name + " has no active flags");
    return h5ReadRow(group.active, static_cast<hsize_t>(step), H5T_NATIVE_UINT8, flags.data(), flags.size()) ? 0 : -1;
}
