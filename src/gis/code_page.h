// Text on disk is code page 1252 ("WindowsLatin1"), text in the program UTF-8.
// Layout: the Unicode consortium's table of Windows code page 1252; its five unused bytes stand for the control
// characters of that number.
#pragma once

#include <string>
#include <string_view>

/// True for text that is the same in both.
bool IS_ASCII(std::string_view text);
/// True for text that is well-formed UTF-8, as all ASCII text is.
bool IS_UTF8(std::string_view text);
/// Appends the text in code page 1252. A character that the page lacks becomes "?", and the result is false.
/// Bytes that are no UTF-8 are taken to be in code page 1252 already.
bool ADD_AS_CODE_PAGE(std::string& out, std::string_view utf8);
/// Appends the text in UTF-8.
void ADD_AS_UTF8(std::string& out, std::string_view codePage);
