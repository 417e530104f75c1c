#include "inputs/dat_layout.h"

#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/bytes.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

namespace {

constexpr std::int64_t CARD_LENGTH = 4;
constexpr std::int64_t TIME_LENGTH = 4;
constexpr int LARGEST_FLAG = 8;
/// bytes that may follow the last step unread: a few cards of another program
constexpr std::int64_t LONGEST_TAIL = 64;

/// How the walk over a file's steps ended, the worst first.
enum class Ending : std::uint8_t {
    Broken,     ///< what follows a step is neither a step nor an end, or a time is no number: a wrong layout, or damage
    Odd,        ///< a few bytes that mean nothing follow the last step
    Truncated,  ///< the file ends inside a step
    Clean,      ///< card 210, or the end of the file in its place
};

/// What a header leaves open. Activity bytes other than 0 and 1 are those of compilers whose true is -1, or damage.
struct Layout {
    int flagSize = 1;           ///< bytes
    bool anyByteFlags = false;  ///< every activity byte but 0 says that flags follow, else 1 alone
};

struct Walk {
    DatFile found;
    bool anyByteFlags = false;
    Ending ending = Ending::Clean;
    /// bytes behind the last step and its card 210, for the endings that have no damaged step
    std::int64_t unread = 0;
};

/// Bytes at an offset, as many as the file holds of those asked for.
std::size_t readAt(int file, std::int64_t offset, std::span<unsigned char> bytes) {
    const std::int64_t got = SEEK_FILE(file, offset) ? READ_BYTES(file, bytes.data(), bytes.size()) : -1;
    if (got < 0) STOP_UNREADABLE(file);
    return static_cast<std::size_t>(got);
}

/// What follows the last step read.
enum class NextCard : std::uint8_t { Step, PartOfStep, End, Unknown };

NextCard nextCard(int file, std::int64_t offset) {
    std::array<unsigned char, CARD_LENGTH> bytes{};
    const std::size_t got = readAt(file, offset, bytes);
    if (got == 0) return NextCard::End;
    const std::int32_t card = littleInt32(bytes.data());  // both known cards fit their first byte, the rest being zero
    if (card == DAT_CARD_STEP) return got == CARD_LENGTH ? NextCard::Step : NextCard::PartOfStep;
    return card == DAT_CARD_END ? NextCard::End : NextCard::Unknown;
}

/// Reads the activity byte and the time, as stored, of the step at `step.offset`. False when the file ends before they
/// do.
bool readStepHead(const Walk& walked, DatStep& step) {
    std::array<unsigned char, LARGEST_FLAG + TIME_LENGTH> bytes{};
    const int flagSize = walked.found.flagSize;
    const std::size_t length = static_cast<std::size_t>(flagSize) + TIME_LENGTH;
    if (readAt(walked.found.file, step.offset, std::span(bytes).first(length)) < length) return false;
    const auto flagEnd = bytes.begin() + flagSize;
    const auto zero = [](unsigned char byte) { return byte == 0; };
    step.flags = walked.anyByteFlags ? !std::all_of(bytes.begin(), flagEnd, zero)
                                     : bytes[0] == 1 && std::all_of(bytes.begin() + 1, flagEnd, zero);
    step.time.number = static_cast<double>(littleFloat(bytes.data() + flagSize));
    return true;
}

Ending walkSteps(Walk& walked, std::int64_t firstStep, std::int64_t length) {
    DatFile& found = walked.found;
    DatStep step;
    step.offset = firstStep;
    for (;;) {
        if (!readStepHead(walked, step)) return Ending::Truncated;
        if (!std::isfinite(step.time.number)) return Ending::Broken;
        const std::int64_t stepEnd = step.offset + DAT_STEP_LENGTH(found.header, found.flagSize, step.flags);
        if (stepEnd > length) {
            found.damagedTime = step.time;
            return Ending::Truncated;
        }
        const NextCard next = nextCard(found.file, stepEnd);
        if (next == NextCard::Unknown && length - stepEnd > LONGEST_TAIL) {
            found.damagedTime = step.time;  // the step itself is in doubt: its end is not where it should be
            return Ending::Broken;
        }
        if (found.steps.size() == MOST_DAT_TIMES)
            STOP_RUN("WARNING - Cannot store anymore output times.  Limit of " +
                     AINTEGER8(static_cast<std::int64_t>(MOST_DAT_TIMES)) + " times.");
        if (step.flags) step.flagsOf = step.offset;
        found.steps.push_back(step);
        if (next == NextCard::PartOfStep) return Ending::Truncated;
        if (next != NextCard::Step) {
            const std::int64_t endCard = next == NextCard::End ? std::min(CARD_LENGTH, length - stepEnd) : 0;
            walked.unread = length - stepEnd - endCard;
            return next == NextCard::End ? Ending::Clean : Ending::Odd;
        }
        step.offset = stepEnd + CARD_LENGTH;
    }
}

Walk walk(int file, const DatCards& cards, const Layout& layout, std::int64_t length) {
    Walk result;
    result.found.file = file;
    result.found.header = cards.header;
    result.found.flagSize = layout.flagSize;
    result.anyByteFlags = layout.anyByteFlags;
    result.ending = walkSteps(result, cards.firstStep, length);
    result.found.damaged = result.ending == Ending::Truncated || result.ending == Ending::Broken;
    return result;
}

/// By its end, then by the bytes that it explains.
bool fitsBetter(const Walk& walked, const Walk& best) {
    const auto rank = [](const Walk& w) { return std::tuple(w.ending, w.unread == 0, w.found.steps.size()); };
    return rank(walked) > rank(best);
}

/// The walk of the first layout that explains the file, else of the one that explains most of it.
Walk bestWalk(int file, const DatCards& cards, std::int64_t length) {
    const std::int32_t declared = cards.declaredFlagSize;
    const bool otherSize = declared == 2 || declared == 4 || declared == LARGEST_FLAG;
    const Layout layouts[] = {{1, false}, {1, true}, {declared, false}, {declared, true}};
    Walk best = walk(file, cards, layouts[0], length);
    for (const Layout& layout : std::span(layouts).subspan(1, otherSize ? 3 : 1)) {
        if (best.ending == Ending::Clean && best.unread == 0) break;
        Walk other = walk(file, cards, layout, length);
        if (fitsBetter(other, best)) best = std::move(other);
    }
    return best;
}

/// The stored numbers become times, that of the damaged step behind the others.
void settleTimes(DatFile& found, double secondsPerUnit) {
    std::vector<double> stored;
    for (const DatStep& step : found.steps) stored.push_back(step.time.number);
    if (found.damagedTime) stored.push_back(found.damagedTime->number);
    const std::vector<OutputTime> times = OUTPUT_TIMES(stored, secondsPerUnit, TimeMarkers::Extremes);
    for (std::size_t i = 0; i < found.steps.size(); ++i) found.steps[i].time = times[i];
    if (found.damagedTime) found.damagedTime = times.back();
    found.timeDecimals = TIME_DECIMALS(times, found.seconds);
}

[[noreturn]] void refuseLayout(const DatFile& found, Ending ending, std::int64_t length) {
    const std::string counts = AINTEGER(found.header.nodes) + " values and " + AINTEGER(found.header.cells) +
                               " cells per output time, as its header says";
    if (ending == Ending::Broken)
        STOP_RUN("ERROR - " + GETNAM(found.file) + " does not hold " + counts +
                 ": no time step or end follows where the first time step ends.");
    STOP_RUN("ERROR - " + GETNAM(found.file) + " does not hold one whole time step: its " + AINTEGER8(length) +
             " bytes cannot hold " + counts + ".");
}

void reportEnding(const Walk& walked) {
    const DatFile& found = walked.found;
    const std::string name = GETNAM(found.file);
    const std::string number = std::to_string(found.steps.size() + 1);
    const std::string time = found.damagedTime ? " (time " + DAT_TIME_TEXT(found, *found.damagedTime) + ")" : "";
    const std::string kept = " Only the " + std::to_string(found.steps.size()) + " before it can be used.";
    if (walked.ending == Ending::Truncated)
        DMESSAGE("WARNING - " + name + " ends inside time step " + number + time + "." + kept);
    if (walked.ending == Ending::Broken)
        DMESSAGE("WARNING - " + name + " is damaged at time step " + number + time + "." + kept);
    if (walked.unread > 0)
        DMESSAGE("WARNING - " + name + " holds " + AINTEGER8(walked.unread) +
                 " bytes behind its last time step, which are not read.");
}

}  // namespace

