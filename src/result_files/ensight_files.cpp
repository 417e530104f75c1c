#include "result_files/ensight_files.h"

#include "geometry/no_value.h"
#include "services/files.h"
#include "text_utils/bytes.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace {

constexpr std::size_t LINE = 80;  // bytes of a text
constexpr std::size_t NUMBERS_AT_ONCE = 1U << 15;

/// A file of texts and little-endian numbers of four bytes.
class BinaryFile {
public:
    explicit BinaryFile(const std::string& name) : file_(OPEN_FILE(name, "O ", FILEEXT(name).substr(1))) {}

    void text(std::string_view words) {
        std::string line = FITTED(words, LINE - 1);
        line.resize(LINE, '\0');
        WRITE_OR_STOP(file_, line);
    }
    void integer(std::size_t value) {
        const auto number = static_cast<std::int32_t>(value);
        numbers(1, [number](char* at, std::size_t) { return putLittleInt32(at, number); });
    }
    void integers(std::span<const std::int32_t> values) {
        numbers(values.size(), [values](char* at, std::size_t i) { return putLittleInt32(at, values[i]); });
    }
    template <typename ValueOf>
    void reals(std::size_t count, ValueOf valueOf) {
        numbers(count, [&](char* at, std::size_t i) { return putLittleFloat(at, valueOf(i)); });
    }
    void close() { CLOSE_FILE(file_); }

private:
    template <typename Put>
    void numbers(std::size_t count, Put put) {
        block_.resize(4 * std::min(count, NUMBERS_AT_ONCE));
        for (std::size_t i = 0; i < count;) {
            char* at = block_.data();
            for (const std::size_t end = std::min(count, i + NUMBERS_AT_ONCE); i < end; ++i) at = put(at, i);
            WRITE_OR_STOP(file_, {block_.data(), static_cast<std::size_t>(at - block_.data())});
        }
    }

    int file_;
    std::vector<char> block_;
};

std::size_t place(std::int32_t id) { return static_cast<std::size_t>(id); }

/// Per node or per cell, numbered as the mesh: 1 where nothing is wet.
std::vector<std::uint8_t> dryPlaces(const Results& results, const Mesh& mesh) {
    const bool flagged = results.cells > 0 && results.wet.size() == mesh.elements.size();
    std::vector<std::uint8_t> dry(results.x.size(), flagged ? 1 : 0);
    for (std::size_t id = 1; flagged && id < mesh.elements.size(); ++id) {
        if (results.wet[id] == 0 || mesh.elements[id].removed) continue;
        if (results.cellCentred) dry[id] = 0;
        for (std::size_t i = 0; !results.cellCentred && i < 9; ++i) dry[place(mesh.elements[id].nodes[i])] = 0;
    }
    return dry;
}

std::string shortest(double value) {
    std::array<char, 32> buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

}  // namespace

void WRITE_ENSIGHT_GEOMETRY(const std::string& name, const std::string& model, const Mesh& mesh,
                            std::span<const EnsightPart> parts) {
    const double west = std::floor(mesh.xmin), south = std::floor(mesh.ymin);
    BinaryFile file(name);
    file.text("C Binary");
    file.text("Coordinates less x " + AREAL8(west) + " y " + AREAL8(south));
    file.text(model);
    file.text("node id given");
    file.text("element id given");
    for (std::size_t number = 0; number < parts.size(); ++number) {
        const EnsightPart& part = parts[number];
        const auto node = [&](std::size_t i) -> const MeshNode& { return mesh.nodes[place(part.nodes[i])]; };
        const std::size_t count = part.nodes.size();
        file.text("part");
        file.integer(number + 1);
        file.text(part.name);
        file.text("coordinates");
        file.integer(count);
        file.integers(part.nodes);
        file.reals(count, [&](std::size_t i) { return static_cast<float>(node(i).x - west); });
        file.reals(count, [&](std::size_t i) { return static_cast<float>(node(i).y - south); });
        file.reals(count, [&](std::size_t i) { return node(i).z; });
        for (const EnsightBlock& block : part.blocks) {
            file.text(block.type);
            file.integer(block.ids.size());
            file.integers(block.ids);
            file.integers(block.corners);
        }
    }
    file.close();
}

void WRITE_ENSIGHT_VARIABLE(const std::string& name, const Results& results, const Mesh& mesh,
                            std::span<const EnsightPart> parts) {
    const std::vector<std::uint8_t> dry = dryPlaces(results, mesh);
    const auto missing = [&](std::size_t id) {
        return dry[id] != 0 || IS_MISSING(results.x[id]) || (results.vector && IS_MISSING(results.y[id]));
    };
    BinaryFile file(name);
    const auto writeAll = [&](const std::string& heading, std::span<const std::int32_t> ids) {
        const auto component = [&](auto valueOf) {
            file.reals(ids.size(),
                       [&](std::size_t i) { return missing(place(ids[i])) ? NO_VALUE : valueOf(place(ids[i])); });
        };
        file.text(heading + " undef");
        file.reals(1, [](std::size_t) { return NO_VALUE; });
        component([&](std::size_t id) { return results.x[id]; });
        if (!results.vector) return;
        component([&](std::size_t id) { return results.y[id]; });
        component([](std::size_t) { return 0.0F; });
    };
    file.text(results.quantity);
    for (std::size_t number = 0; number < parts.size(); ++number) {
        file.text("part");
        file.integer(number + 1);
        if (!results.cellCentred) writeAll("coordinates", parts[number].nodes);
        else
            for (const EnsightBlock& block : parts[number].blocks) writeAll(block.type, block.ids);
    }
    file.close();
}

void WRITE_ENSIGHT_CASE(const std::string& name, const EnsightCase& content) {
    std::string text = "FORMAT\ntype: ensight gold\n\nGEOMETRY\nmodel: " + content.geometry + "\n";
    if (!content.variables.empty()) text += "\nVARIABLE\n";
    for (const EnsightVariable& variable : content.variables) {
        text += std::string(variable.vector ? "vector" : "scalar") + " per " +
                (variable.perElement ? "element" : "node") + ": ";
        if (variable.timeSet > 0) text += std::to_string(variable.timeSet) + " ";
        text += variable.name + " " + variable.file + "\n";
    }
    if (!content.timeSets.empty()) text += "\nTIME\n";
    for (std::size_t i = 0; i < content.timeSets.size(); ++i) {
        text += "time set: " + std::to_string(i + 1) +
                "\nnumber of steps: " + std::to_string(content.timeSets[i].size()) +
                "\nfilename start number: 0\nfilename increment: 1\ntime values:\n";
        for (const double hours : content.timeSets[i]) text += shortest(hours) + "\n";
    }
    const int file = OPEN_FILE(name, "O ", "case");
    WRITE_OR_STOP(file, text);
    CLOSE_FILE(file);
}
