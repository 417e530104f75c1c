// How the .xmdf steps speak: quoted names, and what a failed library operation ends.
#pragma once

#include <string>
#include <string_view>

/// Depth -> "Depth" between double quotes.
std::string XMDF_QUOTED(std::string_view name);

/// Behind a message that nothing of a type, path or folder was found.
constexpr std::string_view XMDF_LISTING_HINT = "        -xnfo lists the datasets of the file.";

/// The message, which names the operation, the library's reason on a second line, and the end of the run.
[[noreturn]] void STOP_XMDF(std::string_view message);

/// A dataset that cannot be read. Thrown by READ_XMDF_FACTS and NEXT_XMDF_OUTPUT: it ends a run of one dataset, and is
/// left out of a run of several, so that one damaged table costs no night's work.
struct XmdfUnreadable {
    std::string message;  ///< "ERROR - ...", which names the operation
    std::string reason;   ///< the second line
};
/// Throws it with the library's reason.
[[noreturn]] void XMDF_UNREADABLE(std::string_view message);
/// Reports it as the end of the run.
[[noreturn]] void STOP_XMDF(const XmdfUnreadable& unreadable);
/// "WARNING - Dataset <path> could not be read ...", and the run counts as incomplete.
void LEAVE_XMDF_OUT(std::string_view path, const XmdfUnreadable& unreadable);
