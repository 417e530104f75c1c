// Which files this run has touched, which outputs it has completed, and under which name a file exists. The public face
// is services/files.h.
#pragma once

#include <string>
#include <string_view>

/// Forgets the names noted and the outputs counted so far.
void FORGET_FILE_NAMES();
