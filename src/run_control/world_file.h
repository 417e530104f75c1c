// World files: the placing of a screen image, taken from the control points of its MapInfo .tab file (-wld).
#pragma once

/// Reads the input file's control points "(X,Y) (column,row)" behind Type "RASTER" and writes <input>.wld beside it.
/// Pixel (0,0) is the upper-left corner of the image. Two points give a north-up image; three or more an affine one by
/// least squares. Six lines: A, D, B, E (map units per column and per row: x by column, y by column, x by row, y by
/// row), then x and y of the centre of the upper-left pixel (the public ESRI world file layout). True: "Created .wld
/// file from .tab file". False: fewer than two points, points on a line, or a residual above one pixel; the "Problems"
/// line and the reason have been said. A file that is no raster table stops the run.
bool MAKE_WORLD_FILE();
