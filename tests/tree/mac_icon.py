"""mac_icon.py SOURCE: checks the types and the pictures in the icon for macOS."""

import struct
import sys
from pathlib import Path

WIDTHS = {
    b"icp4": 16, b"icp5": 32, b"ic07": 128, b"ic08": 256, b"ic09": 512,
    # for high-resolution displays
    b"ic11": 32, b"ic12": 64, b"ic13": 256, b"ic14": 512, b"ic10": 1024,
}

folder = Path(sys.argv[1]) / "resources" / "icon"
icon = (folder / "Ambulet.icns").read_bytes()
assert struct.unpack(">4sI", icon[:8]) == (b"icns", len(icon)), "not a whole icns file"
found = {}
at = 8
while at < len(icon):
    kind, length = struct.unpack(">4sI", icon[at : at + 8])
    assert kind not in found, f"{kind} is there twice"
    assert 8 < length <= len(icon) - at, f"{kind} has the length {length}"
    found[kind] = icon[at + 8 : at + length]
    at += length
assert found.keys() == WIDTHS.keys(), f"the types are {sorted(found)}"
for kind, png in found.items():
    assert png[:8] == b"\x89PNG\r\n\x1a\n", f"{kind} is no PNG"
    width, height = struct.unpack(">II", png[16:24])
    assert width == height == WIDTHS[kind], f"{kind} has {width} by {height} pixels"
    file = folder / f"ambulet-{width}.png"
    assert width == 1024 or png == file.read_bytes(), f"{kind} is not the picture of {file.name}"
