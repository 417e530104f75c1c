// How long the phases of a run take, for -verbose: whoever works on one says so while it lasts.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

enum class Phase : std::uint8_t { Scan, Read, Plan, Fill, Write };

/// The calling thread of the run works on a phase until the end of this object; the one around it waits meanwhile.
class InPhase {
public:
    explicit InPhase(Phase phase);
    ~InPhase();
    InPhase(const InPhase&) = delete;
    InPhase& operator=(const InPhase&) = delete;

private:
    Phase phase_;
    InPhase* around_;
    std::chrono::steady_clock::time_point start_;  ///< or when it went on
};

/// Forgets the times before: the start of a run.
void INITIALISE_PHASES();
/// "scan 0.05, read 0.21, plan 0.06, fill 0.24, write 0.11": seconds; what belongs to none of them is in no number.
std::string PHASE_SECONDS();
