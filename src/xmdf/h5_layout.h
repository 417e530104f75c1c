// The storage layout in a table's header, looked at before the library is.
#pragma once

#include <hdf5.h>

#include <string>

/// Libraries before 1.12 divide by the sizes of the chunks while they open a table, whatever a damaged header says.
/// False where a size is zero or the number of them is no number of dimensions; true where nothing speaks against
/// opening the member of the group, and for headers that carry a checksum.
bool h5LayoutIsSound(hid_t group, const char* member);