std::int64_t DAT_FLAGS_OFFSET(int flagSize) { return flagSize + TIME_LENGTH; }

std::int64_t DAT_VALUES_OFFSET(const DatHeader& header, int flagSize, bool flags) {
    return DAT_FLAGS_OFFSET(flagSize) + (flags ? static_cast<std::int64_t>(header.cells) * flagSize : 0);
}

std::int64_t DAT_STEP_LENGTH(const DatHeader& header, int flagSize, bool flags) {
    return DAT_VALUES_OFFSET(header, flagSize, flags) +
           static_cast<std::int64_t>(header.nodes) * (header.vector ? 8 : 4);
}

DatFile INDEX_DAT_STEPS(int file, const DatCards& cards, bool seconds) {
    const std::int64_t length = FILE_LENGTH(file);
    Walk best = bestWalk(file, cards, length);
    // Flags may be absent, so no step vouches for the cells; but a mesh has fewer than two a node, and a value takes
    // four bytes.
    if (best.found.steps.empty() || cards.header.cells > length) refuseLayout(best.found, best.ending, length);
    if (best.found.flagSize != 1)
        DMESSAGE("Check - " + GETNAM(file) + " holds flags of " + std::to_string(best.found.flagSize) +
                 " bytes, as its header declares; 8-bit flags do not fit it.");
    best.found.seconds = seconds;
    best.found.secondsPerUnit = cards.secondsPerUnit;
    settleTimes(best.found, cards.secondsPerUnit);
    reportEnding(best);
    return std::move(best.found);
}
