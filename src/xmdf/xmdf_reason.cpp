#include "xmdf/xmdf_reason.h"

namespace {
std::string lastReason;
}

const std::string& XMDF_REASON() { return lastReason; }

XmdfStatus xmdfFailed(std::string reason) {
    lastReason = std::move(reason);
    return -1;
}
