#include "inputs/output_types.h"

#include "services/console.h"
#include "text_utils/text.h"

#include <algorithm>

namespace {

constexpr OutputType TYPES[] = {
    {"Water Level", "h"},
    {"Depth", "d"},
    {"Velocity", "v"},   // by its code the vector row below wins; reached by its name, or from the tag of a scalar file
    {"Unit Flow", "q"},  // the same
    {"Manning n", "n"},
    {"Manning n2", "n2"},
    {"Viscosity Coeff", "eVis"},
    {"Flow Regime", "R"},
    {"Energy", "E"},
    {"Froude No", "Fr"},
    {"Hazard", "Haz"},
    {"Bathymetry", "ZH"},
    {"Morphology", "S1"},
    {"Mass Error %", "ME%"},
    {"Source Flow", "SS"},
    {"Wind", "WI10"},
    {"Atmospheric Pressure", "AP"},
    {"Form Loss Coeff", "FLC"},
    {"Cell Width Factor", "CWF"},
    {"Courant No.", "Cr"},
    {"Route Category", "RC"},
    {"Time Outputs", "Time"},
    {"Bed Shear Stress", "BSS"},
    {"Stream Power", "SP"},
    {"MB1", "MB1"},
    {"MB2", "MB2"},
    {"ZUK0", "ZUK0"},
    {"ZUK1", "ZUK1"},
    {"029", "029"},
    {"030", "030"},
    {"UD1", "UD1"},
    {"UD2", "UD2"},
    {"UD3", "UD3"},
    {"UD4", "UD4"},
    {"UD5", "UD5"},
    {"UD6", "UD6"},
    {"UD7", "UD7"},
    {"UD8", "UD8"},
    {"UD9", "UD9"},
    {"UD10", "UD10"},
    {"Z0", "Z0"},
    {"Z1", "Z1"},
    {"Z2", "Z2"},
    {"Z3", "Z3"},
    {"Z4", "Z4"},
    {"Z5", "Z5"},
    {"Z6", "Z6"},
    {"Z7", "Z7"},
    {"Z8", "Z8"},
    {"Z9", "Z9"},
    {"Vector Velocity", "v", true},
    {"Vector Unit Flow", "q", true},
    {"Vector Wind", "W", true},
    {"054", "n/a"},
    {"055", "n/a"},
    {"056", "n/a"},
    {"057", "n/a"},
    {"058", "n/a"},
    {"059", "n/a"},
    {"060", "n/a"},
};
static_assert(std::size(TYPES) == 60);

template <typename Wanted>
const OutputType* lastRow(Wanted&& wanted) {
    const auto row = std::find_if(std::rbegin(TYPES), std::rend(TYPES), wanted);
    return row == std::rend(TYPES) ? nullptr : &*row;
}

bool isType(std::string_view type, std::string_view code, std::string_view name) {
    return ASAME(type, code) || ASAME(type, name);
}

}  // namespace

std::span<const OutputType> OUTPUT_TYPES() { return TYPES; }

const OutputType* OUTPUT_TYPE_OF_CODE(std::string_view code) {
    return lastRow([&](const OutputType& row) { return ASAME(row.code, code); });
}

const OutputType* OUTPUT_TYPE_OF_TAG(std::string_view tag, bool vector) {
    return lastRow([&](const OutputType& row) { return row.vector == vector && ASAME(row.code, tag); });
}

const OutputType* OUTPUT_TYPE_OF_NAME(std::string_view name) {
    return lastRow([&](const OutputType& row) { return ASAME(row.name, name); });
}

bool IS_WATER_LEVEL(std::string_view type) { return isType(type, "h", "Water Level"); }
bool IS_DEPTH(std::string_view type) { return isType(type, "d", "Depth"); }
bool IS_VELOCITY(std::string_view type) { return isType(type, "v", "Velocity") || ASAME(type, "Vector Velocity"); }

std::string DATASET_NAME_OF_TYPE(std::string_view typeText) {
    if (const OutputType* row = OUTPUT_TYPE_OF_CODE(typeText)) return std::string(row->name);
    std::string name = FITTED(TRIMMED(typeText), TYPE_NAME_WIDTH);
    DMESSAGE("WARNING - Unable to match data output type specified with output name.");
    REPORT("For example data type \"h\" is stored in .XMDF file as \"Water Level\"");
    REPORT("Searching for data stored in .XMDF file as: " + name);
    return name;
}
