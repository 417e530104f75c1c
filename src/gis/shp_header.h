// The 100-byte header that opens a .shp and a .shx file, and the 8-byte headers of their records.
// Layout: ESRI Shapefile Technical Description, July 1998, tables 1 and 2.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

constexpr std::size_t SHP_HEADER_BYTES = 100;
constexpr std::size_t SHP_RECORD_HEADER_BYTES = 8;  ///< in both files; all there is of a .shx record
constexpr std::int32_t SHP_FILE_CODE = 9994;
constexpr std::int32_t SHP_VERSION = 1000;

/// xmax below xmin: nothing has been added yet.
struct ShpBox {
    double xmin = 0.0, ymin = 0.0, xmax = -1.0, ymax = -1.0;
};

struct ShpHeader {
    std::int32_t fileCode = SHP_FILE_CODE;
    std::int32_t lengthWords = 0;  ///< of the file, in 16-bit words, this header included
    std::int32_t version = SHP_VERSION;
    std::int32_t shapeType = 0;  ///< gis/shp_names.h
};

/// lengthBytes: of the whole file, even and at most 2 GiB. An empty box is written as zeros. The z and m ranges are
/// zero.
std::array<char, SHP_HEADER_BYTES> SHP_HEADER(std::int64_t lengthBytes, std::int32_t shapeType, const ShpBox& box);
/// Takes the header apart. bytes: SHP_HEADER_BYTES of them.
ShpHeader SHP_HEADER_OF(const char* bytes);

/// Header of a .shp record (number, from 1, and content length) or a whole .shx record (offset and content length): two
/// big-endian numbers, lengths and offsets in 16-bit words. Returns the position behind it.
char* PUT_SHP_RECORD_HEADER(char* at, std::int32_t numberOrOffsetWords, std::int32_t contentWords);
