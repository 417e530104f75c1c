#include "vector_outputs/layer_writer.h"

#include "gis/layers.h"
#include "services/console.h"
#include "services/files.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "vector_outputs/cell_shape.h"

#include <cstddef>
#include <cstdint>

namespace {

struct LayerCounts {
    std::int64_t written = 0;
    std::int64_t invalid = 0;
};

GisShape shapeOf(const LayerJob& job) {
    switch (job.source.kind.drawnAs) {
        case DrawnAs::Point: return GisShape::Point;
        case DrawnAs::Region: return GisShape::Region;
        case DrawnAs::Arrow: break;
    }
    return job.arrows.outlined ? GisShape::Region : GisShape::Lines;
}

Drawn drawCell(const LayerJob& job, const MapItem& item, GisObject& o) {
    const Mesh& mesh = *job.source.mesh;
    const MeshElement& element = mesh.elements[static_cast<std::size_t>(item.id)];
    const PieceShape shape = CELL_SHAPE(mesh, element);
    if (!VALID_CELL(shape, job.step)) return Drawn::Invalid;
    CELL_REGION(mesh, element, shape, o);
    return Drawn::Object;
}

Drawn draw(const LayerJob& job, const MapItem& item, GisObject& o) {
    switch (job.source.kind.drawnAs) {
        case DrawnAs::Point: o.setPoint(item.x, item.y); return Drawn::Object;
        case DrawnAs::Region: return drawCell(job, item, o);
        case DrawnAs::Arrow: return DRAW_ARROW(job.arrows, item, o);
    }
    return Drawn::Nothing;
}

/// One walk over the objects of the layer, in order.
template <typename Visit>
LayerCounts forEachObject(LayerJob& job, Visit visit) {
    LayerCounts counts;
    GisObject o;
    MapItem item;
    job.source.next = 0;
    while (NEXT_ITEM(job.source, item)) {
        const Drawn drawn = draw(job, item, o);
        if (drawn == Drawn::Invalid) ++counts.invalid;
        if (drawn != Drawn::Object) continue;
        visit(item, o);
        ++counts.written;
    }
    return counts;
}

std::int32_t openLayer(const LayerJob& job) {
    const std::int32_t layer = gisOpenLayer(job.name, "R", "O ");
    GisHeader& header = gisHeader(layer);
    header.shape = shapeOf(job);
    header.attributes = ATTRIBUTES_OF(job.record, FILEEXT(job.name) == ".shp");
    gisWriteHeader(layer);
    return layer;
}

void reportCounts(const LayerJob& job, const LayerCounts& counts) {
    const std::string left = "WARNING - " + AINTEGER8(counts.invalid);
    if (counts.invalid > 0 && job.source.kind.drawnAs == DrawnAs::Arrow && job.step > 0.0)
        DMESSAGE(left +
                 " arrows are too thin for the six decimals of a .mif file and are left out; -shp keeps them, and so "
                 "does a larger -sf or -ttf.");
    else if (counts.invalid > 0)
        DMESSAGE(left + (job.source.kind.drawnAs == DrawnAs::Arrow ? " arrows" : " cells") +
                 " would not be valid polygons (crossed, flat or with a node twice) and are left out.");
    if (counts.written == 0 && counts.invalid == 0) DMESSAGE("WARNING - No wet points to output at this time.");
    REPORT(AINTEGER8(counts.written) + " objects written.");
}

}  // namespace

void WRITE_LAYER(LayerJob& job) {
    forEachObject(job, [&job](const MapItem& item, const GisObject&) {
        NOTE_RECORD(job.record, item);
        if (job.written != nullptr) job.written->push_back(SHOWN_VALUE(job.source, item));
    });
    BEGIN_OUTPUT(job.name);
    const std::int32_t layer = openLayer(job);
    std::string line;
    Progress progress("", static_cast<std::int64_t>(CANDIDATES(job.source)));
    const LayerCounts counts = forEachObject(job, [&](const MapItem& item, const GisObject& o) {
        FORM_RECORD(job.record, item, line);
        gisWriteObject(layer, o);
        gisWriteRecord(layer, line);
        progress.show(static_cast<std::int64_t>(job.source.next));
    });
    gisCloseLayer(layer);
    reportCounts(job, counts);
    FINISH_OUTPUT(job.name);
}

void HAND_OVER_LAYER(LayerJob& job, LayerTarget& target) {
    target.begin(job);
    Progress progress("", static_cast<std::int64_t>(CANDIDATES(job.source)));
    const LayerCounts counts = forEachObject(job, [&](const MapItem& item, const GisObject& o) {
        target.object(item, o);
        if (job.written != nullptr) job.written->push_back(SHOWN_VALUE(job.source, item));
        progress.show(static_cast<std::int64_t>(job.source.next));
    });
    reportCounts(job, counts);
}
