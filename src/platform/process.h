// This process and others of the machine, and how this one ends by a signal.
#pragma once

#include <cstdint>
#include <string>

/// The machine's name on its network; blank when the system does not tell.
std::string HOST_NAME();
std::uint64_t PROCESS_NUMBER();
/// False also when it cannot be told.
bool PROCESS_IS_GONE(std::uint64_t number);

/// From now on an interrupt, a request to end, or the end of the terminal calls `cleanUp` in a thread of its own,
/// beside whatever the others do; the process then ends by that signal (on Windows as it would have without). A signal
/// that was ignored before stays so. To be called before there are other threads.
void CLEAN_UP_BEFORE_SIGNALS_END(void (*cleanUp)());
