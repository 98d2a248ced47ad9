"""The reference must show headers as their users see them, and must not be made with mistakes in it."""

import html
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
HEADER = """#pragma once

#include <zrbasic/platform/runtime/declare.h>

/// Prices of a day. Not for weeks.
namespace zr {

namespace detail {
/// Nobody's business.
int secret();
} // namespace detail

// NSObject(Quotes)
//
// Told in order.

/// How many there are.
///
/// Written as "\\r%@<b>".
[[nodiscard]] ZR_EXPORT int countOfQuotes(NSObject* self);

/// Value of one share.
class ZR_EXPORT Quote : public NSObject {
    ZR_OBJECT(Quote, NSObject)
  public:
    /// Empty at first.
    ZR_PROPERTY(Copied<NSString>, symbol, setSymbol)
    ZR_PROPERTY(Weak<NSObject>, owner, setOwner)
    ZR_READONLY(double, price)

    // For traders

    void buy();
    ZR_METHOD(buy, "buy")

  private:
    friend int hiddenFriend(Quote* quote);
};

/// A thing of worth.
class ZR_EXPORT Value {};

} // namespace zr
"""


class Docs(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = pathlib.Path(folder.name)
        (self.tree / "docs" / "guides").mkdir(parents=True)
        shutil.copy(ROOT / "CMakeLists.txt", self.tree)
        for name in ["Doxyfile", "headers.awk", "namespaces.dox", "reference.css"]:
            shutil.copy(ROOT / "docs" / name, self.tree / "docs")
        self.write("README.md", "# Readme\n\nRead [the\nguide](docs/guides/quotes.md).\n")
        self.write("CHANGELOG.md", "# Changelog\n")
        self.write("docs/guides/quotes.md", "# Quotes\n\n![A quote](../images/quote.png) of a `Quote`.\n")
        self.write("docs/guides/README.md", '# Guides\n\n<img src="../../tests/quote.png" alt="Another">\n')
        self.write("docs/images/quote.png", "one")
        self.write("tests/quote.png", "other")
        self.write("zrbasic/model/quote.h", HEADER)
        self.write("zrbasic/model/quote_p.h", "namespace zr {\n/// Internal.\nclass InternalQuote {};\n}\n")

    def write(self, name, text):
        path = self.tree / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def make(self):
        done = subprocess.run([ROOT / "tools" / "docs"], capture_output=True, text=True,
                              env={**os.environ, "ZRBASIC_TREE": str(self.tree)})
        return done.returncode, done.stdout + done.stderr

    def page(self, name):
        text = (self.tree / "build" / "docs" / "html" / name).read_text(encoding="utf-8")
        text = re.sub(r"<script.*?</script>", "", text, flags=re.DOTALL)
        return " ".join(html.unescape(re.sub(r"<[^>]*>", "", text)).split())

    def assert_fails(self, *messages):
        code, output = self.make()
        self.assertEqual(code, 1, output)
        for message in messages:
            self.assertIn(message, output)

    def test_it_says_where_it_is(self):
        code, output = self.make()
        self.assertEqual(code, 0, output)
        start = pathlib.Path(output.strip().splitlines()[-1].removeprefix("docs: "))
        self.assertIn('Read <a class="el" href="md_docs_guides_quotes.html">the guide</a>', start.read_text())

    def test_pictures_of_the_same_name_are_shown_apart(self):
        self.make()
        folder = self.tree / "build" / "docs" / "html"
        for page, content in {"md_docs_guides_quotes.html": "one", "md_docs_guides_README.html": "other"}.items():
            pictures = re.findall(r'<img src="([^"]*quote.png)"', (folder / page).read_text())
            self.assertEqual([(folder / picture).read_text() for picture in pictures], [content])

    def test_a_header_is_a_page_with_its_functions(self):
        self.make()
        page = self.page("quote_8h.html")
        self.assertIn("Prices of a day.", page)
        self.assertIn("NSObject(Quotes) Told in order.", page)
        self.assertRegex(page, r"int countOfQuotes \(NSObject \*self\) How many there are\.")
        self.assertIn('Written as "\\r%@<b>".', self.page("namespacezr.html"))

    def test_a_class_that_a_page_names_is_a_link(self):
        self.make()
        page = (self.tree / "build/docs/html/md_docs_guides_quotes.html").read_text()
        self.assertRegex(page, r'of a <a class="el" href="classzr_1_1Quote.html"[^>]*>Quote</a>\.')

    def test_a_property_is_its_accessors(self):
        self.make()
        page = self.page("classzr_1_1Quote.html")
        self.assertRegex(page, r"Ref< NSString > symbol \(\) const Empty at first\.")
        self.assertRegex(page, r"void setSymbol \(NSString \*value\) The value is copied\.")
        self.assertRegex(page, r"void setOwner \(NSObject \*value\) The value is not kept\.")
        self.assertRegex(page, r"double price \(\) const")
        self.assertRegex(page, r"For traders void buy \(\)")
        self.assertNotIn("ZR_", page)

    def test_what_is_not_for_users_is_left_out(self):
        self.make()
        pages = " ".join(self.page(path.name) for path in (self.tree / "build" / "docs" / "html").glob("*.html"))
        for name in ["secret", "hiddenFriend", "InternalQuote"]:
            self.assertNotIn(name, pages)
        self.assertIn("Value of one share.", pages)
        self.assertNotIn(">Value</a> of one", (self.tree / "build/docs/html/classzr_1_1Quote.html").read_text())

    def test_a_mistake_in_a_header_fails_and_is_found_in_its_line(self):
        for text, message in {
            "@nothing": "unknown command",
            "<nothing>": "Unsupported xml/html tag",
            "`a` or #nothing": "explicit link request to 'nothing'",
        }.items():
            with self.subTest(text=text):
                header = HEADER.replace("Empty at first.", f"Empty at first, {text}.")
                line = 1 + header[: header.index("Empty at")].count("\n")
                self.write("zrbasic/model/quote.h", header)
                self.assert_fails(f"zrbasic/model/quote.h:{line}: warning: ", message)

    def test_a_link_that_leads_nowhere_fails(self):
        for link in ["nowhere.md", "../../zrbasic/model/quote.h", "quotes.md#nowhere", "nowhere.png"]:
            with self.subTest(link=link):
                self.write("docs/guides/quotes.md", f"# Quotes\n\nSee [this]({link}).\n")
                self.assert_fails("nowhere" if "nowhere" in link else link)

    def test_a_picture_that_is_missing_fails(self):
        self.write("docs/guides/quotes.md", "# Quotes\n\n![A quote](../images/other.png)\n")
        self.assert_fails("other.png")


if __name__ == "__main__":
    unittest.main()
