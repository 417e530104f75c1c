// Windows only: UTF-8, which the program uses throughout, to and from the UTF-16 of the system's calls.
#pragma once

#include <string>
#include <string_view>

/// What is no UTF-8 becomes U+FFFD.
std::wstring WIDE_TEXT(std::string_view utf8);
/// A half of a surrogate pair that stands alone becomes U+FFFD.
std::string NARROW_TEXT(std::wstring_view wide);

/// A file's name as the system's calls take it. One that is too long for them as it is becomes absolute, with the
/// prefix that lifts the limit of 260 characters.
std::wstring SYSTEM_NAME(std::string_view name);
/// The absolute form of a name, without "." and "..", and without that prefix.
std::wstring FULL_NAME(std::wstring_view name);
