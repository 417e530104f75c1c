// The columns of a .dbf table and the attribute types that they stand for.
// Layout: dBASE III table file, 32-byte field descriptors.
#pragma once

#include "gis/layers.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

constexpr std::size_t MOST_DBF_FIELDS = 128;
constexpr std::int32_t MOST_DBF_WIDTH = 255;

struct DbfField {
    std::string name;           ///< UTF-8
    char type = 'C';            ///< written: C text, N number, D date. Read also: F number, L logical, M memo number
    std::int32_t width = 0;     ///< bytes, 1 to 255
    std::int32_t decimals = 0;  ///< of a number
    std::size_t offset = 0;     ///< of its first byte in the record; the deletion flag is at 0

    bool isNumber() const { return type == 'N' || type == 'F'; }
};

/// Sets the fields' offsets and returns the record length, flag included.
std::int64_t PLACE_FIELDS(std::vector<DbfField>& fields);

/// The fields of an output, names cleaned, cut and unique. Char(w) -> C w; Logical -> C 1, as a letter of text; Float
/// -> N 16.5; Integer -> N 8; SmallInt -> N 6; LargeInt -> N 20; Decimal(w,d) -> N w.d; Date -> D; Time, DateTime -> C
/// 9, C 17. ERROR 0411 beyond 128 attributes, 0319 without any, 0412 for a
/// width outside 1 to 255; another type word is a check. Each stops the run.
std::vector<DbfField> DBF_FIELDS_OF(const std::vector<GisAttribute>& attributes);

/// The attribute type of a field that was read: the way back, and Decimal(w,d) for every other number.
std::string ATTRIBUTE_TYPE_OF(const DbfField& field);
