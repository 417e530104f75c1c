#include "vector_outputs/layer_writer.h"

#include "gis/layers.h"
#include "services/console.h"
#include "services/files.h"
#include "services/workers.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "vector_outputs/cell_shape.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

struct LayerCounts {
    std::int64_t written = 0;
    std::int64_t invalid = 0;

    void add(const LayerCounts& more) {
        written += more.written;
        invalid += more.invalid;
    }
};

/// A piece of a layer on its way into the file, drawn on any thread.
struct DrawnPiece {
    GisBatch batch;
    GisObject object;
    std::string line;
    LayerCounts counts;
};

/// What a piece of a layer says of the columns.
struct NotedPiece {
    RecordColumns record;
    std::vector<float> written;
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

/// One walk over the objects of some of the candidates, in order. visit(item, object, next): as NEXT_ITEM leaves it.
template <typename Visit>
LayerCounts forEachObject(const LayerJob& job, std::size_t first, std::size_t end, GisObject& o, Visit visit) {
    LayerCounts counts;
    MapItem item;
    std::size_t next = first;
    while (NEXT_ITEM(job.source, next, end, item)) {
        const Drawn drawn = draw(job, item, o);
        if (drawn == Drawn::Invalid) ++counts.invalid;
        if (drawn != Drawn::Object) continue;
        visit(item, o, next);
        ++counts.written;
    }
    return counts;
}

/// The first walk: the columns as wide as the records need them.
void noteRecords(LayerJob& job, ItemPieces pieces) {
    const RecordColumns none = job.record;  // which grows while other pieces are noted
    std::vector<NotedPiece> slots(SLOTS_IN_ORDER());
    DO_IN_ORDER(
        pieces.count(),
        [&](std::size_t piece, std::size_t slot) {
            NotedPiece& noted = slots[slot];
            noted = {none, {}};
            GisObject o;
            forEachObject(job, pieces.first(piece), pieces.end(piece), o,
                          [&](const MapItem& item, const GisObject&, std::size_t) {
                              NOTE_RECORD(noted.record, item);
                              if (job.written != nullptr) noted.written.push_back(SHOWN_VALUE(job.source, item));
                          });
        },
        [&](std::size_t, std::size_t slot) {
            const NotedPiece& noted = slots[slot];
            NOTE_RECORDS(job.record, noted.record);
            if (job.written != nullptr)
                job.written->insert(job.written->end(), noted.written.begin(), noted.written.end());
        });
}

std::int32_t openLayer(const LayerJob& job) {
    const std::int32_t layer = gisOpenLayer(job.name, "R", "O ");
    GisHeader& header = gisHeader(layer);
    header.shape = shapeOf(job);
    header.attributes = ATTRIBUTES_OF(job.record, FILEEXT(job.name) == ".shp");
    gisWriteHeader(layer);
    return layer;
}

void drawPiece(const LayerJob& job, std::int32_t layer, ItemPieces pieces, std::size_t piece, DrawnPiece& drawn) {
    drawn.batch.clear();
    drawn.counts = forEachObject(job, pieces.first(piece), pieces.end(piece), drawn.object,
                                 [&](const MapItem& item, const GisObject& o, std::size_t) {
                                     FORM_RECORD(job.record, item, drawn.line);
                                     gisAddToBatch(layer, drawn.batch, o, drawn.line);
                                 });
}

/// For a piece that holds what the layer library has a word to say about.
void writeOneByOne(const LayerJob& job, std::int32_t layer, ItemPieces pieces, std::size_t piece, DrawnPiece& drawn) {
    forEachObject(job, pieces.first(piece), pieces.end(piece), drawn.object,
                  [&](const MapItem& item, const GisObject& o, std::size_t) {
                      FORM_RECORD(job.record, item, drawn.line);
                      gisWriteObject(layer, o);
                      gisWriteRecord(layer, drawn.line);
                  });
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
    const ItemPieces pieces{CANDIDATES(job.source)};
    noteRecords(job, pieces);
    BEGIN_OUTPUT(job.name);
    const std::int32_t layer = openLayer(job);
    Progress progress("", static_cast<std::int64_t>(pieces.candidates));
    LayerCounts counts;
    std::vector<DrawnPiece> slots(SLOTS_IN_ORDER());
    DO_IN_ORDER(
        pieces.count(), [&](std::size_t piece, std::size_t slot) { drawPiece(job, layer, pieces, piece, slots[slot]); },
        [&](std::size_t piece, std::size_t slot) {
            if (!gisWriteBatch(layer, slots[slot].batch)) writeOneByOne(job, layer, pieces, piece, slots[slot]);
            counts.add(slots[slot].counts);
            progress.show(static_cast<std::int64_t>(pieces.end(piece)));
        });
    gisCloseLayer(layer);
    reportCounts(job, counts);
    FINISH_OUTPUT(job.name);
}

void HAND_OVER_LAYER(LayerJob& job, LayerTarget& target) {
    target.begin(job);
    const std::size_t candidates = CANDIDATES(job.source);
    Progress progress("", static_cast<std::int64_t>(candidates));
    GisObject object;
    const LayerCounts counts =
        forEachObject(job, 0, candidates, object, [&](const MapItem& item, const GisObject& o, std::size_t next) {
            target.object(item, o);
            if (job.written != nullptr) job.written->push_back(SHOWN_VALUE(job.source, item));
            progress.show(static_cast<std::int64_t>(next));
        });
    reportCounts(job, counts);
}
