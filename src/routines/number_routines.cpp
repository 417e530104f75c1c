// Numbers to texts, for the C interface.
#include "routines/texts.h"
#include "text_utils/numbers.h"

#include "vorant_routines.h"

namespace {

int allowedDecimals(const std::int32_t* decimals) {
    constexpr std::int32_t MOST_DECIMALS = 20;
    return std::clamp(at(decimals), 0, MOST_DECIMALS);
}

template <typename Routine>
std::int32_t number(char* text, const std::int32_t* length, Routine&& routine) {
    return result(text, length, routine, TooLong::Starred);
}

}  // namespace

std::int32_t AINTEGER(const std::int32_t* value, char* text, const std::int32_t* length) {
    return number(text, length, [&] { return AINTEGER(at(value)); });
}
std::int32_t AINTEGER8(const std::int64_t* value, char* text, const std::int32_t* length) {
    return number(text, length, [&] { return AINTEGER8(at(value)); });
}
std::int32_t AREAL(const float* value, char* text, const std::int32_t* length) {
    return number(text, length, [&] { return AREAL(at(value)); });
}
std::int32_t AREAL8(const double* value, char* text, const std::int32_t* length) {
    return number(text, length, [&] { return AREAL8(at(value)); });
}
std::int32_t AREALD(const float* value, const std::int32_t* decimals, char* text, const std::int32_t* length) {
    return number(text, length, [&] { return AREALD(at(value), allowedDecimals(decimals)); });
}
std::int32_t AREALD8(const double* value, const std::int32_t* decimals, char* text, const std::int32_t* length) {
    return number(text, length, [&] { return AREALD8(at(value), allowedDecimals(decimals)); });
}
