#!/usr/bin/env python3
"""Random models through the converter, against a plain reference and against each other.

PROGRAM=<converter> differential.py                 the same few models on every machine
PROGRAM=<converter> differential.py --seconds 600   others every time
PROGRAM=<converter> differential.py --seed N        one model again
"""
import argparse
import functools
import math
import os
import pathlib
import random
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import traceback

from models import Dataset, Model
from reference import MISSING, Surface

FIRST_SEED, MODELS = 1, 12  # of a run that says nothing else
checks = 0
failures = []


def check(passed, *what):
    global checks
    checks += 1
    if not passed:
        failures.append(" ".join(map(str, what)))


def convert(*words):
    run = subprocess.run([os.environ["PROGRAM"], "-b", *map(str, words)], capture_output=True, text=True, errors="replace",
                         stdin=subprocess.DEVNULL, timeout=300)
    check(run.returncode == 0 and "Sanitizer" not in run.stdout + run.stderr, "status", run.returncode, "of", *words,
          run.stdout[-300:], run.stderr[-300:])


@functools.cache
def without_hdf5():
    return b"HDF5 none" in subprocess.run([os.environ["PROGRAM"], "-version"], capture_output=True).stdout


def read_asc(name):
    lines = pathlib.Path(name).read_text().split("\n")
    header = {key.lower(): float(value) for key, value in (line.split() for line in lines[:6])}
    return header, [[float(v) for v in line.split()] for line in lines[6:] if line.strip()]


def read_layer(name):
    """Columns, and per object the numbers of its shape and its values."""
    text = pathlib.Path(name + ".mif").read_text()
    columns = re.findall(r"^ +(\w+) +\w+(?:\(.*\))?\s*$", text.split("\nData")[0], re.M)
    points = [tuple(map(float, p)) for p in re.findall(r"^Point +(\S+) +(\S+)", text, re.M)]
    regions = [[tuple(map(float, line.split())) for line in ring.strip().split("\n")]
               for ring in re.findall(r"^Region +1\s+\d+\s((?:[ \t]*-?\d\S* \S+\s*\n)+)", text, re.M)]
    rows = [dict(zip(columns, line.replace('"', "").split(","))) for line in
            pathlib.Path(name + ".mid").read_text().splitlines()]
    return points or regions, rows


def read_csv(name):
    lines = pathlib.Path(name).read_text().splitlines()
    return [dict(zip(lines[0].split(","), line.split(","))) for line in lines[1:]]


def same(first, second):
    check(pathlib.Path(first).read_bytes() == pathlib.Path(second).read_bytes(), first, "and", second, "differ")


def extent(model):
    kept = {n for k, cell in enumerate(model.cells) if cell and k not in model.removed for n in cell}
    gone = {n for k in model.removed for n in model.cells[k]} - kept
    nodes = [node for n, node in enumerate(model.nodes) if node and n not in gone]
    return [f(node[axis] for node in nodes) for axis in (0, 1) for f in (min, max)]


def check_grid(what, model, name, surface, spacing, cells):
    """Every cell of a grid, at the centre that its header gives it."""
    header, rows = read_asc(name)
    west, east, south, north = extent(model)
    columns, high = int((east - west) / spacing + 1e-6), int((north - south) / spacing + 1e-6)
    more = 0 if cells else 1
    check((header["ncols"], header["nrows"]) == (columns + more, high + more), what, "counts", header, columns, high)
    check(abs(header["xllcorner"] - west) < 1e-3 and abs(header["yllcorner"] - south) < 1e-3, what, "corner", header)
    for r, row in enumerate(rows):
        y = south + (len(rows) - r - 0.5) * spacing
        for c, value in enumerate(row):
            x = west + (c + 0.5) * spacing
            check(surface.agrees(value, x, y, 6e-5), what, "row", r, "column", c, "holds", value, "not",
                  surface.at(x, y, 1e-6))
    return header, rows


