#include "result_files/dat_writer.h"

#include "services/files.h"
#include "text_utils/bytes.h"
#include "text_utils/text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

constexpr std::size_t NAME_LENGTH = 40;
constexpr std::size_t NODES_AT_ONCE = 1U << 15;

std::string_view textOf(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string header(const DatShape& shape) {
    std::string cards;
    const auto integer = [&](std::int32_t value) {
        std::array<char, 4> bytes;
        putLittleInt32(bytes.data(), value);
        cards.append(bytes.data(), bytes.size());
    };
    const auto card = [&](std::int32_t number, std::int32_t value) {
        integer(number);
        integer(value);
    };
    integer(3000);                      // version
    card(100, 3);                       // object type: a mesh
    card(110, 4);                       // bytes of a value
    card(120, 1);                       // bytes of a flag
    integer(shape.vector ? 140 : 130);  // begin
    if (shape.vector) card(150, 0);     // vectors stand at the nodes
    card(160, 1);                       // object id
    card(170, shape.values);
    card(180, shape.cells);
    integer(190);  // name
    std::string name = FITTED(shape.quantity, NAME_LENGTH);
    name.resize(NAME_LENGTH, ' ');
    cards += name;
    card(250, 0);  // times in hours
    return cards;
}

double storedTime(const OutputTime& time) {
    const bool ofPeak = time.kind == TimeKind::PeakLevel || time.kind == TimeKind::PeakVelocity;
    return ofPeak ? TIME_OF_MAXIMUM.number : time.number;
}

}  // namespace

DatWriter::DatWriter(const std::string& name, const DatShape& shape)
    : file_(OPEN_FILE(name, "O ", "dat")), block_(NODES_AT_ONCE * 2 * sizeof(float)) {
    WRITE_OR_STOP(file_, header(shape));
}

void DatWriter::write(const Results& results, std::span<const std::uint8_t> flags) {
    std::array<char, 9> head;
    char* at = putLittleInt32(head.data(), 200);  // an output time
    *at++ = flags.empty() ? '\0' : '\1';
    putLittleFloat(at, static_cast<float>(storedTime(results.time)));
    WRITE_OR_STOP(file_, {head.data(), head.size()});
    WRITE_OR_STOP(file_, textOf(flags));
    const auto nodes = static_cast<std::size_t>(results.nodes);
    for (std::size_t next = 1; next <= nodes;) {
        at = block_.data();
        for (const std::size_t end = std::min(nodes + 1, next + NODES_AT_ONCE); next < end; ++next) {
            at = putLittleFloat(at, results.x[next]);
            if (results.vector) at = putLittleFloat(at, results.y[next]);
        }
        WRITE_OR_STOP(file_, {block_.data(), static_cast<std::size_t>(at - block_.data())});
    }
}

void DatWriter::close() {
    std::array<char, 4> end;
    putLittleInt32(end.data(), 210);
    WRITE_OR_STOP(file_, {end.data(), end.size()});
    CLOSE_FILE(file_);
}
