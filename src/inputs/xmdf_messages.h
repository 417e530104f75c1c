// How the .xmdf steps speak: quoted names, and the end of a run on a failed library operation.
#pragma once

#include <string>
#include <string_view>

/// Depth -> "Depth" between double quotes.
std::string XMDF_QUOTED(std::string_view name);

/// The message, which names the operation, the library's reason on a second line, and the end of the run.
[[noreturn]] void STOP_XMDF(std::string_view message);
