// For the fuzz targets of inputs: the pieces of one input become files beside each other, which a step or a run reads.
#pragma once

#include "console_of.h"
#include "run_control/driver.h"
#include "services/files.h"
#include "temporary_folder.h"

#include <sanitizer/allocator_interface.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Ends the process when one input makes it hold more than 64 MB and ten times the input's size at once, beyond what it
/// held before. What the sanitizer adds does not count.
class MemoryLimit {
public:
    explicit MemoryLimit(std::size_t inputSize) : limit_((std::size_t{64} << 20) + 10 * inputSize) {
        static const int installed = __sanitizer_install_malloc_and_free_hooks(
            [](const volatile void*, std::size_t size) {
                const std::size_t now = held += size;
                if (now > most) most = now;
            },
            [](const volatile void* block) { held -= __sanitizer_get_allocated_size(block); });
        if (installed == 0) std::abort();
        before_ = held;
        most = before_;
    }
    ~MemoryLimit() {
        const std::size_t taken = most > before_ ? most - before_ : 0;
        if (taken <= limit_) return;
        std::fprintf(stderr, "ERROR: the input took %zu bytes of memory, more than %zu\n", taken, limit_);
        std::abort();
    }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

private:
    inline static std::atomic<std::size_t> held{std::size_t{1} << 40};  // blocks from before may be freed
    inline static std::atomic<std::size_t> most{0};
    std::size_t limit_, before_ = 0;
};

constexpr std::string_view NEXT_FILE = "\n====\n";  ///< stands between the files in one input

inline const TemporaryFolder& fuzzFolder() {
    static const TemporaryFolder folder;
    return folder;
}

/// Writes a file for each name in turn, of the piece that is its.
inline void writePieces(const std::uint8_t* data, std::size_t size, std::span<const char* const> names) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    for (const char* name : names) {
        const std::size_t end = rest.find(NEXT_FILE);
        fuzzFolder().write(name, rest.substr(0, end));
        rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end + NEXT_FILE.size());
    }
}

/// A stopped step is an answer like any other.
template <typename Step>
void readFuzzed(Step step) {
    INITIALISE_FILES();
    consoleOf(step);
    INITIALISE_FILES();
}

/// A triangle and two quads for results of eleven nodes and three cells.
inline void writeFuzzMesh() {
    fuzzFolder().write("x.2dm",
                       "MESH2D\nE3T 1 9 8 10 1\nE4Q 2 8 7 11 10 1\nE4Q 3 1 3 5 7 1\nND 1 0 0 1\nND 2 1 0 1\n"
                       "ND 3 2 0 1\nND 4 2 1 1\nND 5 2 2 1\nND 6 1 2 1\nND 7 0 2 1\nND 8 0 1 1\nND 9 1 1 1\n"
                       "ND 10 -1 1 1\nND 11 -1 2 1\n");
}

/// One run in batch; the words that are no switches are names in the folder.
inline void runFuzzed(std::initializer_list<const char*> words) {
    std::vector<std::string> texts{"VORANT_to_GIS", "-b"};
    for (const char* word : words) texts.push_back(word[0] == '-' ? std::string(word) : fuzzFolder().name(word));
    std::vector<const char*> arguments;
    for (const std::string& text : texts) arguments.push_back(text.c_str());
    readFuzzed([&] { CONVERT(static_cast<int>(arguments.size()), arguments.data()); });
}
