#!/usr/bin/env python3
"""What came of every run and product, in summary.csv and summary.html.

summary.py PLAN.json writes both and names what is not whole; its status is 1 when there is any."""
import csv
import html
import io
import os
import sys

from parts import fault_of_listing
from records import base_of, merged_base, parts_of, read_json, times_of
from stale import remove_stale
from whole_file import write_whole

COLUMNS = ("run", "product", "state", "files", "valid share", "min", "max", "objects", "seconds", "peak memory (MB)",
           "attempts", "message")
DONE, INCOMPLETE, FAILED, MISSING = "done", "incomplete", "failed", "not converted"
WORST = (MISSING, FAILED, INCOMPLETE, DONE)


def last_word(log):
    """Of a job that could not even note how it ended: a scheduler killed it, or its disk was full."""
    with open(log, encoding="utf-8", errors="replace") as handle:
        errors = [line.strip() for line in handle if line.lower().startswith("error")]
    return errors[-1] if errors else "killed, or lost with its node; %s is all that is left" % log


def number(value):
    return "" if value is None else "%.6g" % value


def picture_of(bases):
    """Of the maximums, else of the last part."""
    for base in [b for b in bases if os.path.basename(b) == "max"] + bases[::-1]:
        if os.path.exists(base + ".png"):
            return base + ".png"
    return ""


def row_of(product, run, bases):
    """bases: of the records of its parts; none while they are not known."""
    row = dict.fromkeys(COLUMNS, "")
    row.update({"run": run, "product": product})
    states, files, messages = [], [], [] if bases else ["not tried: its times were not listed"]
    seconds, peak, attempts = 0.0, 0, 0
    for base in bases:
        record = read_json(base + ".json") or read_json(base + ".partial.json")
        note = read_json(base + ".failed.json")
        if record:
            states.append(INCOMPLETE if record["status"] else DONE)
            files += record["files"]
            messages += record["warnings"]
            seconds += record["seconds"]
            peak = max(peak, record["peak_mb"])
        elif note:
            states.append(FAILED)
            messages.append(note["reason"])
        elif os.path.exists(base + ".log"):
            states.append(FAILED)
            messages.append(last_word(base + ".log"))
        else:
            states.append(MISSING)
            messages.append("not tried: the engine ended before it")
        attempts = max(attempts, (record or note or {"attempt": 0})["attempt"])
    cells = sum(file.get("cells", 0) for file in files)
    row["state"] = min(states or [MISSING], key=WORST.index)
    row["files"] = len(files)
    if cells:
        row["valid share"] = "%.4f" % (sum(file.get("valid", 0) for file in files) / cells)
    row["min"] = number(min((f["min"] for f in files if f.get("min") is not None), default=None))
    row["max"] = number(max((f["max"] for f in files if f.get("max") is not None), default=None))
    if any("objects" in file or "rows" in file for file in files):
        row["objects"] = sum(file.get("objects", 0) + file.get("rows", 0) for file in files)
    row.update({"seconds": "%.2f" % seconds, "peak memory (MB)": peak, "attempts": attempts,
                "message": " | ".join(dict.fromkeys(messages))})
    return row, picture_of(bases)


def all_rows(plan):
    """(row, picture) of each: what could not be planned first."""
    for problem in plan["problems"]:
        row = dict.fromkeys(COLUMNS, "")
        row.update({"run": problem["run"], "product": problem["product"], "state": MISSING,
                    "message": problem["message"]})
        yield row, ""
    for product in plan["products"]:
        for run in plan["runs"]:
            parts = parts_of(plan, product, run)
            row, picture = row_of(product, run, [base_of(plan, product, run, part) for part in parts])
            notes = [fault_of_listing(times_of(plan, run) or {})] if plan["products"][product]["split_times"] else []
            if row["state"] != MISSING:  # else what there was stays until its successors have been tried
                notes.append(remove_stale(os.path.dirname(base_of(plan, product, run, "")), os.path.join(plan["tree"], product, run), parts))
            row["message"] = " | ".join(filter(None, [row["message"], *notes]))
            yield row, picture
    for product in plan["merged"]:
        yield row_of(product, "(merged)", [merged_base(plan, product)])


def as_csv(rows):
    text = io.StringIO()
    writer = csv.DictWriter(text, COLUMNS, lineterminator="\n")
    writer.writeheader()
    writer.writerows(row for row, _ in rows)
    return text.getvalue()


STYLE = """body{font:14px sans-serif;margin:2em} table{border-collapse:collapse} td,th{border:1px solid #ccc;padding:4px 8px;
text-align:left;vertical-align:top} img{background:#eef;display:block} .failed,.not{background:#fdd} .incomplete{background:#ffd}"""


def as_page(rows, tree):
    counts = {state: sum(row["state"] == state for row, _ in rows) for state in WORST[::-1]}
    lines = ["<!DOCTYPE html><html><head><meta charset='utf-8'><title>Converted results</title><style>%s</style></head>"
             "<body><h1>Converted results</h1><p>%s</p><table><tr>%s<th>map</th></tr>" %
             (STYLE, ", ".join("%d %s" % (n, state) for state, n in counts.items()),
              "".join("<th>%s</th>" % c for c in COLUMNS))]
    for row, picture in rows:
        image = ""
        if picture:
            source = os.path.relpath(picture, tree).replace(os.sep, "/")
            image = "<img loading='lazy' alt='%s' src='%s'>" % (html.escape(row["run"]), html.escape(source))
        cells = "".join("<td>%s</td>" % html.escape(str(row[c])) for c in COLUMNS)
        lines.append("<tr class='%s'>%s<td>%s</td></tr>" % (row["state"], cells, image))
    return "\n".join(lines) + "\n</table></body></html>\n"


def verdict(rows):
    not_whole = [row for row, _ in rows if row["state"] != DONE]
    for row in not_whole:
        print("%s %s: %s %s" % (row["run"], row["product"], row["state"], row["message"]))
    return 1 if not_whole else 0


def main():
    plan = read_json(sys.argv[1])
    rows = list(all_rows(plan))
    status = verdict(rows)
    write_whole(os.path.join(plan["tree"], "summary.csv"), as_csv(rows))
    write_whole(os.path.join(plan["tree"], "summary.html"), as_page(rows, plan["tree"]))
    return status


if __name__ == "__main__":
    sys.exit(main())
