"""compare.py BIN FOLDER RUNS SIZE: runs the programs of BIN alternately on files that it writes to FOLDER.
For each file it prints a table. A row has, for one program:
- the CPU time and the wall time: for an export, the medians of the runs,
- the shortest and the longest wall time,
- the peak memory in MB, minus that for an empty document,
- the times, divided by those of the table's reference program.
After the tables it prints the goals.

Variants and artificial documents are read within a few hundredths of a second, so other processes change their medians by a
tenth or more. Each program reads them at least nine times, and its least times count.

AMBULET_BASELINE may be a folder with the programs of another build, the baseline. Then each table also has
the baseline's stepdays, there is a table for an export that the baseline's makeexport writes, and goals
relative to the baseline are printed."""
import os
import statistics
import subprocess
import sys

import variants
from damage import damage, empty
from measuring import measured, print_goals

binaries, folder, runs, size = sys.argv[1], sys.argv[2], int(sys.argv[3]), sys.argv[4]
baseline = os.environ.get("AMBULET_BASELINE")

ONE, TWO, FOUR = "stepdays, one thread", "stepdays, two threads", "stepdays, four threads"
OLD_ONE, OLD_TWO = "baseline, one thread", "baseline, two threads"
BY_EXPAT, EXPAT, READ = "stepdays, by expat", "expat", "read()"
programs = {
    ONE: (binaries, "stepdays", "--threads", "1"),
    TWO: (binaries, "stepdays", "--threads", "2"),
    FOUR: (binaries, "stepdays", "--threads", "4"),
    OLD_ONE: (baseline, "stepdays", "--threads", "1"),
    OLD_TWO: (baseline, "stepdays", "--threads", "2"),
    BY_EXPAT: (binaries, "stepdays", "--reader", "expat"),
    EXPAT: (binaries, "peer_expat"),
    "libxml2": (binaries, "peer_libxml2"),
    "QXmlStreamReader": (binaries, "peer_qt"),
    READ: (binaries, "peer_read"),
}
programs = {name: [os.path.join(bin, program), *words] for name, (bin, program, *words) in programs.items() if bin}
programs = {name: words for name, words in programs.items() if os.path.exists(words[0])}

IN_EXPORTS = [ONE, TWO, OLD_ONE, OLD_TWO, BY_EXPAT, EXPAT, "libxml2", "QXmlStreamReader", READ]
IN_VARIANTS = [ONE, TWO, OLD_ONE, EXPAT]
# Without peer_expat, which would use gigabytes of memory here. stepdays limits the memory of expat.
IN_DAMAGE = [ONE, FOUR, OLD_ONE, BY_EXPAT]

LIFELIKE = {"first": "makeexport's export", "second": "the second generator's export"}
BASELINES = "the baseline's export"
# The variants that must take no longer than with the baseline.
AS_FAST = ["timed", "mixed", "shuffled", "comments", "references", "single"]

tables = {}   # by name, then by program: the times and the most memory
differ = []   # the tables in which not all programs of this build printed the same days
limited = []  # the tables of documents whose reading ends at a limit of memory


def compare(name, title, path, names, base):
    names = [program for program in names if program in programs]
    is_export = name in exports
    turns = runs if is_export else max(runs, 9)
    verdict = subprocess.run(programs[BY_EXPAT] + [path], capture_output=True, text=True, check=False).stderr.strip()
    print(f"\n{title}, {os.path.getsize(path) / 2**20:.0f} MiB, {'medians' if is_export else 'least'} of {turns} runs; "
          f"{verdict}; /: divided by {base}")
    print(f"{'':24}{'CPU s':>8}{'wall s':>8}{'least':>8}{'most':>8}{'MB':>8}{'CPU /':>8}{'wall /':>8}", flush=True)
    results = {program: [] for program in names}
    for turn in range(turns):
        first = turn % len(names)  # so that no program always runs first
        for program in names[first:] + names[:first]:
            results[program].append(measured(binaries, programs[program] + [path]))
    table = tables[name] = {
        program: summary(program, rows, statistics.median if is_export else min) for program, rows in results.items()}
    for program, row in table.items():
        walls = [run.wall for run in results[program]]
        print(f"{program:24}{row['cpu']:8.3f}{row['wall']:8.3f}{min(walls):8.3f}{max(walls):8.3f}{row['memory']:8.1f}"
              f"{row['cpu'] / table[base]['cpu']:8.2f}{row['wall'] / table[base]['wall']:8.2f}", flush=True)
    if len({run.output for program in names if program not in (READ, OLD_ONE, OLD_TWO) for run in results[program]}) > 1:
        differ.append(title)
        print("The programs read different days.")
    if "memory" in verdict:
        limited.append(name)


