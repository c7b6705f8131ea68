"""Draws the plots as SVG, with nothing but text."""

import math
from html import escape

FONT = "font-family=\"sans-serif\""
INK = "#333333"
GRID = "#dddddd"
MET = "#2f7d4f"
NO_TARGET = "#c79a2c"
MISSED = "#b5483b"
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


def time_label(exponent):
    unit, name = next((unit, name) for unit, name in ((9, "s"), (6, "ms"), (3, "us"), (-99, "ns")) if exponent >= unit)
    return f"{10.0 ** (exponent - max(unit, 0)):g} {name}"


def draw_ratios(rows, path):
    """A bar for each row with peers: the time as a multiple of the best peer's, and a mark for the realistic target."""
    rows = [row for row in rows if row.ratio]
    column_width, label_width, right, top, line = 560, 236, 20, 62, 13
    lines = math.ceil(len(rows) / 2)
    width, height = 2 * column_width, top + line * lines + 30
    marks = [row.limit_of(row.realistic) / row.peers[row.best].time for row in rows if row.realistic]
    low = math.floor(math.log10(min([row.ratio for row in rows] + marks)))
    high = math.ceil(math.log10(max([row.ratio for row in rows] + marks)))

    drawing = Drawing(width, height)
    drawing.text(12, 20, "Time of TOVKernel as a multiple of the best peer's, by row", size=15)
    drawing.text(12, 40, "At 1 both are as fast, and to the left TOVKernel is faster. The black mark is the realistic "
                 "target: green bars meet it, red ones do not, and rows with a yellow one have none.")
    for column in range(2):
        left = column * column_width

        def place(ratio, left=left):
            return left + label_width + ((math.log10(ratio) - low) / (high - low)
                                         * (column_width - label_width - right))

        for exponent in range(low, high + 1):
            x = place(10.0 ** exponent)
            drawing.line(x, top - 6, x, height - 24, INK if exponent == 0 else GRID, 1.4 if exponent == 0 else 1)
            drawing.text(x, height - 10, power_label(exponent), "middle", 10)
        for number, row in enumerate(rows[column * lines:(column + 1) * lines]):
            y = top + number * line
            met = row.meets(row.realistic)
            label = row.name.replace(", thrown and caught", "")
            drawing.text(left + label_width - 6, y + 9, label, "end", 10)
            drawing.bar(place(1), y + 1, place(row.ratio), line - 4,
                        NO_TARGET if met is None else (MET if met else MISSED))
            if row.realistic:
                mark = place(row.limit_of(row.realistic) / row.peers[row.best].time)
                drawing.line(mark, y - 1, mark, y + line - 2, INK, 1.8)
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
    drawing.text(12, 20, f"{title}: time by {unit}", size=14)
    for exponent in range(low_x, high_x + 1):
        x = place(10.0 ** exponent, 10.0 ** low_y)[0]
        drawing.line(x, top, x, height - bottom)
        drawing.text(x, height - bottom + 16, power_label(exponent), "middle")
    for exponent in range(low_y, high_y + 1):
        y = place(10.0 ** low_x, 10.0 ** exponent)[1]
        drawing.line(left, y, width - right, y)
        drawing.text(left - 6, y + 4, time_label(exponent), "end")
    for number, one in enumerate(series):
        color = LINES[number % len(LINES)]
        drawing.path([place(size, time) for size, time in one.points], color)
        y = top + 14 + 18 * number
        drawing.line(width - right + 16, y - 4, width - right + 34, y - 4, color, 2)
        drawing.text(width - right + 40, y, f"{one.name.split(': ', 1)[-1]}: n^{one.exponent:.2f}")
    drawing.write(path)
