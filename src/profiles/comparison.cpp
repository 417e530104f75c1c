#include "profiles/comparison.h"

#include "geometry/no_value.h"
#include "gis/fixed_text.h"
#include "profiles/layer_fields.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/free_form.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace {

constexpr std::string_view USUAL_NAMES[] = {"obs", "observed", "wl", "level", "h", "rl"};
constexpr double HIGHEST_UNRECORDED = -9999.0;
constexpr double NOT_RECORDED = std::numeric_limits<double>::quiet_NaN();

std::optional<std::size_t> fieldNamed(const CalibrationPoints& points, std::string_view name, bool numbersOnly) {
    const std::vector<GisAttribute>& attributes = points.header.attributes;
    for (std::size_t i = 0; i < attributes.size(); ++i)
        if (ASAME(attributes[i].name, name) && (!numbersOnly || IS_NUMBER_FIELD(attributes[i]))) return i;
    return {};
}

std::optional<std::size_t> recordedField(const CalibrationPoints& points, std::string_view named) {
    if (!named.empty()) {
        const std::optional<std::size_t> field = fieldNamed(points, named, false);
        if (!field) STOP_RUN("ERROR - Field " + std::string(named) + " (-obs) is not in " + points.file);
        if (!IS_NUMBER_FIELD(points.header.attributes[*field]))
            STOP_RUN("ERROR - Field " + std::string(named) + " (-obs) of " + points.file + " holds no numbers.");
        return field;
    }
    for (const std::string_view name : USUAL_NAMES)
        if (const std::optional<std::size_t> field = fieldNamed(points, name, true)) return field;
    return {};
}

double recordedValue(const std::string& text) {
    FreeForm reader(text);
    double value = 0.0;
    if (reader.NEXT_REAL(value) != FreeForm::Read::Value || !reader.ENDED() || !std::isfinite(value))
        return NOT_RECORDED;
    return value > HIGHEST_UNRECORDED ? value : NOT_RECORDED;
}

std::string realText(double value, int decimals) {
    RealText buffer;
    return std::string(REAL_TEXT(buffer, value, decimals));
}

/// What the differences of one output time come to.
struct Summary {
    int compared = 0;
    double sum = 0.0, absolute = 0.0, squares = 0.0;
    std::optional<std::size_t> above, below;  ///< points of the largest differences of either sign
    std::array<int, 4> within{};
    std::vector<std::size_t> dry, outside;  ///< points with a recorded value that have no modelled one
};
constexpr std::array<double, 4> LIMITS = {0.1, 0.2, 0.3, 0.5};

void count(Summary& summary, std::span<const float> differences, std::size_t point) {
    const auto difference = static_cast<double>(differences[point]);
    ++summary.compared;
    summary.sum += difference;
    summary.absolute += std::abs(difference);
    summary.squares += difference * difference;
    if (difference > 0.0 && (!summary.above || differences[point] > differences[*summary.above])) summary.above = point;
    if (difference < 0.0 && (!summary.below || differences[point] < differences[*summary.below])) summary.below = point;
    // 5.3 - 5.2 is within 0.1, whatever single precision made of it.
    constexpr double SLACK = 0.00005;
    for (std::size_t i = 0; i < LIMITS.size(); ++i)
        if (std::abs(difference) < LIMITS[i] + SLACK) ++summary.within[i];
}

std::string largest(const CalibrationPoints& points, std::span<const float> differences,
                    std::optional<std::size_t> point, int decimals) {
    if (!point) return "none";
    return points.labels[*point] + " " + realText(static_cast<double>(differences[*point]), decimals);
}

void reportLabels(const std::string& what, const CalibrationPoints& points, const std::vector<std::size_t>& which) {
    std::string line = "   " + what + ":";
    for (std::size_t i = 0; i < which.size(); ++i) line += (i > 0 ? ", " : " ") + points.labels[which[i]];
    if (!which.empty()) REPORT(line);
}

}  // namespace

RecordedValues FIND_RECORDED(const CalibrationPoints& points, std::string_view named) {
    RecordedValues recorded;
    const std::optional<std::size_t> field = recordedField(points, TRIMMED(named));
    if (!field) return recorded;
    recorded.field = points.header.attributes[*field].name;
    const bool zeroIsBlank = FILEEXT(points.file) != ".shp";
    int zeros = 0;
    for (const std::int32_t object : points.objectOf) {
        const std::vector<std::string> values = RECORD_VALUES(points.objects[static_cast<std::size_t>(object)].record);
        double value = *field < values.size() ? recordedValue(values[*field]) : NOT_RECORDED;
        if (zeroIsBlank && value == 0.0) {
            value = NOT_RECORDED;
            ++zeros;
        }
        recorded.value.push_back(value);
    }
    REPORT("Recorded values are taken from field " + recorded.field + " of " + points.file);
    if (zeros > 0)
        DMESSAGE("Check - " + AINTEGER(zeros) + " points with 0 in field " + recorded.field +
                 " are taken as not recorded, since a .mif has no empty numbers.");
    return recorded;
}

std::vector<float> DIFFERENCES(const RecordedValues& recorded, std::span<const float> modelled) {
    std::vector<float> differences(modelled.size(), NO_VALUE);
    for (std::size_t i = 0; i < modelled.size(); ++i)
        if (!IS_MISSING(modelled[i]) && !std::isnan(recorded.value[i]))
            differences[i] = static_cast<float>(static_cast<double>(modelled[i]) - recorded.value[i]);
    return differences;
}

void REPORT_COMPARISON(const CalibrationPoints& points, const RecordedValues& recorded,
                       std::span<const float> differences, const std::vector<bool>& inMesh, int decimals) {
    Summary summary;
    for (std::size_t i = 0; i < differences.size(); ++i) {
        if (!IS_MISSING(differences[i])) count(summary, differences, i);
        else if (!std::isnan(recorded.value[i])) (inMesh[i] ? summary.dry : summary.outside).push_back(i);
    }
    REPORT("Calibration: " + AINTEGER(summary.compared) + " of " +
           AINTEGER8(static_cast<std::int64_t>(points.count())) + " points have a recorded and a modelled value, " +
           AINTEGER8(static_cast<std::int64_t>(summary.dry.size())) + " stayed dry.");
    if (summary.compared > 0) {
        const double n = summary.compared;
        REPORT("   mean difference " + realText(summary.sum / n, decimals) + ", mean absolute difference " +
               realText(summary.absolute / n, decimals) + ", RMSE " +
               realText(std::sqrt(summary.squares / n), decimals));
        REPORT("   largest above: " + largest(points, differences, summary.above, decimals) +
               "; largest below: " + largest(points, differences, summary.below, decimals));
        REPORT("   within 0.1: " + AINTEGER(summary.within[0]) + ", 0.2: " + AINTEGER(summary.within[1]) +
               ", 0.3: " + AINTEGER(summary.within[2]) + ", 0.5: " + AINTEGER(summary.within[3]));
    }
    reportLabels("dry", points, summary.dry);
    reportLabels("outside the mesh", points, summary.outside);
}
