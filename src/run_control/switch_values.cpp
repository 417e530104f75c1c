#include "run_control/switch_values.h"

#include "run_control/nearest_switch.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/free_form.h"
#include "text_utils/text.h"

#include <cmath>

void unreadable(const SwitchArgument& given) {
    DMESSAGE("ERROR reading data");
    REPORT("   from argument " + given.argument);
    const std::string meant = NEAREST_SWITCH(given.text);
    if (BEGINS_WITH(given.text, "tif")) REPORT("   The switch for a GeoTIFF is -gtif.");
    else if (!meant.empty() && meant != given.keyword) REPORT("   did you mean -" + meant + "?");
    EXITS();
}

template <typename Real>
Real gluedReal(const SwitchArgument& given) {
    FreeForm text(given.behind);
    Real value{};
    if (text.NEXT_REAL(value) != FreeForm::Read::Value || !std::isfinite(value) || !text.ENDED()) unreadable(given);
    return value;
}
template float gluedReal<float>(const SwitchArgument&);
template double gluedReal<double>(const SwitchArgument&);

std::int32_t gluedInteger(const SwitchArgument& given) {
    FreeForm text(given.behind);
    std::int32_t value = 0;
    if (text.NEXT_INTEGER(value) != FreeForm::Read::Value || !text.ENDED()) unreadable(given);
    return value;
}

std::string gluedText(const SwitchArgument& given) {
    const std::string_view text = TRIMMED(given.behind);
    if (text.empty()) STOP_RUN("ERROR - Nothing specified behind " + given.argument);
    return std::string(text);
}

void requireAbove(bool above, const SwitchArgument& given, std::string_view limit) {
    if (!above) STOP_RUN("ERROR - The value of " + given.argument + " must be " + std::string(limit) + ".");
}
