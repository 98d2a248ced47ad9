#!/usr/bin/env python3
"""Writes json_vectors.txt: JSON strings and numbers as Python's json and decimal modules read and write them.

Run it in this folder; the output is the same every time. A row is one of

    string <tab> JSON text <tab> UTF-16 code units in hexadecimal
    write <tab> UTF-16 code units in hexadecimal <tab> JSON text
    integer <tab> JSON text <tab> the same number, for those of 64 bits
    decimal <tab> JSON text <tab> plain digits
    double <tab> JSON text <tab> the double in hexadecimal
    none <tab> JSON text, a number beyond the range of a double
"""

import json
import random
from decimal import MAX_EMAX, MIN_EMIN, Context, Decimal, setcontext

setcontext(Context(prec=2000, Emax=MAX_EMAX, Emin=MIN_EMIN))
source = random.Random(20210727)
rows = []


def units(text):
    return text.encode("utf-16-be").hex()


def character():
    kind = source.randrange(7)
    if kind == 0:
        return chr(source.randrange(0x20))
    if kind <= 3:
        return chr(source.randrange(0x20, 0x7F))
    if kind == 4:
        return chr(source.randrange(0x80, 0x800))
    if kind == 5:
        return chr(source.choice([source.randrange(0x800, 0xD800), source.randrange(0xE000, 0x10000)]))
    return chr(source.randrange(0x10000, 0x110000))


def spelled(text):
    """Some JSON spelling of the text, escapes where they need not be included."""
    result = ""
    for one in text:
        short = {'"': '\\"', "\\": "\\\\", "/": "\\/", "\b": "\\b", "\f": "\\f", "\n": "\\n", "\r": "\\r", "\t": "\\t"}
        if one in short and source.random() < 0.7:
            result += short[one]
        elif ord(one) < 0x20 or one in '"\\' or source.random() < 0.3:
            code = one.encode("utf-16-be").hex()
            code = "".join(source.choice([digit, digit.upper()]) for digit in code)
            result += "".join("\\u" + code[i : i + 4] for i in range(0, len(code), 4))
        else:
            result += one
    return '"' + result + '"'


def tabless(text):
    return "\t" not in text and "\n" not in text and "\r" not in text


def number(literal):
    value = Decimal(literal)
    is_integer = not any(mark in literal for mark in ".eE")
    if is_integer and -(2**63) <= int(literal) < 2**64:
        rows.append(("integer", literal, str(int(literal))))
        return
    digits = value.normalize().as_tuple()
    exponent = digits.exponent if value else 0
    if len(digits.digits) <= 38 and -128 <= exponent <= 127:
        plain = format(value.normalize(), "f") if value else "0"
        rows.append(("decimal", literal, plain))
        return
    try:
        double = json.loads(literal) if not is_integer else float(int(literal))
    except OverflowError:
        double = float("inf")
    if abs(double) == float("inf"):
        rows.append(("none", literal))
    else:
        rows.append(("double", literal, double.hex()))


for _ in range(400):
    text = "".join(character() for _ in range(source.randrange(24)))
    literal = spelled(text)
    assert json.loads(literal) == text
    assert tabless(literal)
    rows.append(("string", literal, units(text)))
    rows.append(("write", units(text), json.dumps(text, ensure_ascii=False)))

for literal in ["0", "-0", "1", "-1", "9223372036854775807", "-9223372036854775808", "9223372036854775808",
                "-9223372036854775809", "18446744073709551615", "18446744073709551616", "0.0", "-0.0", "0e10",
                "0.00001000", "100000000000000000000000000000000000000", "1E+2", "1e-7", "123e0", "0.1", "1e100", "1e127",
                "1e-128", "1" * 38, "1" * 39, "1" + "0" * 60, "-0." + "0" * 50 + "123", "1e308", "1.7976931348623157e308",
                "1e309", "-1e400", "1e999999999999", "1e-400", "5e-324", "0." + "3" * 60]:
    number(literal)
for _ in range(400):
    sign = source.choice(["", "-"])
    whole = source.choice(["0", str(source.randrange(1, 10 ** source.randrange(1, 30)))])
    fraction = "".join(source.choice("0123456789") for _ in range(source.choice([0, 0, 2, 8, 20])))
    exponent = source.choice(["", "", "", "e", "E"])
    if exponent:
        exponent += source.choice(["", "+", "-"]) + str(source.randrange(60))
    number(sign + whole + ("." + fraction if fraction else "") + exponent)

with open("json_vectors.txt", "w", encoding="utf-8") as out:
    for row in rows:
        out.write("\t".join(row) + "\n")
