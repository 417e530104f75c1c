#!/usr/bin/env python3
"""One virtual raster of the tiles of all runs, for each time and dataset.

merge.py PLAN.json PRODUCT FOLDER: rasters whose names differ only in the run's own part are tiles of one."""
import collections
import json
import os
import subprocess
import sys
import tempfile

from check_outputs import RASTERS, outputs_in


def tiles(tree, product, runs):
    """{what is behind the name of the results: rasters}"""
    found = collections.defaultdict(list)
    for run, results in runs.items():
        stem = os.path.splitext(os.path.basename(results))[0]
        for path in outputs_in(os.path.join(tree, product, run)):
            name, extension = os.path.splitext(os.path.basename(path))
            if extension.lower() in RASTERS:
                found[name[len(stem):].lstrip("_") if name.startswith(stem) else name].append(path)
    return found


def main():
    plan_file, product, folder = sys.argv[1:]
    with open(plan_file, encoding="utf-8") as handle:
        plan = json.load(handle)
    os.makedirs(folder, exist_ok=True)
    merged = tiles(plan["tree"], product, plan["runs"])
    if not merged:
        print("ERROR - The product %s has no rasters to merge." % product)
        return 1
    for name, rasters in sorted(merged.items()):
        with tempfile.NamedTemporaryFile("w", suffix=".txt", encoding="utf-8") as names:
            names.write("\n".join(rasters) + "\n")
            names.flush()
            ended = subprocess.run(["gdalbuildvrt", "-q", "-strict", "-overwrite", "-input_file_list", names.name,
                                    os.path.join(folder, name + ".vrt")])
        if ended.returncode != 0:
            print("ERROR - gdalbuildvrt ended with status %d for %s." % (ended.returncode, name))
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
