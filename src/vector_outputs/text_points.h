// The text output (-txt): the points of a layer with their coordinates as columns, which any tool imports.
#pragma once

#include "vector_outputs/item_source.h"
#include "vector_outputs/record_columns.h"

#include <string>
#include <vector>

/// Writes `name`: a header row, then a row per object, comma separated: the number, X, Y, and the other columns of the
/// record. coordinateDecimals: of COORDINATE_DECIMALS. The number of rows is reported; a file that cannot be written
/// completely stops the run, naming it. written: as in LayerJob.
void WRITE_TEXT_POINTS(const std::string& name, const ItemSource& source, const RecordColumns& record,
                       int coordinateDecimals, std::vector<float>* written);
