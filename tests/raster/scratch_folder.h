// A folder of a test's own, gone with the test.
#pragma once

#include "services/files.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

class ScratchFolder {
public:
    ScratchFolder() {
        static std::atomic<int> count = 0;
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        path_ = std::filesystem::temp_directory_path() /
                ("raster_test_" + std::to_string(now) + "_" + std::to_string(++count));
        std::filesystem::create_directories(path_);
        INITIALISE_FILES();
    }
    ~ScratchFolder() {
        INITIALISE_FILES();
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string file(std::string_view name) const { return (path_ / name).string(); }
    void write(std::string_view name, std::string_view bytes) const {
        std::ofstream(file(name), std::ios::binary) << bytes;
    }
    std::string bytes(std::string_view name) const {
        std::ifstream in(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::filesystem::path path_;
};
