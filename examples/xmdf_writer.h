// An .xmdf results file: a run's datasets in an HDF5 file, in folders below one group named after the run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

/// Every member throws std::runtime_error, naming the file, when HDF5 refuses. Built without HDF5, the constructor
/// always throws.
class XmdfWriter {
public:
    /// run: name of the group that holds the folders.
    XmdfWriter(const std::filesystem::path& name, std::string run, std::size_t nodes, std::size_t cells);
    ~XmdfWriter();
    XmdfWriter(const XmdfWriter&) = delete;
    XmdfWriter& operator=(const XmdfWriter&) = delete;

    /// Creates a dataset such as "Temporal/Water Level" with room for so many times. vector: x and y per node, else one
    /// value.
    void create(const std::string& dataset, bool vector, std::size_t times);
    /// Fills one time of a dataset, counted from 0. values: per node (x, y of vectors side by side); wet: per cell, 1
    /// wet and 0 dry.
    void write(const std::string& dataset, std::size_t step, double hours, std::span<const float> values,
               std::span<const std::uint8_t> wet);
    void close();

private:
    struct File;
    std::unique_ptr<File> file_;
};
