#include "vector_outputs/geographic.h"

#include "services/files.h"
#include "services/options.h"
#include "text_utils/free_form.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <cstdint>
#include <optional>
#include <string>

namespace {

constexpr std::size_t LONGEST_PROJECTION = 1 << 20;  ///< bytes looked at

bool isLongitudeLatitude(std::string_view coordSys) {
    std::string behind;
    if (FLAGEXISTS(coordSys, "NonEarth") || !FLAGEXISTSRET(coordSys, "Earth", behind)) return false;
    std::string number;
    if (!FLAGEXISTSRET(behind, "Projection", number)) return true;  // an Earth system without a projection has none
    std::int32_t type = 0;
    return FreeForm(number).NEXT_INTEGER(type) == FreeForm::Read::Value && type == 1;
}

std::string wholeText(const std::string& name) {
    const int file = OPEN_FILE(name, "I ", FILEEXT(name).substr(1));
    std::string text(LONGEST_PROJECTION, '\0');
    const std::int64_t length = READ_BYTES(file, text.data(), text.size());
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    CLOSE_FILE(file);
    return text;
}

/// The line that holds "CoordSys", or the whole of a text that has none.
std::string_view projectionPart(std::string_view text) {
    const std::size_t word = UPPERCASE(text).find("COORDSYS");
    if (word == std::string::npos) return text;
    text.remove_prefix(word);
    return text.substr(0, text.find_first_of("\r\n"));
}

}  // namespace

bool IS_GEOGRAPHIC(std::string_view projection) {
    if (FLAGEXISTS(projection, "CoordSys")) return isLongitudeLatitude(projection);
    const bool geographic = FLAGEXISTS(projection, "GEOGCS") || FLAGEXISTS(projection, "GEOGCRS");
    return geographic && !FLAGEXISTS(projection, "PROJCS") && !FLAGEXISTS(projection, "PROJCRS");
}

bool INPUT_IS_GEOGRAPHIC() {
    const std::string folder = FILEFOLDERPATH(OPTIONS().inputFile);
    for (const char* name : {"Header.prj", "Projection.prj", "Header.mif", "Projection.mif"})
        if (const std::optional<std::string> found = FIND_FILE(folder + name))
            return IS_GEOGRAPHIC(projectionPart(wholeText(*found)));
    return false;
}
