#include "gis/shp_header.h"

#include "text_utils/bytes.h"

std::array<char, SHP_HEADER_BYTES> SHP_HEADER(std::int64_t lengthBytes, std::int32_t shapeType, const ShpBox& box) {
    const ShpBox b = box.xmax < box.xmin ? ShpBox{0.0, 0.0, 0.0, 0.0} : box;
    std::array<char, SHP_HEADER_BYTES> header{};
    char* at = header.data();
    at = putBigInt32(at, SHP_FILE_CODE);                                 //  0 file code
    for (int unused = 0; unused < 5; ++unused) at = putBigInt32(at, 0);  //  4
    at = putBigInt32(at, static_cast<std::int32_t>(lengthBytes / 2));    // 24 file length in 16-bit words
    at = putLittleInt32(at, SHP_VERSION);                                // 28 version
    at = putLittleInt32(at, shapeType);                                  // 32
    for (const double v : {b.xmin, b.ymin, b.xmax, b.ymax}) at = putLittleDouble(at, v);  // 36
    for (int range = 0; range < 4; ++range) at = putLittleDouble(at, 0.0);                // 68 z and m ranges
    return header;
}

ShpHeader SHP_HEADER_OF(const char* bytes) {
    ShpHeader header;
    header.fileCode = bigInt32(bytes);
    header.lengthWords = bigInt32(bytes + 24);
    header.version = littleInt32(bytes + 28);
    header.shapeType = littleInt32(bytes + 32);
    return header;
}

char* PUT_SHP_RECORD_HEADER(char* at, std::int32_t numberOrOffsetWords, std::int32_t contentWords) {
    at = putBigInt32(at, numberOrOffsetWords);  // 0
    return putBigInt32(at, contentWords);       // 4
}
