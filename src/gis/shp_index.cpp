#include "gis/shp_index.h"

#include "gis/shp_header.h"
#include "services/exits.h"
#include "services/files.h"

#include <string>
#include <string_view>

std::int64_t READ_SHX_COUNT(int file) {
    const auto stop = [file](std::string_view why) {
        STOP_RUN("ERROR - Reading .shx file " + GETNAM(file) + ": " + std::string(why));
    };
    std::array<char, SHP_HEADER_BYTES> bytes{};
    const std::int64_t got = SEEK_FILE(file, 0) ? READ_BYTES(file, bytes.data(), bytes.size()) : -1;
    if (got < 0) stop(LAST_FILE_ERROR(file));
    if (got < static_cast<std::int64_t>(bytes.size())) stop("it ends within its header.");
    const ShpHeader header = SHP_HEADER_OF(bytes.data());
    if (header.fileCode != SHP_FILE_CODE) stop("it does not begin as a shapefile does.");
    const std::int64_t records = std::int64_t{2} * header.lengthWords - static_cast<std::int64_t>(SHP_HEADER_BYTES);
    constexpr std::int64_t RECORD = SHP_RECORD_HEADER_BYTES;
    if (records < 0 || records % RECORD != 0) stop("the length in its header is no whole number of records.");
    if (FILE_LENGTH(file) < static_cast<std::int64_t>(SHP_HEADER_BYTES) + records)
        stop("it ends before the length in its header.");
    return records / RECORD;
}
