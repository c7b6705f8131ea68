"""Compares the places of the library that call the system with those that were made to fail.

points.py LIBRARY FIGURES SYSTEMCALLS prints three numbers, hit points, all points and names without an account, and then
a line for each point that was not hit and each such name. A point is a line of the sources, with the function that it
calls: where the compiler copies it to several places, one of them has to fail, and what it
adds for exceptions has no line and is no point. The library must be built with line
numbers, and without calls that replace a return (-g1 -fno-optimize-sibling-calls).
"""

import fnmatch
import re
import subprocess
import sys


def output(*command, text=None):
    return subprocess.run(command, input=text, capture_output=True, text=True, check=True).stdout


class Account:
    """The table of what can fail."""

    def __init__(self, file):
        self.faults = set()
        self.never = []
        self.places = set()
        for line in open(file, encoding="utf-8"):
            words = line.split("#")[0].split(":")[0].split()
            if not words:
                continue
            if words[0] == "fault":
                self.faults.update(words[1:])
            elif words[0] == "never":
                self.never += words[1:]
            else:
                self.places.update((words[1], function) for function in words[2:])

    def knows(self, name):
        return name in self.faults or any(fnmatch.fnmatchcase(name, pattern) for pattern in self.never)


def imports(library):
    names = output("nm", "-D", "--undefined-only", library).split()
    return sorted({name.split("@")[0] for name in names if len(name) > 1})


def calls(library):
    """Yields the called name and the address after the call, for every call of an imported function."""
    pending = None
    for line in output("objdump", "-d", "--no-show-raw-insn", library).splitlines():
        match = re.match(r"\s*([0-9a-f]+):\s+(.*)", line)
        if match and pending:
            yield pending, int(match[1], 16)
        pending = None
        called = match and re.search(r"call.*<([A-Za-z_0-9]+)(?:@plt|@GLIBC[A-Z_0-9.]*|@Base)>", match[2])
        if called:
            pending = called[1]


def lines_of(library, addresses):
    """Returns, for each address, the function and the line of the call before it, innermost first where it is inlined."""
    text = "".join(f"{address - 1:x}\n" for address in addresses)
    found = {}
    address = None
    rows = output("addr2line", "-a", "-f", "-i", "-C", "-e", library, text=text).splitlines()
    for row, following in zip(rows, rows[1:] + [""]):
        if row.startswith("0x"):
            address = int(row, 16) + 1
        elif address is not None and address not in found and not row.startswith("/"):
            function = row.replace("(anonymous namespace)::", "").split("(")[0].split("::")[-1]
            found[address] = (function, re.sub(r".*/Source/| \(.*", "", following))
    return found


def main():
    library, figures, table = sys.argv[1:]
    account = Account(table)
    unknown = [name for name in imports(library) if not account.knows(name)]

    sites = [(name, address) for name, address in calls(library) if name in account.faults]
    lines = lines_of(library, [address for _, address in sites])
    points = {}
    for name, address in sites:
        function, line = lines[address]
        if (name, function) not in account.places and not line.endswith("?"):
            points.setdefault((name, line), set()).add(address)

    struck = set()
    for row in open(figures, encoding="utf-8"):
        if row.startswith("site|"):
            struck.add(int(row.split("|")[2], 16))
    missed = sorted(point for point, addresses in points.items() if not addresses & struck)

    print(len(points) - len(missed), len(points), len(unknown))
    for name, line in missed:
        print(f"not hit: {name} in {line}")
    for name in unknown:
        print(f"no account: {name}")


main()
