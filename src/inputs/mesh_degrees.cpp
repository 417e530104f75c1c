#include "inputs/mesh_degrees.h"

bool IS_IN_DEGREES(const Mesh& mesh, CoordinateKind kind) {
    constexpr double LARGE_CELL = 0.05;  // degrees: 5 km
    if (kind != CoordinateKind::Unknown) return kind == CoordinateKind::Geographic;
    const bool onGlobe =
        mesh.xmin <= mesh.xmax && mesh.xmin >= -180.0 && mesh.xmax <= 360.0 && mesh.ymin >= -90.0 && mesh.ymax <= 90.0;
    const double area = (mesh.xmax - mesh.xmin) * (mesh.ymax - mesh.ymin);
    return onGlobe && area < LARGE_CELL * LARGE_CELL * mesh.elementCount;
}
