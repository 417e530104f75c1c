// Calendar dates for output times: what -epoch counts from.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

using CalendarTime = std::chrono::sys_seconds;

/// "2020-01-31", with a time behind "T" or a blank ("12:30", "12:30:15"), and "Z" behind that. Nothing for any other
/// text, nor for a day that its month has not.
std::optional<CalendarTime> READ_CALENDAR_TIME(std::string_view text);

/// "2020-01-31T12:30:15", so many hours behind the time; with ".250" where that is no whole second, to milliseconds.
std::string CALENDAR_TEXT(CalendarTime time, double hours);
