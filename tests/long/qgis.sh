#!/usr/bin/env bash
# Opens a GeoTIFF and a GeoPackage in QGIS (Debian: python3-qgis): coordinate system, values, counts and the field of its time slider.
python=/usr/bin/python3  # QGIS is there for the system's own
"$python" -c "import qgis.core" 2>/dev/null || { echo "No python3-qgis: left out."; exit 77; }
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$root/build/release
export PROGRAM=${PROGRAM:-$build/VORANT_to_GIS} MAKER=${MAKER:-$build/examples/make_parabolic_basin} SCRATCH=${SCRATCH:-$build/qgis}
[ -f "$(dirname "$PROGRAM")/libvorant_gdal.so" ] || { echo "No GDAL module: left out."; exit 77; }
. "$root/tests/end_to_end/common.sh"

make_model -times 3 -cells 10 -side 8000 -origin 500000,6200000 basin
run 0 -b -asc -grid100 -t0.1 basin_h.dat
keep basin_h_t000.10_g100.asc
run 0 -b -gpkg -sgs -grid400 -tAll -epoch2020-12-31T23:54 -crs EPSG:28355 basin_V.dat
keep basin_V.gpkg
row 0 "basin_h_t000.10_g100.tif" -b -gtif -grid100 -t0.1 -crs EPSG:28355 basin_h.dat
cat >../look.py <<'END'
import sys
from qgis.core import QgsApplication, QgsPointXY, QgsRasterLayer, QgsVectorLayer

grid, text, package = sys.argv[1:]
application = QgsApplication([], False)
application.initQgis()
raster, ascii_grid = QgsRasterLayer(grid), QgsRasterLayer(text)
places = [QgsPointXY(503950 + 100 * i, 6204050 - 100 * i) for i in range(3)]
shown = [raster.dataProvider().sample(place, 1) for place in places]
expected = [ascii_grid.dataProvider().sample(place, 1) for place in places]
print("raster", raster.isValid(), raster.crs().authid(), raster.width(), raster.height(), raster.dataProvider().sourceNoDataValue(1),
      all(found and abs(a - b) < 0.0006 for (a, found), (b, _) in zip(shown, expected)))
layer = QgsVectorLayer(package)
times = {}
for feature in layer.getFeatures():
    stamp = feature["DateTime"]
    key = stamp.toString("yyyy-MM-ddTHH:mm:ss") if stamp else "none"
    times[key] = times.get(key, 0) + (feature["Magnitude"] > 0) * feature.geometry().isGeosValid()
field = layer.fields().field("DateTime")
print("layer", layer.isValid(), layer.crs().authid(), field.typeName(), field.isDateOrTime(), layer.hasSpatialIndex() == 2)
print("times", *sorted(times))
print("whole", layer.featureCount() == sum(times.values()), min(times.values()) > 50)
END
QT_QPA_PLATFORM=offscreen "$python" ../look.py basin_h_t000.10_g100.tif ../kept/basin_h_t000.10_g100.asc ../kept/basin_V.gpkg >../looked.txt 2>../console.txt
check "what QGIS finds" diff ../looked.txt - <<'END'
raster True EPSG:28355 81 81 -99999.0 True
layer True EPSG:28355 DateTime True True
times 2020-12-31T23:54:00 2021-01-01T00:00:00 2021-01-01T00:06:00 none
whole True True
END
finish
