"""Which results are converted: the `runs` of the configuration, as globs or as a table (name, mesh, results)."""
import collections
import csv
import functools
import glob
import os
import re

# problem: why the run cannot be converted, blank when it can
Run = collections.namedtuple("Run", "name mesh results problem")


def plain_name(text):
    """A name for folders and schedulers: what is no letter, digit, ".", "_" or "-" becomes "_"."""
    return re.sub(r"[^A-Za-z0-9._-]", "_", text).lstrip("._-") or "run"


@functools.lru_cache(maxsize=None)
def names_in(folder):
    """{name in lower case: name}, the first where several differ in letter case only."""
    try:
        return {name.lower(): name for name in sorted(os.listdir(folder or "."), reverse=True)}
    except OSError:
        return {}


def mesh_beside(results):
    """The mesh that the program finds for the results by itself; blank when there is none."""
    folder, file = os.path.split(results)
    stem, extension = os.path.splitext(file)
    if extension.lower() == ".2dm":
        return results
    stems = [stem]
    while "_" in stems[-1][1:]:
        stems.append(stems[-1].rpartition("_")[0])
    if extension.lower() == ".dat":  # one underscore back, then the whole name, then further back
        stems = stems[1:2] + stems[:1] + stems[2:]
    for candidate in stems:
        for name in (candidate + ".2dm", names_in(folder).get(candidate.lower() + ".2dm", "")):
            if name and os.path.isfile(os.path.join(folder, name)):
                return os.path.join(folder, name)
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
            name = (row["name"] or "").strip()
            if not re.search("[A-Za-z0-9]", name):
                problem = "line %d of %s has %s" % (rows.line_num, path, "a name without a letter or digit: " + name if name else "no name")
                yield Run("(line %d)" % rows.line_num, mesh, results, problem)
            else:
                yield checked(plain_name(name), mesh, results)


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
