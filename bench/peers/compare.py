"""compare.py BIN FOLDER RUNS SIZE: runs the programs of BIN in turns over files that it writes to FOLDER,
and prints for each its median CPU and wall time, the spread of the wall time, its most memory in MB above
that on an empty document, and how many times longer the table's base took; at the end the goals."""
import os
import statistics
import sys

import variants
from measuring import measured, print_goals

binaries, folder, runs, size = sys.argv[1], sys.argv[2], int(sys.argv[3]), sys.argv[4]

ONE, TWO, EXPAT, BY_EXPAT = "stepdays, one thread", "stepdays, two threads", "expat", "stepdays, by expat"
programs = {
    ONE: ["stepdays", "--threads", "1"],
    TWO: ["stepdays", "--threads", "2"],
    "stepdays, four threads": ["stepdays", "--threads", "4"],
    "stepdays": ["stepdays"],
    BY_EXPAT: ["stepdays", "--reader", "expat"],
    EXPAT: ["peer_expat"],
    "libxml2": ["peer_libxml2"],
    "QXmlStreamReader": ["peer_qt"],
    "read()": ["peer_read"],
}
programs = {name: [os.path.join(binaries, words[0]), *words[1:]] for name, words in programs.items()}
programs = {name: words for name, words in programs.items() if os.path.exists(words[0])}

IN_WHOLE = [ONE, TWO, BY_EXPAT, EXPAT, "libxml2", "QXmlStreamReader", "read()"]
IN_VARIANTS = [ONE, TWO, EXPAT]
# Here expat alone would take gigabytes, so it is the one that stepdays keeps within limits.
IN_DAMAGE = ["stepdays", ONE, "stepdays, four threads", BY_EXPAT]

# The text, the least that is wanted, table, program, of which time, whose.
RATIOS = [
    ("one thread, CPU time, times expat", 22, "whole", ONE, "cpu", EXPAT),
    ("one thread, CPU time, times libxml2", 13, "whole", ONE, "cpu", "libxml2"),
    ("two threads, wall time, times expat", 40, "whole", TWO, "wall", EXPAT),
    ("two threads, wall time, times libxml2", 22, "whole", TWO, "wall", "libxml2"),
    ("two threads, wall time, of the plain read's speed", 0.55, "whole", TWO, "wall", "read()"),
    ("all types mixed, in order of time, times expat", 15, "timed", ONE, "cpu", EXPAT),
    ("all types mixed, in no order, times expat", 15, "mixed", ONE, "cpu", EXPAT),
    ("attributes shuffled, times expat", 5, "shuffled", ONE, "cpu", EXPAT),
    ("single quotes, times expat", 3, "single", ONE, "cpu", EXPAT),
    ("a comment before each record, times expat", 3, "comments", ONE, "cpu", EXPAT),
    ("a reference in each record, times expat", 3, "references", ONE, "cpu", EXPAT),
]
SLOWER_BY = 1.1  # at most, than expat, whatever the document
MEMORY = 16      # at most, whatever the document

tables = {}  # by name, then by program: medians and most memory


def compare(name, title, path, names, base):
    print(f"\n{title}, {os.path.getsize(path) / 2**20:.0f} MiB, {runs} runs of each")
    print(f"{'':24}{'CPU s':>8}{'wall s':>8}{'least':>8}{'most':>8}{'MB':>8}{'CPU x':>8}{'wall x':>8}", flush=True)
    names = [name for name in names if name in programs]
    measured(binaries, programs["read()"] + [path])  # so that the file is in memory
    results = {name: [] for name in names}
    for _ in range(runs):
        for program in names:
            results[program].append(measured(binaries, programs[program] + [path]))
    if len({run.output for program in names if program != "read()" for run in results[program]}) > 1:
        sys.exit(f"not all read the same days in {path}")
    table = tables[name] = {program: summary(program, rows) for program, rows in results.items()}
    for program, row in table.items():
        walls = [run.wall for run in results[program]]
        print(f"{program:24}{row['cpu']:8.3f}{row['wall']:8.3f}{min(walls):8.3f}{max(walls):8.3f}{row['memory']:8.1f}"
              f"{table[base]['cpu'] / row['cpu']:8.1f}{table[base]['wall'] / row['wall']:8.1f}", flush=True)


def summary(program, rows):
    return {
        "cpu": statistics.median(run.cpu for run in rows),
        "wall": statistics.median(run.wall for run in rows),
        "memory": (max(run.memory for run in rows) - empty_memory[program]) / 1024,
    }


def goals():
    for text, least, table, program, time, other in RATIOS:
        rows = tables[table]
        yield text, least, True, rows[other][time] / rows[program][time] if other in rows else None
    yield ("the slowest document, CPU time over expat's", SLOWER_BY, False,
           max(rows[ONE]["cpu"] / rows[EXPAT]["cpu"] for rows in tables.values() if EXPAT in rows))
    yield ("most memory, MB above an empty document's", MEMORY, False,
           max(row["memory"] for rows in tables.values() for name, row in rows.items() if name.startswith("stepdays")))


os.makedirs(folder, exist_ok=True)
empty = variants.empty(folder)
empty_memory = {name: statistics.median(measured(binaries, words + [empty]).memory for _ in range(runs))
                for name, words in programs.items()}
export = variants.export(os.path.join(binaries, "makeexport"), os.path.join(folder, f"export-{size}.xml"), size)
compare("whole", "An export", export, IN_WHOLE, EXPAT)
for name, (title, path) in variants.variants(folder, export).items():
    compare(name, title, path, IN_VARIANTS, EXPAT)
for title, path in variants.damage(folder, os.path.getsize(export)):
    compare(title, title, path, IN_DAMAGE, BY_EXPAT)
print_goals(goals())
