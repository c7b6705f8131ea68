"""Writes Documentation/Reliability.md, and the same figures for a developer's terminal."""

HEAD = """# Reliability

`./attack` has written this page. It attacks the library from every side; each line of the table is one of the goals. A
figure is measured by the command beside it, and comes from the commit and the day that are named there (a + means: with
changes that were not committed). `./attack NAME` measures the figures of one attack anew, and `./attack --page` writes
the page anew from `Attacks/Results`. An attack that takes many hours notes what it has done, and a later run goes on from
there: the time beside its figures is that of the last run. [Attacks/README.md](../Attacks/README.md) tells how to add an
attack.
"""

NO_REASON = "No reason is given."


def cell(text):
    return text.replace("|", "\\|")


def table(header, lines):
    return "\n".join(["| " + " | ".join(header) + " |", "|" + "---|" * len(header),
                      *("| " + " | ".join(cell(text) for text in line) + " |" for line in lines)])


def duration(seconds):
    if seconds < 120:
        return f"{seconds} s"
    return f"{seconds / 60:.0f} min" if seconds < 7200 else f"{seconds / 3600:.1f} h"


def holds_text(holds):
    return "**yes**" if holds else "no"


def state_text(row):
    return "**yes**" if row.state == "yes" else row.state


def totals(rows):
    count = {state: sum(row.state == state for row in rows) for state in ("yes", "no", "in part", "not measured")}
    return (f"**Goals: {len(rows)}. Reached: {count['yes']}. Short of a figure: {count['no']}. Measured in part: "
            f"{count['in part']}. Not measured: {count['not measured']}.**")


def origins(row):
    return sorted({f"{figure['date']}, {figure['commit']}: `{figure['command']}`" for figure in row.figures})


def summary(rows):
    lines = []
    for number, row in enumerate(rows, 1):
        figures = "; ".join(f"{figure['what']}: {figure['figure']}" for figure in row.figures)
        lines.append([str(number), row.title, row.goal, figures or "-", state_text(row), "; ".join(origins(row)) or "-"])
    return table(["#", "what", "goal", "figures", "holds", "measured"], lines)


def reasons(row, remarks):
    """The paragraphs that explain the shortfalls, each once."""
    found = []
    for name in row.shortfalls:
        if name in remarks and remarks[name] not in found:
            found.append(remarks[name])
    return found or [NO_REASON]


def section(number, row, remarks):
    parts = [f"## {number}. {row.title}", row.goal + "."]
    if row.figures:
        lines = [[figure["what"], figure["figure"], figure["wanted"], holds_text(figure["holds"]),
                  f"{figure['date']}, {figure['commit']}, `{figure['command']}`, {duration(figure['seconds'])}"]
                 for figure in row.figures]
        parts.append(table(["what", "figure", "wanted", "holds", "measured"], lines))
    else:
        parts.append("Not measured.")
    if row.figures and row.missing:
        parts.append("Not measured: " + ", ".join(row.missing) + ".")
    if row.shortfalls and (row.figures or row.key in remarks):
        parts += reasons(row, remarks)
    return "\n\n".join(parts + row.details)


def page_text(rows, remarks):
    parts = [HEAD.strip(), totals(rows), summary(rows)]
    parts += [section(number, row, remarks) for number, row in enumerate(rows, 1)]
    return "\n\n".join(parts) + "\n"


def print_figures(figures):
    """For a terminal."""
    lines = [["row", "what", "figure", "wanted", "holds"]]
    lines += [[figure["row"], figure["what"], figure["figure"], figure["wanted"], "yes" if figure["holds"] else "NO"]
              for figure in figures]
    widths = [max(len(line[column]) for line in lines) for column in range(len(lines[0]))]
    for line in lines:
        print("          " + "  ".join(text.ljust(width) for text, width in zip(line, widths)).rstrip())
