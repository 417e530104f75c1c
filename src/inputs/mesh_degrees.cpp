#include "inputs/mesh_degrees.h"

bool IS_IN_DEGREES(const Mesh& mesh, CoordinateKind kind) {
    if (kind != CoordinateKind::Unknown) return kind == CoordinateKind::Geographic;
    return mesh.xmin <= mesh.xmax && mesh.xmin >= -180.0 && mesh.xmax <= 360.0 && mesh.ymin >= -90.0 &&
           mesh.ymax <= 90.0;
}
