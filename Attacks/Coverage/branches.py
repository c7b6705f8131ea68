"""Reads the branches of a build from the flow graphs and counts that GCC 12 leaves (.gcno and .gcda).

Exceptions leave edges of their own at each call, and blocks that only they reach, as destructors on the way out. Neither
is a branch that a condition of the source makes, and gcov's output tells only of the former. So a branch here is an edge
of a block that has two or more of them without an exception, and that can be reached without one.
"""

import re
import struct
from collections import Counter, defaultdict
from pathlib import Path

FUNCTION, BLOCKS, ARCS, LINES, COUNTS = 0x01000000, 0x01410000, 0x01430000, 0x01450000, 0x01A10000
ON_TREE, FAKE, FALLTHROUGH = 1, 2, 4
ENTRY, EXIT = 0, 1
TOP = f"{Path.cwd()}/"


class Reader:
    def __init__(self, path):
        self.data, self.place = path.read_bytes(), 0

    def number(self):
        self.place += 4
        return struct.unpack_from("<I", self.data, self.place - 4)[0]

    def text(self):
        length = self.number()
        self.place += length
        return self.data[self.place - length:self.place].rstrip(b"\0").decode()

    def records(self):
        """Tag and end of each; the next one starts there, whatever was read of this."""
        while self.place + 8 <= len(self.data):
            tag, length = self.number(), self.number()
            if tag == 0:
                return
            end = self.place + max(length, 0) if length < 0x80000000 else self.place
            yield tag, length, end
            self.place = end


class Arc:
    def __init__(self, source, target, flags):
        self.source, self.target = source, target
        self.on_tree, self.fake, self.falls = flags & ON_TREE, flags & FAKE, flags & FALLTHROUGH
        self.throws, self.count = False, None


class Function:
    def __init__(self, source, start):
        self.source, self.start = source, start
        self.blocks, self.arcs, self.places = 0, [], {}

    def mark_throws(self):
        """A block that a call may leave for good has a fake edge; where else it goes but on, a handler waits."""
        calls = {arc.source for arc in self.arcs if arc.fake and arc.source != ENTRY}
        for arc in self.arcs:
            arc.throws = arc.source in calls and not arc.fake and not arc.falls

    def solve(self, counts):
        """Edges on the tree have no counter: what flows into a block flows out of it."""
        counters = iter(counts)
        for arc in self.arcs:
            arc.count = None if arc.on_tree else next(counters, 0)
        into, out_of = defaultdict(list), defaultdict(list)
        for arc in self.arcs:
            into[arc.target].append(arc)
            out_of[arc.source].append(arc)
        totals, changed = {}, True
        while changed:
            changed = False
            for block in range(self.blocks):
                for arcs in [] if block == ENTRY else [into[block]], [] if block == EXIT else [out_of[block]]:
                    for side in arcs:
                        unknown = [arc for arc in side if arc.count is None]
                        known = sum(arc.count for arc in side if arc.count is not None)
                        if not unknown and block not in totals:
                            totals[block], changed = known, True
                        elif len(unknown) == 1 and block in totals:
                            unknown[0].count, changed = max(totals[block] - known, 0), True

    def branches(self):
        """File, line and count of each."""
        ways = defaultdict(list)
        for arc in self.arcs:
            if not arc.fake and not arc.throws:
                ways[arc.source].append(arc)
        reached, open_blocks = {ENTRY}, [ENTRY]
        while open_blocks:
            for arc in ways[open_blocks.pop()]:
                if arc.target not in reached:
                    reached.add(arc.target)
                    open_blocks.append(arc.target)
        for block in sorted(reached):
            if len(ways[block]) > 1 and block in self.places:
                for arc in ways[block]:
                    yield (*self.places[block], arc.count or 0)


def read_functions(path, is_wanted):
    """Of a .gcno file, by their numbers, with the two check values that counts must match."""
    functions, function = {}, None
    reader = Reader(path)
    reader.place = 16
    reader.text()
    reader.number()
    for tag, _, end in reader.records():
        if tag == FUNCTION:
            key = (reader.number(), reader.number(), reader.number())
            reader.text()
            reader.number()
            source = reader.text()
            function = Function(source, (reader.number(), reader.number())) if is_wanted(source) else None
            if function:
                functions[key] = function
        elif function is None:
            continue
        elif tag == BLOCKS:
            function.blocks = reader.number()
        elif tag == ARCS:
            block = reader.number()
            while reader.place < end:
                function.arcs.append(Arc(block, reader.number(), reader.number()))
        elif tag == LINES:
            block, file = reader.number(), None
            while reader.place < end:
                line = reader.number()
                if line:
                    function.places[block] = (file, line)
                else:
                    file = reader.text() or file
    return functions


def read_counts(path, functions):
    reader = Reader(path)
    reader.place = 16
    key = None
    for tag, length, _ in reader.records():
        if tag == FUNCTION:
            key = (reader.number(), reader.number(), reader.number()) if length else None
        elif tag == COUNTS and key in functions:
            # A negative length stands for counters that are all zero.
            functions[key].solve([] if length >= 0x80000000 else
                                 struct.unpack_from(f"<{length // 8}q", reader.data, reader.place))


def read(folder, pattern):
    """A dictionary of the files whose names, from the project's top folder on, match the pattern; with a list of counts
    for each line. What several programs or instances of a template have of one function is added up."""
    def name_of(path):
        return path[len(TOP):] if path.startswith(TOP) else path

    def is_wanted(path):
        return re.match(pattern, name_of(path))

    sums = Counter()
    for notes in sorted(Path(folder).rglob("*.gcno")):
        functions = read_functions(notes, is_wanted)
        for function in functions.values():
            function.mark_throws()
        counts = notes.with_suffix(".gcda")
        if functions and counts.exists():
            read_counts(counts, functions)
        for function in functions.values():
            numbers = Counter()
            for file, line, count in function.branches():
                if is_wanted(file):
                    sums[function.source, function.start, name_of(file), line, numbers[file, line]] += count
                    numbers[file, line] += 1
    files = defaultdict(lambda: defaultdict(list))
    for (_, _, file, line, _), count in sorted(sums.items()):
        files[file][line].append(count)
    return files
