// What is behind an open file and an open dataset group.
#pragma once

#include "xmdf/h5_handles.h"
#include "xmdf/xmdf.h"
#include "xmdf/xmdf_ahead.h"
#include "xmdf/xmdf_table.h"

struct XmdfFileState {
    H5File file;
    std::string name;
    bool unlocked = false;  ///< another program has it open for writing
    bool listed = false;    ///< the lists below are filled
    std::vector<std::string> scalarPaths, vectorPaths;
    std::vector<std::string> skipped, unreadable;
};

struct XmdfGroupState {
    H5Group group;
    std::string name;  ///< for messages: "x.xmdf": /run/Temporal/Depth
    bool vector = false;
    H5Table values, times, active;  ///< opened on first use
    hsize_t sharedTimes = 0;        ///< times that all of them have; 0 until it is settled
    XmdfAhead ahead;
};

enum class XmdfGroupKind { Folder, Scalar, Vector };
/// By the attribute Grouptype; a group without one is a folder.
XmdfGroupKind xmdfGroupKind(hid_t group);
