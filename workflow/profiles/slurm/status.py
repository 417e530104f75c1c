#!/usr/bin/env python3
"""What has become of a job: "running", "success" or "failed", as the engine asks it."""
import subprocess
import sys

RUNNING = ("PENDING", "CONFIGURING", "RUNNING", "COMPLETING", "SUSPENDED", "REQUEUED", "RESIZING")


def state(job):
    """From the controller, which forgets a job after a while; then from the accounting, where there is one."""
    said = subprocess.run(["scontrol", "-o", "show", "job", job], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    for word in said.stdout.split():
        if word.startswith("JobState="):
            return word[len("JobState="):]
    said = subprocess.run(["sacct", "-nPX", "-o", "State", "-j", job], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    return (said.stdout.split() or ["UNKNOWN"])[0]


found = state(sys.argv[1])
print("success" if found == "COMPLETED" else "running" if found in RUNNING else "failed")
