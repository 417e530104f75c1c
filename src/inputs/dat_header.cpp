#include "inputs/dat_header.h"

#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/bytes.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t NAME_LENGTH = 40;
constexpr int MOST_UNKNOWN_CARDS = 1000;  ///< a header holds a dozen cards; more that say nothing are no header

[[noreturn]] void refuse(int file, std::string_view why) {
    STOP_RUN("ERROR - " + GETNAM(file) + " " + std::string(why));
}

/// False at the end of the file.
template <std::size_t Count>
bool readBytes(int file, std::array<unsigned char, Count>& bytes) {
    const std::int64_t got = READ_BYTES(file, bytes.data(), Count);
    if (got < 0) STOP_UNREADABLE(file);
    return got == static_cast<std::int64_t>(Count);
}

bool readInteger(int file, std::int32_t& value) {
    std::array<unsigned char, 4> bytes{};
    if (!readBytes(file, bytes)) return false;
    value = littleInt32(bytes.data());
    return true;
}

/// Padding may be blanks or zero bytes.
bool readName(int file, std::string& name) {
    std::array<unsigned char, NAME_LENGTH> bytes{};
    if (!readBytes(file, bytes)) return false;
    name.assign(bytes.begin(), std::find(bytes.begin(), bytes.end(), 0));
    name = TRIMF(name);
    return true;
}

/// ASCII datasets share the extension.
bool beginsAsText(int file) {
    std::array<unsigned char, 16> bytes{};
    return SEEK_FILE(file, 0) && readBytes(file, bytes) && std::all_of(bytes.begin(), bytes.end(), [](unsigned char c) {
               return (c >= 0x20 && c < 0x7F) || (c >= '\t' && c <= '\r');
           });
}

/// The codes of card 250.
constexpr struct {
    std::int32_t code;
    double seconds;
} TIME_UNITS[] = {{0, SECONDS_PER_HOUR}, {1, 60.0}, {2, 1.0}, {4, SECONDS_PER_DAY}};

bool readTimeUnit(int file, double& secondsPerUnit) {
    std::int32_t code = 0;
    if (!readInteger(file, code)) return false;
    secondsPerUnit = SECONDS_PER_HOUR;
    const auto* unit =
        std::find_if(std::begin(TIME_UNITS), std::end(TIME_UNITS), [&](const auto& row) { return row.code == code; });
    if (unit != std::end(TIME_UNITS)) secondsPerUnit = unit->seconds;
    else DMESSAGE("WARNING - Unknown time unit " + AINTEGER(code) + " of " + GETNAM(file) + ", taken as hours.");
    return true;
}

/// Reads cards up to the first output time. False when there is none.
bool readCards(int file, DatCards& cards) {
    DatHeader& header = cards.header;
    std::int32_t discarded = 0;
    int unknownCards = 0;
    for (std::int32_t card = 0; readInteger(file, card);) {
        bool whole = true;
        switch (card) {
            case DAT_CARD_STEP: return true;
            case DAT_CARD_END: return false;
            case 100:  // object type
            case 110:  // float size
            case 150:  // vector type
            case 160:  // object id
                whole = readInteger(file, discarded);
                break;
            case 120: whole = readInteger(file, cards.declaredFlagSize); break;
            case 130: header.vector = false; break;
            case 140: header.vector = true; break;
            case 170: whole = readInteger(file, header.nodes); break;
            case 180: whole = readInteger(file, header.cells); break;
            case 190: whole = readName(file, header.name); break;
            case 250: whole = readTimeUnit(file, cards.secondsPerUnit); break;
            default:  // 3000, the version, and whatever other programs add
                if (++unknownCards > MOST_UNKNOWN_CARDS) return false;
        }
        if (!whole) return false;
    }
    return false;
}

}  // namespace

DatCards READ_DAT_CARDS(int file) {
    if (FILE_LENGTH(file) == 0) refuse(file, "is empty.");
    if (!SEEK_FILE(file, 0)) refuse(file, "cannot be read: " + LAST_FILE_ERROR(file));
    DatCards cards;
    if (!readCards(file, cards)) {
        if (beginsAsText(file)) refuse(file, "is a text file; a binary .dat file is needed.");
        refuse(file, "is no binary .dat file with results: no output time found behind its header.");
    }
    cards.firstStep = FILE_POSITION(file);
    const DatHeader& header = cards.header;
    if (header.nodes < 1 || header.cells < 0)
        refuse(file, "has a header that cannot be right: " + AINTEGER(header.nodes) + " values and " +
                         AINTEGER(header.cells) + " cells per output time.");
    return cards;
}
