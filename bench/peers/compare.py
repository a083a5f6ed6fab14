"""compare.py BIN FOLDER RUNS SIZE: runs the programs of BIN in turns over exports that it writes to FOLDER,
and prints for each its median CPU and wall time, the spread of the wall time, and how many times longer
expat's peer took."""
import os
import random
import re
import statistics
import subprocess
import sys
import time

binaries, folder, runs, largest = sys.argv[1], sys.argv[2], int(sys.argv[3]), sys.argv[4]


def program(name, *words):
    return [os.path.join(binaries, name), *words]


one = program("stepdays", "--threads", "1")
two = program("stepdays", "--threads", "2")
expat = program("peer_expat")
everybody = {
    "stepdays, one thread": one,
    "stepdays, two threads": two,
    "stepdays, by expat": program("stepdays", "--reader", "expat"),
    "expat": expat,
    "libxml2": program("peer_libxml2"),
    "QXmlStreamReader": program("peer_qt"),
    "read()": program("peer_read"),
}
few = {"stepdays, one thread": one, "expat": expat}


def measured(words, path):
    begin = time.monotonic()
    process = subprocess.Popen(words + [path], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    wall = time.monotonic() - begin
    return usage.ru_utime + usage.ru_stime, wall


def compare(title, path, programs):
    print(f"\n{title}, {os.path.getsize(path) / 2**20:.0f} MiB, {runs} runs of each")
    print(f"{'':24}{'CPU s':>8}{'wall s':>8}{'least':>8}{'most':>8}{'CPU x':>8}{'wall x':>8}")
    results = {name: [] for name in programs}
    for _ in range(runs):
        for name, words in programs.items():
            results[name].append(measured(words, path))
    base = [statistics.median(column) for column in zip(*results["expat"])]
    for name, rows in results.items():
        cpus, walls = zip(*rows)
        cpu, wall = statistics.median(cpus), statistics.median(walls)
        print(f"{name:24}{cpu:8.3f}{wall:8.3f}{min(walls):8.3f}{max(walls):8.3f}"
              f"{base[0] / cpu:8.1f}{base[1] / wall:8.1f}")


def variant(source, name, change):
    """A copy of the export in which each line is what `change` makes of it."""
    path = os.path.join(folder, name)
    if not os.path.exists(path):
        with open(source, encoding="utf-8") as lines, open(path, "w", encoding="utf-8") as copy:
            copy.writelines(change(line) if line.startswith(" <Record") else line for line in lines)
    return path


def shuffled(line):
    attributes = re.findall(r'\w+="[^"]*"', line)
    chance.shuffle(attributes)
    return " <Record " + " ".join(attributes) + ("/>\n" if line.rstrip().endswith("/>") else ">\n")


def export(size):
    path = os.path.join(folder, f"export-{size}.xml")
    if not os.path.exists(path):
        subprocess.run(program("makeexport", "--size", size, path), check=True)
    return path


def cut(source, name):
    path = os.path.join(folder, name)
    if not os.path.exists(path):
        with open(source, "rb") as whole, open(path, "wb") as copy:
            copy.write(whole.read()[:-1000])
    return path


os.makedirs(folder, exist_ok=True)
chance = random.Random(1)
large, small = export(largest), export("100M")
compare("An export", large, {k: v for k, v in everybody.items() if os.path.exists(v[0])})
compare("Attributes shuffled", variant(small, "shuffled.xml", shuffled), few)
compare("Single quotes", variant(small, "single.xml", lambda line: line.replace("'", "").replace('"', "'")), few)
numbers = iter(range(10**9))
compare("A comment before each record",
        variant(small, "comments.xml", lambda line: f" <!-- {next(numbers)} -->\n{line}"), few)
compare("A reference in each record",
        variant(small, "references.xml", lambda line: line.replace('startDate="2', 'startDate="&#50;')), few)
compare("Cut off near the end", cut(small, "cut.xml"), few)
# Expat reads all of this one: a name beyond ASCII comes first.
compare("Handed over at the beginning",
        variant(small, "names.xml", lambda line: line.replace(" <Record ", ' <Record \u00e4="" ')), few)
