#!/usr/bin/env python3
"""Writes color_vectors.txt beside this script: texts and what the colour operations give for them.

Python's own regular expressions find the colour in a text, and its integers and slices do the rest. Run again after a
change here; the result is checked in.

One case a line, the fields separated by tabs:
    the text, with code units outside of printable ASCII and the backslash written as \\uXXXX
    red, green, blue and alpha of its colour in bytes, or "-" when it holds none
    the alpha of the text, from 0 to 255
    the text without its alpha
    a percentage from 0 to 100
    the text with that alpha
"""

import os
import random
import re

PATTERN = re.compile(r"((?<=0[xX])[0-9a-fA-F]{6,8})|((?<=#)[0-9a-fA-F]{6,8})|(^[0-9a-fA-F]{6,8})")


def color(text):
    found = PATTERN.search(text)
    if not found:
        return "-"
    digits = found.group(0)
    parts = list(int(digits, 16).to_bytes(4, "big"))
    alpha = parts[0] if len(digits) >= 7 else 255
    return " ".join(str(part) for part in parts[1:] + [alpha])


def alpha(text):
    if text.startswith("#"):
        rest = text[1:]
    elif text.startswith("0x"):
        rest = text[2:]
    else:
        rest = text
    if len(rest) != 8:
        return 255
    digits = re.match(r"\s*(0[xX])?([0-9a-fA-F]*)", rest).group(2)
    return int(digits or "0", 16) >> 24


def without_alpha(text):
    if len(text) >= 7:
        for prefix in ("0x", "#"):
            if text.startswith(prefix):
                return prefix + text[-6:]
    return text


def with_alpha(text, percent):
    if len(text) < 6 or (text.startswith("0x") and len(text) == 10) or (text.startswith("#") and len(text) == 9):
        return text
    return text[:-6] + "%02x" % (percent * 255 // 100) + text[-6:]


def written(text):
    return "".join(c if " " <= c <= "~" and c != "\\" else "\\u%04x" % ord(c) for c in text)


def texts():
    yield from ["", "#", "0x", "0X", "x", "FF0000", "#FF0000", "0xff0000", "0XFF0000", "#80FF0000", "0x80FF0000",
                "0X80FF0000", "#FFF", "#1234567", "#123456789", "#00123456", "#12345678 and more", "a #123456",
                "see 0x1234567", "x123456", "##123456", "0x0x123456", "#0x123456", "123456#789abc", "12345#678901",
                " 123456", "\n123456", "#\n123456", "  80FF00", " 80FF000", "0x80FF00", "0x 80FF00", "#0x80FF00",
                "# 8FF0000", "zzzzzzzz", "#80FFzz00", "#hello", "#hello world", "0xhello world", "#12345", "0xF0000",
                "\u20ac123456", "#\uff11\uff12\uff13\uff14\uff15\uff16", "00x123456", "000000x123456", "0x00x123456"]
    source = random.Random(20261121)
    digits = "0123456789abcdefABCDEF"
    for _ in range(400):
        run = "".join(source.choice(digits) for _ in range(source.choice([5, 6, 6, 7, 8, 8, 9])))
        yield source.choice(["", "#", "0x", "0X", "x", "bg=", "bg=#"]) + run + source.choice(["", "", ";", " #abcdef"])
    for _ in range(600):
        yield "".join(source.choice("0xX#fA9 g\n") for _ in range(source.randrange(24)))


def main():
    percents = random.Random(7)
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "color_vectors.txt")
    with open(path, "w", encoding="ascii", newline="\n") as out:
        for text in texts():
            percent = percents.randrange(101)
            fields = [written(text), color(text), str(alpha(text)), written(without_alpha(text)), str(percent),
                      written(with_alpha(text, percent))]
            out.write("\t".join(fields) + "\n")


if __name__ == "__main__":
    main()
