#include "raster/kept_chunks.h"

#include "services/workers.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace {

constexpr std::size_t BLOCK = std::size_t{32} << 20;

template <typename Part>
std::size_t bytesOf(const std::vector<Part>& parts) {
    constexpr std::size_t APART = 64;  // each table begins a line of the cache
    return (parts.size() * sizeof(Part) + APART - 1) / APART * APART;
}

std::size_t bytesOf(const PlanChunk& chunk) {
    return bytesOf(chunk.pieces) + bytesOf(chunk.rows) + bytesOf(chunk.sets);
}

/// Room behind what the blocks hold; nullptr when the limit or the memory does not allow it.
std::byte* roomFor(GridPlan& plan, std::size_t bytes) {
    if (plan.memoryUsed + bytes > plan.memoryLimit) return nullptr;
    try {
        if (plan.blocks.empty() || plan.blockSize - plan.blockUsed < bytes) {
            const std::size_t size = std::max(bytes, BLOCK);
            plan.blocks.push_back(std::make_unique_for_overwrite<std::byte[]>(size));
            plan.blockSize = size;
            plan.blockUsed = 0;
        }
        plan.chunks.emplace_back();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    std::byte* const room = plan.blocks.back().get() + plan.blockUsed;
    plan.blockUsed += bytes;
    plan.memoryUsed += bytes;
    return room;
}

template <typename Part>
std::span<const Part> copyTo(std::byte*& room, const std::vector<Part>& parts) {
    if (!parts.empty()) std::memcpy(room, parts.data(), parts.size() * sizeof(Part));
    const std::span<const Part> copy(reinterpret_cast<const Part*>(room), parts.size());
    room += bytesOf(parts);
    return copy;
}

}  // namespace

std::size_t KEEP_CHUNKS(GridPlan& plan, std::span<const PlanChunk> chunks) {
    const std::size_t before = plan.chunks.size();
    std::vector<std::byte*> rooms;
    for (const PlanChunk& chunk : chunks) {
        std::byte* const room = plan.memoryLimit == 0 ? nullptr : roomFor(plan, bytesOf(chunk));
        if (room == nullptr) {
            plan.memoryLimit = 0;  // the rest is worked out anew at every time
            break;
        }
        rooms.push_back(room);
    }
    DO_PIECES(rooms.size(), [&](std::size_t i) {
        const PlanChunk& chunk = chunks[i];
        std::byte* room = rooms[i];
        PlanStretch& kept = plan.chunks[before + i];
        kept.elements = chunk.elements;
        kept.covered = chunk.covered;
        kept.pieces = copyTo(room, chunk.pieces);
        kept.rows = copyTo(room, chunk.rows);
        kept.sets = copyTo(room, chunk.sets);
    });
    return rooms.size();
}
