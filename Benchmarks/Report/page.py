"""Writes Documentation/Performance.md, and the same tables for a developer's terminal."""

from datetime import date
from statistics import geometric_mean

from growth import TOLERANCE
from plot import draw_growth, draw_ratios
from programs import CONTENDED, KERNEL, LEAST_QUIET, NOISY, ROUNDS, ROUNDS_CONTENDED
from targets import base_of

# An order of magnitude: what is slower than this on Windows is flagged.
FAR_BEHIND = 10

HOLDS = "yes"

# The libraries without symbols, before their speed was worked on.
SIZES_BEFORE = {"Linux, libTOVKernel.so": 847776, "Windows, TOVKernel.dll": 739342}

GROWTH_PLOTS = [
    ("narrow text", "Narrow text", "characters"),
    ("wide text", "16-bit text", "characters"),
    ("array", "Arrays", "elements"),
    ("bits", "Bits", "bits"),
    ("classes", "Classes", "registered classes"),
    ("listeners", "Listeners", "registered listeners"),
    ("path", "Paths", "components"),
    ("open files", "Open files", "files that are open"),
]


def duration(nanoseconds):
    for limit, unit, name in ((1e3, 1, "ns"), (1e6, 1e3, "us"), (1e9, 1e6, "ms")):
        if nanoseconds < limit:
            break
    value = nanoseconds / unit
    digits = 2 if value < 10 else (1 if value < 100 else 0)
    return f"{value:.{digits}f} {name}"


def amount(measurement):
    """A speed where bytes were counted, else a time."""
    if measurement.size:
        return f"{measurement.size / measurement.time:.2f} GB/s"
    return duration(measurement.time)


def limit_text(row, target):
    limit = row.limit_of(target)
    return f"{row.kernel.size / limit:.2f} GB/s" if row.kernel.size else duration(limit)


def met_text(row):
    if not row.realistic:
        return "-"
    if row.meets(row.ambitious) and row.meets(row.realistic):
        return "**yes, ambitious**"
    return "**yes**" if row.meets(row.realistic) else "no"


def is_noisy(row):
    measured = [row.kernel] + ([row.peers[row.best]] if row.peers else [])
    return any(measurement.spread > NOISY for measurement in measured)


def cell(text):
    return text.replace("|", "\\|")


def table(header, lines):
    return "\n".join(["| " + " | ".join(header) + " |", "|" + "---|" * len(header),
                      *("| " + " | ".join(cell(text) for text in line) + " |" for line in lines)])


def totals(rows):
    targeted = [row for row in rows if row.realistic]
    realistic = sum(row.meets(row.realistic) for row in targeted)
    ambitious = sum(row.meets(row.realistic) and row.meets(row.ambitious) for row in targeted)
    compared = [row for row in rows if row.ratio]
    ahead = sum(row.ratio <= 1 for row in compared)
    mean = geometric_mean(row.ratio for row in compared)
    return (f"**{len(targeted)} rows with a target: {realistic} meet the realistic one, {ambitious} the ambitious "
            f"one.**\nOf the {len(compared)} rows with peers, TOVKernel is ahead of all of them in {ahead}; the "
            f"geometric mean of\nits ratio to the best peer is {mean:.2f}.")


def disturbed_text(rows):
    measured = {id(one): one for row in rows for one in (row.kernel, *row.peers.values())}.values()
    disturbed = sum(len(one.disturbed) for one in measured)
    runs = disturbed + sum(len(one.quiet) for one in measured)
    return (f"A probe before and after a run tells\nwhether something outside this machine uses the same processor: "
            f"{disturbed:,} of {runs:,} runs were disturbed so, and are left\nout of rows in which all have at least "
            f"{LEAST_QUIET} others.")


