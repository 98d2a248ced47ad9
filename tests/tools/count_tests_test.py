"""What ctest reports must be added up without losing a failure."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

COUNT = pathlib.Path(__file__).resolve().parents[2] / "tools" / "count-tests"

CASES = {
    "passed": '<testcase name="a" status="run"/>',
    "failed": '<testcase name="b" status="fail"><failure message=""/></testcase>',
    "not built": '<testcase name="c" status="notrun"><skipped message="Unable to find executable"/></testcase>',
    "dependency failed": '<testcase name="d" status="notrun"/>',
    "skipped itself": '<testcase name="e" status="notrun"><skipped message="SKIP_REGULAR_EXPRESSION_MATCHED"/></testcase>',
    "disabled": '<testcase name="f" status="disabled"><skipped message="Disabled"/></testcase>',
}


def count(*reports):
    with tempfile.TemporaryDirectory() as folder:
        paths = []
        for number, names in enumerate(reports):
            path = pathlib.Path(folder, f"{number}.xml")
            path.write_text("<testsuite>" + "".join(CASES[name] for name in names) + "</testsuite>")
            paths.append(path)
        done = subprocess.run([sys.executable, COUNT, *paths], capture_output=True, text=True, check=True)
        return done.stdout.strip()


class CountTests(unittest.TestCase):
    def test_reports_are_added_up(self):
        self.assertEqual(count(["passed", "passed"], ["passed", "failed"]), "3 1")

    def test_what_could_not_run_has_failed(self):
        self.assertEqual(count(["not built"]), "0 1")
        self.assertEqual(count(["dependency failed"]), "0 1")

    def test_what_was_left_out_on_purpose_counts_as_neither(self):
        self.assertEqual(count(["passed", "skipped itself", "disabled"]), "1 0")

    def test_a_missing_report_is_an_error(self):
        done = subprocess.run([sys.executable, COUNT, "/nonexistent.xml"], capture_output=True)
        self.assertNotEqual(done.returncode, 0)


if __name__ == "__main__":
    unittest.main()
