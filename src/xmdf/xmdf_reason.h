// The reason that a failed operation leaves behind.
#pragma once

#include "xmdf/xmdf.h"

/// Keeps the reason for XMDF_REASON. Returns the failure status.
XmdfStatus xmdfFailed(std::string reason);
