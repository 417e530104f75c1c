#include "services/calendar.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

/// The next `digits` digits and nothing else; false when they are not there.
bool takeDigits(std::string_view& text, std::size_t digits, int& value) {
    if (text.size() < digits) return false;
    const auto end = text.data() + digits;
    if (text.front() == '-' || std::from_chars(text.data(), end, value).ptr != end) return false;
    text.remove_prefix(digits);
    return true;
}

bool takeOneOf(std::string_view& text, std::string_view characters) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
}

bool takeClock(std::string_view& text, std::chrono::seconds& clock) {
    int hour = 0, minute = 0, second = 0;
    if (!takeDigits(text, 2, hour) || !takeOneOf(text, ":") || !takeDigits(text, 2, minute)) return false;
    if (takeOneOf(text, ":") && !takeDigits(text, 2, second)) return false;
    clock = std::chrono::hours(hour) + std::chrono::minutes(minute) + std::chrono::seconds(second);
    takeOneOf(text, "Zz");
    return hour < 24 && minute < 60 && second < 60;
}

}  // namespace

std::optional<CalendarTime> READ_CALENDAR_TIME(std::string_view text) {
    int year = 0, month = 0, day = 0;
    std::chrono::seconds clock{0};
    if (!takeDigits(text, 4, year) || !takeOneOf(text, "-") || !takeDigits(text, 2, month) || !takeOneOf(text, "-") ||
        !takeDigits(text, 2, day))
        return {};
    if (takeOneOf(text, "Tt ") && !takeClock(text, clock)) return {};
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok() || !text.empty()) return {};
    return std::chrono::sys_days(date) + clock;
}

std::string CALENDAR_TEXT(CalendarTime time, double hours) {
    const auto all = std::chrono::sys_time<std::chrono::milliseconds>(time) +
                     std::chrono::milliseconds(std::llround(hours * 3600.0e3));
    const auto days = std::chrono::floor<std::chrono::days>(all);
    const std::chrono::year_month_day date(days);
    const std::chrono::hh_mm_ss clock(all - days);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    std::string result(text.data());
    const auto milliseconds = static_cast<int>(clock.subseconds().count());
    if (milliseconds != 0) {
        std::snprintf(text.data(), text.size(), ".%03d", milliseconds);
        result += text.data();
    }
    return result;
}
