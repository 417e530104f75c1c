// Texts to texts, for the C interface.
#include "routines/texts.h"
#include "text_utils/text.h"

#include "vorant_routines.h"

#include <stdexcept>

using Length = const std::int32_t*;

namespace {

std::string replaced(std::string_view text, std::string_view from, std::string_view to, bool all) {
    std::string out;
    while (!from.empty()) {
        const std::size_t found = text.find(from);
        if (found == std::string_view::npos) break;
        out.append(text.substr(0, found)).append(to);
        text.remove_prefix(found + from.size());
        if (out.size() > std::numeric_limits<std::int32_t>::max()) throw std::length_error("REPLACE");
        if (!all) break;
    }
    return out.append(text);
}

template <typename Unwanted>
std::string without(std::string_view text, Unwanted&& unwanted) {
    std::string out(text);
    std::erase_if(out, unwanted);
    return out;
}

bool alphanumeric(char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

std::int32_t UPPERCASE(const char* text, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return UPPERCASE(textAt(text, length)); });
}
std::int32_t LOWERCASE(const char* text, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return LOWERCASE(textAt(text, length)); });
}
std::int32_t TRIMF(const char* text, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return std::string(TRIMF(textAt(text, length))); });
}
std::int32_t REMOVEQUOTES(const char* text, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return REMOVEQUOTES(textAt(text, length)); });
}
std::int32_t REMOVESPACES(const char* text, Length length, char* out, Length outLength) {
    return result(out, outLength, [&] { return without(textAt(text, length), [](char c) { return c == ' '; }); });
}
std::int32_t ALPHANUMERICONLY(const char* text, Length length, char* out, Length outLength) {
    return result(out, outLength,
                  [&] { return without(textAt(text, length), [](char c) { return !alphanumeric(c); }); });
}
std::int32_t REPLACE(const char* text, Length length, const char* from, Length fromLength, const char* to,
                     Length toLength, char* out, Length outLength) {
    return result(out, outLength, [&] {
        return replaced(textAt(text, length), textAt(from, fromLength), textAt(to, toLength), false);
    });
}
std::int32_t REPLACEALL(const char* text, Length length, const char* from, Length fromLength, const char* to,
                        Length toLength, char* out, Length outLength) {
    return result(out, outLength,
                  [&] { return replaced(textAt(text, length), textAt(from, fromLength), textAt(to, toLength), true); });
}
