// The wet/dry flags that a file of results gets.
#pragma once

#include "inputs/mesh.h"
#include "inputs/results.h"

#include <cstdint>
#include <span>
#include <vector>

class WrittenFlags {
public:
    /// mesh: must live as long as this.
    explicit WrittenFlags(const Mesh& mesh);

    /// One per cell, numbered from 0, valid until the next call: those of the results, 0 for the cells of removed
    /// parts. None where neither the source nor a removed part tells cells apart.
    std::span<const std::uint8_t> of(const Results& results);

private:
    const Mesh& mesh_;
    bool removed_ = false;  ///< a part was removed
    std::vector<std::uint8_t> flags_;
};
