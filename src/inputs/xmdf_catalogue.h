// What the .xmdf files of a run hold: the files, kept open, and the paths of their scalar and vector datasets.
#pragma once

#include "xmdf/xmdf.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

enum class XmdfKind : std::uint8_t { Scalar = 0, Vector = 1 };

/// The datasets of one kind that were searched for: numbers into the list of paths, 0 where there is none.
struct XmdfMatches {
    std::int32_t maximum = 0;   ///< path contains /Maximums/
    std::int32_t temporal = 0;  ///< path contains /Temporal/, or the one that -path names
    std::int32_t minimum = 0;   ///< path contains /Minimums/
    std::int32_t times = 0;     ///< path contains /Times/
    std::int32_t path = 0;      ///< the one that -path names
    bool any() const { return maximum > 0 || temporal > 0 || minimum > 0 || times > 0; }
};

/// The datasets of one kind in one file. Paths are filled by OPEN_XMDF_FILES, matches by FIND_XMDF_TYPE and
/// FIND_XMDF_PATH.
struct XmdfDatasets {
    /// full paths ("/run/Temporal/Depth"), numbered from 1 (entry 0 unused), in the library's order
    std::vector<std::string> paths;
    XmdfMatches found;
    std::int32_t count() const { return static_cast<std::int32_t>(paths.size()) - 1; }
    const std::string& path(std::int32_t number) const { return paths[static_cast<std::size_t>(number)]; }
};

struct XmdfEntry {
    std::string fileName;  ///< as given
    XmdfFile file;
    std::array<XmdfDatasets, static_cast<std::size_t>(XmdfKind::Vector) + 1> sorts;  ///< by XmdfKind
    XmdfDatasets& of(XmdfKind kind) { return sorts[static_cast<std::size_t>(kind)]; }
    const XmdfDatasets& of(XmdfKind kind) const { return sorts[static_cast<std::size_t>(kind)]; }
};

/// Owned by the conversion that needs it, so that the files close however the run ends.
using XmdfCatalogue = std::vector<XmdfEntry>;

/// Opens each file and reports what it holds. Groups that had to be left out are named in "Warning - " lines. Stops the
/// run on a file that is no whole HDF5 file.
XmdfCatalogue OPEN_XMDF_FILES(const std::vector<std::string>& names);
