#include "profiles/profile_line.h"

#include <algorithm>
#include <cmath>
#include <utility>

ProfileLine MAKE_PROFILE_LINE(std::string name, const std::vector<double>& x, const std::vector<double>& y) {
    ProfileLine line;
    line.name = std::move(name);
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double step = line.x.empty() ? 0.0 : std::hypot(x[i] - line.x.back(), y[i] - line.y.back());
        if (!line.x.empty() && step == 0.0) continue;
        line.chainage.push_back(line.x.empty() ? 0.0 : line.chainage.back() + step);
        line.x.push_back(x[i]);
        line.y.push_back(y[i]);
        if (std::isfinite(x[i]) && std::isfinite(y[i]) && std::isfinite(line.chainage.back())) continue;
        line.x.clear();
        break;
    }
    return line;
}

std::size_t SEGMENT_AT(const ProfileLine& line, double chainage) {
    const auto later = std::upper_bound(line.chainage.begin() + 1, line.chainage.end() - 1, chainage);
    return static_cast<std::size_t>(later - line.chainage.begin()) - 1;
}

LinePlace PLACE_AT(const ProfileLine& line, double chainage) {
    const std::size_t from = SEGMENT_AT(line, chainage), to = from + 1;
    if (chainage >= line.chainage[to]) return {line.x[to], line.y[to]};
    const double share = (chainage - line.chainage[from]) / (line.chainage[to] - line.chainage[from]);
    return {line.x[from] + share * (line.x[to] - line.x[from]), line.y[from] + share * (line.y[to] - line.y[from])};
}
