// Which files this run has touched, which outputs it has completed, and under which name a file exists. The public face
// is services/files.h.
#pragma once

#include <string>
#include <string_view>

/// The absolute path in lower case with "/" between its parts: equal for two names that a case-blind file system may
/// not tell apart.
std::string COMPARABLE_NAME(std::string_view name);
/// Forgets the names noted and the outputs counted so far.
void FORGET_FILE_NAMES();
