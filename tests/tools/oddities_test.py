"""Every test that docs/oddities.md names exists, and every row names one."""

import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]


def tests_in_tree():
    pattern = re.compile(r"^(?:TYPED_)?TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", re.MULTILINE)
    for source in (ROOT / "tests").rglob("*_test.cpp"):
        for suite, name in pattern.findall(source.read_text(encoding="utf-8")):
            yield f"{suite}.{name}"


class OdditiesTest(unittest.TestCase):
    def setUp(self):
        lines = (ROOT / "docs" / "oddities.md").read_text(encoding="utf-8").splitlines()
        self.rows = [line for line in lines if line.startswith("| ") and not line.startswith("| what it does")]

    def test_every_named_test_exists(self):
        known = set(tests_in_tree())
        named = {name for row in self.rows for name in re.findall(r"`(\w+\.\w+)`", row)}
        self.assertGreater(len(named), 50)
        self.assertEqual(sorted(named - known), [])

    def test_every_row_names_a_test(self):
        for row in self.rows:
            self.assertRegex(row.rsplit("|", 2)[1], r"`\w+\.\w+`", row)


if __name__ == "__main__":
    unittest.main()
