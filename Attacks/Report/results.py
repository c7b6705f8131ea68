"""Reads what an attack printed, and keeps it as a file that the page is made from."""

import json
import re
import subprocess
from dataclasses import dataclass, field
from datetime import date

FIGURE, DETAIL = "figure", "detail"


@dataclass
class Row:
    """A row of the page: what is asked for, and what attacks found out about it."""
    key: str
    title: str
    goal: str
    required: list = field(default_factory=list)  # names of figures
    figures: list = field(default_factory=list)
    details: list = field(default_factory=list)  # paragraphs

    @property
    def missing(self):
        there = {figure["what"] for figure in self.figures}
        return [what for what in self.required if what not in there]

    @property
    def state(self):
        if not self.figures:
            return "not measured"
        if not all(figure["holds"] for figure in self.figures):
            return "no"
        return "in part" if self.missing else "yes"

    @property
    def shortfalls(self):
        """The names under which a remark may explain why this row does not hold; none when it does."""
        if self.state == "yes":
            return []
        failed = [figure["what"] for figure in self.figures if not figure["holds"]]
        return [self.key] + [f"{self.key}/{what}" for what in failed + self.missing]


def read_rows(path):
    rows = []
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("- "):
            rows[-1].required.append(line.removeprefix("- ").strip())
        elif line.strip() and not line.startswith("#"):
            rows.append(Row(*(part.strip() for part in line.split("|", 2))))
    return rows


def read_remarks(path):
    """Returns {name: paragraphs}, of a document whose headings of the second level name rows and figures."""
    remarks = {}
    for part in re.split(r"^## ", path.read_text(encoding="utf-8"), flags=re.M)[1:]:
        heading, _, text = part.partition("\n")
        for name in heading.split(";"):
            remarks[name.strip()] = text.strip()
    return remarks


def parse_figure(text):
    parts = [part.strip() for part in text.split("|")]
    if len(parts) != 5 or parts[4] not in ("yes", "no") or not all(parts):
        raise RuntimeError(f"not ROW | WHAT | FIGURE | WANTED | yes or no: {text}")
    return dict(zip(("row", "what", "figure", "wanted"), parts)) | {"holds": parts[4] == "yes"}


def parse_log(text, rows):
    """Returns the figures and details among the lines that an attack printed."""
    figures, details = [], {}
    for line in text.splitlines():
        kind, _, rest = line.partition(" | ")
        if kind == FIGURE:
            figures.append(parse_figure(rest))
        elif kind == DETAIL:
            row, _, detail = rest.partition(" | ")
            details.setdefault(row.strip(), []).append(detail.rstrip())
    known = {row.key for row in rows}
    unknown = ({figure["row"] for figure in figures} | set(details)) - known
    if unknown:
        raise RuntimeError("the table of rows has no " + ", ".join(sorted(unknown)))
    if not figures:
        raise RuntimeError("the attack printed no figure")
    names = [(figure["row"], figure["what"]) for figure in figures]
    twice = sorted({f"{row}/{what}" for row, what in names if names.count((row, what)) > 1})
    if twice:
        raise RuntimeError("printed twice: " + ", ".join(twice))
    return figures, details


def commit_of(project):
    """The short name of the commit, with a + where sources are not as committed; - outside a repository."""
    def git(*arguments):
        return subprocess.run(["git", "-C", str(project), *arguments], capture_output=True, text=True, check=True).stdout

    try:
        changed = git("status", "--porcelain", "--", ".", ":!Attacks/Results", ":!Documentation").strip()
        return git("rev-parse", "--short", "HEAD").strip() + ("+" if changed else "")
    except (OSError, subprocess.CalledProcessError):
        return "-"


def make_result(project, log, rows, name, seconds):
    figures, details = parse_log(log.read_text(encoding="utf-8", errors="replace"), rows)
    return {"name": name, "command": f"./attack {name}", "date": date.today().isoformat(), "commit": commit_of(project),
            "seconds": seconds, "figures": figures, "details": details}


def write_result(path, result):
    path.write_text(json.dumps(result, indent=1, ensure_ascii=False) + "\n", encoding="utf-8")


def fill(rows, folder):
    """Puts the results of a folder into the rows, each figure with its origin."""
    known = {row.key: row for row in rows}
    for path in sorted(folder.glob("*.json")):
        result = json.loads(path.read_text(encoding="utf-8"))
        origin = {key: result[key] for key in ("command", "date", "commit", "seconds")}
        for figure in result["figures"]:
            known[figure["row"]].figures.append(figure | origin)
        for row, lines in result["details"].items():
            known[row].details.append("\n".join(lines))
