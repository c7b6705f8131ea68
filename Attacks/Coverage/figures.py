"""Makes figures of the lines that gcovr has counted and of the branches of the build, and lists what no test reaches."""

import json
import re
import sys
from pathlib import Path

import branches

MARKER = re.compile(r"GCOVR?_EXCL_[A-Z_]+")


# The checks of the suites that the library carries fail only if the library is broken: their lines count, their branches
# do not.
WITHOUT_BRANCHES = "Source/TestSuites/"


class Count:
    def __init__(self):
        self.lines = self.reached_lines = self.branches = self.reached_branches = 0
        self.missed_lines, self.missed_branches = [], []

    def add(self, file, ways):
        """Ways are the counts of branches for each line, as read by branches.read."""
        lines, missed = [], []
        for line in file["lines"]:
            if line.get("gcovr/noncode") or line.get("gcovr/excluded"):
                continue
            number = line["line_number"]
            self.lines += 1
            self.reached_lines += line["count"] > 0
            if line["count"] == 0:
                lines.append(number)
            if file["file"].startswith(WITHOUT_BRANCHES):
                continue
            counts = ways.get(number, [])
            self.branches += len(counts)
            self.reached_branches += sum(count > 0 for count in counts)
            if 0 in counts and line["count"]:
                missed.append(number)
        if lines:
            self.missed_lines.append((file["file"], lines))
        if missed:
            self.missed_branches.append((file["file"], missed))


def count(files, ways, beginning):
    """Of the files whose names match, as one."""
    total = Count()
    for file in files:
        if re.match(beginning, file["file"]):
            total.add(file, ways.get(file["file"], {}))
    return total


def tell(name, part, whole, goal):
    share = 100 * part / whole if whole else 0
    # Rounded down, so that a figure never looks better than it is.
    print(f"figure | coverage | {name} | {int(share * 100) / 100:.2f} % ({part:,} of {whole:,}) | >= {goal} % | "
          f"{'yes' if whole and share >= goal else 'no'}")


def ranges(numbers):
    """1, 2, 3, 5 become 1-3, 5."""
    parts = []
    for number in numbers:
        if parts and number == parts[-1][1] + 1:
            parts[-1][1] = number
        else:
            parts.append([number, number])
    return ", ".join(str(first) if first == last else f"{first}-{last}" for first, last in parts)


def tell_missed(title, missed):
    if missed:
        print(f"detail | coverage | {title}")
        print("detail | coverage | ")
    for file, numbers in missed:
        print(f"detail | coverage | - `{file}`: {ranges(numbers)}")
    if missed:
        print("detail | coverage | ")


def tell_left_out():
    """A line that cannot be reached bears a marker, and beside it the reason."""
    found = []
    for folder in ("Source", "Tools", "Examples"):
        for path in sorted(Path(folder).rglob("*")):
            if path.suffix not in (".h", ".cpp", ".inl"):
                continue
            for line in path.read_text(encoding="utf-8").splitlines():
                marker = MARKER.search(line)
                if marker and not marker.group(0).endswith("_STOP"):
                    found.append((path, line[marker.end():].strip(" :")))
    bare = sum(not reason for _, reason in found)
    print(f"figure | coverage | marked as out of reach without a reason | {bare} of {len(found)} | 0 | "
          f"{'no' if bare else 'yes'}")
    if found:
        print("detail | coverage | Marked as out of reach:")
        print("detail | coverage | ")
    for path, reason in found:
        print(f"detail | coverage | - `{path}`: {reason}")
    if found:
        print("detail | coverage | ")


def main():
    work, build = Path(sys.argv[1]), Path(sys.argv[2])
    files = {path.stem: json.loads(path.read_text(encoding="utf-8"))["files"] for path in work.glob("*.json")}
    parts = [("Source", "linux", "Source/", 99, 95), ("Tools and Examples", "linux", "(Tools|Examples)/", 99, 95),
             ("the Windows backend", "windows", "Source/Windows/", 90, None),
             ("Windows files of Tools and Examples", "windows", "(Tools|Examples)/", 90, None)]
    # Branches are told of Linux alone.
    ways = branches.read(build, r"(Source|Tools|Examples)/")
    counts = [(name, count(files[system], ways if of_branches else {}, beginning), of_lines, of_branches)
              for name, system, beginning, of_lines, of_branches in parts if system in files]
    for name, total, of_lines, of_branches in counts:
        if not total.lines:
            continue
        tell(f"lines of {name}", total.reached_lines, total.lines, of_lines)
        if of_branches:
            tell(f"branches of {name}", total.reached_branches, total.branches, of_branches)
    print("detail | coverage | A branch is an edge of the compiler's flow graph where a condition chooses between two or more. "
          "Edges that an exception takes do not count, nor does what only they lead to, nor `Source/TestSuites`, whose checks "
          "fail only in a broken library.")
    print("detail | coverage | ")
    tell_left_out()
    for name, total, _, of_branches in counts:
        tell_missed(f"Lines of {name} that no test reaches:", total.missed_lines)
        if of_branches:
            tell_missed(f"Lines of {name} with a branch that no test takes:", total.missed_branches)
    return 0


if __name__ == "__main__":
    sys.exit(main())
