// Where an existing raster lies, for a grid that is to line up with it.
#pragma once

#include "gdal_outputs/gdal_table.h"

/// As rasterPlace of the table.
void READ_RASTER_PLACE(const char* path, GdalRasterPlace& place);
