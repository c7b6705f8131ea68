"""Draws the plots as SVG, with nothing but text."""

import math
from html import escape

FONT = "font-family=\"sans-serif\""
INK = "#333333"
GRID = "#dddddd"
AHEAD = "#2f7d4f"
NEAR = "#c79a2c"
BEHIND = "#b5483b"
LINES = ["#2f6db5", "#b5483b", "#2f7d4f", "#8a5bb0", "#c79a2c", "#4aa3a3", "#d46a9f", "#6b6b6b", "#93622f", "#5577dd",
         "#99aa33"]


class Drawing:
    def __init__(self, width, height):
        self.parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
                      f'viewBox="0 0 {width} {height}" {FONT} font-size="11" fill="{INK}">',
                      f'<rect width="{width}" height="{height}" fill="white"/>']

    def text(self, x, y, text, anchor="start", size=11, color=INK):
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" font-size="{size}" '
                          f'fill="{color}">{escape(text)}</text>')

    def line(self, x1, y1, x2, y2, color=GRID, width=1.0):
        self.parts.append(f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{color}" '
                          f'stroke-width="{width}"/>')

    def bar(self, x1, y, x2, height, color):
        left, right = min(x1, x2), max(x1, x2)
        self.parts.append(f'<rect x="{left:.1f}" y="{y:.1f}" width="{max(right - left, 1):.1f}" height="{height}" '
                          f'fill="{color}"/>')

    def path(self, points, color):
        places = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
        self.parts.append(f'<polyline points="{places}" fill="none" stroke="{color}" stroke-width="1.6"/>')
        for x, y in points:
            self.parts.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="2" fill="{color}"/>')

    def write(self, path):
        path.write_text("\n".join([*self.parts, "</svg>", ""]), encoding="utf-8")


def power_label(exponent):
    value = 10.0 ** exponent
    return f"{value:g}" if exponent < 3 else f"{value:,.0f}"


def draw_ratios(rows, path):
    """A bar for each row with peers: the time as a multiple of the best peer's, and a mark for the realistic target."""
    rows = [row for row in rows if row.ratio]
    left, right, top, line = 300, 40, 56, 13
    width, height = 900, top + line * len(rows) + 30
    ratios = [row.ratio for row in rows]
    marks = [row.limit_of(row.realistic) / row.peers[row.best].time for row in rows if row.realistic]
    low = math.floor(math.log10(min(ratios + marks)))
    high = math.ceil(math.log10(max(ratios + marks)))

    def place(ratio):
        return left + (math.log10(ratio) - low) / (high - low) * (width - left - right)

    drawing = Drawing(width, height)
    drawing.text(12, 20, "Time of TOVKernel as a multiple of the best peer's, by row", size=14)
    drawing.text(12, 37, "1 is the best peer, and shorter is faster. Green: the realistic target is met (red: not) or, where "
                 "there is none (yellow), see the table; | marks it.", size=10)
    for exponent in range(low, high + 1):
        drawing.line(place(10.0 ** exponent), top - 6, place(10.0 ** exponent), height - 24)
        drawing.text(place(10.0 ** exponent), height - 10, power_label(exponent), "middle")
    drawing.line(place(1), top - 6, place(1), height - 24, INK, 1.4)
    for number, row in enumerate(rows):
        y = top + number * line
        met = row.meets(row.realistic)
        drawing.text(left - 8, y + 9, row.name, "end", 10)
        drawing.bar(place(1), y + 1, place(row.ratio), line - 4, NEAR if met is None else (AHEAD if met else BEHIND))
        if row.realistic:
            mark = place(row.limit_of(row.realistic) / row.peers[row.best].time)
            drawing.line(mark, y - 1, mark, y + line - 2, INK, 1.6)
    drawing.write(path)


def draw_growth(title, unit, series, path):
    """The time of each series over its size, both axes logarithmic, with the measured exponents."""
    left, right, top, bottom = 70, 300, 40, 40
    width, height = 820, 400
    points = [point for one in series for point in one.points]
    low_x, high_x = (bound(math.log10(value)) for bound, value in
                     ((math.floor, min(size for size, _ in points)), (math.ceil, max(size for size, _ in points))))
    low_y, high_y = (bound(math.log10(value)) for bound, value in
                     ((math.floor, min(time for _, time in points)), (math.ceil, max(time for _, time in points))))

    def place(size, time):
        return (left + (math.log10(size) - low_x) / max(high_x - low_x, 1) * (width - left - right),
                height - bottom - (math.log10(time) - low_y) / max(high_y - low_y, 1) * (height - top - bottom))

    drawing = Drawing(width, height)
    drawing.text(12, 20, f"{title}: nanoseconds by {unit}", size=14)
    for exponent in range(low_x, high_x + 1):
        x = place(10.0 ** exponent, 10.0 ** low_y)[0]
        drawing.line(x, top, x, height - bottom)
        drawing.text(x, height - bottom + 16, power_label(exponent), "middle")
    for exponent in range(low_y, high_y + 1):
        y = place(10.0 ** low_x, 10.0 ** exponent)[1]
        drawing.line(left, y, width - right, y)
        drawing.text(left - 6, y + 4, power_label(exponent), "end")
    for number, one in enumerate(series):
        color = LINES[number % len(LINES)]
        drawing.path([place(size, time) for size, time in one.points], color)
        y = top + 14 + 18 * number
        drawing.line(width - right + 16, y - 4, width - right + 34, y - 4, color, 2)
        drawing.text(width - right + 40, y, f"{one.name.split(': ', 1)[-1]}: n^{one.exponent:.2f}")
    drawing.write(path)
