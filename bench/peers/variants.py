"""Files to read, made once and kept: an export, variants of it of about the same size, and documents
that grow where a reader may have to remember."""
import itertools
import os
import random
import re
import subprocess

DAMAGE_SIZE = 200 * 2**20


def made(path, write):
    """The path, with what `write` writes to an open file in it."""
    if not os.path.exists(path):
        with open(path + ".part", "wb") as file:
            write(file)
        os.rename(path + ".part", path)
    return path


def export(makeexport, path, size):
    return made(path, lambda file: subprocess.run([makeexport, "--size", size, "-"], stdout=file, check=True))


def records(file):
    """The lines of an export, those of a record at the top level as one: whether it is one, and the text."""
    for line in file:
        if line.startswith(b" <Record ") and not line.endswith(b"/>\n"):
            line += b"".join(iter(file.readline, b" </Record>\n")) + b" </Record>\n"
            yield True, line
        else:
            yield line.startswith(b" <Record "), line


def with_each(change):
    """Writes a copy of an export in which each record is what `change` makes of it."""
    def write(source, copy):
        copy.writelines(change(text) if is_record else text for is_record, text in records(source))
    return write


def mixed(in_order):
    """Writes a copy with the records in the order that `in_order` makes of their start dates."""
    def write(source, copy):
        # Only their places are kept in mind: the source is written first to last.
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
    """Of the export at the path `whole`: titles and paths, by name."""
    writers = {
        "timed": ("Records of all types mixed, in order of time", mixed(by_time)),
        "mixed": ("Records of all types mixed, in no order", mixed(by_chance)),
        "shuffled": ("Attributes shuffled", shuffle_attributes()),
        "single": ("Single quotes", turn_quotes),
        "comments": ("A comment before each record", comment_each()),
        "references": ("A reference in each record", with_each(
            lambda record: record.replace(b'startDate="2', b'startDate="&#50;', 1))),
        "cut": ("Cut off near the end", cut),
        # Expat reads all of this one: a name beyond ASCII comes first.
        "names": ("Handed over at the beginning", with_each(
            lambda record: record.replace(b" <Record ", b' <Record \xc3\xa4="" ', 1))),
    }

    def writer(write):
        def write_copy(copy):
            with open(whole, "rb") as source:
                write(source, copy)
        return write_copy

    stem = os.path.basename(whole).removesuffix(".xml")
    return {name: (title, made(os.path.join(folder, f"{stem}-{name}.xml"), writer(write)))
            for name, (title, write) in writers.items()}


def filled(size, begin, piece, end=b""):
    """Writes a document in which `piece`, a text or a function of a number, stands as often as fits."""
    def write(file):
        left = size - file.write(begin)
        pieces = map(piece, itertools.count()) if callable(piece) else itertools.repeat(piece * (4096 // len(piece)))
        for text in pieces:
            if left < len(text):
                break
            left -= file.write(text)
        file.write(end)
    return write


def seldom_new(size, begin, end):
    """Writes a document whose tags have an empty value each, but for three in a thousand, which have any letter."""
    chance = random.Random(1)
    return filled(size, begin, lambda _: b"".join(
        b'<a b="%s"/>' % (b"%c" % chance.randrange(97, 123) if chance.random() < 0.003 else b"")
        for _ in range(10_000)), end)


def damage(folder, most):
    """Titles and paths of documents that grow in one place to 200 MiB, but no more than `most` bytes, and of some
    that take as much memory as one can."""
    size, root, end = min(DAMAGE_SIZE, most), b"<HealthData>\n", b"\n</HealthData>\n"
    writers = {
        "comment": ("One comment", filled(size, root + b"<!--", b"a", b"-->" + end)),
        "value": ("One attribute value", filled(size, root + b'<Record type="', b"a", b'"/>' + end)),
        "tag": ("One attribute value just not too long",
                filled(min(size, 9_990_000), root + b'<a b="', b"a", b'"/>' + end)),
        "most": ("Many names, a tag and its values just not too long, then more", lambda file: file.write(
            root + b"".join(b"<n%d/>" % n for n in range(5000)) + b'<a b="' + b"a" * (2**21 - 1000) + b'"'
            + b" " * 7_800_000 + b"/>" + b'<a b="1"/>' * 300_000 + end)),
        "runs": ("Values that are seldom new in very short tags", seldom_new(min(size, 30_000_000), root, end)),
        "default": ("Two default values just not too long", lambda file: file.write(
            b"<!DOCTYPE a [" + b"".join(b'<!ATTLIST a b%d CDATA "%s">' % (n, b"a" * 9_900_000) for n in range(2))
            + b"]>" + root + b'<a b="' + b"a" * 9_900_000 + b'"/>' + end)),
        "entity": ("A replacing text in a value, both just not too long", lambda file: file.write(
            b'<!DOCTYPE a [<!ENTITY b "' + b"a" * 2_000_000 + b'">]>' + root + b'<a b="&b;' + b"a" * 2_000_000
            + b'"/>' + end)),
        "text": ("One text", filled(size, root, b"a", end)),
        "deep": ("Elements opened without end", filled(size, root, b"<a>\n")),
        "elements": ("A new element name in each tag", filled(size, root, lambda n: b"<n%d/>\n" % n, end)),
        "attributes": ("A new attribute name in each tag", filled(size, root, lambda n: b'<r a%d=""/>\n' % n, end)),
    }
    return [(title, made(os.path.join(folder, f"{name}-{size}.xml"), write)) for name, (title, write) in writers.items()]


def empty(folder):
    return made(os.path.join(folder, "empty.xml"), lambda file: file.write(b"<HealthData/>\n"))
