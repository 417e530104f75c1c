#include "platform/terminal.h"

#include <cstdio>

#ifdef _WIN32
#include "platform/wide_text.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#endif

namespace {

void writeBytes(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

bool readBytes(std::string& line, std::size_t longest) {
    line.clear();
    int c = std::getchar();
    if (c == EOF) return false;
    for (; c != EOF && c != '\n'; c = std::getchar())
        if (line.size() < longest) line.push_back(static_cast<char>(c));
    return true;
}

}  // namespace

#ifdef _WIN32

namespace {

/// The console's own calls take every letter, whatever its code page is, which therefore need not be changed.
bool readConsole(std::string& line, std::size_t longest) {
    std::wstring typed;
    wchar_t block[256];
    while (typed.empty() || typed.back() != L'\n') {
        DWORD units = 0;
        if (ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), block, 256, &units, nullptr) == 0 || units == 0) break;
        if (typed.size() > longest) typed.resize(longest);
        typed.append(block, units);
    }
    constexpr wchar_t CONTROL_Z = L'\x1A';
    if (typed.empty() || typed.front() == CONTROL_Z) return false;
    while (!typed.empty() && (typed.back() == L'\n' || typed.back() == L'\r')) typed.pop_back();
    line = NARROW_TEXT(typed);
    return true;
}

bool isUtf8(std::string_view text) {
    return text.empty() || MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(),
                                               static_cast<int>(text.size()), nullptr, 0) != 0;
}

std::string fromCodePage(std::string_view text) {
    const UINT page = GetConsoleCP() != 0 ? GetConsoleCP() : GetOEMCP();
    const int bytes = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int units = MultiByteToWideChar(page, 0, text.data(), bytes, wide.data(), bytes);
    return NARROW_TEXT(std::wstring_view(wide).substr(0, static_cast<std::size_t>(units)));
}

}  // namespace

std::vector<std::string> PROGRAM_ARGUMENTS(int argc, const char* const argv[]) {
    int count = 0;
    wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
    if (wide == nullptr) return {argv, argv + argc};
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i) arguments.push_back(NARROW_TEXT(wide[i]));
    LocalFree(wide);
    return arguments;
}

void WRITE_OUTPUT(std::string_view text) {
    if (!OUTPUT_IS_TERMINAL()) return writeBytes(text);
    constexpr std::size_t MOST_AT_ONCE = 8000;  // consoles of older systems refuse 64 KiB
    const std::wstring wide = WIDE_TEXT(text);
    for (std::size_t at = 0; at < wide.size(); at += MOST_AT_ONCE) {
        const auto count = static_cast<DWORD>(std::min(MOST_AT_ONCE, wide.size() - at));
        DWORD written = 0;
        WriteConsoleW(GetStdHandle(STD_OUTPUT_HANDLE), wide.data() + at, count, &written, nullptr);
    }
}

bool READ_INPUT_LINE(std::string& line, std::size_t longest) {
    if (INPUT_IS_TERMINAL()) return readConsole(line, longest);
    if (!readBytes(line, longest)) return false;
    if (!isUtf8(line)) line = fromCodePage(line);
    return true;
}

#else

std::vector<std::string> PROGRAM_ARGUMENTS(int argc, const char* const argv[]) { return {argv, argv + argc}; }
void WRITE_OUTPUT(std::string_view text) { writeBytes(text); }
bool READ_INPUT_LINE(std::string& line, std::size_t longest) { return readBytes(line, longest); }

#endif
