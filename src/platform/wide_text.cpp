#include "platform/wide_text.h"

#include <windows.h>

namespace {
constexpr std::wstring_view LONG_PREFIX = L"\\\\?\\";
constexpr std::wstring_view LONG_SERVER_PREFIX = L"\\\\?\\UNC\\";
constexpr std::size_t LONGEST_PLAIN_NAME = 240;  ///< folders may not use the last 12 of the 260
}  // namespace

std::wstring WIDE_TEXT(std::string_view utf8) {
    if (utf8.empty()) return {};
    const int bytes = static_cast<int>(utf8.size());
    std::wstring wide(utf8.size(), L'\0');
    const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, wide.data(), bytes);
    wide.resize(static_cast<std::size_t>(units));
    return wide;
}

std::string NARROW_TEXT(std::wstring_view wide) {
    if (wide.empty()) return {};
    std::string utf8(wide.size() * 3, '\0');
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), utf8.data(),
                                          static_cast<int>(utf8.size()), nullptr, nullptr);
    utf8.resize(static_cast<std::size_t>(bytes));
    return utf8;
}

std::wstring FULL_NAME(std::wstring_view name) {
    const std::wstring given(name);
    if (name.starts_with(LONG_PREFIX)) return given;
    std::wstring full(32768, L'\0');  // the longest there is
    const DWORD length = GetFullPathNameW(given.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0 || length >= full.size()) return given;
    full.resize(length);
    return full;
}

std::wstring SYSTEM_NAME(std::string_view name) {
    std::wstring wide = WIDE_TEXT(name);
    if (wide.empty() || wide.starts_with(LONG_PREFIX)) return wide;
    const std::wstring full = FULL_NAME(wide);
    if (full.size() < LONGEST_PLAIN_NAME) return wide;
    if (full.starts_with(L"\\\\")) return std::wstring(LONG_SERVER_PREFIX) + full.substr(2);
    return std::wstring(LONG_PREFIX) + full;
}
