// How the steps behind an operation fail: by an exception that no operation lets out.
#pragma once

#include "xmdf/xmdf.h"

#include <utility>

struct XmdfFailure {
    std::string reason;
};
[[noreturn]] inline void xmdfFailed(std::string reason) { throw XmdfFailure{std::move(reason)}; }

/// The body of an operation, with its failure as a status.
template <typename Body>
XmdfStatus xmdfOperation(Body body) {
    try {
        body();
        return {};
    } catch (XmdfFailure& failure) {
        return {-1, std::move(failure.reason)};
    }
}
