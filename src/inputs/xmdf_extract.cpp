#include "inputs/xmdf_extract.h"

#include "geometry/no_value.h"
#include "inputs/fold_maximums.h"
#include "inputs/xmdf_messages.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/numbers.h"

#include <algorithm>

namespace {

std::span<float> numberedFromOne(std::vector<float>& table) { return std::span(table).subspan(1); }

void readFlags(XmdfReading& reading, std::int32_t step, std::vector<std::uint8_t>& wet) {
    if (reading.item->facts.flags == 0) return;  // a dataset without flags: every cell is wet
    CHECK_XMDF(
        xfreadactivitytimestep_f(*reading.group, step, std::span(wet).subspan(1)),
        "ERROR - Reading cell/wet dry flags [XF_READ_ACTIVITY_TIMESTEP] while reading " + reading.entry->fileName);
}

XmdfStatus readVectors(XmdfReading& reading, std::int32_t step, std::vector<float>& x, std::vector<float>& y) {
    reading.components.resize(2 * (x.size() - 1));
    const XmdfStatus status = xfreadvectorvaluestimestep_f(*reading.group, step, reading.components);
    for (std::size_t n = 1; n < x.size() && status >= 0; ++n) {
        x[n] = reading.components[2 * n - 2];
        y[n] = reading.components[2 * n - 1];
    }
    return status;
}

/// One time. what: the words of the calling operation's messages, such as "maximums".
void readStep(XmdfReading& reading, std::int32_t step, const char* what, std::vector<float>& x, std::vector<float>& y,
              std::vector<std::uint8_t>& wet) {
    const bool vector = reading.item->kind == XmdfKind::Vector;
    const XmdfStatus status = vector ? readVectors(reading, step, x, y)
                                     : xfreadscalarvaluestimestep_f(*reading.group, step, numberedFromOne(x));
    CHECK_XMDF(status, "ERROR - Reading " + std::string(what) +
                           (vector ? " [XF_READ_VECTOR_VALUES_TIMESTEP]" : " [XF_READ_SCALAR_VALUES_TIMESTEP]") +
                           " while reading " + reading.entry->fileName);
    readFlags(reading, step, wet);
}

void readIntoResults(XmdfReading& reading, std::int32_t step, const char* what) {
    Results& results = *reading.results;
    readStep(reading, step, what, results.x, results.y, results.wet);
}

void openGroup(XmdfReading& reading) {
    CHECK_XMDF(xfopengroup_f(*reading.entry->file, reading.item->path, reading.group),
               "ERROR - Unable to open group [XF_OPEN_GROUP]");
}

void closeGroup(XmdfReading& reading) {
    CHECK_XMDF(xfclosegroup_f(reading.group), "ERROR - Closing group [XF_CLOSE_GROUP]");
}

void closeAndSaySo(XmdfReading& reading) {
    REPORT("Closing Group");
    closeGroup(reading);
    REPORT("Done");
}

/// A stored maximum or minimum.
void readStored(XmdfReading& reading, const char* announcement) {
    REPORT(announcement + reading.entry->fileName);
    REPORT("Getting data from group: " + reading.item->path);
    openGroup(reading);
    readIntoResults(reading, 1, "maximums");
    closeAndSaySo(reading);
}

/// Times in the file's unit become hours, or seconds where the run shows those.
void convertTimes(XmdfReading& reading) {
    const double secondsPerUnit = reading.item->facts.secondsPerUnit;
    const double factor = reading.seconds ? secondsPerUnit : secondsPerUnit / SECONDS_PER_HOUR;
    for (float& value : numberedFromOne(reading.results->x))
        if (!IS_MISSING(value)) value = static_cast<float>(static_cast<double>(value) * factor);
}

void readSingleOutput(XmdfReading& reading) {
    REPORT("Getting data from group: " + reading.item->path);
    openGroup(reading);
    std::int32_t times = 0;
    CHECK_XMDF(xfgetdatasetnumtimes_f(*reading.group, times),
               "ERROR - Extracting number of times [XF_GET_DATASET_NUM_TIMES] from xmdf file");
    if (times > 1)
        throw XmdfUnreadable{"ERROR - Multiple output times exits, expecting 1.",
                             "Contact " + std::string(SUPPORT_CONTACT)};
    readIntoResults(reading, 1, "data");
    closeAndSaySo(reading);
    convertTimes(reading);
}

/// The times behind one that was never written whole are not taken. Where that is the first, reading it tells why.
void findLastTime(XmdfReading& reading) {
    const XmdfItem& item = *reading.item;
    std::int32_t whole = 0;
    CHECK_XMDF(XMDF_WHOLE_TIMES(*reading.group, whole),
               "ERROR - Extracting number of times [XF_GET_DATASET_NUM_TIMES] from xmdf file");
    reading.cut = item.facts.cut || whole < reading.last;
    if (whole == 0 || whole >= reading.last) return;
    const OutputTime& missing = item.facts.times[static_cast<std::size_t>(whole)];
    const int decimals = TIME_DECIMALS(item.facts.times, reading.seconds);
    const std::string time = TIME_TEXT(missing, decimals, reading.seconds);
    DMESSAGE("WARNING - Dataset " + XMDF_QUOTED(item.path) + " in " + reading.entry->fileName +
             " was not written whole at time number " + AINTEGER(whole + 1) + " (time " + time + "). Only the " +
             AINTEGER(whole) + " before it can be used.");
    reading.last = whole;
}

/// Whoever takes every so many times goes on so.
void readAhead(XmdfReading& reading, std::int32_t step) {
    const std::int32_t next = step + (reading.before > 0 ? step - reading.before : 1);
    reading.before = step;
    if (next != step && next <= reading.last) XMDF_READ_AHEAD(*reading.group, next);
}

void readTime(XmdfReading& reading, std::int32_t step) {
    REPORT("Getting data from: " + reading.entry->fileName);
    REPORT("Getting data from group: " + reading.item->path);
    if (step == 0) STOP_RUN("ERROR - Unable trying to open group ID = 0 [xmdf_get_data_time] ");
    if (reading.group == nullptr) {
        REPORT("Opening Group.");
        openGroup(reading);
        REPORT("Done.");
        if (reading.item->read == XmdfRead::AllTimes) findLastTime(reading);
    }
    const bool vector = reading.item->kind == XmdfKind::Vector;
    REPORT((vector ? "Reading vector data at timestep " : "Reading scalar data at timestep ") + AINTEGER(step));
    readIntoResults(reading, step, vector ? "data from timestep" : "data");
    const std::vector<OutputTime>& times = reading.item->facts.times;
    reading.results->time = times[static_cast<std::size_t>(step - 1)];
    if (step < reading.last) {
        if (reading.item->read == XmdfRead::AllTimes) readAhead(reading, step);
        return;
    }
    REPORT("Processing final timestep... closing group");
    closeGroup(reading);
}

void extractTemporalMaximums(XmdfReading& reading) {
    REPORT("Extracting maximums from /Temporal/ folder in " + reading.entry->fileName);
    REPORT("Opening data group: " + reading.item->path);
    openGroup(reading);
    Results& kept = *reading.results;
    const bool flagged = reading.item->facts.flags > 0;
    if (flagged) std::fill(kept.wet.begin(), kept.wet.end(), std::uint8_t{0});
    std::vector<float> x(kept.x.size()), y(kept.y.size());
    std::vector<std::uint8_t> wet(flagged ? kept.wet.size() : 0);
    const auto steps = static_cast<std::int32_t>(reading.item->facts.times.size());
    for (std::int32_t step = 1; step <= steps; ++step) {
        readStep(reading, step, "timestep", x, y, wet);
        if (step < steps) XMDF_READ_AHEAD(*reading.group, step + 1);
        if (kept.vector) FOLD_VECTORS(x, y, kept.x, kept.y);
        else FOLD_SCALARS(x, kept.x);
        FOLD_FLAGS(wet, kept.wet);
    }
    closeAndSaySo(reading);
}

void readTheOne(XmdfReading& reading) {
    switch (reading.item->read) {
        case XmdfRead::Maximum: return readStored(reading, "Getting maximum data from: ");
        case XmdfRead::Minimum: return readStored(reading, "Getting minimum data from: ");
        case XmdfRead::SingleOutput: return readSingleOutput(reading);
        case XmdfRead::TemporalMaximums: return extractTemporalMaximums(reading);
        case XmdfRead::Time:
        case XmdfRead::AllTimes: break;
    }
    readTime(reading, reading.item->step);
}

}  // namespace

