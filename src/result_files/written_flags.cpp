#include "result_files/written_flags.h"

#include <algorithm>
#include <cstddef>

WrittenFlags::WrittenFlags(const Mesh& mesh)
    : mesh_(mesh),
      removed_(std::any_of(mesh.elements.begin(), mesh.elements.end(), [](const auto& e) { return e.removed; })) {}

std::span<const std::uint8_t> WrittenFlags::of(const Results& results) {
    const auto cells = static_cast<std::size_t>(mesh_.elementCount);
    const bool flagged = results.flagged && results.wet.size() == cells + 1;
    if (!removed_) return flagged ? std::span(results.wet).subspan(1) : std::span<const std::uint8_t>{};
    flags_.assign(cells, 1);
    if (flagged) std::copy(results.wet.begin() + 1, results.wet.end(), flags_.begin());
    for (std::size_t i = 0; i < cells; ++i)
        if (mesh_.elements[i + 1].removed) flags_[i] = 0;
    return flags_;
}
