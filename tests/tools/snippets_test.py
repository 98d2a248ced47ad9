"""Snippets of the documents must be cut out whole, and a program that prints something else must be noticed."""

import pathlib
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SNIPPETS = ROOT / "tests" / "snippets"

PROJECT = f"""
cmake_minimum_required(VERSION 3.25)
project(pages CXX)
set(PROJECT_SOURCE_DIR ${{CMAKE_CURRENT_SOURCE_DIR}}/tree)
function(zrbasic_target_defaults)
endfunction()
function(zrbasic_bundle_information)
endfunction()
function(zrbasic_write_source file text)
    file(WRITE ${{file}} "${{text}}")
endfunction()
add_library(ZRBasic::ZRBasic INTERFACE IMPORTED)
enable_testing()
add_subdirectory({SNIPPETS} snippets)
"""

GUIDE = """# Page

```cpp
#include <vector>
```

```cpp
/// Described.
class Quote {};
```

```cpp
show("a;b [c]");
```

Some text.

```text
a;b [c]
```

    not code

```cpp
const int unprinted = 1;
```

```sh
echo
```

```text
not of the one before
```

```cpp
int main() {
    return 0;
}
```
"""

TOOLKIT = """
```cpp
#include <zrbasic/platform/qt/session.h>
```

```cpp
int main() {
}
```
"""


class Pages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        tree = cls.folder / "tree"
        (tree / "docs" / "guides").mkdir(parents=True)
        (tree / "README.md").write_text("# Top\n\n```cpp\nint main() {\n}\n```\n\n```text\nhello\n```\n")
        (tree / "docs" / "guides" / "README.md").write_text("# No code\n")
        (tree / "docs" / "guides" / "page.md").write_text(GUIDE)
        (tree / "docs" / "guides" / "toolkit.md").write_text(TOOLKIT)
        (cls.folder / "CMakeLists.txt").write_text(PROJECT)
        subprocess.run(["cmake", "-S", cls.folder, "-B", cls.folder / "build"], check=True, capture_output=True)
        listing = subprocess.run(["ctest", "--test-dir", cls.folder / "build", "-N"], check=True, capture_output=True)
        cls.tests = [line.split(": ", 1)[1] for line in listing.stdout.decode().splitlines() if " Test " in line]

    def made(self, name):
        return (self.folder / "build" / "snippets" / name).read_text()

    def test_become_one_program_and_those_that_stand_alone(self):
        self.assertEqual(
            self.tests,
            [
                "readme: the program at line 4 runs and prints what the page says",
                "guides/page: the program at line 37 runs and prints what the page says",
                "guides/page: snippets run and print what the page says",
            ],
            "without a toolkit, pages that need one are left out",
        )

    def test_have_declarations_at_file_scope_and_statements_in_functions(self):
        page = self.folder / "tree" / "docs" / "guides" / "page.md"
        self.assertEqual(
            self.made("page.cpp"),
            f'#line 4 "{page}"\n#include <vector>\n#include <show.h>\n'
            f'#line 8 "{page}"\n/// Described.\nclass Quote {{}};\n'
            f'static void snippetOfLine13() {{\n#line 13 "{page}"\nshow("a;b [c]");\n}}\n'
            f'static void snippetOfLine25() {{\n#line 25 "{page}"\nconst int unprinted = 1;\n}}\n'
            '#line 1 "page.cpp"\nint main() {\n'
            "    zr::snippets::begin(13);\n    snippetOfLine13();\n"
            "    zr::snippets::begin(25);\n    snippetOfLine25();\n}\n",
        )
        self.assertEqual(self.made("page_37.cpp"), f'#line 37 "{page}"\nint main() {{\n    return 0;\n}}\n')

    def test_print_what_stands_in_the_next_block_or_nothing(self):
        self.assertEqual(self.made("page.txt"), "-- line 13\na;b [c]\n-- line 25\n")
        self.assertEqual(self.made("page_37.txt"), "")
        self.assertEqual(self.made("readme_4.txt"), "hello\n")


class Running(unittest.TestCase):
    def run_program(self, script, expected):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            program = folder / "program"
            program.write_text(f"#!/bin/sh\n{script}\n")
            program.chmod(0o755)
            (folder / "expected").write_text(expected)
            result = subprocess.run(
                [
                    "cmake",
                    f"-DPROGRAM={program}",
                    "-DPAGE=page.md",
                    f"-DEXPECTED={folder / 'expected'}",
                    f"-DCONFIGURATION={folder / 'settings'}",
                    "-P",
                    SNIPPETS / "run.cmake",
                ],
                capture_output=True,
                text=True,
            )
        return result.returncode == 0, result.stdout + result.stderr

    def test_passes_where_the_same_is_printed(self):
        self.assertEqual(self.run_program("echo one; echo 'two;[x]'", "one\ntwo;[x]\n"), (True, ""))
        self.assertEqual(self.run_program("true", ""), (True, ""))

    def test_fails_where_something_else_is_printed(self):
        for printed, expected in (("echo two", "one\n"), ("echo one", "one"), ("true", "one\n"), ("echo one", "")):
            passes, output = self.run_program(printed, expected)
            self.assertFalse(passes, printed)
            self.assertIn("something else than the page", " ".join(output.split()))

    def test_fails_for_a_program_that_fails(self):
        passes, output = self.run_program("echo one; exit 3", "one\n")
        self.assertFalse(passes)
        self.assertIn('ended with "3"', " ".join(output.split()))


if __name__ == "__main__":
    unittest.main()