XmdfReading BEGIN_XMDF_READING(XmdfEntry& entry, const XmdfItem& item, bool cellCentred, bool seconds,
                               Results& results) {
    ALLOCATE_RESULTS(item.facts.values, item.facts.flags, item.kind == XmdfKind::Vector, results);
    results.cellCentred = cellCentred;
    results.endReached = false;
    results.flagged = item.facts.flags > 0;
    results.units = item.facts.units;
    results.quantity = item.quantity;
    results.code = item.code;
    results.times = item.facts.times;
    XmdfReading reading;
    reading.entry = &entry;
    reading.item = &item;
    reading.results = &results;
    reading.seconds = seconds;
    reading.last = static_cast<std::int32_t>(item.facts.times.size());
    return reading;
}

bool NEXT_XMDF_OUTPUT(XmdfReading& reading) {
    if (reading.done) {
        if (reading.cut) NOTE_INCOMPLETE();
        return false;
    }
    const XmdfItem& item = *reading.item;
    if (item.read == XmdfRead::AllTimes) {
        readTime(reading, reading.next);
        reading.done = reading.next++ == reading.last;
    } else {
        readTheOne(reading);
        reading.done = true;
        reading.results->time = item.time;
    }
    reading.results->endReached = reading.done;
    return true;
}
