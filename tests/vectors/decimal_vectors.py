#!/usr/bin/env python3
"""Writes decimal_vectors.txt: what Python's decimal module makes of sums, products, quotients and conversions.

Run it in this folder; the output is the same every time. A row is `operation|mode|left|right|result|error`, numbers
with an exponent and doubles as hexadecimal floats.
"""

import random
from decimal import (
    Context,
    Decimal,
    ROUND_CEILING,
    ROUND_DOWN,
    ROUND_FLOOR,
    ROUND_HALF_EVEN,
    ROUND_HALF_UP,
    setcontext,
)

MODES = [ROUND_HALF_UP, ROUND_FLOOR, ROUND_CEILING, ROUND_HALF_EVEN]
LARGEST = 2**128 - 1
HIGHEST, LOWEST = 127, -128
NAN = "NaN"
OK, LOSS, UNDERFLOW, OVERFLOW, ZERO_DIVISOR = range(5)

EXACT = Context(prec=2000, Emin=-99999, Emax=99999)
setcontext(EXACT)
source = random.Random(20240229)
rows = []


def parts(value):
    """The integer and exponent of the compact form."""
    sign, digits, exponent = value.normalize(EXACT).as_tuple()
    return int("".join(map(str, digits))), exponent


def text(value):
    if value == 0:
        return "0"
    digits, exponent = parts(value)
    return ("-" if value < 0 else "") + str(digits) + (f"e{exponent}" if exponent else "")


def ranged(value, error):
    """The text of a value that fits a mantissa, unless its compact form is out of range."""
    if value == 0:
        return "0", error
    if parts(value)[1] < LOWEST:
        return NAN, UNDERFLOW
    if abs(value) > Decimal(LARGEST).scaleb(HIGHEST):
        return NAN, OVERFLOW
    return text(value), error


def fitted(value, mode, start):
    """Drops as few digits as will make the coefficient, which is a multiple of 10 to the power `start`, fit."""
    if value == 0:
        return "0", OK
    exponent = start
    while True:
        result = value.quantize(Decimal(1).scaleb(exponent), rounding=MODES[mode], context=EXACT)
        if abs(int(result.scaleb(-exponent))) <= LARGEST:
            break
        exponent += 1
    if exponent > HIGHEST:
        return NAN, OVERFLOW
    return ranged(result, OK if result == value else LOSS)


def emit(operation, mode, left, right, outcome):
    rows.append("|".join([operation, str(mode), left, right, outcome[0], str(outcome[1])]))


def arithmetic(left, right, mode):
    low = min(parts(left)[1] if left else 999, parts(right)[1] if right else 999)
    low = 0 if low == 999 else low
    emit("add", mode, text(left), text(right), fitted(left + right, mode, low))
    emit("subtract", mode, text(left), text(right), fitted(left - right, mode, low))
    product = left * right
    start = parts(left)[1] + parts(right)[1] if product else 0
    emit("multiply", mode, text(left), text(right), fitted(product, mode, start))
    if right == 0:
        emit("divide", mode, text(left), text(right), (NAN, ZERO_DIVISOR))
    else:
        context = Context(prec=38, rounding=MODES[mode], Emin=-99999, Emax=99999)
        quotient = context.divide(left, right)
        emit("divide", mode, text(left), text(right), ranged(quotient, OK if quotient * right == left else LOSS))
    order = (left > right) - (left < right)
    emit("compare", mode, text(left), text(right), (str(order), OK))


def rounding(value, scale, mode):
    result = value.quantize(Decimal(1).scaleb(-scale), rounding=MODES[mode], context=EXACT)
    emit("round", mode, text(value), str(scale), ranged(result, OK))


def conversions(value):
    emit("text", 0, text(value), "", (format(value.normalize(EXACT), "f") if value else "0", OK))
    emit("double", 0, text(value), "", (float(value).hex(), OK))
    whole = int(value.quantize(Decimal(1), rounding=ROUND_DOWN, context=EXACT))
    emit("integer", 0, text(value), "", (str(max(-(2**63), min(2**63 - 1, whole))), OK))


def shortest(value):
    decimal = Decimal(repr(value))
    if decimal != 0 and not Decimal(1).scaleb(LOWEST) <= abs(decimal) <= Decimal(LARGEST).scaleb(HIGHEST):
        emit("shortest", 0, value.hex(), "", (NAN, OK))
    else:
        cut = decimal.quantize(Decimal(1).scaleb(LOWEST), rounding=ROUND_DOWN, context=EXACT)
        emit("shortest", 0, value.hex(), "", (text(cut), OK))


