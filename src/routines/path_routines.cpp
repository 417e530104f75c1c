// Taking file names apart, for the C interface.
#include "routines/texts.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include "vorant_routines.h"

using Length = const std::int32_t*;

namespace {

/// A file name without the blanks that fill its field.
std::string_view nameAt(const char* name, Length length) { return TRIMF(textAt(name, length)); }

/// FILEEXT lowers the letters of what it cuts off, and nothing else.
std::string extensionAsWritten(std::string_view name) {
    return std::string(name.substr(name.size() - FILEEXT(name).size()));
}

}  // namespace

std::int32_t FILEEXT(const char* name, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return FILEEXT(nameAt(name, length)); });
}
std::int32_t FILEEXTKC(const char* name, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return extensionAsWritten(nameAt(name, length)); });
}
std::int32_t FILENAMEPATH(const char* name, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return FILENAMEPATH(nameAt(name, length)); });
}
std::int32_t FILENAMEPATHNO_(const char* name, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return FILENAMEPATHNO_(nameAt(name, length)); });
}
std::int32_t FILENAME(const char* name, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return FILENAMEEXT(FILENAMEPATH(nameAt(name, length))); });
}
std::int32_t FILENAMENO_(const char* name, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return FILENAMEEXT(FILENAMEPATHNO_(nameAt(name, length))); });
}
std::int32_t FILENAMEEXT(const char* name, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return FILENAMEEXT(nameAt(name, length)); });
}
std::int32_t FILEFOLDERPATH(const char* name, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return FILEFOLDERPATH(nameAt(name, length)); });
}
