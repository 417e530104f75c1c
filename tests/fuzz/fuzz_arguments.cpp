// One input: the words of a command line, one a line. They are read and checked, and no file is touched.
#include "fuzz_run.h"
#include "run_control/arguments.h"
#include "run_control/switch_checks.h"
#include "services/options.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryLimit limit(size);
    std::vector<std::string> words{"VORANT_to_GIS"};
    std::string text(reinterpret_cast<const char*>(data), size);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        words.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    std::vector<const char*> arguments;
    for (const std::string& word : words) arguments.push_back(word.c_str());
    readFuzzed([&] {
        INITIALISE_OPTIONS();
        READ_ARGUMENTS(static_cast<int>(arguments.size()), arguments.data());
        if (!OPTIONS().inputError) CHECK_SWITCHES();
    });
    return 0;
}
