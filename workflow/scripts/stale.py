"""What an earlier plan left of a run beside the parts of this one: with other times a part, shorter results, no parts."""
import os
import re
import shutil

from check_outputs import COMPANIONS
from records import forget, read_json

WHOLE = "all"
PART = re.compile(r"times_\d{4,}|all_times|min|max|tmax")


def names_in(folder):
    return sorted(os.listdir(folder)) if os.path.isdir(folder) else []


def forget_records(records, part):
    forget(*(os.path.join(records, name) for name in names_in(records) if name.split(".")[0] == part))


def remove_whole(records, folder):
    """The files of a conversion that was not cut, which stand beside the folders of the parts."""
    record = read_json(os.path.join(records, WHOLE + ".json")) or {"files": []}
    outputs = {fact["file"] for fact in record["files"]}
    stems = {os.path.splitext(name)[0] for name in outputs}
    for name in names_in(folder):
        beside = name.lower().endswith(COMPANIONS) and (os.path.splitext(name)[0] in stems or os.path.splitext(name)[0] in outputs)
        if name in outputs or beside or name == ".snakemake_timestamp":
            forget(os.path.join(folder, name))
    return outputs


def remove_parts(records, folder, parts):
    """What was removed."""
    removed = []
    for name in sorted(set(names_in(folder)) | {name.split(".")[0] for name in names_in(records)}):
        if PART.fullmatch(name) and name not in parts:
            if os.path.isdir(os.path.join(folder, name)):
                shutil.rmtree(os.path.join(folder, name))
                removed.append(name)
            forget_records(records, name)
    if WHOLE not in parts:
        removed += sorted(remove_whole(records, folder))
        forget_records(records, WHOLE)
    return removed


def remove_stale(records, folder, parts):
    """A line that names what was removed, blank for nothing. records, folder: of a run and product; parts: those of the
    plan, ["all"] where nothing is cut."""
    try:
        removed = remove_parts(records, folder, parts)
    except OSError as failure:
        return "WARNING - What an earlier plan left is still there: %s: %s" % (failure.filename, failure.strerror)
    if not removed:
        return ""
    more = ", ... (%d)" % len(removed) if len(removed) > 3 else ""
    return "NOTE - Removed what an earlier plan left: %s" % ", ".join(removed[:3]) + more
