#include "vector_outputs/layer_kinds.h"

#include <algorithm>

namespace {

using Columns = std::vector<Column>;

/// Ahead of the content, by ItemKind.
const Columns LEADING[] = {
    {Column::SmsId, Column::PtType, Column::Elevation},
    {Column::SmsId, Column::MatId, Column::Elevation},
    {Column::GridRef},
};
static_assert(std::size(LEADING) == static_cast<std::size_t>(ItemKind::GridCell) + 1);

Columns contentColumns(const LayerKind& kind, const ShownColumns& shown) {
    switch (kind.content) {
        case LayerContent::Bed: return {};
        case LayerContent::Scalar:
            return kind.waterLevel ? Columns{Column::Value, Column::Depth} : Columns{Column::Value};
        case LayerContent::Vector: break;
    }
    if (shown.vectors == VectorColumns::XComponent) return {Column::XComponent};
    if (shown.vectors == VectorColumns::YComponent) return {Column::YComponent};
    if (shown.vectors == VectorColumns::Direction && kind.drawnAs != DrawnAs::Arrow)
        return {shown.bearings ? Column::Bearing : Column::Angle};
    return {Column::Magnitude, Column::Angle, Column::XComponent, Column::YComponent, Column::Bearing};
}

}  // namespace

std::vector<Column> LAYER_COLUMNS(const LayerKind& kind, const ShownColumns& shown) {
    Columns columns = LEADING[static_cast<std::size_t>(kind.items)];
    for (const Column column : contentColumns(kind, shown)) columns.push_back(column);
    if (!shown.verbose) return columns;
    // Added at the end, so that the places of the others never change.
    for (const Column column : {Column::MatId, Column::Elevation})
        if (std::find(columns.begin(), columns.end(), column) == columns.end()) columns.push_back(column);
    if (kind.content != LayerContent::Bed) columns.push_back(Column::Time);
    return columns;
}
