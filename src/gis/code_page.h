// Text in the program is UTF-8. On disk it is written in code page 1252 ("WindowsLatin1") and read in whatever page a
// file says.
// Layout: the Unicode consortium's table of Windows code page 1252; its five unused bytes stand for the control
// characters of that number.
#pragma once

#include "platform/code_page.h"

#include <optional>
#include <string>
#include <string_view>

constexpr int PAGE_NOT_SAID = 0, PAGE_LATIN_1 = 1252, PAGE_UTF_8 = 65001;

/// True for text that is the same in all of them.
bool IS_ASCII(std::string_view text);
/// True for text that is well-formed UTF-8, as all ASCII text is.
bool IS_UTF8(std::string_view text);
/// Appends the text in code page 1252. A character that the page lacks becomes "?", and the result is false.
/// Bytes that are no UTF-8 are taken to be in code page 1252 already.
bool ADD_AS_CODE_PAGE(std::string& out, std::string_view utf8);
/// Appends text of code page 1252 in UTF-8.
void ADD_AS_UTF8(std::string& out, std::string_view codePage);

/// The page that a .cpg file or the Charset line of a .mif file names: "UTF-8", "1250", "ANSI 1251", "ISO-8859-2",
/// "WindowsLatin2", "CodePage437", ... PAGE_NOT_SAID for a name without a page, such as "Neutral".
int PAGE_NAMED(std::string_view name);
/// The page that the language byte of a .dbf file means: 0x57 -> 1252, 0xC8 -> 1250; PAGE_NOT_SAID for 0 and others.
int PAGE_OF_LANGUAGE(unsigned char language);

/// Turns the text of one input file into UTF-8.
class TextDecoder {
public:
    /// Takes a page for all text that follows. False when this system does not have it; the text is then taken as that
    /// of a file that does not say.
    bool choose(int page);
    int page() const { return page_; }
    /// Appends the text in UTF-8. Where the page is UTF-8 or not said, what is no UTF-8 is taken to be in page 1252.
    void add(std::string& out, std::string_view text) const;

private:
    int page_ = PAGE_NOT_SAID;
    std::optional<CodePage> converter_;  ///< for all pages but those two
};
