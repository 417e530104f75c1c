#!/usr/bin/env python3
"""The output times of one result, as the program lists them, cut into parts.

parts.py PROGRAM RESULTS TIMES.json lists; cut(listed, most) makes the switches of each part. Results that cannot be
listed whole are one part, whose conversion tells why."""
import json
import os
import re
import subprocess
import sys
import tempfile

from whole_file import write_whole

TIME = re.compile(r"^ +\d+  (\S+) h \(stored as ")
MORE = re.compile(r"^ +\.\.\. and \d+ more$")  # of very many times not all are listed
EXTREMES = (("minimums", "-min"), ("maximums", "-max"), ("times of maximum", "-tmax"))


def listed(lines, dat):
    """{"hours": every output time once, in order, "extremes": switches of what the file stores beside them}. An .xmdf
    has its extremes in datasets of their own, which all output times do not take along."""
    hours, extremes = set(), []
    for line in lines:
        time = TIME.match(line)
        if time:
            hours.add(float(time.group(1)))
        for words, switch in EXTREMES:
            if dat and re.match(r"^ +\d+  %s \(stored as " % words, line) and switch not in extremes:
                extremes.append(switch)
    whole = not any(MORE.match(line) for line in lines)
    return {"hours": sorted(hours), "extremes": extremes, "whole": whole}


def cut(times, most):
    """{name of the part: its switches}. The ends lie half-way between two times, so that none goes to two parts."""
    hours = times["hours"]
    if not times["whole"] or not hours:
        return {"all_times": ["-tAll"]}
    parts = {}
    for number, start in enumerate(range(0, len(hours), most)):
        end = start + most
        switches = []
        if start > 0:
            switches.append("-from%.9g" % ((hours[start - 1] + hours[start]) / 2))
        if end < len(hours):
            switches.append("-until%.9g" % ((hours[end - 1] + hours[end]) / 2))
        parts["times_%04d" % (number + 1)] = switches or ["-nth1"]
    for switch in times["extremes"]:
        parts[switch[1:]] = [switch]
    return parts


def main():
    program, results, wanted = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        ended = subprocess.run([program, "-b", "-xnfo", "-into", folder, results], stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        lines = []
        for name in os.listdir(folder):
            with open(os.path.join(folder, name), encoding="utf-8", errors="replace") as handle:
                lines += handle.read().splitlines()
    times = listed(lines, results.lower().endswith(".dat"))
    times["whole"] = times["whole"] and ended.returncode == 0
    write_whole(wanted, json.dumps(times))
    return 0


if __name__ == "__main__":
    sys.exit(main())
