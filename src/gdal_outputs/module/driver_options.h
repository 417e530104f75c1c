// Options of GDAL's drivers: those of a run over the ones that are set here, and the check of what a user asks for.
#pragma once

#include "gdal_outputs/gdal_table.h"

#include <cpl_string.h>

#include <string>

/// The driver of that short name; fails when this GDAL lacks it.
void* DRIVER(const char* name);

/// `defaults` with the texts of `options` put over them.
CPLStringList OPTIONS_OVER(CPLStringList defaults, GdalTexts options);

/// Those of the options that the driver lists for its layers (layers: true) or for its files.
CPLStringList OPTIONS_FOR(const char* driver, GdalTexts options, bool layers);

/// Fails unless every option is "KEY=VALUE" with a key that the driver lists, for files or for layers, and a value that
/// fits it.
void CHECK_DRIVER_OPTIONS(const char* driver, GdalTexts options);
