#!/usr/bin/env python3
"""Writes url_vectors.txt: escaping, reading and resolving with Python's urllib.

Run it in this folder; the output is the same every time. Texts that may hold anything are in hexadecimal UTF-8. The
rows, by their first field:

  item|text|escaped           a name or value of a query
  query|text|escaped          a whole query or fragment
  items|names and values|query  the items, "name=value" with blanks between them, and the query that they make
  read|query|names and values   the items that a query holds
  join|base|reference|result    a reference resolved against its base

urllib means something else than our rules in places, and there are no rows for those:

- parse_qsl turns "+" into a blank, leaves empty pieces out, and does not tell "a" from "a=": the queries here have
  one "=" at least in every piece, and no "+".
- urljoin drops steps up beyond the root, empty segments, and empty queries and fragments; it also clears the steps of
  a reference that begins with "/". References here have none of these.
"""

import random
from urllib.parse import parse_qsl, quote, urlencode, urljoin

ITEM = "!$'()*+,/:;?@"
QUERY = ITEM + "&="
source = random.Random(20260302)
rows = []


def code_point():
    kind = source.random()
    if kind < 0.6:
        return source.randrange(0x80)
    if kind < 0.8:
        return source.randrange(0x80, 0x3000)
    point = source.randrange(0x3000, 0x110000)
    return 0x1F600 if 0xD800 <= point < 0xE000 else point


def any_text(longest):
    return "".join(chr(code_point()) for _ in range(source.randrange(longest + 1)))


def hexed(text):
    return text.encode("utf-8").hex()


def listed(pairs):
    return " ".join(hexed(name) + "=" + hexed(value) for name, value in pairs)


for text in [chr(code) for code in range(0x80)] + [any_text(12) for _ in range(300)]:
    rows.append(["item", hexed(text), quote(text, safe=ITEM)])
    rows.append(["query", hexed(text), quote(text, safe=QUERY)])

for _ in range(300):
    pairs = [(any_text(6), any_text(10)) for _ in range(source.randint(1, 5))]
    rows.append(["items", listed(pairs), urlencode(pairs, quote_via=quote, safe=ITEM)])


def escaped_piece(longest, plain):
    """Any text, escaped more or less than it needs, in digits of either case."""
    piece = ""
    for character in any_text(longest):
        if character in plain and source.random() < 0.7:
            piece += character
        else:
            for byte in character.encode("utf-8"):
                piece += source.choice(["%%%02X", "%%%02x"]) % byte
    return piece


PLAIN = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~!$'()*,/:;?@"
for _ in range(300):
    query = "&".join(escaped_piece(6, PLAIN) + "=" + escaped_piece(8, PLAIN + "=")
                     for _ in range(source.randint(1, 5)))
    rows.append(["read", query, listed(parse_qsl(query, keep_blank_values=True, strict_parsing=True))])

NAMES = ["a", "b", "list", "x.html", "%41", "...", ".x", "a:b", "@"]


def path(depth):
    return "/" + "/".join(source.choice(NAMES) for _ in range(depth)) + source.choice(["", "/"])


def reference(depth):
    """Steps up no further than the base is deep."""
    kind = source.randrange(8)
    tail = source.choice(["", "?n=1", "#n", "?n#m", "?/../x"])
    if kind == 0:
        return tail
    if kind == 1:
        return path(2) + tail
    if kind == 2:
        return "//other.example:8080" + path(1) + tail
    if kind == 3:
        return "https://third.example/" + tail
    ups = source.randint(0, depth)
    steps = [".."] * ups + ["."] * source.randint(0, 2)
    source.shuffle(steps)
    down = [source.choice(["a", "b.html", "%2e", "..."]) for _ in range(source.randint(0, 2))]
    if not steps and not down:
        down = ["leaf"]
    return "/".join(steps + down) + source.choice(["", "", "/"]) + tail


for _ in range(500):
    depth = source.randint(1, 4)
    folder = path(depth).rstrip("/")
    base = "http://user@h.example" + folder + source.choice(["", "/", "?q", "/leaf?q#f"])
    target = reference(depth - 1)
    rows.append(["join", base, target, urljoin(base, target)])

with open("url_vectors.txt", "w", encoding="ascii", newline="\n") as out:
    out.write("\n".join("|".join(row) for row in rows) + "\n")
