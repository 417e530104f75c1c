"""Reads the outputs of a job back with GDAL's tools: what is in them, and whether they can be read at all."""
import json
import os
import re
import subprocess

RASTERS = (".tif", ".asc", ".flt")
LAYERS = (".shp", ".mif", ".gpkg", ".fgb")
TABLES = (".csv", ".txt")
# written beside the files above and looked at with them
COMPANIONS = (".prj", ".hdr", ".shx", ".dbf", ".cpg", ".mid", ".xml", ".qix")
MAP_WIDTH = 240  # pixels
# MB of blocks that GDAL keeps, its own choice being a share of all the memory of a node; the user's own holds
BLOCKS = {"GDAL_CACHEMAX": "64"}


class Unreadable(Exception):
    pass


def tool(*command):
    try:
        ended = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                               env={**BLOCKS, **os.environ})
    except OSError as failure:
        raise Unreadable("%s: %s" % (command[0], failure.strerror))
    if ended.returncode != 0:
        said = ended.stderr.decode("utf-8", "replace").strip().splitlines()
        raise Unreadable("%s cannot read %s: %s" % (command[0], command[-1], said[-1] if said else "no reason given"))
    return ended.stdout.decode("utf-8", "replace")


def raster(path):
    """Cells and how many of them are valid, lowest and highest value, of all bands."""
    # through a virtual raster, which has the statistics of formats that keep them in a file beside the output
    facts = json.loads(tool("gdalinfo", "--config", "GDAL_PAM_ENABLED", "NO", "-json", "-stats", "vrt://" + path))
    columns, rows = facts["size"]
    if not facts["bands"]:
        raise Unreadable("%s has no bands" % path)
    cells, valid, values = 0, 0.0, []
    for band in facts["bands"]:
        numbers = band.get("metadata", {}).get("", {})
        cells += columns * rows
        if "STATISTICS_MINIMUM" in numbers:  # none where nothing is valid
            valid += columns * rows * float(numbers.get("STATISTICS_VALID_PERCENT", 100)) / 100
            values += [float(numbers["STATISTICS_MINIMUM"]), float(numbers["STATISTICS_MAXIMUM"])]
    return {"cells": cells, "valid": round(valid), "min": min(values, default=None), "max": max(values, default=None)}


def layer(path):
    counts = re.findall(r"^Feature Count: (\d+)$", tool("ogrinfo", "-ro", "-so", "-al", path), re.MULTILINE)
    if not counts:
        raise Unreadable("ogrinfo finds no layer in %s" % path)
    return {"objects": sum(map(int, counts))}


def table(path):
    with open(path, "rb") as handle:
        return {"rows": max(sum(1 for _ in handle) - 1, 0)}


def checked(path):
    extension = os.path.splitext(path)[1].lower()
    facts = {"file": os.path.basename(path), "bytes": os.path.getsize(path)}
    if facts["bytes"] == 0:
        raise Unreadable("%s is empty" % path)
    for extensions, look in ((RASTERS, raster), (LAYERS, layer), (TABLES, table)):
        if extension in extensions:
            facts.update(look(path))
    return facts


def files_in(folder):
    return {os.path.join(where, name) for where, _, files in os.walk(folder) for name in files}


def outputs_in(folder):
    return sorted(name for name in files_in(folder)
                  if not os.path.basename(name).startswith(".") and not name.lower().endswith(COMPANIONS))


def check_outputs(folder, picture):
    """The facts of each output; draws the picture. What the tools leave beside the outputs goes again."""
    before = files_in(folder)
    try:
        facts = [checked(path) for path in outputs_in(folder)]
        draw_map(folder, picture)
    finally:
        for path in files_in(folder) - before:
            os.remove(path)
    return facts


def time_in(path):
    """Of "x_t0100.50_g2.tif" 100.5, which names alone put behind 1000; -1 where there is none."""
    times = re.findall(r"_t(\d+(?:\.\d+)?)(?=[_.])", os.path.basename(path))
    return float(times[-1]) if times else -1.0


def draw_map(folder, picture):
    """A small picture of the maximums, else of the last time; none without rasters or values."""
    rasters = sorted((path for path in outputs_in(folder) if path.lower().endswith(RASTERS)), key=time_in)
    rasters = [path for path in rasters if "_class" not in os.path.basename(path)] or rasters
    shown = [path for path in rasters if "_Max" in os.path.basename(path)][-1:] or rasters[-1:]
    facts = raster(shown[0]) if shown else {"min": None}
    if facts["min"] is None:
        return
    os.makedirs(os.path.dirname(picture), exist_ok=True)
    highest = facts["max"] if facts["max"] > facts["min"] else facts["min"] + 1
    tool("gdal_translate", "-q", "--config", "GDAL_PAM_ENABLED", "NO", "-of", "PNG", "-b", "1", "-ot", "Byte",
         "-outsize", str(MAP_WIDTH), "0", "-scale", repr(facts["min"]), repr(highest), "1", "255", "-a_nodata", "0",
         shown[0], picture)
