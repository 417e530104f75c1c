#include "flood_files.h"

#include <span>
#include <string>
#include <vector>

namespace {

constexpr double TIME_OF_PEAK = 900001.0;  // the time under which hours of peak level stand

struct Quantity {
    const char* name;
    bool vector;
    std::vector<float> FloodState::*values;
};
constexpr Quantity QUANTITIES[] = {
    {"Water Level", false, &FloodState::level},
    {"Depth", false, &FloodState::depth},
    {"Vector Velocity", true, &FloodState::velocity},
};

}  // namespace

std::filesystem::path FILE_OF(const BasinOptions& options, const char* ending) {
    std::filesystem::path name = options.base;
    return name += ending;
}

FloodFiles::FloodFiles(const SquareMesh& mesh)
    : mesh_(mesh),
      flags_(mesh.options.flags),
      level_(FILE_OF(mesh.options, "_h.dat"), false, mesh.x.size(), mesh.elementCount(), "Water Level"),
      depth_(FILE_OF(mesh.options, "_d.dat"), false, mesh.x.size(), mesh.elementCount(), "Depth"),
      velocity_(FILE_OF(mesh.options, "_V.dat"), true, mesh.x.size(), mesh.elementCount(), "Velocity") {
    if (mesh.options.cellDepths)
        cellDepth_ = std::make_unique<DatWriter>(FILE_OF(mesh.options, "_cells_d.dat"), false, mesh.elementCount(),
                                                 mesh.elementCount(), "Depth");
    if (!mesh.options.xmdf) return;
    const std::string run = mesh.options.base.filename().string();
    xmdf_ = std::make_unique<XmdfWriter>(FILE_OF(mesh.options, ".xmdf"), run, mesh.x.size(), mesh.elementCount());
    createXmdf(static_cast<std::size_t>(mesh.options.times));
}

void FloodFiles::createXmdf(std::size_t times) {
    for (const Quantity& q : QUANTITIES) {
        xmdf_->create(std::string("Temporal/") + q.name, q.vector, times);
        xmdf_->create(std::string("Maximums/") + q.name, q.vector, 1);
        xmdf_->create(std::string("Minimums/") + q.name, q.vector, 1);
    }
    xmdf_->create("Times/Time of Peak h", false, 1);
}

void FloodFiles::writeXmdf(const char* folder, std::size_t step, const FloodState& state) {
    for (const Quantity& q : QUANTITIES)
        xmdf_->write(std::string(folder) + q.name, step, state.time, state.*q.values, state.wet);
}

void FloodFiles::writeDats(const FloodState& state, bool withDepth) {
    const std::span<const std::uint8_t> wet =
        flags_ ? std::span<const std::uint8_t>(state.wet) : std::span<const std::uint8_t>();
    level_.write(state.time, state.level, wet);
    if (withDepth) depth_.write(state.time, state.depth, wet);
    velocity_.write(state.time, state.velocity, wet);
}

void FloodFiles::writeCellDepths(const FloodState& state) {
    std::vector<float> depths;
    depths.reserve(mesh_.elementCount());
    FOR_EACH_ELEMENT(mesh_, [&](const ElementNodes& nodes) {
        const int corners = nodes[3] == 0 ? 3 : 4;
        float sum = 0.0F;
        for (int k = 0; k < corners; ++k)
            sum += state.depth[static_cast<std::size_t>(nodes[static_cast<std::size_t>(k)]) - 1];
        depths.push_back(sum / static_cast<float>(corners));
    });
    cellDepth_->write(state.time, depths, state.wet);
}

void FloodFiles::write(const FloodState& state) {
    writeDats(state, true);
    if (cellDepth_) writeCellDepths(state);
    if (xmdf_) writeXmdf("Temporal/", step_, state);
    ++step_;
}

void FloodFiles::finish(const FloodExtremes& extremes) {
    const FloodState& most = extremes.maximum();
    writeDats(most, false);
    level_.close();
    depth_.close();
    velocity_.close();
    if (cellDepth_) cellDepth_->close();
    if (!xmdf_) return;
    writeXmdf("Maximums/", 0, most);
    writeXmdf("Minimums/", 0, extremes.minimum());
    xmdf_->write("Times/Time of Peak h", 0, TIME_OF_PEAK, extremes.timeOfPeak(), most.wet);
    xmdf_->close();
}
