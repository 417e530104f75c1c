#include "platform/code_page.h"

#ifdef _WIN32
#include <windows.h>
#include <algorithm>
#else
#include <iconv.h>
#include <array>
#include <cerrno>
#endif

#ifdef _WIN32

CodePage::CodePage(int page) : page_(page) {
    if (IsValidCodePage(static_cast<UINT>(page)) != 0) converter_ = this;
}
CodePage::~CodePage() = default;

namespace {
/// What the system makes of a byte that a page does not use: a control character in pages that have no such, or a
/// letter of its own.
bool isUnused(wchar_t unit, int page) {
    constexpr int FIRST_ISO_PAGE = 28591;  // these have them
    return (0xF8C0 <= unit && unit <= 0xF8FF) || (0x80 <= unit && unit < 0xA0 && page < FIRST_ISO_PAGE);
}
}  // namespace

void CodePage::addAsUtf8(std::string& out, std::string_view text) const {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int units = MultiByteToWideChar(static_cast<UINT>(page_), 0, text.data(), length, wide.data(), length);
    std::replace_if(
        wide.begin(), wide.end(), [&](wchar_t unit) { return isUnused(unit, page_); }, L'\xFFFD');
    std::string utf8(static_cast<std::size_t>(units) * 3, '\0');
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(), static_cast<int>(utf8.size()),
                                          nullptr, nullptr);
    out.append(utf8, 0, static_cast<std::size_t>(bytes));
}

#else

namespace {

constexpr int ISO_8859 = 28590;  ///< with the number of the part added

std::string nameOf(int page) {
    if (page > ISO_8859 && page <= ISO_8859 + 16) return "ISO-8859-" + std::to_string(page - ISO_8859);
    return page == 10000 ? "MACINTOSH" : "CP" + std::to_string(page);
}

const iconv_t NONE = reinterpret_cast<iconv_t>(-1);

}  // namespace

CodePage::CodePage(int page) : page_(page) {
    const iconv_t opened = iconv_open("UTF-8", nameOf(page_).c_str());
    if (opened != NONE) converter_ = opened;
}
CodePage::~CodePage() {
    if (converter_ != nullptr) iconv_close(converter_);
}

void CodePage::addAsUtf8(std::string& out, std::string_view text) const {
    iconv(converter_, nullptr, nullptr, nullptr, nullptr);  // back to the first state of pages that have several
    std::array<char, 256> block;
    char* from = const_cast<char*>(text.data());  // iconv asks for it, and reads only
    std::size_t left = text.size();
    while (left > 0) {
        char* to = block.data();
        std::size_t room = block.size();
        const std::size_t done = iconv(converter_, &from, &left, &to, &room);
        const int reason = done == static_cast<std::size_t>(-1) ? errno : 0;
        out.append(block.data(), block.size() - room);
        if (reason == 0 || reason == E2BIG) continue;
        out += "\xEF\xBF\xBD";
        ++from;
        --left;
    }
}

#endif