def mantissa(digits):
    return min(source.randrange(10 ** (digits - 1), 10**digits), LARGEST)


def number(max_digits, low, high):
    value = Decimal(mantissa(source.randint(1, max_digits))).scaleb(source.randint(low, high))
    return -value if source.random() < 0.4 else value


EDGES = [
    Decimal(t)
    for t in [
        "0", "1", "-1", "2", "3", "-3", "5", "7", "10", "0.1", "0.05", "0.005", "0.25", "1.5", "-2.5", "1.235", "64",
        "0.000000000000000000000000000000000000001", str(LARGEST), "-" + str(LARGEST), str(LARGEST - 1),
        "99999999999999999999999999999999999999", "100000000000000000000000000000000000001",
        "9.9999999999999999999999999999999999999", "18446744073709551615", "18446744073709551616",
        "-9223372036854775808", "9223372036854775807", "340282366920938463463374607431768211450",
        "33333333333333333333333333333333333333", "66666666666666666666666666666666666667", "1e127", "-1e-128",
        "1e100", "1e30", "1e-100", "1e-28", "1e-29", str(LARGEST) + "e127", str(LARGEST) + "e-128",
    ]
]

for left in EDGES:
    for right in source.sample(EDGES, 13):
        arithmetic(left, right, 0)
for _ in range(120):
    arithmetic(number(18, -8, 2), number(4, -5, 1), source.randrange(4))
for _ in range(180):
    arithmetic(number(39, -40, 10), number(39, -40, 10), source.randrange(4))
for _ in range(100):
    arithmetic(number(39, -128, 127), number(39, -128, 127), source.randrange(4))
for _ in range(80):
    # A distance near the width of a mantissa, with both signs.
    arithmetic(number(39, 30, 45), number(39, -10, 10), source.randrange(4))
for _ in range(60):
    # Nearly equal, so that the difference loses its leading digits.
    left = Decimal(mantissa(38)).scaleb(-20)
    arithmetic(left, left + Decimal(source.randint(-9, 9)).scaleb(-20), source.randrange(4))
for _ in range(120):
    # A whole number of steps, as prices on their tick are.
    tick = Decimal(source.choice([1, 2, 5, 25, 125, 3, 7, 15])).scaleb(source.randint(-6, 1))
    arithmetic(tick * source.randint(-(10**9), 10**9), tick, 0)

for _ in range(250):
    rounding(number(39, -45, 5), source.randint(-5, 45), source.randrange(4))
for value in ["1.2", "1.21", "1.25", "1.35", "1.27", "-1.25", "-1.35", "0.05", "0.04", "-0.05"]:
    for mode in range(4):
        rounding(Decimal(value), 1, mode)
        rounding(Decimal(value), -1, mode)
        rounding(Decimal(value), 40, mode)

for value in EDGES:
    conversions(value)
for _ in range(200):
    conversions(number(39, -45, 25))
for _ in range(40):
    conversions(number(39, -128, 127))
for _ in range(100):
    # The middle between two doubles and its neighbours: one digit decides.
    middle = Decimal(source.randrange(2**52, 2**53) * 2 + 1)
    for scale in [0, -1, -7]:
        for offset in ["0", "1e-15", "-1e-15"]:
            value = (middle / Decimal(2) ** -scale + Decimal(offset)) if scale else middle + Decimal(offset)
            if parts(value)[0] <= LARGEST:
                emit("double", 0, text(value), "", (float(value).hex(), OK))

for value in [0.0, 0.1, 0.05, 0.005, 3.14, 1.234, 1.235, 8.38, 9.2, 99.9, 0.07, 3.133, 36.76662445068359375, 0.1 + 0.2,
              1e-7, 123456789.123, 1e22, 1e15, 123456789012345.67, 5e-324, 1e-128, 9.99e-129, 1.5e-128, 3.4e165,
              3.5e165, 1.7976931348623157e308, -2.5, 4503599627370497.5, 2.0**53, 2.0**53 + 2, 2.0**64, 0.000001,
              0.0000005]:
    shortest(value)
for _ in range(300):
    shortest(source.uniform(-10000, 10000))
    shortest(round(source.uniform(0, 100000), source.randint(0, 8)))
    shortest(source.random() * 10.0 ** source.randint(-140, 170))

with open("decimal_vectors.txt", "w", encoding="ascii", newline="\n") as out:
    out.write("\n".join(rows) + "\n")
