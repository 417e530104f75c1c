#include "text_utils/paths.h"

#include "text_utils/text.h"

namespace {

// Positions are counted from 1, with 0 for absent, so that one comparison covers "no dot" and "dot in the folder".
std::size_t lastOf(std::string_view name, std::string_view characters) {
    const std::size_t at = name.find_last_of(characters);
    return at == std::string_view::npos ? 0 : at + 1;
}

constexpr std::string_view SEPARATORS = "/\\";

}  // namespace

std::string FILEEXT(std::string_view name) {
    name = TRIMF(name);
    const std::size_t dot = lastOf(name, ".");
    return dot != 0 && dot > lastOf(name, SEPARATORS) ? LOWERCASE(name.substr(dot - 1)) : std::string{};
}

std::string FILENAMEPATH(std::string_view name) {
    const std::size_t dot = lastOf(name, ".");
    return std::string(dot > 1 && dot > lastOf(name, SEPARATORS) ? name.substr(0, dot - 1) : name);
}

std::string FILENAMEPATHNO_(std::string_view name) {
    std::string path = FILENAMEPATH(name);
    const std::size_t underscore = lastOf(path, "_");
    if (underscore > 1 && underscore > lastOf(path, SEPARATORS)) path.resize(underscore - 1);
    return path;
}

std::string FILEFOLDERPATH(std::string_view name) { return std::string(name.substr(0, lastOf(name, SEPARATORS))); }
std::string FILENAMEEXT(std::string_view name) { return std::string(name.substr(lastOf(name, SEPARATORS))); }
