// XMDF results files, read through the HDF5 library. Layout: groups with the text attribute "Grouptype"; a group of
// type "DATASET SCALAR" or "DATASET VECTOR" holds Times (times), Values (times x nodes, or times x nodes x 2) and,
// optionally, Active (times x cells). A build without HDF5 has the same operations, each of which fails with a reason.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What an operation returns.
struct XmdfStatus {
    int code = 0;             ///< negative on failure
    std::string reason = {};  ///< of a failure: names the file, the dataset and what the HDF5 library says
    operator int() const { return code; }
};

struct XmdfFileState;
struct XmdfGroupState;
struct XmdfFileCloser {
    void operator()(XmdfFileState* state) const;
};
struct XmdfGroupCloser {
    void operator()(XmdfGroupState* state) const;
};

/// An open file and an open dataset group of one; empty while nothing is open. They close themselves, in any order.
using XmdfFile = std::unique_ptr<XmdfFileState, XmdfFileCloser>;
using XmdfGroup = std::unique_ptr<XmdfGroupState, XmdfGroupCloser>;

/// Of the HDF5 library, "1.10.8"; blank in a build without it.
std::string HDF5_VERSION();

/// Opens read-only, without a lock where another program holds one.
XmdfStatus xfopenfile_f(const std::string& name, XmdfFile& file);
/// True when another program has the file open for writing, so that it is read without a lock.
bool XMDF_UNLOCKED(const XmdfFileState& file);
XmdfStatus xfclosefile_f(XmdfFile& file);
/// Version of the XMDF layout that is read: 2.1.
XmdfStatus xfgetlibraryversion_f(float& version);

/// Number of datasets of the kind, and the length of the longest path.
XmdfStatus xfgetscalardatasetsinfo_f(XmdfFileState& file, std::int32_t& count, std::int32_t& longest);
XmdfStatus xfgetvectordatasetsinfo_f(XmdfFileState& file, std::int32_t& count, std::int32_t& longest);
/// Full paths ("/run/Temporal/Depth"), numbered from 0, in the order in which an index by name lists the links, depth
/// first. Each group is met once, by its first hard link; datasets are not searched for further ones.
XmdfStatus xfgetscalardatasetpaths_f(XmdfFileState& file, std::vector<std::string>& paths);
XmdfStatus xfgetvectordatasetpaths_f(XmdfFileState& file, std::vector<std::string>& paths);
/// What the listing passed over, a line each: dangling and external links, and groups that hold Values without a
/// Grouptype.
const std::vector<std::string>& XMDF_SKIPPED(const XmdfFileState& file);
/// Damaged groups, which the listing passed over with all that they hold: a line each, why.
const std::vector<std::string>& XMDF_UNREADABLE_GROUPS(const XmdfFileState& file);

/// Opens a dataset by its full path. A group without a dataset's Grouptype is refused.
XmdfStatus xfopengroup_f(XmdfFileState& file, const std::string& path, XmdfGroup& group);
XmdfStatus xfclosegroup_f(XmdfGroup& group);

// The members of a dataset are opened and their shapes compared on first use: nothing is allocated on the word of the
// file before that.
/// Values per time: the nodes of the model, or its cells.
XmdfStatus xfgetdatasetnumvals_f(XmdfGroupState& group, std::int32_t& count);
/// Active flags per time; 0 when the dataset has none.
XmdfStatus xfgetdatasetnumactive_f(XmdfGroupState& group, std::int32_t& count);
/// The attribute TimeUnits as it stands, blank when absent.
XmdfStatus xfgetdatasettimeunits_f(XmdfGroupState& group, std::string& units);
/// The attribute DatasetUnits, blank when absent.
XmdfStatus xfgetdatasetunits_f(XmdfGroupState& group, std::string& units);
/// The times that Times, Values and Active all have, and that were written.
XmdfStatus xfgetdatasetnumtimes_f(XmdfGroupState& group, std::int32_t& count);
/// What of the file is beyond those times ("Times has 3 times, Values has 2 times"), blank where nothing is.
std::string XMDF_TIMES_LEFT_OUT(XmdfGroupState& group);
/// How many of those times, from the first one on, have all values and flags; a time of which some were never written
/// holds no results, but in a dataset whose own fill value says that nothing is wet. Looks at the storage of each time.
XmdfStatus XMDF_WHOLE_TIMES(XmdfGroupState& group, std::int32_t& count);
/// Those times in the file's unit. A time that is not a finite number is a failure.
XmdfStatus xfgetdatasettimes_f(XmdfGroupState& group, std::vector<double>& times);

/// Mins and Maxs of those times; blank where the dataset does not hold both, or holds fewer than it has times.
XmdfStatus xfgetdatasetextremes_f(XmdfGroupState& group, std::vector<float>& mins, std::vector<float>& maxs);

/// One time step, numbered from 1, of any integer or float type in the file. values: exactly one per node, or x and y
/// per node in turn. A time that is not whole is a failure, as is storage that does not fit the shape of the table.
XmdfStatus xfreadscalarvaluestimestep_f(XmdfGroupState& group, std::int32_t step, std::span<float> values);
XmdfStatus xfreadvectorvaluestimestep_f(XmdfGroupState& group, std::int32_t step, std::span<float> values);
/// The active flags of a time step, exactly one per cell. Only for a dataset that has them.
XmdfStatus xfreadactivitytimestep_f(XmdfGroupState& group, std::int32_t step, std::span<std::uint8_t> flags);

/// Begins to read a time that is likely to be asked for next, on the other threads of the run; with one job nothing.
/// Reading that time then takes what they have made of it. Whatever is wrong with it is told there, not here.
void XMDF_READ_AHEAD(XmdfGroupState& group, std::int32_t step);