def summary(program, rows, of):
    return {
        "cpu": of(run.cpu for run in rows),
        "wall": of(run.wall for run in rows),
        "memory": (max(run.memory for run in rows) - empty_memory[program]) / 1024,
    }


def over(table, program, time, other):
    return tables[table][program][time] / tables[table][other][time]


def worst(names):
    return max((over(name, ONE, "cpu", EXPAT if EXPAT in tables[name] else BY_EXPAT), name) for name in names)


def goals():
    for name, title in LIFELIKE.items():
        if baseline:
            yield f"{title}, one thread, CPU / baseline's", 0.76, over(name, ONE, "cpu", OLD_ONE)
            yield f"{title}, two threads, wall / baseline's", 0.80, over(name, TWO, "wall", OLD_TWO)
        yield f"{title}, one thread, CPU / read()'s", 2.1, over(name, ONE, "cpu", READ)
    if baseline:
        yield f"{BASELINES}, one thread, CPU / baseline's", 0.90, over("old", ONE, "cpu", OLD_ONE)
        for name in AS_FAST:
            yield f"{titles[name]}, one thread, CPU / baseline's", 1.0, over(name, ONE, "cpu", OLD_ONE)
    ratio, name = worst(tables.keys() - limited)
    yield f"the slowest document ({titles[name]}), CPU / expat's", 1.1, ratio
    if limited:
        ratio, name = worst(limited)
        yield f"the slowest document stopped by a memory limit ({titles[name]}), CPU / expat's", 2, ratio
    memory, name = max((row["memory"], name) for name, rows in tables.items() for program, row in rows.items()
                       if program in (ONE, TWO, FOUR, BY_EXPAT))
    yield f"most memory ({titles[name]}), MB above that for an empty document", 16, memory
    yield "documents of which the programs read different days", 0, len(differ)


def part_of(whole, divisor):
    """`whole` divided by `divisor`, as an argument of makeexport."""
    return f"{(int(whole[:-1]) << {'K': 0, 'M': 10, 'G': 20}[whole[-1]]) // divisor}K"


os.makedirs(folder, exist_ok=True)
empty_memory = {name: statistics.median(measured(binaries, words + [empty(folder)]).memory for _ in range(runs))
                for name, words in programs.items()}
makeexport = os.path.join(binaries, "makeexport")
exports = {"first": variants.export(makeexport, os.path.join(folder, f"export-{size}.xml"), size),
           "second": variants.other_export(os.path.join(folder, f"other-{size}.xml"), size)}
if baseline:
    exports["old"] = variants.export(os.path.join(baseline, "makeexport"), os.path.join(folder, f"old-{size}.xml"), size)
for name, path in exports.items():
    compare(name, LIFELIKE.get(name, BASELINES).capitalize(), path, IN_EXPORTS, EXPAT)

small = part_of(size, 4)  # enough for the variants: only the time per byte counts
whole = variants.export(makeexport, os.path.join(folder, f"export-{small}.xml"), small)
changed, damaged = variants.variants(folder, whole), damage(folder)
titles = {**LIFELIKE, "old": BASELINES,
          **{name: title for name, (title, _) in {**changed, **damaged}.items()}}
assert len(titles) == len(LIFELIKE) + 1 + len(changed) + len(damaged), "a name is used twice"
for name, (title, path) in changed.items():
    compare(name, title, path, IN_VARIANTS, EXPAT)
for name, (title, path) in damaged.items():
    compare(name, title, path, IN_DAMAGE, BY_EXPAT)
print_goals(goals())
