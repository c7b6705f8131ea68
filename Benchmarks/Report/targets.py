"""Reads the table of targets and compares it with what was measured."""

import re
from dataclasses import dataclass, field

from programs import KERNEL, LEAST_QUIET

VARIANT = re.compile(r" \([^)]*(\([^)]*\))?[^)]*\)$")


def base_of(row):
    """A variant is compared with the peers of the row whose variant it is."""
    return VARIANT.sub("", row)


@dataclass
class Target:
    text: str

    def limit(self, peers, size):
        """The time in nanoseconds, or None when the peer was not measured."""
        text = self.text
        absolute = re.fullmatch(r"([\d.]+) (GB/s|ns)", text)
        if absolute:
            number = float(absolute[1])
            if absolute[2] == "ns":
                return number
            return size / number if size else None
        factor, offset = 1.0, 0.0
        if found := re.match(r"([\d.]+) x ", text):
            factor = float(found[1])
            text = text[found.end():]
        elif found := re.search(r" / ([\d.]+)$", text):
            factor = 1 / float(found[1])
            text = text[:found.start()]
        elif found := re.search(r" \+ ([\d.]+) ns$", text):
            offset = float(found[1])
            text = text[:found.start()]
        return peers[text].time * factor + offset if text in peers else None


@dataclass
class Row:
    name: str
    realistic: Target | None
    ambitious: Target | None
    reason: str = ""  # why there is no target
    kernel: object = None
    peers: dict = field(default_factory=dict)

    @property
    def best(self):
        """The name of the fastest peer."""
        return min(self.peers, key=lambda peer: self.peers[peer].time) if self.peers else None

    @property
    def ratio(self):
        return self.kernel.time / self.peers[self.best].time if self.peers else None

    def limit_of(self, target):
        return target.limit(self.peers, self.kernel.size) if target else None

    def meets(self, target):
        """None when there is no target, or its peer was not measured."""
        limit = self.limit_of(target)
        return None if limit is None else self.kernel.time <= limit


def read_targets(path):
    rows = []
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        name, realistic, ambitious = (part.strip() for part in line.split("|"))
        if realistic.startswith("no target"):
            rows.append(Row(name, None, None, realistic.removeprefix("no target: ")))
        else:
            rows.append(Row(name, Target(realistic), Target(ambitious)))
    return rows


def fill(rows, results):
    """Puts the measurements into the rows. Returns the rows that were measured."""
    for name, measurement in results.items():
        row_name, who = name.split("|")
        for row in rows:
            if who == KERNEL:
                if row.name == row_name:
                    row.kernel = measurement
            elif row_name in (row.name, base_of(row.name)):
                row.peers[who] = measurement
    for row in rows:
        compared = [row.kernel, *row.peers.values()] if row.kernel else []
        if any(len(one.quiet) < LEAST_QUIET for one in compared):
            for one in compared:
                one.counts_all = True
    return [row for row in rows if row.kernel]


def complain(rows, results):
    """Returns the mistakes: rows that the table or the programs do not have, and targets without their peer."""
    known = {row.name for row in rows}
    measured = {name.split("|")[0] for name in results if name.endswith("|" + KERNEL)}
    problems = [f"{name} is not in the table of targets" for name in sorted(measured - known)]
    problems += [f"no program measures {name}" for name in sorted(known - measured)]
    for row in rows:
        for target in (row.realistic, row.ambitious):
            if row.kernel and target and row.limit_of(target) is None:
                problems.append(f"{row.name}: the peer of \"{target.text}\" was not measured")
    return problems


def read_remarks(path):
    """Returns {name: paragraph}, of a document whose headings of the second level name rows and whatever else."""
    remarks = {}
    for part in re.split(r"^## ", path.read_text(encoding="utf-8"), flags=re.M)[1:]:
        heading, _, paragraph = part.partition("\n")
        for row in heading.split(";"):
            remarks[row.strip()] = " ".join(paragraph.split())
    return remarks
