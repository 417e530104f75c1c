#include "services/closed_folder.h"

#include "platform/file_system.h"
#include "platform/platform.h"
#include "services/working_names.h"
#include "text_utils/paths.h"

#include <cerrno>
#include <cstdio>
#include <string_view>

namespace {

struct Companion {
    std::string_view ofMain, ending;
    bool needed = true;
};
/// How many files of values an EnSight model gets is not known when its first file is opened: one more must be
/// possible.
constexpr Companion COMPANIONS[] = {{".shp", ".shx"},        {".shp", ".dbf"},        {".mif", ".mid"},
                                    {".flt", ".hdr"},        {".case", ".geo"},       {".case", ".*.scl"},
                                    {".shp", ".prj", false}, {".shp", ".cpg", false}, {".asc", ".prj", false},
                                    {".flt", ".prj", false}};

int refusal(const std::string& name, bool needed) {
    if (KIND_OF_FILE(name) == FileKind::Folder) return EISDIR;
    const std::string place = IS_DEVICE(name) ? std::string{} : LINK_TARGET(name);
    if (place.empty()) return 0;
    if (KIND_OF_FILE(place) == FileKind::File) return REFUSES_WRITING(place);
    return needed ? REFUSES_MAKING(place) : 0;
}

}  // namespace

int REFUSES_MAKING(const std::string& place) {
    const std::string marked = MARKED_NAME(place, FILENAMEPATH(place).size(), PART);
    errno = 0;
    std::FILE* const stream = CREATE_STREAM(marked);
    if (stream == nullptr) return errno == EEXIST ? 0 : errno;  // there: this process is writing it
    std::fclose(stream);
    REMOVE_TREE(marked);
    return 0;
}

int REFUSES_WRITING(const std::string& place) {
    errno = 0;
    std::FILE* const there = OPEN_STREAM(place, "r+b");
    if (there == nullptr) return HELD_BY_ANOTHER_PROGRAM(errno) ? EBUSY : errno;
    std::fclose(there);
    return 0;
}

int REFUSES_SET(const std::string& mainName, std::string& failed) {
    const std::string base = FILENAMEPATH(mainName);
    const std::string extension = FILEEXT(mainName);
    int error = 0;
    const auto ask = [&](const std::string& name, bool needed) {
        if (error == 0 && (error = refusal(name, needed)) != 0) failed = name;
    };
    ask(mainName, true);
    for (const Companion& companion : COMPANIONS)
        if (companion.ofMain == extension) ask(base + std::string(companion.ending), companion.needed);
    return error;
}
