#!/usr/bin/env python3
"""One conversion into a folder of its own, its outputs read back, and what came of it in a small file.

Exit status 0: done, or done but incomplete (the program's status 3); else 1. How an attempt ended that was not done is
noted beside the record, outside of the folder: what ended in an ERROR is not tried again, what was killed is."""
import argparse
import json
import os
import resource
import shutil
import subprocess
import sys
import time

from check_outputs import BLOCKS, Unreadable, check_outputs
from parts import KILLED_BEHIND_A_SHELL
from records import forget
from whole_file import write_whole

INCOMPLETE = 3


def arguments():
    parser = argparse.ArgumentParser()
    for name in ("program", "mesh", "results", "folder", "record"):
        parser.add_argument("--" + name, required=True)
    for name in ("threads", "memory", "attempt"):
        parser.add_argument("--" + name, required=True, type=int)
    parser.add_argument("switches", nargs="*")
    given = parser.parse_args()
    given.log = os.path.splitext(given.record)[0] + ".log"
    return given


def command_of(given):
    return [given.program, "-b", "-jobs%d" % given.threads, "-mem%d" % given.memory, "-into", given.folder, "-2dm",
            given.mesh, *given.switches, given.results]


class Failed(Exception):
    def __init__(self, ended, reason):
        super().__init__(reason)
        self.ended = ended  # "error" or "killed"
        self.reason = reason


def keep_log(given):
    """What an earlier attempt said is kept beside the log, whose lines are those of the last. The engine, which removes
    the logs that it knows of before a second attempt, knows of neither."""
    earlier = os.path.splitext(given.log)[0] + ".attempt_1.log"
    if given.attempt == 1:
        forget(earlier)
    elif os.path.exists(given.log):
        os.replace(given.log, earlier)


def run_program(given):
    """(status, lines said). What a signal ended is Failed."""
    with open(given.log, "w", encoding="utf-8") as log:
        try:
            status = subprocess.run(command_of(given), stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                    env={**BLOCKS, **os.environ}).returncode
        except OSError as failure:
            raise Failed("error", "%s: %s" % (given.program, failure.strerror))
    with open(given.log, encoding="utf-8", errors="replace") as log:
        lines = log.read().splitlines()
    if status < 0 or status > KILLED_BEHIND_A_SHELL:
        raise Failed("killed", "killed by signal %d" % (-status if status < 0 else status - KILLED_BEHIND_A_SHELL))
    return status, lines


def convert(given):
    """The record of what was done."""
    try:
        shutil.rmtree(given.folder, ignore_errors=True)
        os.makedirs(given.folder)
        os.makedirs(os.path.dirname(given.log), exist_ok=True)
        keep_log(given)
    except OSError as failure:
        raise Failed("error", "%s cannot be made: %s" % (failure.filename, failure.strerror))
    start = time.monotonic()
    status, lines = run_program(given)
    seconds = time.monotonic() - start
    peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
    errors = [line for line in lines if line.lower().startswith("error")]
    # a part whose times another dataset of the file has; where nothing is cut, nobody else has them
    part = os.path.basename(given.record) != "all.json"
    empty = part and status == 1 and any("leave no output time of" in line for line in errors[-1:])
    if status not in (0, INCOMPLETE) and not empty:
        raise Failed("error", errors[-1] if errors else "the program ended with status %d" % status)
    try:
        files = check_outputs(given.folder, os.path.splitext(given.record)[0] + ".png")
    except (Unreadable, OSError) as failure:
        raise Failed("error", "ERROR - An output cannot be read back: %s" % failure)
    warnings = [line for line in lines if line.lower().startswith("warning")]
    return {"status": 0 if empty else status, "attempt": given.attempt, "seconds": round(seconds, 2),
            "peak_mb": round(peak / 1024), "warnings": warnings if status == INCOMPLETE else [], "files": files}


def tried_before(given, note):
    """True for a second attempt behind one that ended in an ERROR."""
    if given.attempt == 1 or not os.path.exists(note):
        return False
    with open(note, encoding="utf-8") as handle:
        return json.load(handle)["ended"] == "error"


def main():
    given = arguments()
    note = os.path.splitext(given.record)[0] + ".failed.json"
    if tried_before(given, note):
        print("%s ended in an ERROR and is not converted again." % given.folder)
        return 1
    forget(note, given.record, os.path.splitext(given.record)[0] + ".png")
    try:
        try:
            write_whole(given.record, json.dumps(convert(given)))
        except Failed as failed:
            print("%s: %s" % (given.folder, failed.reason))
            write_whole(note, json.dumps({"ended": failed.ended, "attempt": given.attempt, "reason": failed.reason}))
            return 1
    except OSError as failure:  # the log is the last word then
        print("%s: what came of it cannot be noted: %s" % (given.folder, failure.strerror))
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
