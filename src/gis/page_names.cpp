// The names and numbers by which GIS files tell their code page.
#include "gis/code_page.h"
#include "text_utils/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace {

constexpr int ISO_8859 = 28590;  ///< with the number of the part added

struct PageName {
    std::string_view name;
    int page;
};
/// Names that do not hold the number of their page.
constexpr PageName NAMES[] = {
    {"UTF-8", PAGE_UTF_8},
    {"UTF8", PAGE_UTF_8},
    {"WindowsLatin1", PAGE_LATIN_1},
    {"WindowsLatin2", 1250},
    {"WindowsCyrillic", 1251},
    {"WindowsGreek", 1253},
    {"WindowsTurkish", 1254},
    {"WindowsHebrew", 1255},
    {"WindowsArabic", 1256},
    {"WindowsBalticRim", 1257},
    {"WindowsVietnamese", 1258},
    {"WindowsThai", 874},
    {"WindowsJapanese", 932},
    {"WindowsSimpChinese", 936},
    {"WindowsKorean", 949},
    {"WindowsTradChinese", 950},
    {"Big5", 950},
    {"GBK", 936},
    {"Shift_JIS", 932},
    {"MacRoman", 10000},
};

/// Language bytes of .dbf files, as dBASE, FoxPro and GIS programs use them.
struct Language {
    std::uint8_t byte;
    std::uint16_t page;
};
constexpr Language LANGUAGES[] = {
    {0x01, 437},  {0x02, 850},  {0x03, 1252}, {0x04, 10000}, {0x08, 865},  {0x09, 437},  {0x0A, 850},  {0x0B, 437},
    {0x0D, 437},  {0x0E, 850},  {0x0F, 437},  {0x10, 850},   {0x11, 437},  {0x12, 850},  {0x13, 932},  {0x14, 850},
    {0x15, 437},  {0x16, 850},  {0x17, 865},  {0x18, 437},   {0x19, 437},  {0x1A, 850},  {0x1B, 437},  {0x1C, 863},
    {0x1D, 850},  {0x1F, 852},  {0x22, 852},  {0x23, 852},   {0x24, 860},  {0x25, 850},  {0x26, 866},  {0x37, 850},
    {0x40, 852},  {0x4D, 936},  {0x4E, 949},  {0x4F, 950},   {0x50, 874},  {0x57, 1252}, {0x58, 1252}, {0x59, 1252},
    {0x64, 852},  {0x65, 866},  {0x66, 865},  {0x67, 861},   {0x6A, 737},  {0x6B, 857},  {0x78, 950},  {0x79, 949},
    {0x7A, 936},  {0x7B, 932},  {0x7C, 874},  {0x7D, 1255},  {0x7E, 1256}, {0xC8, 1250}, {0xC9, 1251}, {0xCA, 1254},
    {0xCB, 1253}, {0xCC, 1257},
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The number at the end of a name; 0 when there is none.
int numberAtEnd(std::string_view name) {
    std::size_t first = name.size();
    while (first > 0 && isDigit(name[first - 1])) --first;
    int number = 0;
    std::from_chars(name.data() + first, name.data() + name.size(), number);
    return number;
}

}  // namespace

int PAGE_NAMED(std::string_view name) {
    name = TRIMMED(name);
    for (const PageName& row : NAMES)
        if (ASAME(name, row.name)) return row.page;
    const int number = numberAtEnd(name);
    const std::size_t iso = name.find("8859");
    if (iso == std::string_view::npos) return number >= 437 ? number : PAGE_NOT_SAID;
    // "ISO-8859-2", "ISO8859_2", "ISO88592", "88592"
    std::string_view part = name.substr(iso + 4);
    while (!part.empty() && !isDigit(part[0])) part.remove_prefix(1);
    const int partNumber = numberAtEnd(part);
    if (partNumber == 1) return PAGE_LATIN_1;  // what calls itself so on Windows
    return partNumber >= 2 && partNumber <= 16 ? ISO_8859 + partNumber : PAGE_NOT_SAID;
}

int PAGE_OF_LANGUAGE(unsigned char language) {
    const auto found = std::find_if(std::begin(LANGUAGES), std::end(LANGUAGES),
                                    [language](const Language& row) { return row.byte == language; });
    return found == std::end(LANGUAGES) ? PAGE_NOT_SAID : found->page;
}
