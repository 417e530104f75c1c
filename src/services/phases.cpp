#include "services/phases.h"

#include "text_utils/numbers.h"

#include <array>
#include <cstddef>

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::array<const char*, 5> NAMES = {"scan", "read", "plan", "fill", "write"};
static_assert(NAMES.size() == static_cast<std::size_t>(Phase::Write) + 1);

std::array<Clock::duration, NAMES.size()> taken{};
InPhase* current = nullptr;

}  // namespace

InPhase::InPhase(Phase phase) : phase_(phase), around_(current), start_(Clock::now()) {
    if (around_ != nullptr) taken[static_cast<std::size_t>(around_->phase_)] += start_ - around_->start_;
    current = this;
}

InPhase::~InPhase() {
    const Clock::time_point now = Clock::now();
    taken[static_cast<std::size_t>(phase_)] += now - start_;
    if (around_ != nullptr) around_->start_ = now;
    current = around_;
}

void INITIALISE_PHASES() { taken = {}; }

std::string PHASE_SECONDS() {
    std::string text;
    for (std::size_t i = 0; i < NAMES.size(); ++i) {
        const double seconds = std::chrono::duration<double>(taken[i]).count();
        text += (i == 0 ? "" : ", ") + std::string(NAMES[i]) + " " + AREALD8(seconds, 2);
    }
    return text;
}
