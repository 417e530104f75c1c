#include "services/projection_text.h"

#include "services/exits.h"
#include "services/files.h"
#include "text_utils/free_form.h"
#include "text_utils/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace {

constexpr std::size_t LONGEST_PRJ = 1U << 20;
constexpr double SAME_NUMBER = 1e-10;  ///< relative; the flattenings of GRS 80 and WGS 84 differ by 5e-9

CoordinateKind kindOfCoordSys(std::string_view line) {
    std::string behind;
    if (FLAGEXISTS(line, "NonEarth")) return CoordinateKind::NonEarth;
    if (!FLAGEXISTSRET(line, "Earth", behind)) return CoordinateKind::Projected;
    std::string number;
    if (!FLAGEXISTSRET(behind, "Projection", number)) return CoordinateKind::Geographic;  // none is longitude/latitude
    std::int32_t type = 0;
    const bool isOne = FreeForm(number).NEXT_INTEGER(type) == FreeForm::Read::Value && type == 1;
    return isOne ? CoordinateKind::Geographic : CoordinateKind::Projected;
}

/// Looked for in this order: a geographic system is also the base of a projected one.
struct KindWord {
    std::string_view word;
    CoordinateKind kind;
};
constexpr KindWord KIND_WORDS[] = {
    {"PROJCS", CoordinateKind::Projected},   {"PROJCRS", CoordinateKind::Projected},
    {"GEOGCS", CoordinateKind::Geographic},  {"GEOGCRS", CoordinateKind::Geographic},
    {"COMPD_CS", CoordinateKind::Projected},
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isWordCharacter(char c) { return isDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }

/// One piece of a projection text: a text in quotes, a word, a number or a sign.
struct Piece {
    std::string text;  ///< upper case, without blanks; of a number as it stands
    double number = 0.0;
    bool isNumber = false;

    bool operator==(const Piece& other) const {
        if (!isNumber || !other.isNumber) return isNumber == other.isNumber && text == other.text;
        const double largest = std::max(std::abs(number), std::abs(other.number));
        return std::abs(number - other.number) <= SAME_NUMBER * largest;
    }
};

Piece quotedPiece(std::string_view& text) {
    const std::size_t end = std::min(text.find('"', 1), text.size() - 1) + 1;
    std::string inside(text.substr(0, end));
    std::erase_if(inside, [](char c) { return c == ' ' || c == '\t'; });
    text.remove_prefix(end);
    return {UPPERCASE(inside)};
}

/// The next piece, taken off the text; a blank one at its end or at the Bounds, which limit what a layer can hold and
/// are no part of the system.
Piece nextPiece(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    if (text.empty()) return {};
    if (text[0] == '"') return quotedPiece(text);
    Piece piece;
    const char* first = text.data() + (text[0] == '+' ? 1 : 0);
    const auto read = std::from_chars(first, text.data() + text.size(), piece.number);
    std::size_t length = static_cast<std::size_t>(read.ptr - text.data());
    piece.isNumber = read.ec == std::errc{} && (isDigit(*first) || *first == '-' || *first == '.');
    if (!piece.isNumber) {
        const auto behind = std::find_if_not(text.begin(), text.end(), isWordCharacter);
        length = std::max<std::size_t>(static_cast<std::size_t>(behind - text.begin()), 1);
    }
    piece.text = UPPERCASE(text.substr(0, length));
    text.remove_prefix(length);
    return piece.text == "BOUNDS" ? Piece{} : piece;
}

/// Lines trimmed and joined: formatted text breaks between its items, where blanks mean nothing.
std::string onOneLine(std::string_view text) {
    std::string joined;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        joined += TRIMMED(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return joined;
}

}  // namespace

CoordinateKind COORDINATE_KIND(std::string_view text) {
    if (FLAGEXISTS(text, "CoordSys")) return kindOfCoordSys(text);
    for (const KindWord& row : KIND_WORDS)
        if (FLAGEXISTS(text, row.word)) return row.kind;
    return CoordinateKind::Unknown;
}

bool SAME_PROJECTION(std::string_view a, std::string_view b) {
    for (;;) {
        const Piece one = nextPiece(a);
        if (!(one == nextPiece(b))) return false;
        if (one.text.empty()) return true;
    }
}

std::string READ_PRJ(std::string_view name) {
    const int file = OPEN_FILE(name, "I ", "prj");
    std::string bytes(LONGEST_PRJ, '\0');
    const std::int64_t length = READ_BYTES(file, bytes.data(), bytes.size());
    if (length < 0) STOP_UNREADABLE(file);
    CLOSE_FILE(file);
    bytes.resize(static_cast<std::size_t>(length));
    return bytes.size() == LONGEST_PRJ ? std::string{} : onOneLine(WITHOUT_MARK(bytes));
}

std::string READ_COORD_SYS_LINE(int file) {
    std::string_view line;
    LineStatus status{};
    while ((status = READ_LINE(file, line)) == LineStatus::Read) {
        line = TRIMMED(WITHOUT_MARK(line));
        if (FLAGEXISTS(line, "CoordSys")) return FITTED(line, FILE_NAME_WIDTH);
        if (ASAME(line, "Data")) break;
    }
    if (status == LineStatus::Error) EXITS();
    return {};
}

void WRITE_PRJ(const std::string& base, std::string_view text) {
    if (TRIMMED(text).empty()) return;
    const int file = OPEN_COMPANION(base + ".prj", "prj");
    if (file == 0) return;
    WRITE_OR_STOP(file, text);
    CLOSE_FILE(file);
}
