// Reads the values of the chosen datasets into a results record of the caller's.
#pragma once

#include "inputs/results.h"
#include "inputs/xmdf_items.h"

/// One item on its way into a results record. Its group closes itself.
struct XmdfReading {
    XmdfEntry* entry = nullptr;
    const XmdfItem* item = nullptr;
    Results* results = nullptr;  ///< what is filled
    bool seconds = false;     ///< the values of a /Times/ dataset become seconds, else hours; so do times in messages
    XmdfGroup group;          ///< open from the first output to the last
    std::int32_t next = 1;    ///< AllTimes: number of the time that is read next
    std::int32_t last = 0;    ///< number of the last time that can be read
    std::int32_t before = 0;  ///< AllTimes: number of the time that was read last; 0 for none
    bool done = false;
    bool cut = false;               ///< AllTimes: the file was to hold more behind `last`
    std::vector<float> components;  ///< working table: x and y of each node in turn
};

/// Sizes the results record for the item, every value missing and every cell wet, and labels it; nothing is read yet.
/// All three must live as long as the reading. cellCentred: the item has one value per cell of the mesh. seconds: what
/// the run shows times in.
XmdfReading BEGIN_XMDF_READING(XmdfEntry& entry, const XmdfItem& item, bool cellCentred, bool seconds,
                               Results& results);

/// Fills the results record with the item's next output: each time in turn for AllTimes, else the one there is. False,
/// and nothing read, when none is left. AllTimes begins with a WARNING where a time was never written whole; the run
/// counts as incomplete when it comes to that one. Throws XmdfUnreadable on a failure of the library.
bool NEXT_XMDF_OUTPUT(XmdfReading& reading);
