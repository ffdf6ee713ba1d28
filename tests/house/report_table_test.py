#!/usr/bin/env python3
"""The table of measurements: bars, the place in its page, and what changed against the page."""
import json
import pathlib
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "bench"))
import report_table  # noqa: E402
from report_table import BEGIN, END, Table  # noqa: E402


def table(**measured):
    result = Table()
    for what, ratio in measured.items():
        result.ratio(what, ratio, 3)
    return result


class Bars(unittest.TestCase):
    def test_a_ratio_above_its_bar_is_missed(self):
        self.assertEqual(table(load=3.0, save=3.01).missed, ["save"])

    def test_slack_widens_a_bar_and_says_so(self):
        wide = Table(slack=1.5)
        wide.ratio("load", 4.5, 3)
        wide.ratio("save", 4.51, 3)
        self.assertEqual(wide.missed, ["save"])
        self.assertIn("≤ 4.5 ×", wide.text())

    def test_every_bar_has_a_row_in_the_committed_table(self):
        page = (ROOT / "docs/performance.md").read_text(encoding="utf-8")
        rows = report_table.measured_rows(report_table.part_of(page))
        bars = json.loads((ROOT / "bench/bars.json").read_text(encoding="utf-8"))
        for bar in bars["ratios"]:
            what = bar["what"].format(items=f"{bar['items']:,}".replace(",", " "))
            self.assertIn(what, rows)
        for figure in bars["growth"]["figures"]:
            self.assertIn(f"{figure} from 100 000 to 1 000 000", rows)


class Page(unittest.TestCase):
    def test_takes_the_new_table_in_place_of_the_old_one(self):
        page = f"above\n{BEGIN}old\n{END}below\n"
        self.assertEqual(report_table.with_part(page, "new\n"), f"above\n{BEGIN}new\n{END}below\n")

    def test_without_a_place_for_it_is_refused(self):
        with self.assertRaises(ValueError):
            report_table.with_part("above\nbelow\n", "new\n")


class Changes(unittest.TestCase):
    def changes(self, before, now):
        return list(report_table.changes(table(**before).text(), table(**now).text()))

    def test_within_a_tenth_are_not_told(self):
        self.assertEqual(self.changes({"load": 2.0}, {"load": 2.19}), [])

    def test_beyond_a_tenth_are_told_in_both_directions(self):
        self.assertEqual(self.changes({"load": 2.0, "save": 2.0}, {"load": 2.5, "save": 1.5}),
                         ["2 became 2.5: load", "2 became 1.5: save"])

    def test_rows_that_come_and_go_are_told(self):
        self.assertEqual(self.changes({"load": 2.0}, {"save": 2.0}), ["new: save", "gone: load"])


if __name__ == "__main__":
    unittest.main()
