// The header of a .dbf file with its field descriptors.
// Layout: dBASE III table file: 32 bytes, 32 for each field, the byte 13; language byte 29 as GIS packages use it
// (0x57: code page 1252).
#pragma once

#include "gis/code_page.h"
#include "gis/dbf_fields.h"

#include <cstdint>
#include <string>
#include <vector>

constexpr char DBF_NOT_DELETED = ' ', DBF_DELETED = '*';
constexpr char DBF_END_OF_FILE = 0x1A;

/// A table as its header describes it.
struct DbfTable {
    std::vector<DbfField> fields;
    std::int32_t headerBytes = 0;  ///< the first record starts here
    std::int32_t recordBytes = 0;  ///< deletion flag included; never less than the fields need
    /// deleted ones included; on reading what the header says, which may be more than the file holds
    std::int64_t records = 0;
};

/// The table that holds these fields, which have been placed; no records yet.
DbfTable DBF_TABLE_OF(std::vector<DbfField> fields);
/// The header as bytes, dated today. Names are written over all 11 bytes, in code page 1252.
std::string DBF_HEADER(const DbfTable& table);

/// The code page that the language byte of an open input means; PAGE_NOT_SAID when the file ends before it. Stands at
/// the start of the file then.
int READ_DBF_PAGE(int file);
/// Reads header and descriptors of an open input from its start and stands behind them, wherever the first record is.
/// Names come back in UTF-8. Stops the run, naming the file: ERROR 0401 beyond 128 fields, 0402 for a width of 0, 0319
/// without a field, 0404 when the file ends early, 0403 when it cannot be read or its lengths contradict its fields.
DbfTable READ_DBF_HEADER(int file, const TextDecoder& text);
