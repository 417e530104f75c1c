#!/usr/bin/env python3
"""The output times of one result, as the program lists them, cut into parts.

parts.py PROGRAM RESULTS TIMES.json lists; cut(listed, most) makes the switches of each part. Results that cannot be
listed whole are one part, whose conversion tells why. Where a signal ended the listing nothing is written, and the exit
status is that of a shell: 128 and the signal."""
import bisect
import json
import os
import re
import subprocess
import sys
import tempfile

from whole_file import write_whole

DATASET = "   Times:"
TIME = re.compile(r"^ +\d+  (\S+) h \(stored as ")
EXTREMES = (("minimums", "-min"), ("maximums", "-max"), ("times of maximum", "-tmax"))
MOST_TOLERANCE = 0.001  # h
KILLED_BEHIND_A_SHELL = 128


def listed(lines, dat):
    """{"hours": of each dataset whose times differ from the others', in order, "extremes": switches of what the file
    stores beside them}. An .xmdf has its extremes in datasets of their own, which all output times do not take along."""
    datasets, extremes = [], []
    for line in lines:
        time = TIME.match(line)
        if line == DATASET:
            datasets.append(set())
        elif time and datasets:
            datasets[-1].add(float(time.group(1)))
        for words, switch in EXTREMES:
            if dat and re.match(r"^ +\d+  %s \(stored as " % words, line) and switch not in extremes:
                extremes.append(switch)
    different = {tuple(sorted(hours)) for hours in datasets if hours}
    return {"hours": sorted(different), "extremes": extremes, "whole": True}


def tolerance(hours):
    """By which -from and -until miss a time of this dataset."""
    return min([MOST_TOLERANCE, *((later - time) / 10 for time, later in zip(hours, hours[1:]))])


def ends(datasets, most):
    """Hours between the parts, each half-way between two times. Where datasets differ by less than the tolerance of one,
    it would lie on both sides: the part goes on to the next place."""
    every = sorted(set().union(*datasets))
    tolerances = [tolerance(hours) for hours in datasets]

    def apart(end):
        for hours, near in zip(datasets, tolerances):
            behind = bisect.bisect_left(hours, end - near)
            if behind < len(hours) and hours[behind] <= end + near:
                return False
        return True

    places, begun = [], 0
    for number in range(1, len(every)):
        end = (every[number - 1] + every[number]) / 2
        if number - begun >= most and apart(end):
            places.append(end)
            begun = number
    return places


def cut(times, most):
    """{name of the part: its switches}: so many times each that none goes to two."""
    if not times["whole"] or not times["hours"]:
        return {"all_times": ["-tAll"]}
    places = ends(times["hours"], most)
    parts = {}
    for number, (start, end) in enumerate(zip([None, *places], [*places, None])):
        switches = ["-from%.12g" % start] if start is not None else []
        switches += ["-until%.12g" % end] if end is not None else []
        parts["times_%04d" % (number + 1)] = switches or ["-nth1"]
    for switch in times["extremes"]:
        parts[switch[1:]] = [switch]
    return parts


def fault_of_listing(times):
    """Why results are one part that were to be several; blank where the program said so itself, or nothing is wrong."""
    status = times.get("status", 0)
    if not status:
        return ""
    how = "was killed by signal %d" % (status - KILLED_BEHIND_A_SHELL) if status > KILLED_BEHIND_A_SHELL else "ended with status %d" % status
    return "NOTE - The listing of its times %s: they are one part." % how


def main():
    program, results, wanted = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        ended = subprocess.run([program, "-b", "-xnfo", "-tAll", "-into", folder, results], stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        lines = []
        for name in os.listdir(folder):
            with open(os.path.join(folder, name), encoding="utf-8", errors="replace") as handle:
                lines += handle.read().splitlines()
    if ended.returncode < 0 or ended.returncode > KILLED_BEHIND_A_SHELL:
        return ended.returncode if ended.returncode > 0 else KILLED_BEHIND_A_SHELL - ended.returncode
    times = listed(lines, results.lower().endswith(".dat"))
    times["whole"] = ended.returncode == 0
    write_whole(wanted, json.dumps(times))
    return 0


if __name__ == "__main__":
    sys.exit(main())
