"""Where what came of each conversion and mosaic is noted, below `records` in the tree of the outputs.

Of a base, BASE.json is there when it was done, BASE.partial.json when a mosaic has what there is, BASE.failed.json says
why it was not, BASE.log is what the program said."""
import json
import os

from parts import cut


def read_json(path):
    try:
        with open(path, encoding="utf-8") as handle:
            return json.load(handle)
    except (OSError, ValueError):
        return None


def times_of(plan, run):
    """As parts.py lists them; None while they are not known."""
    return read_json(os.path.join(plan["tree"], "records", "_times", run + ".json"))


def parts_of(plan, product, run):
    """Names; none while the times of the run are not known."""
    most = plan["products"][product]["split_times"]
    if not most:
        return ["all"]
    times = times_of(plan, run)
    return list(cut(times, most)) if times else []


def base_of(plan, product, run, part):
    return os.path.join(plan["tree"], "records", product, run, part)


def folder_of(plan, product, run, part):
    """Of the outputs."""
    whole = os.path.join(plan["tree"], product, run)
    return os.path.join(whole, part) if plan["products"][product]["split_times"] else whole


def merged_base(plan, product):
    return os.path.join(plan["tree"], "records", "_merged", product)


def forget(*paths):
    for path in paths:
        if os.path.lexists(path):
            os.remove(path)
