// The mesh of the run. Filled by SCAN_2DM and READ_2DM (inputs/mesh_reader.h); read by every output.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// Kind of a node, as the point outputs write it: "T " triangle vertex, "H " quad corner, "UV" mid-side and "C " centre
/// of a 9-node quad, "QL" any node of a QL mesh, "  " a node that no element uses.
using NodeKind = std::array<char, 2>;

struct MeshNode {
    double x = 0.0;  ///< easting, map units
    double y = 0.0;  ///< northing, map units
    float z = 0.0F;  ///< bed elevation
    NodeKind kind = {' ', ' '};
    /// 1: z stood relative to the geo-reference offset, which has been subtracted
    std::int8_t datumFlag = 0;
    std::array<float, 3> extra{};  ///< carried unchanged
};

struct MeshElement {
    /// 3, 4 or 9 nodes; 0 for an element whose card was refused: it takes part in nothing
    std::int32_t shape = 0;
    /// slots 0-3 the corners (slot 3 is 0 in a triangle), 4-7 the mid-side nodes, 8 the centre node
    std::array<std::int32_t, 9> nodes{};
    std::int32_t material = 0;
    std::array<std::int32_t, 2> extra{};   ///< carried unchanged
    std::int8_t extraByte = 0;             ///< carried unchanged
    std::array<char, 2> tag = {' ', ' '};  ///< for the consumers
    bool removed = false;                  ///< belongs to a mesh part named with -rmp
};

/// One numbering for two lists: the k-th MESHPART card of the file, and whether the k-th -rmp name was met.
struct MeshPart {
    std::string name;
    bool found = false;
};

/// Numbers of the MESH2D line in their order; those it does not supply are zero. Carried, not interpreted, but for the
/// last.
struct GeoReference {
    std::array<double, 7> values{};
    float verticalOffset = 0.0F;  ///< subtracted from z where the node's datum flag is 1
    bool offsetGiven = false;     ///< the line supplies it
};

struct Mesh {
    std::int32_t nodeCount = 0;
    std::int32_t elementCount = 0;  ///< triangles + 4-node quads + 9-node quads
    std::int32_t triangleCount = 0, quad4Count = 0, quad9Count = 0;
    bool highResolution = false;  ///< at least one 9-node quad
    bool qlMesh = false;          ///< the first line carries no geo-referencing
    bool pre2005 = false;
    GeoReference geoReference;
    std::vector<MeshNode> nodes;           ///< numbered from 1 by node id; entry 0 unused
    std::vector<MeshElement> elements;     ///< numbered from 1 by element id; entry 0 unused
    std::int32_t meshPartCount = 0;        ///< MESHPART cards read
    std::vector<MeshPart> meshParts;       ///< numbered from 1; entry 0 unused
    double xmin = 9.0e29, xmax = -9.0e29;  ///< extents of all nodes read
    double ymin = 9.0e29, ymax = -9.0e29;
    float zmin = 9.0e29F, zmax = -9.0e29F;
    std::vector<std::uint8_t> nodeExcluded;  ///< per node, numbered from 1: 1 for a node used only by removed elements
    /// per element, numbered from 1: 1 for a triangle taken as a 1D water-level line; empty for none, and until
    /// SETTLE_ONE_D_TRIANGLES (inputs/one_d_triangles.h) has settled it
    std::vector<std::uint8_t> oneD;
};

/// Owned by the mesh reader, which alone changes it.
const Mesh& MESH();
/// The run's record to fill, for the driver, who hands it to the reader.
Mesh& MESH_TO_FILL();