def check_flt(asc, flt):
    header, rows = read_asc(asc)
    values = [v for row in rows for v in row]
    data = pathlib.Path(flt).read_bytes()
    check(len(data) == 4 * len(values) and all(abs(a - b) < 6e-5 for a, b in
          zip(values, struct.unpack("<%df" % len(values), data))), flt, "is not", asc)


def check_gridded(what, name, grids):
    """A gridded layer holds what the rasters of its columns hold, a point for every cell with a value."""
    header, _ = read_asc(next(iter(grids.values())))
    tables = {column: read_asc(grid)[1] for column, grid in grids.items()}
    expected = {}
    for column, rows in tables.items():
        for r, row in enumerate(rows):
            for c, value in enumerate(row):
                if value > MISSING:
                    expected.setdefault((len(rows) - r, c + 1), {})[column] = value
    points, rows = read_layer(name)
    found = {}
    for (x, y), row in zip(points, rows):
        r, c = map(int, re.match(r"R(\d+)C(\d+)", row["Grid_Ref"]).groups())
        found[r, c] = {column: float(row[column]) for column in tables}
        check(abs(x - header["xllcorner"] - (c - 0.5) * header["cellsize"]) < 2e-3 and
              abs(y - header["yllcorner"] - (r - 0.5) * header["cellsize"]) < 2e-3, what, row, "stands at", x, y)
    check(found.keys() == expected.keys(), what, "has other points than the raster", len(found), len(expected))
    for place in found.keys() & expected.keys():
        check(all(abs(found[place][k] - expected[place].get(k, 1e9)) < 1.1e-4 for k in tables), what, place,
              found[place], expected[place])


def layer(name, model, shapes):
    with open(name + ".mif", "w") as file:
        file.write('Version 300\nCharset "WindowsLatin1"\nDelimiter ","\nCoordSys NonEarth Units "m"\nColumns 1\n'
                   "  Name Char(20)\nData\n\n")
        for shape in shapes:
            file.write("Point %.3f %.3f\n" % shape[0] if len(shape) == 1 else
                       "Pline %d\n" % len(shape) + "".join("%.3f %.3f\n" % p for p in shape))
    pathlib.Path(name + ".mid").write_text("".join('"n%d"\n' % k for k in range(len(shapes))))


def check_samples(what, model, surfaces, dataset, common):
    """Points and profiles, at every time."""
    west, east, south, north = extent(model)
    somewhere = lambda: (round(model.random.uniform(west, east), 3), round(model.random.uniform(south, north), 3))
    layer("marks", model, [[somewhere()] for _ in range(12)])
    kept = [cell for k, cell in enumerate(model.cells) if cell and k not in model.removed]
    centre = [sum(model.nodes[n][axis] for n in kept[0]) / len(kept[0]) for axis in (0, 1)]
    layer("lines", model, [[somewhere(), tuple(centre), somewhere()]])
    convert("-lp", "lines.mif", "-lpmd%.0f" % model.step, "-cp", "marks.mif", "-cpsd0.001", "-tAll", *common)
    texts = ["%.2f" % t for t in dataset.times]
    rows = read_csv("r_cp.csv")
    check(len(rows) == 12 * len(texts), what, "points", len(rows))
    for row in rows:
        value = float(row["Tracer"]) if row["Tracer"] else None
        check(surfaces[texts.index(row["Time"])].agrees(value, float(row["X"]), float(row["Y"]), 6e-5), what, "point", row)
    rows = [row for row in read_csv("r_n0.csv") if row["Type"] != "C"]
    check(len(rows) > 1, what, "has no profile")  # both ends, where they lie in one cell
    for row in rows:  # whose places are rounded to a millimetre
        for text, surface in zip(texts, surfaces):
            value = row["Tracer_t%06.2f" % float(text)]
            check(surface.agrees(float(value) if value else None, float(row["X"]), float(row["Y"]), 0.05, 1e-3), what,
                  "profile", row)


