"""compile.py BUILD CXX: compiles all sources of src for macOS, and the tests and developers' programs that do
not use Qt. CXX is a clang of this system. It uses libc++, and the headers in stubs instead of those of the
Mac. Nothing is linked or run. This does not show whether the stubs agree with the headers of the Mac, or
whether the program works on a Mac."""

import concurrent.futures
import json
import os
import pathlib
import shlex
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
BUILD = pathlib.Path(sys.argv[1])
CXX = sys.argv[2]
ENTRIES = json.loads((BUILD / "compile_commands.json").read_text())


def includes():
    """The include flags of each folder, from the build on this system."""
    found = {}
    for entry in ENTRIES:
        folder = pathlib.Path(entry["file"]).parent
        words = shlex.split(entry["command"])
        flags = [word for word in words if word.startswith(("-I", "-D"))]
        system = [word for i, word in enumerate(words) if "-isystem" in words[max(i - 1, 0):i + 1]]
        found.setdefault(folder, flags + system)
    return found


def sources_without_qt():
    """The sources outside src whose build on this system does not use Qt. NumbersFuzz is left out, as CMake
    leaves it out if std::from_chars does not read doubles, which is so in libc++ 19."""
    sources = {pathlib.Path(entry["file"]) for entry in ENTRIES
               if "-DQT_CORE_LIB" not in entry["command"]}
    return sorted(source for source in sources
                  if not source.is_relative_to(ROOT / "src") and source.stem != "NumbersFuzz")


def compile_source(source, flags):
    command = [CXX, "-stdlib=libc++", "-std=c++20", "-fsyntax-only", "-fPIC",
               "-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Wconversion", "-Werror",
               "-Wno-unknown-warning-option", f"-isystem{HERE / 'stubs'}",
               "-include", "mac.h", *flags, str(source)]
    done = subprocess.run(command, cwd=BUILD, capture_output=True, text=True, check=False)
    return source, done.returncode, done.stderr


def main():
    flags = includes()
    sources = [ROOT / line for line in (BUILD / "tests/mac/sources.txt").read_text().split("\n")
               if line] + sources_without_qt()
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = [pool.submit(compile_source, source, flags[source.parent]) for source in sources]
        for job in jobs:
            source, status, diagnostics = job.result()
            if status != 0:
                failed += 1
                print(f"{source.relative_to(ROOT)} does not compile:\n{diagnostics}")
    print(f"{len(sources) - failed} of {len(sources)} sources compile")
    sys.exit(failed != 0 or not sources)


main()
