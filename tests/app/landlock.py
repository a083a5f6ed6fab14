"""landlock.py [--read PATH]... [--write PATH]... -- COMMAND: runs a command with restrictions:
- It can read only at or below the --read and --write paths.
- It can write only at or below the --write paths.
- It can neither make nor accept TCP connections.
The exit status is 77 if the kernel does not support this."""

import ctypes
import os
import sys

CREATE_RULESET, ADD_RULE, RESTRICT_SELF = 444, 445, 446
VERSION_FLAG, PATH_BENEATH = 1, 1
EXECUTE, WRITE_FILE, READ_FILE, READ_DIR = 1, 2, 4, 8
TRUNCATE = 1 << 14
ALL_FILE_RIGHTS = (1 << 15) - 1  # those of version 3: all but ioctl on devices
FILE_RIGHTS = EXECUTE | WRITE_FILE | READ_FILE | TRUNCATE  # those that a rule for a file may have
ALL_TCP_RIGHTS = 3
TCP_VERSION = 4
PR_SET_NO_NEW_PRIVS = 38

libc = ctypes.CDLL(None, use_errno=True)


class Ruleset(ctypes.Structure):
    _fields_ = [("files", ctypes.c_uint64), ("tcp", ctypes.c_uint64)]


class PathBeneath(ctypes.Structure):
    _pack_ = 1
    _fields_ = [("rights", ctypes.c_uint64), ("parent", ctypes.c_int32)]


def call(number, *arguments):
    result = libc.syscall(number, *arguments)
    if result < 0:
        raise OSError(ctypes.get_errno(), os.strerror(ctypes.get_errno()))
    return result


def version():
    """The version of the kernel's Landlock; 0 if the kernel has none."""
    return max(0, libc.syscall(CREATE_RULESET, None, 0, VERSION_FLAG))


def restrict(readable, writable):
    ruleset = Ruleset(ALL_FILE_RIGHTS, ALL_TCP_RIGHTS)
    rules = call(CREATE_RULESET, ctypes.byref(ruleset), ctypes.sizeof(ruleset), 0)
    for paths, rights in ((readable, EXECUTE | READ_FILE | READ_DIR), (writable, ALL_FILE_RIGHTS)):
        for path in filter(os.path.exists, paths):
            parent = os.open(path, os.O_PATH | os.O_CLOEXEC)
            rule = PathBeneath(rights if os.path.isdir(path) else rights & FILE_RIGHTS, parent)
            call(ADD_RULE, rules, PATH_BENEATH, ctypes.byref(rule), 0)
            os.close(parent)
    libc.prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0)
    call(RESTRICT_SELF, rules, 0)
    os.close(rules)


def main(arguments):
    end = arguments.index("--")
    options = list(zip(arguments[:end:2], arguments[1:end:2]))
    if version() < TCP_VERSION:
        sys.exit(77)
    restrict([path for option, path in options if option == "--read"],
             [path for option, path in options if option == "--write"])
    os.execv(arguments[end + 1], arguments[end + 1:])


if __name__ == "__main__":
    main(sys.argv[1:])
