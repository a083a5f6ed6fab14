"""The files to read: exports, and variants of one export, which have about the same size."""
import itertools
import os
import random
import re
import subprocess
import sys


def made(path, write, *sources):
    """Writes a file with `write`, unless a file that is as new as all sources exists. Returns its path."""
    if not os.path.exists(path) or any(os.path.getmtime(path) < os.path.getmtime(source) for source in sources):
        with open(path + ".part", "wb") as file:
            write(file)
        os.rename(path + ".part", path)
    return path


def export(makeexport, path, size):
    return made(path, lambda file: subprocess.run([makeexport, "--size", size, "-"], stdout=file, check=True),
                makeexport)


def other_export(path, size):
    """An export from the second generator, which shares no code with makeexport."""
    generator = os.path.join(os.path.dirname(__file__), "export.py")
    return made(path, lambda file: subprocess.run([sys.executable, generator, size], stdout=file, check=True),
                generator)


def records(file):
    """Yields the lines of an export as pairs: whether the text is a top-level record, and the text. All lines
    of a top-level record are one text."""
    for line in file:
        if line.startswith(b" <Record ") and not line.endswith(b"/>\n"):
            line += b"".join(iter(file.readline, b" </Record>\n")) + b" </Record>\n"
            yield True, line
        else:
            yield line.startswith(b" <Record "), line


def with_each(change):
    """A writer of a copy of an export in which `change` has changed each record."""
    def write(source, copy):
        copy.writelines(change(text) if is_record else text for is_record, text in records(source))
    return write


def mixed(in_order):
    """A writer of a copy with the records in another order. `in_order` gets the start dates of the records,
    and returns their indexes in the new order."""
    def write(source, copy):
        dates, begins, lengths, place = [], [], [], 0
        for is_record, text in records(source):
            if is_record:
                dates.append(re.search(rb'startDate="([^"]*)', text)[1])
                begins.append(place)
                lengths.append(len(text))
            place += len(text)
        next_record = iter(in_order(dates))
        source.seek(0)
        with open(source.name, "rb") as anywhere:
            for is_record, text in records(source):
                if is_record:
                    record = next(next_record)
                    anywhere.seek(begins[record])
                    text = anywhere.read(lengths[record])
                copy.write(text)
    return write


def by_time(dates):
    return sorted(range(len(dates)), key=dates.__getitem__)


def by_chance(dates):
    return random.Random(1).sample(range(len(dates)), len(dates))


def shuffle_attributes():
    chance = random.Random(1)

    def change(record):
        tag, end, rest = re.match(rb" <Record (.*?)(/?>\n)(.*)", record, re.DOTALL).groups()
        attributes = re.findall(rb'\w+="[^"]*"', tag)
        chance.shuffle(attributes)
        return b" <Record " + b" ".join(attributes) + end + rest
    return with_each(change)


def turn_quotes(source, copy):
    copy.writelines(line.replace(b"'", b"").replace(b'"', b"'") for line in source)


def comment_each():
    numbers = itertools.count()
    return with_each(lambda record: b" <!-- %d -->\n%s" % (next(numbers), record))


def cut(source, copy):
    size = os.path.getsize(source.name) - 1000
    while size > 0:
        size -= copy.write(source.read(min(size, 2**20)))


def variants(folder, whole):
    """Makes the variants of the export at the path `whole`. Returns the title and the path of each, by its
    name."""
    writers = {
        "timed": ("Records of all types, sorted by time", mixed(by_time)),
        "mixed": ("Records of all types, in random order", mixed(by_chance)),
        "shuffled": ("Attributes in random order", shuffle_attributes()),
        "single": ("Single quotes", turn_quotes),
        "comments": ("A comment before each record", comment_each()),
        "references": ("A reference in each record", with_each(
            lambda record: record.replace(b'startDate="2', b'startDate="&#50;', 1))),
        "cut": ("Cut off near the end", cut),
        "names": ("A non-ASCII attribute name in each record", with_each(
            lambda record: record.replace(b" <Record ", b' <Record \xc3\xa4="" ', 1))),
    }

    def writer(write):
        def write_copy(copy):
            with open(whole, "rb") as source:
                write(source, copy)
        return write_copy

    stem = os.path.basename(whole).removesuffix(".xml")
    return {name: (title, made(os.path.join(folder, f"{stem}-{name}.xml"), writer(write), whole))
            for name, (title, write) in writers.items()}