def rows_table(rows):
    lines = []
    for row in rows:
        others = sorted((who for who in row.peers if who != row.best), key=lambda who: row.peers[who].time)
        lines.append([
            row.name + (" ~" if is_noisy(row) else ""),
            amount(row.kernel),
            f"{row.best}, {amount(row.peers[row.best])}" if row.peers else "-",
            f"{row.ratio:.2f}" if row.peers else "-",
            f"{row.realistic.text}; {row.ambitious.text}" if row.realistic else row.reason,
            limit_text(row, row.realistic) if row.realistic else "-",
            met_text(row),
            "; ".join(f"{who} {amount(row.peers[who])}" for who in others) or "-",
        ])
    return table(["row", "TOVKernel", "best peer", "x best", "target: realistic; ambitious", "limit", "met",
                  "other peers"], lines)


def open_table(rows):
    """The rows that miss their realistic target, the worst one first."""
    missed = [row for row in rows if row.realistic and not row.meets(row.realistic)]
    missed.sort(key=lambda row: row.kernel.time / row.limit_of(row.realistic), reverse=True)
    return [[row.name, amount(row.kernel), limit_text(row, row.realistic),
             f"{row.kernel.time / row.limit_of(row.realistic):.2f}"] for row in missed]


def contended_table(rows):
    """A variant's peers stand with its row."""
    lines = []
    for row in rows:
        if CONTENDED.search(row.name):
            peers = row.peers if base_of(row.name) == row.name else {}
            for who, measurement in {KERNEL: row.kernel, **peers}.items():
                lines.append([row.name, who, duration(measurement.time), duration(measurement.worst)])
    return table(["row", "who", "median", "worst"], lines)


def windows_table(rows, windows_rows):
    """The library's rows under Wine, beside the standard library that the compiler brings along."""
    linux = {row.name: row for row in rows}
    lines = []
    for row in windows_rows:
        ratio = f"{row.ratio:.2f}" if row.peers else "-"
        if row.peers and row.ratio >= FAR_BEHIND:
            ratio = f"**{ratio}**"
        native = linux[row.name].kernel if row.name in linux else None
        lines.append([row.name, amount(row.kernel), f"{row.best}, {amount(row.peers[row.best])}" if row.peers else "-",
                      ratio, f"{row.kernel.time / native.time:.2f}" if native else "-"])
    return table(["row", "TOVKernel", "best of the compiler's library", "x best", "x Linux"], lines)


def is_steep(one, windows_series):
    return one.is_too_steep or any(other.name == one.name and other.is_too_steep for other in windows_series)


def growth_table(series, windows_series):
    windows = {one.name: one for one in windows_series}
    lines = []
    for one in series:
        exponents = [one] + ([windows[one.name]] if one.name in windows else [])
        texts = [f"**{each.exponent:.2f}**" if each.is_too_steep else f"{each.exponent:.2f}" for each in exponents]
        largest = one.points[-1]
        lines.append([one.name, one.promise, *texts, *["-"] * (2 - len(texts)),
                      f"{duration(largest[1])} at {largest[0]:,}"])
    return table(["what", "promised", "Linux", "Windows", "largest"], lines)


def catalogue_table(results):
    own = results[0].timing.seconds
    return table(["program", "s", "processor s", "files/s", "MB/s", "peak MB", "time to the first line's"],
                 [[result.name, f"{result.timing.seconds:.2f}", f"{result.timing.processor:.2f}",
                   f"{result.files / result.timing.seconds:,.0f}", f"{result.size / result.timing.seconds / 1e6:,.0f}",
                   f"{result.timing.peak / 1024:.1f}", f"{result.timing.seconds / own:.2f}"] for result in results])


def seconds_of(results, name):
    return next(result.timing.seconds for result in results if result.name == name)


def processor_of(results, name):
    return next(result.timing.processor for result in results if result.name == name)


def paragraphs(names, remarks):
    """The remarks on what is named, each once, with all that it is about."""
    about = {}
    for name in names:
        if name in remarks:
            about.setdefault(remarks[name], []).append(name)
    return "".join(f"\n\n**{'; '.join(members)}**: {remark}" for remark, members in about.items())


