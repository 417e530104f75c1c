// What of an .xmdf is converted: the command line's -type, -path, -Folder, -s, -v and time switches against the
// datasets of the files.
#pragma once

#include "inputs/xmdf_items.h"

struct RunOptions;

/// The items of the run, scalars before vectors within a file, named. typeName: what -type stands for ("Water Level"),
/// or the default type. A dataset of a list (-typeAll, -Folder) that has not what the time switch asks for is passed
/// over with a "Warning - " line that names it. One that cannot be read is left out with a WARNING, and the run counts
/// as incomplete, as long as there are others. Stops the run when a dataset that was named is not there or has no such
/// output. The list may come back empty.
std::vector<XmdfItem> SELECT_XMDF_OUTPUTS(XmdfCatalogue& catalogue, const RunOptions& options,
                                          const std::string& typeName);