def maximums(dataset, times):
    """Per value the largest of the times, vectors by magnitude; cells wet at any of them."""
    size = lambda value: value[0] if len(value) == 1 else (-1.0 if value[0] <= MISSING else math.hypot(*value))
    values = [None] + [max((dataset.values[t][k] for t in times), key=size) for k in range(1, len(dataset.values[0]))]
    wet = dataset.wet[0] and [max(flags) for flags in zip(*(dataset.wet[t] for t in times))]
    return values, wet


def scalar(values, pick=lambda value: value[0]):
    return [None] + [MISSING - 1 if value[0] <= MISSING else pick(value) for value in values[1:]]


def scalars(model, spacing, common, cells):
    """A scalar at nodes or cells: raster, binary raster, .xmdf, rewritten .dat, threads, single times, samples, layers."""
    dataset = Dataset(model, 1, cells)
    dataset.write("r.dat")
    kind = "cells" if cells else "nodes"
    common = [*common, *(["-cc"] if cells else [])]
    grid = "-grid%g" % spacing
    surfaces = [Surface(model, scalar(v), w, cells) for v, w in zip(dataset.values, dataset.wet)]
    convert("-asc", grid, "-tAll", "-jobs1", *common, "r.dat")
    names = ["r_t%06.2f" % t + "_g%s" % grid_tag(spacing) for t in dataset.times]
    for name, surface in zip(names, surfaces):
        check_grid(kind, model, name + ".asc", surface, spacing, cells)
        os.rename(name + ".asc", name + ".one")
    convert("-asc", grid, "-tAll", "-jobs3", *common, "r.dat")
    k = model.random.randrange(3)
    for name in names:
        same(name + ".asc", name + ".one")
    convert("-asc", grid, "-t%g" % dataset.times[k], "-out", "single", *common, "r.dat")
    same("single.asc", names[k] + ".one")
    convert("-flt", grid, "-t%g" % dataset.times[k], "-out", "single", *common, "r.dat")
    check_flt("single.asc", "single.flt")
    convert("-asc", grid, "-max", "-out", "highest", *common, "r.dat")
    values, wet = maximums(dataset, range(2))  # the last step of a file without stored maximums is not folded
    check_grid(kind + " -max", model, "highest.asc", Surface(model, scalar(values), wet, cells), spacing, cells)
    for form in ("-dat",) if without_hdf5() else ("-dat", "-xmdf"):
        convert(form, "-tAll", "-out", "again", *(word for word in common if word != model.part and word != "-rmp"), "r.dat")
        again = "again" + form.replace("-", ".")
        os.remove("single.asc")
        words = common if form == "-dat" else [*(word for word in common if word != "-cc"), "-s1"]
        convert("-asc", grid, "-t%g" % dataset.times[k], "-out", "single", *words, again)
        same("single.asc", names[k] + ".one")
    if not cells:
        convert("-mif", grid, "-t%g" % dataset.times[k], "-out", "single", *common, "r.dat")
        check_gridded("layer", "single", {"Tracer": "single.asc"})
    check_samples(kind, model, surfaces, dataset, [*common, "r.dat"])
    if cells:
        convert("-mif", "-region", "-t%g" % dataset.times[k], "-out", "regions", *common, "r.dat")
        check_regions(model, dataset.values[k], dataset.wet[k])


def check_regions(model, values, wet):
    shapes, rows = read_layer("regions")
    expected = {n for n in range(1, len(model.cells)) if n not in model.removed and (not wet or wet[n]) and
                values[n][0] > MISSING}
    check({int(row["SMS_ID"]) for row in rows} == expected and len(rows) == len(expected), "regions of other cells")
    for ring, row in zip(shapes, rows):
        number = int(row["SMS_ID"])
        cell = model.cells[number]
        corners = {tuple(round(v, 2) for v in model.nodes[n][:2]) for n in (cell[0:8:2] if len(cell) == 9 else cell)}
        check(len(ring) == len(corners) + 1 and {tuple(round(v, 2) for v in p) for p in ring} == corners, "ring of", number, ring)
        check(abs(float(row["Tracer"]) - values[number][0]) < 6e-5 and int(row["MatID"]) == number % 7 + 1, "region", row)


