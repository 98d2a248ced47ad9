#!/usr/bin/env python3
"""Writes digest_vectors.txt: MD5 and HMAC-SHA-256 digests, with Python's hashlib and hmac.

Run it in this folder; the output is the same every time. A row is `md5|text|digest` or `hmac|secret|text|digest`; texts
and digests are in hexadecimal, texts in UTF-8. The texts of keyed digests may go on behind a zero byte, which is where
the digest ends.
"""

import hashlib
import hmac
import random

source = random.Random(19920401)
rows = []


def text(length, characters):
    return "".join(source.choice(characters) for _ in range(length))


def md5(value):
    rows.append(f"md5|{value.encode().hex()}|{hashlib.md5(value.encode()).hexdigest()}")


def up_to_zero(value):
    return value.split("\0")[0].encode()


def keyed(secret, value):
    digest = hmac.new(up_to_zero(secret), up_to_zero(value), hashlib.sha256).hexdigest()
    rows.append(f"hmac|{secret.encode().hex()}|{value.encode().hex()}|{digest}")


ASCII = "".join(map(chr, range(1, 128)))
ANY = ASCII + "\u00e9\u4e2d\u2028\ufeff\U0001f600\U0010ffff"
WITH_ZERO = ANY + "\0" * 20

# Around the sizes of blocks, where padding and the shortening of keys begin.
LENGTHS = [0, 1, 2, 31, 32, 33, 54, 55, 56, 57, 63, 64, 65, 119, 120, 127, 128, 129, 500]
for length in LENGTHS:
    md5(text(length, ASCII))
    md5(text(length, WITH_ZERO))
    for other in LENGTHS:
        keyed(text(length, ASCII), text(other, ANY))
for _ in range(200):
    md5(text(source.randint(0, 100), WITH_ZERO))
    keyed(text(source.randint(0, 100), ASCII + "\0" * 3), text(source.randint(0, 100), WITH_ZERO))

with open("digest_vectors.txt", "w", encoding="ascii", newline="\n") as out:
    out.write("\n".join(rows) + "\n")
