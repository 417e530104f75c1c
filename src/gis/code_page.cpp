#include "gis/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

/// Unicode numbers of the bytes 0x80 to 0x9F; all other bytes are their own number.
constexpr std::array<std::uint16_t, 32> HIGH_HALF_START = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned byteAt(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

/// The character at the front of `text` and its length in bytes; length 0 when these bytes are no UTF-8.
struct Character {
    std::uint32_t number = 0;
    std::size_t length = 0;
};
Character decoded(std::string_view text) {
    const unsigned lead = byteAt(text, 0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length < 2) return {lead, length};
    if (text.size() < length) return {};
    std::uint32_t number = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(text, i) & 0xC0U) != 0x80U) return {};
        number = number << 6U | (byteAt(text, i) & 0x3FU);
    }
    return {number, length};
}

/// The byte of a character, or -1 when the page lacks it.
int byteOf(std::uint32_t number) {
    if (number < 0x80 || (number > 0x9F && number < 0x100)) return static_cast<int>(number);
    const auto found = std::find(HIGH_HALF_START.begin(), HIGH_HALF_START.end(), number);
    return found == HIGH_HALF_START.end() ? -1 : 0x80 + static_cast<int>(found - HIGH_HALF_START.begin());
}

}  // namespace

bool IS_ASCII(std::string_view text) {
    unsigned any = 0;
    for (const char c : text) any |= static_cast<unsigned char>(c);
    return any < 0x80;
}

bool IS_UTF8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = decoded(text).length;
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

bool ADD_AS_CODE_PAGE(std::string& out, std::string_view utf8) {
    bool whole = true;
    while (!utf8.empty()) {
        const Character c = decoded(utf8);
        const int byte = c.length == 0 ? static_cast<int>(byteAt(utf8, 0)) : byteOf(c.number);
        whole = whole && byte >= 0;
        out += byte < 0 ? '?' : static_cast<char>(byte);
        utf8.remove_prefix(std::max<std::size_t>(c.length, 1));
    }
    return whole;
}

void ADD_AS_UTF8(std::string& out, std::string_view codePage) {
    for (std::size_t i = 0; i < codePage.size(); ++i) {
        const unsigned byte = byteAt(codePage, i);
        const std::uint32_t number = byte >= 0x80 && byte <= 0x9F ? HIGH_HALF_START[byte - 0x80] : byte;
        if (number < 0x80) {
            out += static_cast<char>(number);
        } else if (number < 0x800) {
            out += {static_cast<char>(0xC0U | number >> 6U), static_cast<char>(0x80U | (number & 0x3FU))};
        } else {
            out += {static_cast<char>(0xE0U | number >> 12U), static_cast<char>(0x80U | (number >> 6U & 0x3FU)),
                    static_cast<char>(0x80U | (number & 0x3FU))};
        }
    }
}

bool TextDecoder::choose(int page) {
    page_ = page;
    converter_.reset();
    if (page == PAGE_NOT_SAID || page == PAGE_LATIN_1 || page == PAGE_UTF_8) return true;
    converter_.emplace(page);
    if (converter_->known()) return true;
    converter_.reset();
    page_ = PAGE_NOT_SAID;
    return false;
}

void TextDecoder::add(std::string& out, std::string_view text) const {
    if (IS_ASCII(text) || (!converter_ && page_ != PAGE_LATIN_1 && IS_UTF8(text))) out += text;
    else if (converter_) converter_->addAsUtf8(out, text);
    else ADD_AS_UTF8(out, text);
}