def vectors(model, spacing, common):
    """A vector at nodes: magnitude of the nodes in rasters, components everywhere, and the layer of nodes."""
    dataset = Dataset(model, 2, False, "Vector Velocity")
    dataset.write("r_V.dat")
    k = model.random.randrange(3)
    values, wet, words = dataset.values[k], dataset.wet[k], ["-grid%g" % spacing, "-t%g" % dataset.times[k], *common, "r_V.dat"]
    for switch, pick in (("", lambda v: math.hypot(*v)), ("-vx", lambda v: v[0]), ("-vy", lambda v: v[1])):
        name = "out" + switch
        convert("-asc", "-out", name, *([switch] if switch else []), *words)
        check_grid("vectors " + switch, model, name + ".asc", Surface(model, scalar(values, pick), wet), spacing, False)
    convert("-mif", "-out", "arrows", *words)
    check_gridded("vector layer", "arrows", {"X_component": "out-vx.asc", "Y_component": "out-vy.asc"})
    convert("-txt", *words[1:])
    rows = {int(row["SMS_ID"]): row for row in read_csv("r_V_t%06.2f.txt" % dataset.times[k])}
    wet_nodes = {n for number, cell in enumerate(model.cells) if cell and number not in model.removed and
                 (not wet or wet[number]) for n in cell}
    check(rows.keys() == {n for n in wet_nodes if values[n][0] > MISSING}, "other nodes than the wet ones")
    for number, row in rows.items():
        x, y, z = model.nodes[number]
        angle = math.degrees(math.atan2(values[number][1], values[number][0]))
        expected = (x, y, z, math.hypot(*values[number]), angle, *values[number])
        found = [float(row[column]) for column in ("X", "Y", "Elevation", "Magnitude", "Angle", "X_component", "Y_component")]
        check(all(abs(a - b) < 6e-4 for a, b in zip(expected, found)), "node", row, "not", expected)


def grid_tag(spacing):
    return "%g" % spacing if spacing >= 100 else "%03g" % spacing


def one_model(seed):
    source = random.Random(seed)
    model = Model(source)
    while len(model.nodes) == len(model.cells):  # whose results could be those of nodes or of cells
        model = Model(source)
    model.write_mesh("r.2dm")
    pathlib.Path("Header.mif").write_text('Version 300\nCoordSys NonEarth Units "m"\n')
    west, east, south, north = extent(model)
    spacing = max(1, round(min(east - west, north - south) / model.random.randint(5, 14)))
    common = ["-prec8.4", "-no1d", "-2dm", "r.2dm", *(["-rmp", model.part] if model.part else [])]
    for cells in (False, True):
        scalars(model, spacing, common, cells)
    vectors(model, spacing, common)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--seconds", type=float, default=0)
    parser.add_argument("--seed", type=int)
    options = parser.parse_args()
    os.environ["PROGRAM"] = os.path.abspath(os.environ["PROGRAM"])
    start, done = time.time(), 0
    seed = options.seed if options.seed is not None else random.randrange(10**6) if options.seconds else FIRST_SEED
    least = 1 if options.seed is not None or options.seconds else MODELS
    while not failures and (done < least or time.time() - start < options.seconds):
        folder = tempfile.mkdtemp(prefix="differential")
        os.chdir(folder)
        try:
            one_model(seed + done)
        except (OSError, KeyError, ValueError, subprocess.TimeoutExpired):  # an output is missing, or no such text
            check(False, traceback.format_exc(limit=-2))
        if failures:
            print("seed", seed + done, "in", folder, *failures[:20], sep="\n")
        else:
            os.chdir("/")
            shutil.rmtree(folder)
        done += 1
    print("%d models from seed %d, %d checks, %d failed" % (done, seed, checks, len(failures)))
    sys.exit(bool(failures) or checks == 0)


main()
