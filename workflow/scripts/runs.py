"""Which results are converted: the `runs` of the configuration, as globs or as a table (name, mesh, results)."""
import collections
import csv
import glob
import os
import re

# problem: why the run cannot be converted, blank when it can
Run = collections.namedtuple("Run", "name mesh results problem")


def plain_name(text):
    """A name for folders and schedulers: what is no letter, digit, ".", "_" or "-" becomes "_"."""
    return re.sub(r"[^A-Za-z0-9._-]", "_", text).lstrip("._-") or "run"


def mesh_beside(results):
    """The mesh that the program finds for the results by itself; blank when there is none."""
    folder, file = os.path.split(results)
    stem = os.path.splitext(file)[0]
    shorter = [stem]
    while "_" in shorter[-1]:
        shorter.append(shorter[-1].rpartition("_")[0])
    # one underscore back, then the whole name, then further back
    stems = shorter[1:2] + shorter[:1] + shorter[2:]
    for candidate in stems:
        mesh = os.path.join(folder, candidate + ".2dm")
        if candidate and os.path.isfile(mesh):
            return mesh
    return ""


def checked(name, mesh, results):
    if not os.path.isfile(results):
        return Run(name, mesh, results, "the results %s do not exist" % results)
    if not mesh:
        return Run(name, mesh, results, "no mesh beside %s" % results)
    if not os.path.isfile(mesh):
        return Run(name, mesh, results, "the mesh %s does not exist" % mesh)
    return Run(name, mesh, results, "")


def from_globs(globs):
    for pattern in globs:
        found = sorted(glob.glob(pattern, recursive=True))
        if not found:
            yield Run(plain_name(pattern), "", "", "no file is found by %s" % pattern)
        for results in found:
            name = plain_name(os.path.splitext(os.path.basename(results))[0])
            yield checked(name, mesh_beside(results), results)


def from_table(path):
    """Relative names in the table are relative to the table."""
    folder = os.path.dirname(path)
    with open(path, newline="", encoding="utf-8-sig") as handle:
        rows = csv.DictReader(handle)
        for column in ("name", "mesh", "results"):
            if column not in (rows.fieldnames or []):
                raise ValueError("%s has no column %s" % (path, column))
        for row in rows:
            mesh, results = (os.path.join(folder, (row[c] or "").strip()) for c in ("mesh", "results"))
            yield checked(plain_name((row["name"] or "").strip()), mesh, results)


def runs_of(configured):
    """(runs to convert by name, problems): of two runs of one name neither is converted."""
    everything = list(from_table(configured) if isinstance(configured, str) else from_globs(configured))
    names = collections.Counter(run.name.lower() for run in everything)  # disks may fold letter case
    good, problems = {}, []
    for run in everything:
        if not run.problem and names[run.name.lower()] > 1:
            run = run._replace(problem="several runs are called %s: %s" % (run.name, run.results))
        if run.problem:
            problems.append(run)
        else:
            good[run.name] = run
    return good, problems
