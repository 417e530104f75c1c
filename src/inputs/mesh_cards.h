// The cards of a .2dm file: which card a line is, and its values. Inline, since every line of a mesh goes through it
// twice.
#pragma once

#include "inputs/mesh.h"
#include "text_utils/free_form.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

enum class MeshCard : std::uint8_t { Other, Node, Triangle, Quad4, Quad9, Part };

/// Recognised at the very start of the line and in upper case only.
inline MeshCard meshCard(std::string_view line) {
    if (line.size() < 2) return MeshCard::Other;
    if (line[0] == 'N') return line[1] == 'D' ? MeshCard::Node : MeshCard::Other;
    if (line[0] == 'E') {
        if (line.starts_with("E3T")) return MeshCard::Triangle;
        if (line.starts_with("E4Q")) return MeshCard::Quad4;
        return line.starts_with("E9Q") ? MeshCard::Quad9 : MeshCard::Other;
    }
    return line.starts_with("MESHPART") ? MeshCard::Part : MeshCard::Other;
}

constexpr std::size_t MESH_LINE_WIDTH = 200;  ///< characters of a line that count

/// The flavour with datum flags and 9-node quads.
inline bool IS_CURRENT_FLAVOUR(const Mesh& mesh) { return !mesh.qlMesh && !mesh.pre2005; }

/// What a line is read by: its first 200 characters, less a value that the cut would go through, so that no part of a
/// number passes for the whole.
inline std::string_view fittedMeshLine(std::string_view line) {
    constexpr std::string_view SEPARATORS = " ,\t";
    if (line.size() <= MESH_LINE_WIDTH) return line;
    const bool cutBetweenValues = SEPARATORS.find(line[MESH_LINE_WIDTH]) != std::string_view::npos;
    line = line.substr(0, MESH_LINE_WIDTH);
    return cutBetweenValues ? line : line.substr(0, line.find_last_of(SEPARATORS) + 1);
}

/// What stands behind the letters of a card; nothing where the cut left less than those.
inline std::string_view valuesOfCard(std::string_view line, std::size_t letters) {
    return line.substr(std::min(letters, line.size()));
}

/// How a card's values read: all of them, not as many as the flavour has, or one that is no number of its kind.
enum class CardRead : std::uint8_t { Whole, Short, Bad };

inline CardRead cardRead(FreeForm::Read read) {
    if (read == FreeForm::Read::Value) return CardRead::Whole;
    return read == FreeForm::Read::End ? CardRead::Short : CardRead::Bad;
}

/// Reads numbers in their order until one fails.
template <typename... Numbers>
CardRead readNumbers(FreeForm& form, Numbers&... numbers) {
    CardRead result = CardRead::Whole;
    const auto one = [&](auto& number) {
        if constexpr (std::is_integral_v<std::remove_reference_t<decltype(number)>>)
            result = cardRead(form.NEXT_INTEGER(number));
        else result = cardRead(form.NEXT_REAL(number));
        return result == CardRead::Whole;
    };
    (one(numbers) && ...);
    return result;
}

/// The values of an ND card. full: the current flavour's datum flag and extra values too.
inline CardRead readNodeCard(std::string_view line, bool full, std::int32_t& id, MeshNode& node) {
    FreeForm form(valuesOfCard(line, 2));
    const CardRead place = readNumbers(form, id, node.x, node.y, node.z);
    if (place != CardRead::Whole || !full) return place;
    return readNumbers(form, node.datumFlag, node.extra[0], node.extra[1], node.extra[2]);
}

/// Slots for a card's nodes in their order. The corners of triangles and 4-node quads are stored the other way round; a
/// 9-node quad lists corner, mid-side, corner, ..., centre and keeps its winding.
constexpr std::array<std::uint8_t, 3> TRIANGLE_SLOTS = {0, 2, 1};
constexpr std::array<std::uint8_t, 4> QUAD4_SLOTS = {0, 3, 2, 1};
constexpr std::array<std::uint8_t, 9> QUAD9_SLOTS = {0, 4, 1, 5, 2, 6, 3, 7, 8};

/// The values of an element card. extraIntegers, extraByte: the flavour has them behind the material.
template <std::size_t Count>
CardRead readElementCard(std::string_view line, const std::array<std::uint8_t, Count>& slots, bool extraIntegers,
                         bool extraByte, std::int32_t& id, MeshElement& element) {
    FreeForm form(valuesOfCard(line, 3));
    CardRead read = readNumbers(form, id);
    for (std::size_t i = 0; i < Count && read == CardRead::Whole; ++i)
        read = readNumbers(form, element.nodes[slots[i]]);
    if (read == CardRead::Whole) read = readNumbers(form, element.material);
    if (read == CardRead::Whole && extraIntegers) read = readNumbers(form, element.extra[0], element.extra[1]);
    if (read == CardRead::Whole && extraByte) read = readNumbers(form, element.extraByte);
    element.shape = static_cast<std::int32_t>(Count);
    return read;
}
