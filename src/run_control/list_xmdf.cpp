#include "geometry/no_value.h"
#include "inputs/xmdf_catalogue.h"
#include "inputs/xmdf_messages.h"
#include "run_control/file_listing.h"
#include "text_utils/numbers.h"

#include <cstddef>
#include <vector>

namespace {

/// Of the stored extremes of each time; false where the file holds none.
bool storedRange(XmdfGroupState& group, ValueRange& range) {
    std::vector<float> mins, maxs;
    if (xfgetdatasetextremes_f(group, mins, maxs) < 0 || mins.empty()) return false;
    for (std::size_t i = 0; i < mins.size(); ++i) range = WIDENED(range, {mins[i], maxs[i]});
    return true;
}

ValueRange rangeRead(XmdfGroupState& group, XmdfKind kind, const XmdfFacts& facts) {
    Results results;
    results.vector = kind == XmdfKind::Vector;
    const auto count = static_cast<std::size_t>(facts.values);
    results.x.resize(count + 1, NO_VALUE);
    results.y.resize(results.vector ? count + 1 : 0, NO_VALUE);
    std::vector<float> pairs(results.vector ? 2 * count : 0);
    ValueRange range;
    for (std::size_t time = 1; time <= facts.times.size(); ++time) {
        const auto step = static_cast<std::int32_t>(time);
        const XmdfStatus status = results.vector
                                      ? xfreadvectorvaluestimestep_f(group, step, pairs)
                                      : xfreadscalarvaluestimestep_f(group, step, std::span(results.x).subspan(1));
        CHECK_XMDF(status, "ERROR - Reading values");
        for (std::size_t i = 0; i < pairs.size() / 2; ++i) {
            results.x[i + 1] = pairs[2 * i];
            results.y[i + 1] = pairs[2 * i + 1];
        }
        range = WIDENED(range, VALUE_RANGE(results));
    }
    return range;
}

void listDataset(XmdfEntry& entry, XmdfKind kind, std::int32_t number, bool verbose, Listing& listing) {
    const std::string& path = entry.of(kind).path(number);
    const std::string letter = kind == XmdfKind::Scalar ? "S" : "V";
    listing.line("");
    listing.line(AINTEGER(number) + " " + letter + " " + path);
    const XmdfFacts facts = READ_XMDF_FACTS(entry, path, XmdfSaying::Nothing);
    XmdfGroup group;
    CHECK_XMDF(xfopengroup_f(*entry.file, path, group), "ERROR - Unable to open group [XF_OPEN_GROUP]");
    ValueRange range;
    bool known = storedRange(*group, range);
    if (!known && verbose) {
        range = rangeRead(*group, kind, facts);
        known = true;
    }
    listing.line("   Nodes or cells: " + AINTEGER(facts.values));
    listing.line("   Wet/dry flags: " + (facts.flags > 0 ? AINTEGER(facts.flags) : "none"));
    if (!facts.units.empty()) listing.line("   Unit of values: " + facts.units);
    listing.range(range, known);
    listing.times(facts.times, facts.storedTimes, facts.timeUnits);
}

}  // namespace

void LIST_XMDF(const std::string& name, bool verbose, Listing& listing) {
    XmdfCatalogue catalogue = OPEN_XMDF_FILES({name});
    XmdfEntry& entry = catalogue.front();
    float version = 0.0F;
    if (const XmdfStatus status = xfgetlibraryversion_f(version); status < 0)
        STOP_XMDF({"ERROR - Determining XMDF Library Version.", status.reason});
    listing.line("File: " + name);
    listing.line("XMDF Version: " + AREAL(version));
    listing.line("Scalar datasets (S, -s<number>): " + AINTEGER(entry.of(XmdfKind::Scalar).count()));
    listing.line("Vector datasets (V, -v<number>): " + AINTEGER(entry.of(XmdfKind::Vector).count()));
    for (const XmdfKind kind : {XmdfKind::Scalar, XmdfKind::Vector})
        for (std::int32_t number = 1; number <= entry.of(kind).count(); ++number) {
            try {
                listDataset(entry, kind, number, verbose, listing);
            } catch (const XmdfUnreadable& unreadable) {
                listing.line("   Cannot be read: " + unreadable.reason);
                LEAVE_XMDF_OUT(entry.of(kind).path(number), unreadable);
            }
        }
}
