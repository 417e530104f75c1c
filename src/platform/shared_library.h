// Libraries that are loaded while the program runs, and where the program itself stands.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#ifdef _WIN32
constexpr bool ON_WINDOWS = true;
#else
constexpr bool ON_WINDOWS = false;
#endif

/// The folder of the running program's file; blank when the system does not tell.
std::filesystem::path PROGRAM_FOLDER();
/// "x" -> "libx.so", on Windows "x.dll".
std::string SHARED_LIBRARY_NAME(std::string_view name);
/// Loads a library for the rest of the process; the same one again when it is loaded already. Null with the system's
/// reason when that fails.
void* LOAD_SHARED_LIBRARY(const std::filesystem::path& file, std::string& reason);
/// The address of what a library exports by that name; null when there is no such name.
void* SHARED_LIBRARY_SYMBOL(void* library, const char* name);