def limits(rows, catalogue, start, series, sizes):
    """What must hold besides the targets of the rows: a line for each, whose last word tells whether it does."""
    named = {row.name: row for row in rows}
    small, large, per_file = catalogue

    def ratio(name, peer, worst=False):
        row = named[name]
        other = row.peers[peer]
        return (row.kernel.worst / other.worst) if worst else (row.kernel.time / other.time)

    steep = [one.name for one in series if "text: " in one.name and one.is_too_steep]
    lines = []

    def limit(what, value, bound, unit="", at_least=False):
        holds = value >= bound if at_least else value <= bound
        measured = f"{value:.2f}" if value < 1000 else f"{value:,.0f}"
        side = "at least" if at_least else "at most"
        lines.append([what, measured + unit, f"{side} {bound:g}{unit}", HOLDS if holds else "**no**"])

    limit("contended CTOVMutex, to std::mutex", ratio("sync/contended lock, 4 threads (CTOVMutex)", "std::mutex"), 3)
    limit("queue/2P2C int, to std mutex+condvar, median", ratio("queue/2P2C int", "std mutex+condvar"), 1.2)
    limit("queue/2P2C int, to std mutex+condvar, worst", ratio("queue/2P2C int", "std mutex+condvar", True), 3)
    limit("log/line (as shipped)", named["log/line (as shipped)"].kernel.time, 60, " ns")
    limit("log/formatted (as shipped)", named["log/formatted (as shipped)"].kernel.time, 60, " ns")
    limit("string/format_f, to snprintf+string", ratio("string/format_f", "snprintf+string"), 1)
    for row in ("crc32/4K", "crc16/4K"):
        limit(row, named[row].kernel.size / named[row].kernel.time, 20, " GB/s", True)
    limit("series of texts that grow faster than linearly", len(steep), 0)
    limit("start and end, to the C++ runtime alone", start[1] / start[0], 1.15)
    for name, before in SIZES_BEFORE.items():
        if name in sizes:
            limit(f"{name}, to its {before:,} bytes before it was made fast", sizes[name] / before, 1)
    one = seconds_of(small, "tovcatalog create, 1 thread")
    two = seconds_of(small, "tovcatalog create, 2 threads")
    limit("tovcatalog, small files, 1 thread, to 7z with 1", one / seconds_of(small, "7z h, 1 thread"), 1)
    limit("tovcatalog, small files, 2 threads, to 7z with 2", two / seconds_of(small, "7z h, 2 threads"), 1)
    limit("tovcatalog, small files, 1 thread to 2", one / two, 1.6, at_least=True)
    limit("tovcatalog, large files, 1 thread: speed to cksfv's, which reads a table byte by byte",
          processor_of(large, "cksfv") / processor_of(large, "tovcatalog create, 1 thread"), 4, at_least=True)
    limit("tovcatalog, memory for a file", per_file, 0.3, " KB")
    return lines


