"""Small trees, good and bad, that the include check must tell apart."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).resolve().parents[2] / "tools" / "check-includes"

GOOD = {
    "zrbasic/platform/runtime/object.h": "#pragma once\n#include <vector>\n",
    "zrbasic/platform/runtime/object.cpp": "#include <zrbasic/platform/runtime/object.h>\n",
    "zrbasic/platform/runtime/table_p.h": "#include <zrbasic/platform/runtime/object.h>\n",
    "zrbasic/platform/runtime/table.cpp": "#include <zrbasic/platform/runtime/table_p.h>\n",
    "zrbasic/platform/foundation/string.h": "#include <zrbasic/platform/runtime/object.h>\n",
    "zrbasic/platform/appkit/view.h": "#include <zrbasic/platform/foundation/string.h>\n",
    "zrbasic/platform/qt/widget.cpp": "#include <QWidget>\n#include <zrbasic/platform/appkit/view.h>\n",
    "zrbasic/core/text.h": "#include <zrbasic/platform/foundation/string.h>\n#include <zrbasic/version.h>\n",
    "zrbasic/core/input_formatter.cpp": "#include <zrbasic/collections/dictionary.h>\n",
    "zrbasic/collections/dictionary.h": "#include <zrbasic/core/text.h>\n",
    "zrbasic/model/observation.h": "#include <zrbasic/collections/dictionary.h>\n",
    "zrbasic/ui/label.h": "#include <zrbasic/model/observation.h>\n",
    "tests/core/text_test.cpp": '#include <zrbasic/core/text.h>\n#include "quotes.h"\n',
    "tests/core/quotes.h": "#pragma once\n",
    "examples/gallery/main.cpp": "#include <QtWidgets/QApplication>\n",
    "tests/qt/widget_test.cpp": "#include <QWidget>\n",
    "tests/desktop/window_test.cpp": "#include <QWindow>\n",
}


def run(changes, base=GOOD):
    """The check's exit code and output for the good tree with some files replaced or added."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in {**base, **changes}.items():
            path = pathlib.Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        done = subprocess.run([sys.executable, CHECK, folder], capture_output=True, text=True)
        return done.returncode, done.stdout + done.stderr


