// The .prj file of a shapefile set that is read.
#pragma once

#include <string>

/// When the run has a projection text (gisProjection), compares it with that of the input <base>.prj. ERROR 0420 when
/// there is none, WARNING 0420 when it holds no PROJCS, ERROR 0305 when they differ; with
/// GisProjection::differenceIsWarning all are WARNINGs.
void CHECK_PRJ(const std::string& base);
