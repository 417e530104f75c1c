// Finds datasets by what is asked for: a type name, a path, a folder, the same quantity in another folder.
#pragma once

#include "inputs/xmdf_catalogue.h"

#include <string_view>

/// The results folder that a path lies in. Tested in this order, letter case ignored, anywhere in the path.
enum class XmdfFolder : std::uint8_t { Maximums, Temporal, Minimums, Times, Other };
XmdfFolder XMDF_FOLDER_OF(std::string_view path);

/// What stands behind the last "/": "/run/Temporal/Depth" -> "Depth".
std::string_view XMDF_LAST_PART(std::string_view path);

/// True when the path contains the text, letter case ignored, but only before its last part.
bool XMDF_ONLY_IN_FOLDER(std::string_view path, std::string_view text);

/// Notes the dataset of the type in each results folder, for scalars and vectors: those whose path contains the name,
/// letter case ignored; a later one replaces an earlier one, unless the earlier one's last part is the name and the
/// later one's is not. Stops the run on a match outside the results folders, and when nothing is found.
void FIND_XMDF_TYPE(XmdfEntry& entry, const std::string& type);

/// Notes the dataset whose full path this is, letter case ignored and the leading "/" optional; only when there is
/// none, those whose path contains it, one of each kind. Stops the run when nothing is found.
void FIND_XMDF_PATH(XmdfEntry& entry, const std::string& path);

/// Numbers of the datasets below a folder of that name, however deep, letter case ignored.
std::vector<std::int32_t> XMDF_DATASETS_IN_FOLDER(const XmdfDatasets& datasets, std::string_view folder);

/// Number of the dataset that is the same quantity in another results folder: "/run/Maximums/Depth" for
/// "/run/Temporal/Depth"; 0 without one.
std::int32_t XMDF_TWIN(const XmdfDatasets& datasets, std::string_view path, XmdfFolder folder);