class CheckIncludes(unittest.TestCase):
    def passes(self, changes):
        code, output = run(changes)
        self.assertEqual(code, 0, output)

    def fails(self, changes, *expected):
        code, output = run(changes)
        self.assertEqual(code, 1, output)
        for text in expected:
            self.assertIn(text, output)
        self.assertIn(" 1 breaches", output)

    def test_a_tree_in_order_passes(self):
        self.passes({})

    def test_every_arrow_upwards_fails(self):
        layers = ["platform/runtime", "platform/foundation", "platform/appkit", "core", "collections", "model", "ui"]
        for low, lower in enumerate(layers):
            for higher in layers[low + 1:]:
                with self.subTest(source=lower, target=higher):
                    self.fails({f"zrbasic/{higher}/top.h": "",
                                f"zrbasic/{lower}/wrong.cpp": f"\n#include <zrbasic/{higher}/top.h>\n"},
                               f"zrbasic/{lower}/wrong.cpp:2: zrbasic/{lower} must not include zrbasic/{higher}")

    def test_the_toolkit_stands_beside_the_library(self):
        self.fails({"zrbasic/platform/qt/peer.cpp": "#include <zrbasic/core/text.h>\n"},
                   "zrbasic/platform/qt must not include zrbasic/core")
        self.fails({"zrbasic/platform/qt/peer.h": "", "zrbasic/ui/window.cpp": "#include <zrbasic/platform/qt/peer.h>\n"},
                   "zrbasic/ui must not include zrbasic/platform/qt")

    def test_only_the_input_formatter_goes_sideways_and_only_to_the_dictionary(self):
        self.passes({"zrbasic/core/input_formatter.h": "#include <zrbasic/collections/dictionary.h>\n"})
        self.fails({"zrbasic/core/number.cpp": "#include <zrbasic/collections/dictionary.h>\n"},
                   "zrbasic/core/number.cpp:1: zrbasic/core must not include zrbasic/collections")
        self.fails({"zrbasic/collections/array.h": "",
                    "zrbasic/core/input_formatter.cpp": "#include <zrbasic/collections/array.h>\n"},
                   "must not include zrbasic/collections: zrbasic/collections/array.h")

    def test_a_cycle_fails_whatever_its_length(self):
        self.fails({"zrbasic/core/a.h": "#include <zrbasic/core/b.h>\n", "zrbasic/core/b.h": "#include <zrbasic/core/a.h>\n"},
                   "include cycle: zrbasic/core/a.h <-> zrbasic/core/b.h")
        self.fails({"zrbasic/core/a.h": '#include "b.h"\n', "zrbasic/core/b.h": "#include <zrbasic/core/c.h>\n",
                    "zrbasic/core/c.h": "#include <zrbasic/core/a.h>\n"},
                   "include cycle: zrbasic/core/a.h <-> zrbasic/core/b.h <-> zrbasic/core/c.h")
        self.fails({"tests/core/a.h": '#include "a.h"\n'}, "include cycle: tests/core/a.h")

    def test_a_cycle_through_the_sideways_link_fails(self):
        self.fails({"zrbasic/core/input_formatter.h": "#include <zrbasic/collections/dictionary.h>\n",
                    "zrbasic/core/text.h": "#include <zrbasic/core/input_formatter.h>\n"}, "include cycle: ")

    def test_a_public_header_with_an_internal_one_fails(self):
        self.fails({"zrbasic/platform/runtime/open.h": "#include <zrbasic/platform/runtime/table_p.h>\n"},
                   "a public header includes an internal one: zrbasic/platform/runtime/table_p.h")
        self.fails({"zrbasic/platform/runtime/open.h": '#include "table_p.h"\n'},
                   "a public header includes an internal one: table_p.h")

    def test_qt_outside_the_toolkit_fails(self):
        for header in ["QString", "QtCore/QString", "QtWidgets", "qstring.h", "qt6widgets.h"]:
            for place in ["zrbasic/ui/window.cpp", "zrbasic/platform/appkit/bridge.h", "tests/ui/window_test.cpp"]:
                with self.subTest(header=header, place=place):
                    self.fails({place: f"#include <{header}>\n"}, f"{place}:1: includes Qt: {header}")

    def test_what_only_looks_like_qt_passes(self):
        self.passes({"zrbasic/core/a.cpp": "#include <queue>\n#include <quadmath.h>\n"})

    def test_an_include_in_a_comment_does_not_count(self):
        self.passes({"zrbasic/core/a.cpp": "// #include <zrbasic/ui/label.h>\n/*\n#include <QString>\n*/\n"})

    def test_a_comment_sign_in_a_literal_hides_nothing(self):
        self.fails({"zrbasic/core/a.cpp": 'const char* a = "/*";\n#include <zrbasic/ui/label.h>\nconst char* b = "*/";\n'},
                   "zrbasic/core/a.cpp:2: ")

    def test_odd_spellings_of_the_directive_count(self):
        self.fails({"zrbasic/core/a.cpp": "  #  include<zrbasic/ui/label.h>\n"}, "must not include zrbasic/ui")
        self.fails({"zrbasic/core/a.cpp": '#include "../ui/label.h"\n'}, "must not include zrbasic/ui")

    def test_a_missing_file_fails(self):
        self.fails({"zrbasic/core/a.cpp": "#include <zrbasic/core/gone.h>\n"}, "does not exist: zrbasic/core/gone.h")

    def test_the_library_includes_nothing_of_its_surroundings(self):
        self.fails({"zrbasic/core/a.cpp": "#include <tests/core/quotes.h>\n"}, "not part of it: tests/core/quotes.h")

    def test_a_folder_outside_the_order_fails(self):
        self.fails({"zrbasic/misc/a.h": ""}, "zrbasic/misc/a.h: lies in a folder without a place")

    def test_an_empty_tree_fails(self):
        code, output = run({}, base={})
        self.assertEqual(code, 1, output)


if __name__ == "__main__":
    unittest.main()
