// What the cards of a .2dm file, or of a range of its lines, put into a mesh whose tables have their size.
#pragma once

#include "inputs/mesh.h"
#include "inputs/mesh_cards.h"

#include <atomic>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Per node and per element, numbered from 1: 1 once its card has been read. Shared by the passes over one file.
struct MeshRead {
    explicit MeshRead(const Mesh& mesh) : nodes(mesh.nodes.size(), 0), elements(mesh.elements.size(), 0) {}
    std::vector<std::uint8_t> nodes, elements;
};

/// What a pass has met. Sums and extents of several passes make those of the file.
struct MeshTally {
    std::int64_t nodes = 0, elements = 0;
    double xmin = 9.0e29, xmax = -9.0e29, ymin = 9.0e29, ymax = -9.0e29;
    float zmin = 9.0e29F, zmax = -9.0e29F;
    std::vector<std::string> parts;                   ///< names of the MESHPART cards, in their order
    std::vector<std::int32_t> elementsBeforeAnyPart;  ///< ids, kept when parts are to be removed
};

class MeshPass {
public:
    /// together: other passes fill the same mesh on other threads at the same time.
    MeshPass(Mesh& mesh, std::span<const std::string> removedParts, MeshRead& read, bool together)
        : mesh_(mesh), removedParts_(removedParts), read_(read), together_(together) {}

    /// Takes one line of the file. Blank, or why the line is refused.
    std::string_view take(std::string_view line);
    /// Of an E9Q card in a flavour without it: said, counted and passed over; its element keeps shape 0.
    void passOverElement() { ++tally_.elements; }
    const MeshTally& tally() const { return tally_; }

    // Reasons that the reader of a file has an answer to.
    static constexpr std::string_view UNEXPECTED_QUAD9 = "an E9Q card is unexpected";
    /// The first card of a kind has too few values, as in a layout between the pre-2005 and the current one.
    static constexpr std::string_view TOO_FEW_VALUES = "too few values";

private:
    std::string_view takeNode(std::string_view line);
    template <std::size_t Count>
    std::string_view takeElement(std::string_view line, const std::array<std::uint8_t, Count>& slots);
    std::string_view takePart(std::string_view line);
    std::string_view reasonOf(CardRead read, bool firstOfItsKind) const;
    bool claim(std::uint8_t& alreadyRead) const {
        if (together_) return std::atomic_ref(alreadyRead).exchange(1, std::memory_order_relaxed) == 0;
        return std::exchange(alreadyRead, std::uint8_t{1}) == 0;
    }

    Mesh& mesh_;
    std::span<const std::string> removedParts_;
    MeshRead& read_;
    bool together_;
    bool removing_ = false;  ///< the mesh part at hand is named with -rmp
    MeshTally tally_;
};

/// Puts into the mesh what passes over a file have met beside nodes and elements, in the order of the file: extents and
/// parts, and whether each -rmp name was found. The counts of the whole come back.
MeshTally ADD_UP_PASSES(std::span<const MeshTally> tallies, std::span<const std::string> removedParts, Mesh& mesh);
