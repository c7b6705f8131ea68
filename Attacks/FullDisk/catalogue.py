"""What the attacks on tovcatalog share: a folder with a tree, an earlier catalogue, and what must hold after a run."""

import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

CATALOGUE = "c.cat"
FILES = 120
DEADLINE = 60


class Deviation(Exception):
    """Something is not as described."""


def require(holds, fact):
    if not holds:
        raise Deviation(fact)


def without_log(errors):
    """Standard error without the library's log, which it prints there for a debugger, and so where a run is traced. A
    failed call may have kept it from printing the end of a line."""
    return re.sub(rb"(?m)^\S+\.cpp\(\d+\) : .*? using map \w+\.\n?", b"", errors)


class Place:
    """A folder in which the program runs. The tree can stand elsewhere, so that the folder can be small."""

    def __init__(self, program, folder=None, tree=None):
        self.program = program
        self.folder = Path(folder or tempfile.mkdtemp(prefix="tov-disk-"))
        self.tree = Path(tree or self.folder / "tree")
        if tree is None:
            self.make_tree("earlier")
        self.old = self.make_catalogue()
        if tree is None:
            self.make_tree("new")
        else:
            self.change_tree()
        self.new = self.make_catalogue()
        require(self.old != self.new, "the two catalogues differ")
        self.restore()

    def make_tree(self, contents):
        for number in range(FILES):
            path = self.tree / f"folder {number % 5}" / f"a-name-that-makes-the-catalogue-grow-fast-{number}"
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(f"{contents} {number}\n")

    def change_tree(self):
        next(path for path in sorted(self.tree.rglob("*")) if path.is_file()).write_text(os.urandom(8).hex())

    def make_catalogue(self):
        run = self.run("create", CATALOGUE, self.tree)
        require(run.returncode == 0, f"a run without a fault succeeds: {run}")
        return self.catalogue()

    def catalogue(self):
        return (self.folder / CATALOGUE).read_bytes()

    def restore(self):
        (self.folder / CATALOGUE).write_bytes(self.old)

    def names(self):
        """What is in the folder besides the tree and the catalogue."""
        return sorted(set(os.listdir(self.folder)) - {CATALOGUE, self.tree.name})

    def command(self, *arguments):
        return [self.program, *map(str, arguments)]

    def run(self, *arguments, before=(), **options):
        """Runs the program, after the words of another command that starts it."""
        options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **options}
        return subprocess.run([*before, *self.command(*arguments)], cwd=self.folder, stdin=subprocess.DEVNULL,
                              timeout=DEADLINE, check=False, **options)

    def require_whole(self):
        require(self.catalogue() in (self.old, self.new), "the earlier catalogue or the new one is whole")

    def require_told(self, run):
        """Checks a create that may have failed: success means the new catalogue, and a failure is never silent."""
        self.require_whole()
        if run.returncode == 0:
            require(self.catalogue() == self.new, "success means the new catalogue")
        else:
            require(run.stderr.strip(), f"a failure is told (exit status {run.returncode})")

    def require_clean_next_run(self):
        run = self.run("create", CATALOGUE, self.tree)
        require(run.returncode == 0 and self.catalogue() == self.new, f"the next run succeeds: {run}")
        require(not self.names(), f"nothing is left over: {self.names()}")
        self.restore()


class Figure:
    """Counts the runs of an attack, and those that were not as described."""

    def __init__(self, what, wanted):
        self.what, self.wanted, self.runs, self.bad, self.notes = what, wanted, 0, 0, {}

    def attempt(self, check, *arguments):
        self.runs += 1
        try:
            check(*arguments)
        except (Deviation, OSError, subprocess.TimeoutExpired) as error:
            self.bad += 1
            if self.bad <= 5:
                print(f"not so: {self.what}, {arguments}: {error}")

    def note(self, name):
        self.notes[name] = self.notes.get(name, 0) + 1

    def tell(self, enough=True):
        holds = self.bad == 0 and self.runs > 0 and enough
        notes = "".join(f", {count} {name}" for name, count in sorted(self.notes.items()))
        print(f"figure | full-disk | {self.what} | {self.runs}, {self.bad} not as described{notes} | {self.wanted} | "
              + ("yes" if holds else "no"))
        sys.stdout.flush()
        return holds
