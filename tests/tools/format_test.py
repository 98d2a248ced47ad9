"""The format check must notice a badly formatted file, and formatting must mend it."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BAD = "namespace zr {\nclass NSString;\nint  f( NSString *s );\n}\n"
GOOD = "namespace zr {\nclass NSString;\nint f(NSString* s);\n} // namespace zr\n"


class Format(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = pathlib.Path(folder.name)
        shutil.copy(ROOT / ".clang-format", self.tree)

    def write(self, name, text):
        path = self.tree / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        return path

    def run_tool(self, *arguments):
        done = subprocess.run([ROOT / "tools" / "format", *arguments], capture_output=True, text=True,
                              env={**os.environ, "ZRBASIC_TREE": str(self.tree)})
        return done.returncode, done.stdout + done.stderr

    def test_a_formatted_tree_passes(self):
        self.write("zrbasic/core/a.h", GOOD)
        self.assertEqual(self.run_tool("--check"), (0, ""))

    def test_a_badly_formatted_file_fails_and_is_named_and_left_alone(self):
        self.write("zrbasic/core/a.h", GOOD)
        for name in ["zrbasic/core/b.h", "tests/core/b_test.cpp", "examples/b/main.cpp"]:
            with self.subTest(name=name):
                path = self.write(name, BAD)
                code, output = self.run_tool("--check")
                self.assertNotEqual(code, 0)
                self.assertEqual(output, f"not formatted: {name}\n")
                self.assertEqual(path.read_text(), BAD)
                path.unlink()

    def test_formatting_mends_a_header_as_cpp_despite_its_names(self):
        path = self.write("zrbasic/core/b.h", BAD)
        self.assertEqual(self.run_tool()[0], 0)
        self.assertEqual(path.read_text(), GOOD)
        self.assertEqual(self.run_tool("--check"), (0, ""))


if __name__ == "__main__":
    unittest.main()
