#include "dat_writer.h"

#include <string>

namespace {
constexpr std::size_t QUANTITY_WIDTH = 40;
}

DatWriter::DatWriter(const std::filesystem::path& name, bool vector, std::size_t nodes, std::size_t cells,
                     std::string_view quantity)
    : file_(name) {
    const auto card = [&](std::int32_t number, std::int32_t value) {
        file_.int32(number);
        file_.int32(value);
    };
    file_.int32(3000);                            // version
    card(100, 3);                                 // object type: a mesh
    card(110, 4);                                 // bytes of a value
    card(120, 1);                                 // bytes of a flag
    file_.int32(vector ? 140 : 130);              // begin vector or scalar dataset
    if (vector) card(150, 0);                     // vectors stand at the nodes
    card(160, 1);                                 // object id
    card(170, static_cast<std::int32_t>(nodes));  // values a time
    card(180, static_cast<std::int32_t>(cells));  // flags a time
    file_.int32(190);                             // name
    std::string text(quantity.substr(0, QUANTITY_WIDTH));
    text.resize(QUANTITY_WIDTH, ' ');
    file_.text(text);
}

void DatWriter::write(double hours, std::span<const float> values, std::span<const std::uint8_t> wet) {
    file_.int32(200);
    file_.byte(wet.empty() ? 0 : 1);
    file_.float32(static_cast<float>(hours));
    for (const std::uint8_t flag : wet) file_.byte(flag);
    for (const float value : values) file_.float32(value);
}

void DatWriter::close() {
    file_.int32(210);  // end of dataset
    file_.close();
}
