// Writing an .xmdf results file of the layout that xmdf.h reads, dataset after dataset and time after time: one time is
// held in memory. Operations fail with a negative status and its reason, which names the file. A build
// without HDF5 has the same operations, each of which fails.
#pragma once

#include "xmdf/xmdf.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

struct XmdfOutputState;
struct XmdfOutputCloser {
    void operator()(XmdfOutputState* state) const;
};
/// A file being written. Left before XMDF_FINISH it closes itself, and what it holds is no results file.
using XmdfOutput = std::unique_ptr<XmdfOutputState, XmdfOutputCloser>;

/// One dataset to write: the group /<run>/<folder>/<name>, none of which holds a "/".
struct XmdfNewDataset {
    std::string run, folder, name;
    bool vector = false;
    std::int32_t values = 0;  ///< per time
    std::int32_t flags = 0;   ///< per time; 0: no table Active
    std::string units;        ///< of the values; blank: not known
};

/// One time. values: x and y per node in turn, or one. least, most: of the values that are not missing.
struct XmdfNewTime {
    double hours = 0.0;  ///< or the number that marks an extreme
    std::span<const float> values;
    std::span<const std::uint8_t> flags;
    float least = 0.0F, most = 0.0F;
};

/// Creates the file, or empties it.
XmdfStatus XMDF_CREATE(const std::string& name, XmdfOutput& file);
/// Ends the dataset before, and begins one with the times that follow. A name that its folder holds already is a
/// failure.
XmdfStatus XMDF_BEGIN_DATASET(XmdfOutputState& file, const XmdfNewDataset& dataset);
/// True when the folder of the file holds it already.
bool XMDF_HAS_DATASET(XmdfOutputState& file, const XmdfNewDataset& dataset);
XmdfStatus XMDF_ADD_TIME(XmdfOutputState& file, const XmdfNewTime& time);
/// Ends the last dataset and closes: only then is everything on the disk.
XmdfStatus XMDF_FINISH(XmdfOutput& file);
