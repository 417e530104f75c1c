#include "run_control/precision.h"

#include "services/console.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace {

// Beyond these a number holds nothing but noise, and each value of a grid would take hundreds of bytes.
constexpr int MOST_UNITS = 99;
constexpr int MOST_DECIMALS = 20;

std::optional<int> wholeNumber(std::string_view text, int most) {
    text = TRIMMED(text);
    if (!POSITIVEINTEGERNUMBER(text)) return {};
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    if (value > most) return {};
    return value;
}

std::optional<Precision> parsed(std::string_view text) {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos) return {};
    const std::optional<int> units = wholeNumber(text.substr(0, point), MOST_UNITS);
    const std::optional<int> decimals = wholeNumber(text.substr(point + 1), MOST_DECIMALS);
    if (!units || !decimals) return {};
    return Precision{std::max(*units, 1), *decimals};
}

}  // namespace

Precision READ_PRECISION(std::string text) {
    for (;;) {
        if (const std::optional<Precision> precision = parsed(text)) {
            REPORT("Specified an output precision of " + AINTEGER(precision->units) + " units and " +
                   AINTEGER(precision->decimals) + " decimal places.");
            return *precision;
        }
        REPORT("Incorrect or no precision specification given.");
        if (!text.empty())
            REPORT("   \"" + text + "\" is not two whole numbers with a point between, up to " + AINTEGER(MOST_UNITS) +
                   "." + AINTEGER(MOST_DECIMALS));
        text = ASK("Enter precision specification (eg. 5.3) then press Enter -> ");
    }
}
