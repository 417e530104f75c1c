#include "inputs/mesh_compare.h"

#include "inputs/mesh_cards.h"
#include "services/files.h"
#include "text_utils/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace {

std::string counts(const char* what, std::int32_t a, std::int32_t b) {
    return AINTEGER(a) + " and " + AINTEGER(b) + " " + what;
}

bool isFar(double a, double b, double tolerance) {
    return !(std::abs(a - b) <= tolerance * 1.0001);  // as far as digits go
}

bool isFar(const MeshNode& a, const MeshNode& b, double tolerance) {
    return isFar(a.x, b.x, tolerance) || isFar(a.y, b.y, tolerance);
}

bool alike(const MeshElement& a, const MeshElement& b) {
    return a.shape == b.shape && a.nodes == b.nodes && a.removed == b.removed;
}

/// A file block by block.
class Text {
public:
    explicit Text(int file) : file_(file), buffer_(BLOCK) {}

    /// What has not been passed, with a whole line in it where one is left; false for a longer line, or a failed read.
    bool hold(std::string_view& text) {
        text = rest();
        if (text.find('\n') == std::string_view::npos && !atEnd_) {
            std::copy(text.begin(), text.end(), buffer_.begin());
            end_ -= std::exchange(next_, 0);
            const std::int64_t got = READ_BYTES(file_, buffer_.data() + end_, BLOCK - end_);
            if (got < 0) return false;
            atEnd_ = end_ + static_cast<std::size_t>(got) < BLOCK;
            end_ += static_cast<std::size_t>(got);
            text = rest();
        }
        return atEnd_ || text.find('\n') != std::string_view::npos;
    }
    void pass(std::size_t bytes) { next_ += bytes; }

private:
    static constexpr std::size_t BLOCK = std::size_t{1} << 20;
    std::string_view rest() const { return {buffer_.data() + next_, end_ - next_}; }

    int file_;
    std::vector<char> buffer_;
    std::size_t next_ = 0, end_ = 0;
    bool atEnd_ = false;
};

/// Without its end.
std::string_view firstLine(std::string_view text) {
    text = text.substr(0, text.find('\n'));
    if (text.ends_with('\r')) text.remove_suffix(1);
    return text;
}

/// Bytes at the beginning of both that are equal.
std::size_t equalBytes(std::string_view a, std::string_view b) {
    constexpr std::size_t AT_ONCE = 4096;
    const std::size_t most = std::min(a.size(), b.size());
    std::size_t equal = 0;
    while (equal + AT_ONCE <= most && a.compare(equal, AT_ONCE, b, equal, AT_ONCE) == 0) equal += AT_ONCE;
    while (equal < most && a[equal] == b[equal]) ++equal;
    return equal;
}

/// Cards of one node that stands where it does in the mesh, with values that a reader takes.
bool isNodeOfMesh(std::string_view line, std::string_view other, const Mesh& mesh, double tolerance) {
    if (meshCard(line) != MeshCard::Node || meshCard(other) != MeshCard::Node) return false;
    std::int32_t id = 0, otherId = 0;
    MeshNode node, otherNode;
    const bool full = IS_CURRENT_FLAVOUR(mesh);
    return readNodeCard(fittedMeshLine(line), full, id, node) == CardRead::Whole &&
           readNodeCard(fittedMeshLine(other), full, otherId, otherNode) == CardRead::Whole && id == otherId &&
           id >= 1 && id <= mesh.nodeCount && std::isfinite(otherNode.z) &&
           !isFar(mesh.nodes[static_cast<std::size_t>(id)], otherNode, tolerance);
}

}  // namespace

bool ARE_ONE_MESH_BY_LINES(int file, int other, const Mesh& mesh, double tolerance) {
    Text left(file), right(other);
    std::string_view a, b;
    for (;;) {
        if (!left.hold(a) || !right.hold(b)) return false;
        if (a == b && a.empty()) return true;
        const std::size_t equal = equalBytes(a, b);
        std::size_t lines = a.substr(0, equal).rfind('\n') + 1;
        if (equal == a.size() && equal == b.size() && lines == 0) lines = equal;  // a last line without an end
        left.pass(lines);
        right.pass(lines);
        if (lines > 0) continue;
        const std::string_view line = firstLine(a), otherLine = firstLine(b);
        if (line != otherLine && !isNodeOfMesh(line, otherLine, mesh, tolerance)) return false;
        left.pass(std::min(a.find('\n'), a.size() - 1) + 1);
        right.pass(std::min(b.find('\n'), b.size() - 1) + 1);
    }
}

std::string MESH_CONTRAST(const Mesh& a, const Mesh& b, double tolerance) {
    if (a.nodeCount != b.nodeCount) return counts("nodes", a.nodeCount, b.nodeCount);
    if (a.elementCount != b.elementCount) return counts("cells", a.elementCount, b.elementCount);
    for (std::size_t id = 1; id < a.nodes.size(); ++id)
        if (isFar(a.nodes[id], b.nodes[id], tolerance)) return "node " + std::to_string(id) + " stands elsewhere";
    for (std::size_t id = 1; id < a.elements.size(); ++id)
        if (!alike(a.elements[id], b.elements[id])) return "cell " + std::to_string(id) + " is another";
    return {};
}
