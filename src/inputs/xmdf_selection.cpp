#include "inputs/xmdf_selection.h"

#include "inputs/xmdf_choice.h"
#include "inputs/xmdf_messages.h"
#include "inputs/xmdf_search.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/options.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"

#include <algorithm>
#include <set>
#include <utility>

namespace {

constexpr XmdfKind KINDS[] = {XmdfKind::Scalar, XmdfKind::Vector};

/// The datasets of one file that the command line names, one by one.
struct Chosen {
    XmdfKind kind;
    std::int32_t number;
};

void skip(const std::string& path, const std::string& missing) {
    DMESSAGE("Warning - Dataset " + XMDF_QUOTED(path) + " skipped: " + missing);
}

void warnOfFolderMatch(const std::string& path, std::string_view name) {
    if (XMDF_ONLY_IN_FOLDER(path, name))
        DMESSAGE("WARNING - " + XMDF_QUOTED(name) + " is only in the folder part of the dataset " + XMDF_QUOTED(path) +
                 ".");
}

// ---- by type ----

/// Models that write no velocity vectors often write their lengths: -typev takes those, but not for arrows.
std::string typeIn(const XmdfEntry& entry, const RunOptions& options, const std::string& typeName) {
    constexpr std::string_view VECTORS = "Vector Velocity", LENGTHS = "Velocity";
    if (options.vector || !ASAME(TRIMMED(options.typeText), "v") || !ASAME(typeName, VECTORS)) return typeName;
    for (const XmdfDatasets& datasets : entry.sorts)
        for (const std::string& path : datasets.paths)
            if (FLAGEXISTS(path, VECTORS)) return typeName;
    for (const std::string& path : entry.of(XmdfKind::Scalar).paths) {
        if (!ASAME(XMDF_LAST_PART(path), LENGTHS)) continue;
        DMESSAGE("WARNING - No datasets of type " + XMDF_QUOTED(VECTORS) + " in " + entry.fileName +
                 ", taking the scalar type " + XMDF_QUOTED(LENGTHS) + ".");
        return std::string(LENGTHS);
    }
    return typeName;
}

/// What the search finds, one dataset of each folder and kind, by the time that is wanted.
void addByType(XmdfChoice& choice, const std::string& typeName, XmdfWanted wanted) {
    const std::string type = wanted == XmdfWanted::TimeOfPeak ? XMDF_PEAK_OF(typeName) : typeName;
    if (type.empty() && wanted == XmdfWanted::TimeOfPeak)
        STOP_RUN("Error - Maxtime (-tmax) flag found, with xmdf date type other than \"h\" or \"v\".");
    FIND_XMDF_TYPE(choice.entry(), type);
    std::vector<XmdfKind> lacking;
    for (const XmdfKind kind : KINDS)
        if (choice.entry().of(kind).found.any() && !choice.addFound(kind)) lacking.push_back(kind);
    if (choice.empty())
        STOP_RUN("ERROR - Type " + XMDF_QUOTED(type) + " in " + choice.entry().fileName + ": " + choice.missing());
    for (const XmdfKind kind : lacking)
        DMESSAGE("Warning - " + std::string(kind == XmdfKind::Scalar ? "Scalar" : "Vector") + " datasets of type " +
                 XMDF_QUOTED(type) + " skipped: " + choice.missing());
    for (const XmdfItem& item : choice.items()) warnOfFolderMatch(item.path, TRIMMED(type));
}

// ---- one by one ----

std::vector<Chosen> byPath(XmdfEntry& entry, const std::string& path) {
    FIND_XMDF_PATH(entry, path);
    std::vector<Chosen> chosen;
    for (const XmdfKind kind : KINDS) {
        const std::int32_t number = entry.of(kind).found.path;
        if (number == 0) continue;
        warnOfFolderMatch(entry.of(kind).path(number), path);
        chosen.push_back({kind, number});
    }
    return chosen;
}

/// type: what -type adds to -Folder, blank for every dataset of the folder.
std::vector<Chosen> byFolder(const XmdfEntry& entry, const std::string& folder, const std::string& type) {
    std::vector<Chosen> chosen;
    for (const XmdfKind kind : KINDS)
        for (const std::int32_t number : XMDF_DATASETS_IN_FOLDER(entry.of(kind), folder))
            if (FLAGEXISTS(XMDF_LAST_PART(entry.of(kind).path(number)), type)) chosen.push_back({kind, number});
    const auto called = [&](const Chosen& one) {
        return ASAME(XMDF_LAST_PART(entry.of(one.kind).path(one.number)), type);
    };
    if (std::any_of(chosen.begin(), chosen.end(), called))
        std::erase_if(chosen, [&](const Chosen& one) { return !called(one); });
    if (!chosen.empty()) return chosen;
    DMESSAGE("Warning - No datasets found in a folder " + XMDF_QUOTED(folder) + " of " + XMDF_QUOTED(entry.fileName));
    REPORT(XMDF_LISTING_HINT);
    return chosen;
}

std::vector<Chosen> numbered(const XmdfEntry& entry, const RunOptions& options) {
    const XmdfKind kind = options.scalarIdGiven ? XmdfKind::Scalar : XmdfKind::Vector;
    const std::int32_t number = options.scalarIdGiven ? options.scalarId : options.vectorId;
    const XmdfDatasets& datasets = entry.of(kind);
    if (number < 1 || number > datasets.count()) {
        const bool scalar = kind == XmdfKind::Scalar;
        DMESSAGE(scalar ? "ERROR - Specifed scalar dataset does not exist."
                        : "ERROR - Specifed vector dataset does not exist.");
        REPORT((scalar ? "   Maximum scalar ID = " : "   Maximum vector ID = ") + AINTEGER(datasets.count()));
        EXITS();
    }
    REPORT("Using specifed scalar dataset: " + datasets.path(number));  // these words for a vector too
    return {{kind, number}};
}

void addChosen(XmdfChoice& choice, const std::vector<Chosen>& chosen) {
    for (const Chosen& one : chosen) {
        if (choice.addDataset(one.kind, one.number, chosen.size() == 1)) continue;
        const std::string& path = choice.entry().of(one.kind).path(one.number);
        if (chosen.size() == 1)
            STOP_RUN("ERROR - Dataset " + XMDF_QUOTED(path) + " in " + choice.entry().fileName + ": " +
                     choice.missing());
        skip(path, choice.missing());
    }
}

// ---- all of them ----

/// Every quantity once, by whichever of its datasets has what is wanted; a quantity none of whose datasets has it is
/// named.
void addAll(XmdfChoice& choice) {
    for (const XmdfKind kind : KINDS) {
        const XmdfDatasets& datasets = choice.entry().of(kind);
        std::set<std::string> done;
        std::vector<std::string> missing(datasets.paths.size());
        for (std::int32_t number = 1; number <= datasets.count(); ++number) {
            if (choice.addOfAll(kind, number)) done.insert(XMDF_QUANTITY_KEY(datasets.path(number)));
            else missing[static_cast<std::size_t>(number)] = choice.missing();
        }
        // Of a quantity in several folders the temporal dataset says best what is missing.
        for (const bool temporal : {true, false})
            for (std::int32_t number = 1; number <= datasets.count(); ++number) {
                const std::string& path = datasets.path(number);
                if ((XMDF_FOLDER_OF(path) == XmdfFolder::Temporal) != temporal || choice.holdsPeakOf(path)) continue;
                if (done.insert(XMDF_QUANTITY_KEY(path)).second) skip(path, missing[static_cast<std::size_t>(number)]);
            }
    }
}

// ---- limits ----

void checkLimits(const std::vector<XmdfItem>& items) {
    constexpr struct {
        TimeKind kind, orKind;
        int most;
        const char* message;
    } LIMITS[] = {
        {TimeKind::Exceedance, TimeKind::Exceedance, 100,
         "ERROR - Exceeded maximum number of time outputs, limit is 100."},
        {TimeKind::Duration, TimeKind::Duration, 100,
         "ERROR - Exceeded maximum number of duration outputs, limit is 100."},
        {TimeKind::PeakLevel, TimeKind::PeakVelocity, 10,
         "ERROR - Exceeded maximum number of peak time outputs, limit is 10."},
    };
    for (const auto& limit : LIMITS) {
        const auto counts = [&](const XmdfItem& item) {
            return item.read == XmdfRead::SingleOutput &&
                   (item.time.kind == limit.kind || item.time.kind == limit.orKind);
        };
        if (std::count_if(items.begin(), items.end(), counts) > limit.most) STOP_RUN(limit.message);
    }
}

// ---- order ----

int placeOf(XmdfRead read) {
    switch (read) {
        case XmdfRead::Minimum: return 0;
        case XmdfRead::Time:
        case XmdfRead::AllTimes: return 1;
        default: return 2;
    }
}

/// What belongs into one file of results stands together, minimums first, whatever folders it comes from.
void gatherQuantities(std::vector<XmdfItem>& items) {
    std::vector<std::string> keys;
    const auto place = [&](const XmdfItem& item) {
        const auto found = std::find(keys.begin(), keys.end(), XMDF_QUANTITY_KEY(item.path));
        return std::pair(found - keys.begin(), placeOf(item.read));
    };
    for (const XmdfItem& item : items)
        if (static_cast<std::size_t>(place(item).first) == keys.size()) keys.push_back(XMDF_QUANTITY_KEY(item.path));
    std::stable_sort(items.begin(), items.end(),
                     [&](const XmdfItem& a, const XmdfItem& b) { return place(a) < place(b); });
}

}  // namespace

