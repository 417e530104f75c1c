// How the .xmdf steps speak: quoted names, and what a failed library operation ends.
#pragma once

#include "xmdf/xmdf.h"

#include <string>
#include <string_view>

/// Depth -> "Depth" between double quotes.
std::string XMDF_QUOTED(std::string_view name);

/// Behind a message that nothing of a type, path or folder was found.
constexpr std::string_view XMDF_LISTING_HINT = "        -xnfo lists the datasets of the file.";

/// What cannot be read. Of a dataset thrown by READ_XMDF_FACTS and NEXT_XMDF_OUTPUT: it ends a run of one dataset, and
/// is left out of a run of several, so that one damaged table costs no night's work.
struct XmdfUnreadable {
    std::string message;  ///< "ERROR - ...", which names the operation
    std::string reason;   ///< the second line
};
/// Throws it when the operation has failed. message: names the operation.
void CHECK_XMDF(const XmdfStatus& status, std::string_view message);
/// Reports it as the end of the run.
[[noreturn]] void STOP_XMDF(const XmdfUnreadable& unreadable);
/// "WARNING - Dataset <path> could not be read ...", and the run counts as incomplete.
void LEAVE_XMDF_OUT(std::string_view path, const XmdfUnreadable& unreadable);
