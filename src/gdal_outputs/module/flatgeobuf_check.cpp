#include "gdal_outputs/module/flatgeobuf_check.h"

#include "gdal_outputs/module/failures.h"
#include "gdal_outputs/module/gdal_handles.h"

#include <cpl_vsi.h>

#include <array>
#include <string_view>

namespace {

constexpr const char* NOT_WHOLE = "the file is not complete";

/// A file read here and there, with what follows kept for the next time.
class Bytes {
public:
    explicit Bytes(const std::string& path) : file_(VSIFOpenL(path.c_str(), "rb")) {
        if (file_ == nullptr || VSIFSeekL(file_.get(), 0, SEEK_END) != 0) throw GdalFailure{NOT_WHOLE};
        length_ = VSIFTellL(file_.get());
    }
    vsi_l_offset length() const { return length_; }
    /// Throws where the file has not got them.
    std::string_view at(vsi_l_offset offset, std::size_t count) {
        if (offset > length_ || length_ - offset < count) throw GdalFailure{NOT_WHOLE};
        if (offset < start_ || offset + count > start_ + held_) {
            start_ = offset;
            const bool there = VSIFSeekL(file_.get(), offset, SEEK_SET) == 0;
            held_ = there ? VSIFReadL(block_.data(), 1, block_.size(), file_.get()) : 0;
            if (held_ < count) throw GdalFailure{NOT_WHOLE};
        }
        return {block_.data() + (offset - start_), count};
    }
    /// The length that stands before a record.
    std::uint32_t lengthAt(vsi_l_offset offset) {
        std::uint32_t value = 0;
        const std::string_view bytes = at(offset, sizeof value);
        for (std::size_t i = sizeof value; i-- > 0;) value = value << 8U | static_cast<unsigned char>(bytes[i]);
        return value;
    }

private:
    std::unique_ptr<VSILFILE, DestroyWith<VSIFCloseL>> file_;
    vsi_l_offset length_ = 0, start_ = 0;
    std::size_t held_ = 0;
    std::array<char, 1U << 16U> block_;
};

/// Of the index that stands behind the header: a tree of boxes of 40 bytes, each node with up to 16 below it.
vsi_l_offset indexBytes(std::int64_t features) {
    constexpr std::int64_t BELOW = 16, BOX = 40;
    std::int64_t boxes = features, level = features;
    do {
        level = (level + BELOW - 1) / BELOW;
        boxes += level;
    } while (level > 1);
    return static_cast<vsi_l_offset>(boxes * BOX);
}

/// Its mark, the header and the features, each behind its length, and nothing behind them: a library that is led astray
/// by a wrong length reads outside of what it has.
void checkRecords(const std::string& path, const FlatGeobufContents& written) {
    constexpr std::string_view MARK("fgb\3fgb", 7);  // then a byte of the version's patch, which any reader takes
    Bytes file(path);
    if (file.at(0, MARK.size()) != MARK) throw GdalFailure{NOT_WHOLE};
    vsi_l_offset next = MARK.size() + 1;
    const auto pass = [&] { next += sizeof(std::uint32_t) + file.lengthAt(next); };
    pass();
    if (written.indexed && written.features > 0) next += indexBytes(written.features);
    for (std::int64_t i = 0; i < written.features; ++i) pass();
    if (next != file.length()) throw GdalFailure{NOT_WHOLE};
}

bool equal(const OGREnvelope& one, const OGREnvelope& other) {
    return one.MinX == other.MinX && one.MaxX == other.MaxX && one.MinY == other.MinY && one.MaxY == other.MaxY;
}

}  // namespace

void FlatGeobufContents::add(OGRGeometryH shape) {
    ++features;
    if (shape == nullptr || OGR_G_IsEmpty(shape) != 0) return;
    OGREnvelope of;
    OGR_G_GetEnvelope(shape, &of);
    if (placed) extent.Merge(of);
    else extent = of;
    placed = true;
}

void CHECK_FLATGEOBUF(const std::string& path, const FlatGeobufContents& written) {
    checkRecords(path, written);
    const char* const options[] = {"VERIFY_BUFFERS=YES", nullptr};
    const DatasetHandle file(
        GDALOpenEx(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_VERBOSE_ERROR, nullptr, options, nullptr));
    OGRLayerH layer = file ? GDALDatasetGetLayer(file.get(), 0) : nullptr;
    if (layer == nullptr) FAIL(NOT_WHOLE);
    // Of the header, which is written first with other figures and once more at the end.
    OGREnvelope extent;
    const bool placed = OGR_L_GetExtent(layer, &extent, FALSE) == OGRERR_NONE;
    const bool counted = written.features == 0 || OGR_L_GetFeatureCount(layer, FALSE) == written.features;
    if (!counted || placed != written.placed || (placed && !equal(extent, written.extent)))
        throw GdalFailure{NOT_WHOLE};
    std::int64_t found = 0;
    while (FeatureHandle(OGR_L_GetNextFeature(layer))) ++found;
    CHECK_FAILURES();
    if (found != written.features) throw GdalFailure{NOT_WHOLE};
}
