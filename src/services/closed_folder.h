// Sets of files in a folder that takes no new one: those that exist are written over, so that what cannot be written
// must be known before the first of them is.
#pragma once

#include <string>

/// 0, else errno: no file that is not there yet can be made at this place. Makes one under its working name and removes
/// it; the caller keeps signals from coming between.
int REFUSES_MAKING(const std::string& place);
/// 0, else errno: a file that may not be written, or that another program holds, is not replaced either. The file must
/// exist.
int REFUSES_WRITING(const std::string& place);
/// 0 when every file that the output of this main name consists of can be written, else errno, with the name of the
/// file in `failed`. What the output can do without, a .prj, may be missing, but not refuse.
int REFUSES_SET(const std::string& mainName, std::string& failed);
