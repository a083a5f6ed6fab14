"""Artificial documents. Some have one very large part. Others make a reader store, look up or search a
lot."""
import itertools
import os
import random

from variants import made

SIZE = 40 * 2**20  # large enough that reading takes much longer than starting the program
ROOT, END = b"<HealthData>\n", b"\n</HealthData>\n"
LONGEST = 9_990_000  # slightly less than the limit of a tag or comment, in bytes


def filled(begin, piece, end=b"", size=SIZE):
    """A writer of a document: `begin`, then `piece` repeated up to `size` bytes, then `end`. `piece` is a
    text, or a function of the number of the repetition."""
    def write(file):
        left = size - file.write(begin)
        pieces = map(piece, itertools.count()) if callable(piece) else itertools.repeat(
            piece * max(1, 4096 // len(piece)))
        for text in pieces:
            if left < len(text):
                break
            left -= file.write(text)
        file.write(end)
    return write


def written(*parts):
    return lambda file: file.writelines(parts)


def each(count, piece):
    return b"".join(piece(n) for n in range(count))


def seldom_new():
    chance = random.Random(1)
    return filled(ROOT, lambda _: b"".join(
        b'<a b="%s"/>' % (b"%c" % chance.randrange(97, 123) if chance.random() < 0.003 else b"")
        for _ in range(10_000)), END)


def letters(length):
    """A writer of tags that all have the same value of non-ASCII letters, `length` bytes long."""
    return filled(ROOT, b'<a b="' + "\u00e9".encode() * (length // 2) + b'"/>\n', END)


def distinct_letters(n):
    """A tag with a value of 2 to 15 KB, a repeated non-ASCII letter and `n`. No two values are equal."""
    return b'<a b="' + chr(0x100 + n % 4000).encode() * (1000 + 37 * n % 4000) + b'%d"/>\n' % n


def distinct_markup(n):
    """A tag with two attributes. The white space around the second depends on `n`."""
    spaces = bytes(b" \t\n "[n >> 2 * bit & 3] for bit in range(10))
    return b'<a b=""' + spaces[:5] + b'c=""' + spaces[5:] + b"/>"


WRITERS = {
    "comment": ("One comment", filled(ROOT + b"<!--", b"a", b"-->" + END)),
    "longest": ("Comments of 7 to 10 MB", written(
        ROOT, *(b"<!--" + b"a" * length + b"-->\n" for length in (7_000_000, 8_000_000, 9_000_000, LONGEST)), END)),
    "value": ("One attribute value", filled(ROOT + b'<Record type="', b"a", b'"/>' + END)),
    "tag": ("One attribute value just below the limit", filled(ROOT + b'<a b="', b"a", b'"/>' + END, LONGEST)),
    "most": ("Many names, then a tag and its value just below the limits, then many short tags", written(
        ROOT, each(5000, lambda n: b"<n%d/>" % n), b'<a b="' + b"a" * (2**21 - 1000) + b'"' + b" " * 7_800_000 + b"/>",
        b'<a b="1"/>' * 300_000, END)),
    "pools": ("72 tags with long values", written(
        ROOT, each(72, lambda n: b'<a b="%s"/>\n' % (b"a" * (100_000 + 300 * n))), END)),
    "seldom": ("Very short tags whose value seldom changes", seldom_new()),
    "letters2": ("Non-ASCII values of 2 KB", letters(2_000)),
    "letters20": ("Non-ASCII values of 20 KB", letters(20_000)),
    "letters250": ("Non-ASCII values of 250 KB", letters(250_000)),
    "distinct": ("Non-ASCII values, each different", filled(ROOT, distinct_letters, END)),
    "texts": ("Texts of 100 to 300 KB", filled(
        ROOT, lambda n: b"<a/>" + b"text " * (20_000 + 10_000 * (n % 5)), END)),
    "text": ("One text", filled(ROOT, b"a", END)),
    "deep": ("Elements that are never closed", filled(ROOT, b"<a>\n")),
    "elements": ("A new element name in each tag", filled(ROOT, lambda n: b"<n%d/>\n" % n, END)),
    "attributes": ("A new attribute name in each tag", filled(ROOT, lambda n: b'<r a%d=""/>\n' % n, END)),
    "markup": ("Different white space in each tag", filled(ROOT, distinct_markup, END)),
    "doctype": ("A malformed doctype that is never closed", filled(
        b"<!DOCTYPE HealthData [<!ELEMENT a EMPTY>< ", b"<!ELEMENT a EMPTY>\n")),
    "default": ("Two default values just below the limit", written(
        b"<!DOCTYPE a [", each(2, lambda n: b'<!ATTLIST a b%d CDATA "%s">' % (n, b"a" * 9_900_000)), b"]>", ROOT,
        b'<a b="' + b"a" * 9_900_000 + b'"/>', END)),
    "defaults": ("1,000 tags with 14,000 default attributes each", written(
        b"<!DOCTYPE a [<!ATTLIST a ", each(14_000, lambda n: b'b%d CDATA "%d" ' % (n, n)), b">]>", ROOT,
        b"<a/>" * 1000, END)),
    "entity": ("A value with an entity, both just below the limit", written(
        b'<!DOCTYPE a [<!ENTITY b "' + b"a" * 2_000_000 + b'">]>', ROOT, b'<a b="&b;' + b"a" * 2_000_000 + b'"/>', END)),
    "entities": ("A very large number of entities", filled(
        b"<!DOCTYPE a [", lambda n: b'<!ENTITY e%d "v">' % n, b"]>" + ROOT + END, 20_000_000)),
    "entityreferences": ("2 million references to an entity", written(
        b'<!DOCTYPE a [<!ENTITY e "">]>', ROOT, b"&e;" * 2_000_000, END)),
}


def damage(folder):
    """Makes the documents in `folder`. Returns the title and the path of each, by its name."""
    return {name: (title, made(os.path.join(folder, f"damage-{name}.xml"), write, __file__))
            for name, (title, write) in WRITERS.items()}


def empty(folder):
    return made(os.path.join(folder, "empty.xml"), lambda file: file.write(b"<HealthData/>\n"))
