// Comparing and cleaning text. Trailing blanks never count, and letter case is that of ASCII only, whatever the locale.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

std::string UPPERCASE(std::string_view text);
std::string LOWERCASE(std::string_view text);
/// Without leading and trailing blanks and tabs.
std::string_view TRIMMED(std::string_view text);
/// Without trailing blanks and tabs.
std::string_view TRIMF(std::string_view text);
/// Without the byte-order mark that some programs put before UTF-8: it is no text.
std::string_view WITHOUT_MARK(std::string_view text);
/// Other characters of ASCII than letters and digits become "_": "ME%" -> "ME_". For names that others read.
std::string WITH_UNDERSCORES(std::string_view text);
/// Without its double quotes, wherever they stand.
std::string REMOVEQUOTES(std::string_view text);

/// True when a and b are equal without quotes, leading and trailing blanks and letter case.
bool ASAME(std::string_view a, std::string_view b);
/// ASAME with letter case.
bool ASAMECS(std::string_view a, std::string_view b);
/// True when `text` begins with `keyword`, letter case ignored.
bool BEGINS_WITH(std::string_view text, std::string_view keyword);
/// True when the trimmed b occurs anywhere in a, letter case ignored. A blank b occurs everywhere.
bool FLAGEXISTS(std::string_view a, std::string_view b);
/// FLAGEXISTS; `rest` becomes the text of a behind the first match, blank when there is none.
bool FLAGEXISTSRET(std::string_view a, std::string_view b, std::string& rest);

/// Cuts a trailing comment that begins with "#" or "!" and trims the left. True when the line holds nothing but a
/// comment or blanks. "  ! note" -> true; "12 # note" -> false and the line becomes "12 ".
bool COMMENTLINE(std::string& line);

/// The first `width` characters: where a text enters a record of fixed width.
std::string FITTED(std::string_view text, std::size_t width);

// Widths of the program's text fields, in characters.
constexpr std::size_t FILE_NAME_WIDTH = 1000;
constexpr std::size_t TYPE_NAME_WIDTH = 40;
constexpr std::size_t MESH_PART_WIDTH = 100;
