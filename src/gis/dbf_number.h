// A number's text put into the number field of a .dbf record.
#pragma once

#include <cstdint>
#include <string_view>

/// Writes the number right-aligned into the field's `width` bytes at `at`, which hold blanks, with exactly `decimals`
/// decimals. What has no more decimals than that is copied and filled with zeros, so that no digit changes; the rest is
/// rounded. A blank text leaves blanks. 12.5 in width 8, 2 decimals -> "   12.50". False, and nothing written, when the
/// text is no finite number or does not fit.
bool PUT_DBF_NUMBER(char* at, std::string_view text, std::int32_t width, std::int32_t decimals);
