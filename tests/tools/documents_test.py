"""docs/controls.md shows every reference picture, and every link from one document to a file leads to one."""

import pathlib
import re
import struct
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs" / "controls.md"
REFERENCES = ROOT / "tests" / "qt" / "references"


def width_of(picture):
    """In pixels, as the header of a PNG file has it."""
    return struct.unpack(">I", picture.read_bytes()[16:20])[0]


def image_of(picture):
    """Light pictures hold the control at one, one and a half and two pixels a point; half as wide, the last one is
    sharp on a dense screen. Dark ones hold it at one."""
    name = picture.relative_to(REFERENCES).with_suffix("").as_posix()
    width = width_of(picture) // (1 if name.endswith("-dark") else 2)
    return f'<img src="../tests/qt/references/{name}.png" width="{width}" alt="{name}">'


def row_of(picture):
    """The row of a light picture and the dark one that goes with it."""
    cells = ["what is to be seen", image_of(picture)]
    dark = picture.with_stem(f"{picture.stem}-dark")
    if dark.exists():
        cells.append(image_of(dark))
    return f"| {' | '.join(cells)} |"


class ControlsPage(unittest.TestCase):
    def setUp(self):
        text = PAGE.read_text(encoding="utf-8")
        self.images = re.findall(r"<img [^>]*>", text)
        self.rows = [line for line in text.splitlines() if "<img " in line]
        self.pictures = sorted(REFERENCES.rglob("*.png"))

    def test_shows_every_reference_picture(self):
        self.assertGreater(len(self.pictures), 50)
        missing = [picture for picture in self.pictures if image_of(picture) not in self.images]
        light = [picture for picture in missing if not picture.stem.endswith("-dark")]
        of_light = [picture.with_stem(f"{picture.stem}-dark") for picture in light]
        advice = [f"Add to the table of its kind: {row_of(picture)}" for picture in light]
        advice += [f"Add to the row of its light picture: {image_of(picture)}" for picture in missing
                   if picture not in light and picture not in of_light]
        self.assertEqual(advice, [], "\ndocs/controls.md lacks pictures.\n" + "\n".join(advice))

    def test_shows_nothing_else_and_nothing_twice(self):
        extra = list(self.images)
        for picture in self.pictures:
            if image_of(picture) in extra:
                extra.remove(image_of(picture))
        self.assertEqual(extra, [], "docs/controls.md has pictures that are gone, too wide or narrow, or there twice")

    def test_says_in_each_row_what_one_control_shows(self):
        for row in self.rows:
            self.assertRegex(row, r"^\| [^|<]*\w[^|<]* (\| <img [^>]*> )+\|$", "a row is a text and its pictures")
            names = re.findall(r'alt="([^"]*)"', row)
            self.assertEqual(names, [names[0], f"{names[0]}-dark"][: len(names)], row)


class Links(unittest.TestCase):
    def test_lead_to_files_that_exist(self):
        documents = [*ROOT.glob("*.md"), *(ROOT / "docs").rglob("*.md")]
        self.assertGreater(len(documents), 15)
        broken = []
        for document in documents:
            text = re.sub(r"^```.*?^```", "", document.read_text(encoding="utf-8"), flags=re.MULTILINE | re.DOTALL)
            for target in re.findall(r"\]\(([^)\s#]+)(?:#[^)]*)?\)|src=\"([^\"]+)\"", text):
                target = target[0] or target[1]
                if "://" not in target and not (document.parent / target).exists():
                    broken.append(f"{document.relative_to(ROOT)}: {target}")
        self.assertEqual(broken, [])

    def test_of_the_guides_index_reach_every_guide(self):
        folder = ROOT / "docs" / "guides"
        index = (folder / "README.md").read_text(encoding="utf-8")
        guides = {guide.name for guide in folder.glob("*.md")} - {"README.md"}
        self.assertGreater(len(guides), 10)
        self.assertEqual(sorted(name for name in guides if f"({name})" not in index), [])


if __name__ == "__main__":
    unittest.main()
