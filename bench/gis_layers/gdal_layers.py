#!/usr/bin/python3
"""Times GDAL writing and reading the layers of bench_gis_layers: the layer is copied into GDAL's memory driver first, then translated to
the file by GDAL's own C++ loop (VectorTranslate, the work of ogr2ogr), so that no source is read meanwhile.
    gdal_layers.py <layer.shp or layer.mif> <output folder>
"""
import os
import sys
import time

from osgeo import gdal

gdal.UseExceptions()
name, folder = sys.argv[1:]
start = time.time()
source = gdal.VectorTranslate("", name, format="Memory")
reading = time.time() - start
count = source.GetLayer(0).GetFeatureCount()
driver = "ESRI Shapefile" if name.endswith(".shp") else "MapInfo File"
start = time.time()
written = gdal.VectorTranslate(os.path.join(folder, "gdal_" + os.path.basename(name)), source, format=driver)
written = None  # closing completes the files
writing = time.time() - start
print(f"GDAL {gdal.__version__} {os.path.basename(name)}: {count} objects, write {writing:.3f} s, read {reading:.3f} s")
