#include "profiles/unique_names.h"

#include "text_utils/text.h"

std::string UniqueNames::take(const std::string& name, std::string_view between,
                              const std::function<bool(const std::string&)>& isFree) {
    std::string free = name;
    for (int copy = 2; has(free) || !isFree(free); ++copy) free = name + std::string(between) + std::to_string(copy);
    taken_.insert(LOWERCASE(free));
    return free;
}

bool UniqueNames::has(const std::string& name) const { return taken_.contains(LOWERCASE(name)); }
