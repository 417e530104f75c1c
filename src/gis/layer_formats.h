// The formats of layers as a table. A format is its own files and a row.
#pragma once

#include "gis/layer_table.h"

#include <string_view>

/// The format of a layer, or of a table alone, with this extension (".mif"); nullptr where there is none.
const LayerFormat* LAYER_FORMAT(std::string_view extension, GisTable wanted);
