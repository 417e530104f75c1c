// A folder of a test's own, removed with everything in it, and whole files in and out of it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

class TemporaryFolder {
public:
    TemporaryFolder()
        : path_(std::filesystem::temp_directory_path() / ("converter_test_" + std::to_string(std::random_device{}()))) {
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// The full name of a file in the folder.
    std::string name(std::string_view file) const { return (path_ / std::string(file)).string(); }
    /// Writes the file and returns its full name.
    std::string write(std::string_view file, std::string_view bytes) const {
        std::ofstream(name(file), std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return name(file);
    }
    std::string read(std::string_view file) const {
        std::ifstream in(name(file), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::filesystem::path path_;
};