std::vector<XmdfItem> SELECT_XMDF_OUTPUTS(XmdfCatalogue& catalogue, const RunOptions& options,
                                          const std::string& typeName) {
    const bool byNumber = options.scalarIdGiven || options.vectorIdGiven;
    const XmdfWanted wanted = XMDF_WANTED(options);
    std::vector<XmdfItem> items;
    std::map<std::string, XmdfUnreadable> unreadable;
    REPORT("Determing possible outputs in each .xmdf file.");
    if (wanted == XmdfWanted::Time) REPORT("Searching XMDF files for specified output time:");
    for (std::size_t i = 0; i < catalogue.size(); ++i) {
        XmdfEntry& entry = catalogue[i];
        XmdfChoice choice(entry, i, options, wanted);
        if (wanted == XmdfWanted::Time) REPORT("Searching xmdf file: " + XMDF_QUOTED(entry.fileName));
        if (wanted == XmdfWanted::Maximum) REPORT("Looking for data in /Maximums/ folder.");
        if (options.xmdfPathGiven) addChosen(choice, byPath(entry, options.xmdfPath));
        else if (byNumber) addChosen(choice, numbered(entry, options));
        else if (options.folderGiven)
            addChosen(choice, byFolder(entry, options.folder,
                                       options.typeGiven && !options.allTypes ? typeIn(entry, options, typeName) : ""));
        else if (options.allTypes) addAll(choice);
        else addByType(choice, typeIn(entry, options, typeName), wanted);
        unreadable.insert(choice.unreadable().begin(), choice.unreadable().end());
        for (XmdfItem& item : choice.take()) items.push_back(std::move(item));
    }
    if (items.empty() && !unreadable.empty()) STOP_XMDF(unreadable.begin()->second);
    for (const auto& [path, why] : unreadable) LEAVE_XMDF_OUT(path, why);
    REPORT("Determine xmdf paths to be outputted...");
    checkLimits(items);
    NAME_XMDF_ITEMS(items);
    if (options.resultsFile) gatherQuantities(items);
    for (const XmdfItem& item : items) REPORT(item.path);
    REPORT("   Done.");
    return items;
}
