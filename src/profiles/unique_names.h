// Names that must not repeat, whatever the letter case: columns of a file, files of a folder.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

class UniqueNames {
public:
    /// The name, or when it is taken the name with `between` and the first free number from 2 behind it. `isFree` may
    /// rule out more.
    std::string take(
        const std::string& name, std::string_view between = "",
        const std::function<bool(const std::string&)>& isFree = [](const std::string&) { return true; });

    bool has(const std::string& name) const;

private:
    std::set<std::string> taken_;  ///< in lower case
};
