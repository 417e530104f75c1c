#include "services/version.h"

constexpr std::string_view VERSION_TEXT = PROJECT_VERSION_TEXT;  // of the build, in this file alone
