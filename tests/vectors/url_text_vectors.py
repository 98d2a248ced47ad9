#!/usr/bin/env python3
"""Writes url_text_vectors.txt: texts as form fields and back, with Python's urllib.parse.

Run it in this folder; the output is the same every time. A row is `encode|UTF-8 in hexadecimal|result` or
`decode|escaped text in hexadecimal|UTF-8 in hexadecimal`, where `none` stands for an escape that has no meaning.
"""

import random
import re
from urllib.parse import quote_plus, unquote

source = random.Random(20040229)
rows = []
ALPHABETS = ["abcXYZ019-._~", " +%&=?/#", "\x00\x01\n\t\x1f\x7f", "\u00e9\u0663\u00a0\u07ff", "\u4e2d\u2028\ufeff\uffff\u0800",
             "\U00010000\U0001f600\U0010ffff"]


def text():
    letters = "".join(source.sample(ALPHABETS, source.randint(1, len(ALPHABETS))))
    return "".join(source.choice(letters) for _ in range(source.randint(0, 24)))


def encode(value):
    rows.append(f"encode|{value.encode().hex()}|{quote_plus(value)}")


def decode(value):
    try:
        if re.search(r"%(?![0-9A-Fa-f]{2})", value):
            raise ValueError
        result = unquote(value, errors="strict").encode().hex()
    except ValueError:
        result = "none"
    rows.append(f"decode|{value.encode().hex()}|{result}")


for code in range(256):
    encode(chr(code))
    decode(f"%{code:02x}")
for _ in range(400):
    encode(text())
for _ in range(600):
    # Some bytes are escaped that need not be, some characters are not that could be, and now and then one is damaged.
    parts = []
    for character in text():
        form = "".join(f"%{byte:02{source.choice('xX')}}" for byte in character.encode())
        parts.append(character if character != "%" and source.random() < 0.3 else form)
    escaped = "".join(parts)
    if escaped and source.random() < 0.25:
        place = source.randrange(len(escaped))
        escaped = escaped[:place] + source.choice(["", "%", "g", "%80"]) + escaped[place + 1 :]
    decode(escaped)

with open("url_text_vectors.txt", "w", encoding="ascii", newline="\n") as out:
    out.write("\n".join(rows) + "\n")
