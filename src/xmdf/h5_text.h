// Texts out of HDF5: the library's own reason for a failure, and text attributes.
#pragma once

#include "xmdf/h5_handles.h"

#include <string>

/// Before any other call of the library: stops it from printing its error stack on the console by itself, and from
/// writing anything at the exit of the process; files are closed by their handles.
void h5Silence();
/// " (HDF5: unable to open file)": the innermost entry of the error stack, blank when there is none. Any later call of
/// the library, the closing of a handle included, empties the stack.
std::string h5Reason();

/// Reads a text attribute that is a scalar or a list of one, of fixed length (padded with NUL or blanks) or of variable
/// length. Trailing blanks go. False when the attribute is absent, no text, or cannot be read.
bool h5ReadText(hid_t object, const char* attribute, std::string& text);
