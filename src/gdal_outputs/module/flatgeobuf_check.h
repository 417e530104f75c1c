// Whether a FlatGeobuf that has just been closed is whole: GDAL does not notice when the disk refuses a part of it.
#pragma once

#include <ogr_api.h>

#include <cstdint>
#include <string>

/// What was written.
struct FlatGeobufContents {
    std::int64_t features = 0;
    OGREnvelope extent{};
    bool placed = false;   ///< some feature has a place, so that there is an extent
    bool indexed = false;  ///< by place

    void add(OGRGeometryH shape);
};

/// Throws when the file at `path` holds anything else, by its bytes first and then as GDAL reads it.
void CHECK_FLATGEOBUF(const std::string& path, const FlatGeobufContents& written);
