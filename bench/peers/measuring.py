"""Measures whole programs and prints goals."""
import collections
import os
import subprocess
import sys

# CPU time and wall time in seconds, peak memory in KB, and the standard output.
Run = collections.namedtuple("Run", "cpu wall memory output")


def measured(binaries, words):
    done = subprocess.run([os.path.join(binaries, "measure"), *words], capture_output=True, check=False)
    if done.returncode != 0:
        sys.exit(f"cannot be run or was killed: {' '.join(words)}")
    cpu, wall, memory = done.stderr.split()
    return Run(float(cpu), float(wall), int(memory), done.stdout)


def print_goals(goals):
    """Prints for each goal its text, the limit, the measured value, and whether the goal is reached."""
    print(f"\n{'':76}{'goal':>8}{'here':>8}")
    for text, goal, here in goals:
        print(f"{text:76}{goal:8.2f}{here:8.2f} {'reached' if round(here, 2) <= goal else 'missed'}")
