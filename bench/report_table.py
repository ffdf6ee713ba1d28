"""The table of docs/performance.md: its rows, its place in the page, and what changed in it."""
import re

BEGIN = "<!-- bench/report --write writes from here -->\n"
END = "<!-- to here -->\n"
HEAD = "| what | bar | measured | figure | floor | holds |\n|---|---|---|---|---|---|\n"
NOTICEABLE = 0.1  # a change of this part of a figure is told


class Table:
    """Rows of what was measured. `slack` widens every bar that a measurement moves."""

    def __init__(self, slack=1):
        self.slack = slack
        self.lines = []
        self.missed = []

    def row(self, what, bar, measured, holds, figure="", floor=""):
        if not holds:
            self.missed.append(what)
        self.lines.append(f"| {what} | {bar} | {measured} | {figure} | {floor} | "
                          f"{'yes' if holds else '**no**'} |\n")

    def ratio(self, what, ratio, most, figure="", floor="", digits=2):
        most = round(most * self.slack, 3)
        self.row(what, f"≤ {most:g} ×", f"{ratio:.{digits}f} ×", ratio <= most, figure, floor)

    def text(self):
        return HEAD + "".join(self.lines)


def measured_rows(text):
    """What each row of a page's tables has measured, as a number, by the row's first cell."""
    rows = {}
    for line in text.splitlines():
        cells = [cell.strip() for cell in line.strip("|").split(" | ")]
        if len(cells) == 6 and (number := re.match(r"\d+(\.\d+)?", cells[2])):
            rows[cells[0]] = float(number[0])
    return rows


def changes(before, now):
    """One line for each row that is measured otherwise than `before`, or that has gone or come."""
    old, new = measured_rows(before), measured_rows(now)
    for what, value in new.items():
        if what not in old:
            yield f"new: {what}"
        elif abs(value - old[what]) > NOTICEABLE * old[what]:
            yield f"{old[what]:g} became {value:g}: {what}"
    yield from (f"gone: {what}" for what in old if what not in new)


def part_of(page):
    """What the page has between its two marks."""
    return page.partition(BEGIN)[2].partition(END)[0]


def with_part(page, part):
    """The page with `part` between its two marks. Raises ValueError when it has no such marks."""
    before, begin, rest = page.partition(BEGIN)
    _, end, behind = rest.partition(END)
    if not begin or not end:
        raise ValueError("the page has no place for the table")
    return before + BEGIN + part + END + behind
