"""Runs of whole programs, and what they are held against."""
import collections
import os
import subprocess
import sys

# Seconds of processor time, seconds by the clock, the most memory in KB, and what was printed.
Run = collections.namedtuple("Run", "cpu wall memory output")


def measured(binaries, words):
    done = subprocess.run([os.path.join(binaries, "measure"), *words], capture_output=True, check=False)
    if done.returncode != 0:
        sys.exit(f"did not run: {' '.join(words)}")
    cpu, wall, memory = done.stderr.split()
    return Run(float(cpu), float(wall), int(memory), done.stdout)


def print_goals(goals):
    """Of each goal, the text, the figure, whether it is the least or the most allowed, and what was measured."""
    print(f"\n{'':68}{'goal':>8}{'here':>8}")
    for text, goal, is_least, here in goals:
        reached = round(here, 2) >= goal if is_least else round(here, 2) <= goal
        print(f"{text:68}{goal:8.2f}{here:8.2f} {'reached' if reached else 'missed'}")
