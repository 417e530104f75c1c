#include "inputs/mesh_line_error.h"

#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"

std::string shownMeshLine(std::string_view line) {
    std::string shown(line.substr(0, 200));
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = c == '\t' ? ' ' : '?';
    return shown;
}

void refuseMeshLine(int file, std::string_view line, std::int64_t number, std::string_view reason) {
    DMESSAGE("ERROR - Reading .2dm file from following line in .2dm file");
    REPORT(shownMeshLine(line));
    REPORT("   Line " + std::to_string(number) + " of " + GETNAM(file) + ": " + std::string(reason) + ".");
    EXITS();
}

bool nextMeshLine(int file, std::string_view& line) {
    const LineStatus status = READ_LINE(file, line);
    if (status == LineStatus::Error) EXITS();
    return status == LineStatus::Read;
}
