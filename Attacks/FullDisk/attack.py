"""Lets tovcatalog run out of room, kills it, and fails its calls to the system: see --help.

The exit status is 1 when something is not as described. Runs in a mount namespace of its own (unshare --mount).
"""

import argparse
import os
import sys
import tempfile

import failing_calls
import full_disks
import kills


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--kills", type=int, default=1000)
    parser.add_argument("--step", type=int, default=100, help="bytes from one limit of file sizes to the next")
    parser.add_argument("--without-strace", action="store_true", help="no faults of single calls to the system")
    arguments = parser.parse_args()
    program = os.path.abspath(arguments.program)

    with tempfile.TemporaryDirectory(prefix="tov-disk-") as folder:
        tempfile.tempdir = folder
        results = [full_disks.attack(program, arguments.step),
                   kills.attack(program, arguments.kills, not arguments.without_strace)]
        if not arguments.without_strace:
            results.append(failing_calls.attack(program))
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
