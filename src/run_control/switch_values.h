// The value that is glued to a switch. Each stops the run, naming the switch, where it is not there or not what it has
// to be.
#pragma once

#include "run_control/switches.h"

#include <cstdint>
#include <string>
#include <string_view>

/// One number and nothing else: the "5" of 2,5 or of 5m would be a number that nobody meant. Real: float or double.
template <typename Real>
Real gluedReal(const SwitchArgument& given);
std::int32_t gluedInteger(const SwitchArgument& given);
/// A blank name would be found in every dataset path.
std::string gluedText(const SwitchArgument& given);
/// limit: "1 or above", for the message.
void requireAbove(bool above, const SwitchArgument& given, std::string_view limit);
/// "ERROR reading data", and what may have been meant.
[[noreturn]] void unreadable(const SwitchArgument& given);