def write_page(documentation, facts, rows, remarks, windows, series, catalogue, start, memory, sizes):
    """windows is (rows, series), or None when there was nothing to measure."""
    folder = documentation / "Performance"
    folder.mkdir(exist_ok=True)
    for old in folder.glob("*.svg"):
        old.unlink()
    draw_ratios(rows, folder / "ratios.svg")
    windows_rows, windows_series = windows or ([], [])

    text = [f"""# Performance

`./bench` has written this page on {date.today().isoformat()}. It measures the library and other libraries together, in
turns, in one run. Only ratios of one run count: another machine, or the same one under load, gives other times.

{totals(rows)}

![Time of TOVKernel as a multiple of the best peer's](Performance/ratios.svg)

## How to read it

A row without threads shows processor time, and the others show wall time. Each number is the median of {ROUNDS} runs or
more, which were taken in turns (TOVKernel, each peer, and again from the beginning), and of {ROUNDS_CONTENDED} runs where
threads meet. A thread that does nothing stands by in each process. {disturbed_text(rows)}

"x best" is the time as a multiple of the fastest peer's: below 1, TOVKernel is ahead. The limit is what the realistic
target comes to in this run. A row with ~ is noisy:
the middle half of its runs, or of the best peer's, lies further apart than {NOISY:.0%} of the median, so that a
difference of that size says nothing. `Benchmarks/Targets.txt` has the targets, and
[Benchmarks/README.md](../Benchmarks/README.md) tells how to add a row.

""", table(["machine", ""], [[name, value] for name, value in facts]), """

## All rows

""", rows_table(rows)]

    missed = open_table(rows)
    text.append("\n\n## Rows that miss the realistic target\n\n")
    text.append(table(["row", "TOVKernel", "limit", "x limit"], missed) if missed else "There is none.")
    text.append(paragraphs([line[0] for line in missed], remarks))
    lines = limits(rows, catalogue, start, series, sizes)
    text.append("\n\n## What else must hold\n\n" + table(["what", "measured", "limit", "holds"], lines))
    text.append(paragraphs([line[0] for line in lines if line[-1] != HOLDS], remarks))
    text.append(f"\n\n## Where threads meet\n\nThe median and the worst of {ROUNDS_CONTENDED} runs, for one operation.")
    text.append("\n\n" + contended_table(rows))

    text.append(f"""

## Growth

The exponent is that of the size, over the largest sizes: 1 is linear, 0 is constant. Bold: steeper by more than
{TOLERANCE} than what the header promises, or so slow that the series was ended early.

""" + growth_table(series, windows_series))
    text.append(paragraphs([one.name for one in series if is_steep(one, windows_series)], remarks) + "\n")
    for prefix, title, unit in GROWTH_PLOTS:
        members = [one for one in series if one.name.startswith(prefix + ":")]
        file = f"growth-{prefix.replace(' ', '-')}.svg"
        draw_growth(title, unit, members, folder / file)
        text.append(f"\n![{title}: time by {unit}](Performance/{file})\n")

    text.append("\n## Memory\n\nBytes for one object with all that it holds, from the pages that very many of them ")
    text.append("need.\n\n")
    text.append(table(["what", "TOVKernel", "std::string"],
                      [[what, f"{sizes_of['TOVKernel']:,}", f"{sizes_of['std::string']:,}"]
                       for what, sizes_of in memory.items()]))
    text.append("\n\n")
    text.append(table(["library without symbols", "bytes"], [[name, f"{size:,}"] for name, size in sizes.items()]))

    text.append(f"""

## Start and end of a program

With the C++ runtime alone {start[0]:.2f} ms, with the library {start[1]:.2f} ms: {start[1] / start[0]:.2f} x.
""")
    small, large, per_file = catalogue
    text.append(f"""
## tovcatalog from end to end

The files are in memory, and each time is the median of runs in turns. No peer writes a catalogue; they print a line for
each file. `7z`, `rhash` and `cksfv` compute CRC-32, `cksum` another checksum.

{small[0].files:,} files of {small[0].size // small[0].files:,} bytes; {per_file:.2f} KB of memory for a file:

{catalogue_table(small)}

{large[0].files} files of {large[0].size // large[0].files // 2**20} MB:

{catalogue_table(large)}
""")
    if windows:
        far = sum(1 for row in windows_rows if row.peers and row.ratio >= FAR_BEHIND)
        text.append(f"""
## 32-bit Windows

The same rows under Wine, wall time, beside the standard library and the C library of that compiler. Bold: slower by an
order of magnitude ({far} of {len(windows_rows)}). "x Linux" is the time as a multiple of the 64-bit one. A mutex, a
semaphore and an event are objects of the system on Windows, and under Wine each use of one is a message to another
process; the compiler's library has none in the system. How the rows grow stands in the table of growth.

{windows_table(rows, windows_rows)}
""")
    (documentation / "Performance.md").write_text("".join(text), encoding="utf-8")


def print_table(rows):
    """For a terminal."""
    lines = [[row.name + (" ~" if is_noisy(row) else ""), amount(row.kernel),
              f"{row.best} {amount(row.peers[row.best])}" if row.peers else "-",
              f"{row.ratio:.2f}" if row.peers else "-",
              limit_text(row, row.realistic) if row.realistic else "-", met_text(row).replace("*", "")] for row in rows]
    lines.insert(0, ["row", "TOVKernel", "best peer", "x best", "limit", "met"])
    widths = [max(len(line[column]) for line in lines) for column in range(len(lines[0]))]
    for line in lines:
        print("  ".join(text.ljust(width) for text, width in zip(line, widths)).rstrip())
