#!/usr/bin/env python3
"""The program for Windows at a terminal, under wine: a file that another program holds, letters that are typed, Ctrl-C, long names.
    tests/windows/terminal.py PROGRAM.exe HOLD.exe EXAMPLE SCRATCH
"""
import glob
import os
import pty
import select
import shutil
import subprocess
import sys
import time

program, hold, example = map(os.path.abspath, sys.argv[1:4])
WINE = "/usr/lib/wine/wine64"
CONTROL_C = 0xC000013A & 0xFF  # what this system keeps of the status
SECONDS = 60
failures = 0


def check(what, good, said=b""):
    global failures
    if not good:
        failures += 1
        print("FAILED:", what, said[-600:].decode(errors="replace"))


def at_terminal(arguments, steps):
    """The status and what was said; a step is a text to wait for and what is done with the terminal then."""
    pid, terminal = pty.fork()
    if pid == 0:
        os.execv(WINE, [WINE, program, *arguments])
    said, seen, end = b"", 0, time.time() + SECONDS
    while time.time() < end:
        if select.select([terminal], [], [], 0.1)[0]:
            try:
                said += os.read(terminal, 65536)
            except OSError:
                break
        if steps and steps[0][0] in said[seen:]:
            seen = len(said)
            steps.pop(0)[1](terminal)
    check("it did not end, or did not ask", time.time() < end and not steps, said)
    if steps or time.time() >= end:
        os.kill(pid, 9)
    return os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1]), said


def types(text):
    def send(terminal):
        time.sleep(1)  # until it reads: the question is shown before
        os.write(terminal, text.encode() + b"\r")

    return send


def content(name):
    with open(name, "rb") as file:
        return file.read()


shutil.rmtree(sys.argv[4], ignore_errors=True)
shutil.copytree(example, sys.argv[4])
os.chdir(sys.argv[4])
os.environ["TERM"] = "xterm"
grid = ["-asc", "-grid100", "-t0.1", "-out", "map", "basin_h.dat"]
subprocess.run([WINE, program, "-b", *grid], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, check=True)
whole = content("map.asc")


def earlier():
    with open("map.asc", "w") as file:
        file.write("earlier")


def kept(what):
    check(what + ": the earlier file stays, and nothing beside it", content("map.asc") == b"earlier" and not glob.glob("*.part*"))


earlier()
other = subprocess.Popen([WINE, hold, "map.asc"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
check("the file is held", other.stdout.readline().strip() == b"held")
batch = subprocess.run([WINE, program, "-b", *grid], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
check("held, in batch", batch.returncode == 1 and b"ERROR - Could not open map.asc" in batch.stdout, batch.stdout)
kept("held, in batch")


def release(terminal):
    other.stdin.close()
    other.wait()
    types("y")(terminal)


status, said = at_terminal(grid, [(b"Retry?", types("y")), (b"Retry?", release), (b"Press Enter", types(""))])
check("held, then not", status == 0 and content("map.asc") == whole, said)

earlier()


def await_part():
    end = time.time() + SECONDS
    while not glob.glob("map.*.part.asc") and time.time() < end:
        time.sleep(0.05)


def interrupt(terminal):
    await_part()
    os.write(terminal, b"\x03")


long_run = ["-b", "-asc", "-grid0.8", *grid[2:]]
status, said = at_terminal(long_run, [(b"Writing ASCII grid file", interrupt)])
check(f"Ctrl-C ends with {status}", status == CONTROL_C, said)
kept("Ctrl-C")

killed = subprocess.Popen([WINE, program, *long_run], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
await_part()
killed.kill()
killed.wait()
check("a killed run leaves its part", len(glob.glob("map.*.part.asc")) == 1)
subprocess.run([WINE, program, "-b", *grid], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
check("the next run removes it", content("map.asc") == whole and not glob.glob("*.part*"))

shutil.copy("basin_h.dat", "Größe 大_h.dat")
answers = [(b"file ->", types("Größe 大_h.dat")), (b"Press Enter", types(""))]
status, said = at_terminal([*grid[:-1], "-2dm", "basin.2dm"], answers)
check("a name that is typed", status == 0 and content("map.asc") == whole, said)

deep = "/".join(letter * 60 for letter in "abcdef")
os.makedirs(deep)
for name in ("basin.2dm", "basin_h.dat"):
    shutil.copy(name, deep)
subprocess.run([WINE, program, "-b", *grid[:3], deep + "/basin_h.dat"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
check("a name of more than 260 letters", content(deep + "/basin_h_t000.10_g100.asc") == whole)
print("what needs a terminal:", failures, "failed")
sys.exit(failures > 0)
