#!/usr/bin/env python3
"""One virtual raster of the tiles of all runs, for each time and dataset.

merge.py PLAN.json PRODUCT: rasters whose names differ only in the run's own part are tiles of one. merge.py PLAN.json
--what-is-there: of each product to merge that lacks a run, the tiles that there are; the engine does not come to it
then, and is to come to it when the run is there."""
import collections
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

from check_outputs import RASTERS, outputs_in
from records import base_of, folder_of, forget, merged_base, parts_of, read_json
from whole_file import write_whole


class NotMerged(Exception):
    pass


def converted(plan, product, run):
    """Folders of the parts that were, and whether they are all."""
    parts = parts_of(plan, product, run)
    done = [part for part in parts if os.path.exists(base_of(plan, product, run, part) + ".json")]
    return [folder_of(plan, product, run, part) for part in done], bool(parts) and done == parts


def tiles(plan, product):
    """{what is behind the name of the results: {run: raster}}"""
    found = collections.defaultdict(dict)
    for run, results in plan["runs"].items():
        stem = os.path.splitext(os.path.basename(results))[0]
        for folder in converted(plan, product, run)[0]:
            for path in outputs_in(folder):
                name, extension = os.path.splitext(os.path.basename(path))
                if extension.lower() in RASTERS:
                    found[name[len(stem):].lstrip("_") if name.startswith(stem) else name][run] = path
    return found


def holes(plan, merged):
    """A line for each run whose tiles are not in every raster."""
    left_out = [problem["run"] for problem in plan["problems"] if problem["run"]]
    for run in dict.fromkeys([*plan["runs"], *left_out]):
        without = [name for name in sorted(merged) if run not in merged[name]]
        if len(without) == len(merged):
            yield "WARNING - The tiles of %s are missing." % run
        elif without:
            yield "WARNING - The tiles of %s are missing in %d of %d, %s.vrt the first." % (run, len(without), len(merged), without[0])


def make_rasters(plan, product, folder):
    """The record of the mosaic."""
    merged = tiles(plan, product)
    if not merged:
        raise NotMerged("ERROR - The product %s has no rasters to merge." % product)
    start = time.monotonic()
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    for name, rasters in sorted(merged.items()):
        with tempfile.NamedTemporaryFile("w", suffix=".txt", encoding="utf-8") as names:
            names.write("\n".join(rasters.values()) + "\n")
            names.flush()
            ended = subprocess.run(["gdalbuildvrt", "-q", "-strict", "-overwrite", "-input_file_list", names.name,
                                    os.path.join(folder, name + ".vrt")], stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if ended.returncode != 0:
            said = ended.stdout.decode("utf-8", "replace").strip().splitlines()
            raise NotMerged("ERROR - gdalbuildvrt ended with status %d for %s: %s" % (ended.returncode, name, " ".join(said[-1:])))
    missing = list(holes(plan, merged))
    if missing:
        write_whole(os.path.join(folder, "missing_tiles.txt"), "\n".join(missing) + "\n")
    return {"status": 3 if missing else 0, "attempt": 1, "seconds": round(time.monotonic() - start, 2), "peak_mb": 0,
            "warnings": missing, "files": [{"file": name + ".vrt"} for name in sorted(merged)]}


def merge(plan, product, ending):
    """ending: of the record. False when there is no mosaic; a note says why."""
    base, folder = merged_base(plan, product), os.path.join(plan["tree"], "merged", product)
    forget(base + ".json", base + ".partial.json", base + ".failed.json")
    try:
        write_whole(base + ending, json.dumps(make_rasters(plan, product, folder)))
    except (NotMerged, OSError) as failure:
        shutil.rmtree(folder, ignore_errors=True)
        print(failure)
        write_whole(base + ".failed.json", json.dumps({"ended": "error", "attempt": 1, "reason": str(failure)}))
        return False
    return True


def main():
    plan, product = read_json(sys.argv[1]), sys.argv[2]
    if product != "--what-is-there":
        return 0 if merge(plan, product, ".json") else 1
    for name in plan["merged"]:
        if not all(converted(plan, name, run)[1] for run in plan["runs"]):
            merge(plan, name, ".partial.json")
    return 0


if __name__ == "__main__":
    sys.exit(main())
