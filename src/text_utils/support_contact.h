// Whom messages ask the user to contact.
#pragma once

#include <string_view>

/// Completes "... - contact " and "... - please contact ".
constexpr std::string_view SUPPORT_CONTACT = "the maintainers (see README)";
