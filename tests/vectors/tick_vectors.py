#!/usr/bin/env python3
"""Writes tick_vectors.txt: numbers rounded to a tick with Python's decimal and math modules.

Run it in this folder; the output is the same every time. A row is `number|tick|mode|result|same|matches`: `same` is 1
where the number itself comes back, `matches` is 1 where it is a whole multiple of the tick.
"""

import math
import random
from decimal import Context, Decimal, ROUND_HALF_UP, setcontext

HIGHEST, LOWEST = 2**63 - 1, -(2**63)

setcontext(Context(prec=200))
QUOTIENT = Context(prec=38, rounding=ROUND_HALF_UP, Emin=-9999, Emax=9999)
source = random.Random(19991231)
rows = []


def text(value):
    return format(value.normalize(), "f") if value else "0"


def nearest(value):
    """Halves away from zero, without the error of adding a half."""
    whole = math.trunc(value)
    return whole + (int(math.copysign(1, value)) if abs(value - whole) >= 0.5 else 0)


def clamped(whole):
    return max(LOWEST, min(HIGHEST, whole))


def emit(number, tick, mode):
    quotient = QUOTIENT.divide(number, tick)
    value = float(quotient)
    multiple = clamped({0: nearest, 1: math.floor, 2: math.ceil}.get(mode, lambda _: 0)(value))
    same = multiple == quotient
    result = number if same else multiple * tick
    matches = clamped(math.trunc(value)) == quotient
    rows.append("|".join([text(number), text(tick), str(mode), text(result), str(int(same)), str(int(matches))]))


def ticks():
    step = Decimal(source.choice([1, 2, 5, 25, 50, 125, 3, 7, 15, 64, 32])).scaleb(source.randint(-6, 2))
    return -step if source.random() < 0.2 else step


for _ in range(700):
    tick = ticks()
    emit(Decimal(source.randint(-(10**9), 10**9)).scaleb(source.randint(-8, 0)), tick, source.randrange(4))
for _ in range(400):
    # On the tick, half way between two, and a trifle beside both.
    tick = ticks()
    half = tick * source.randint(-(10**6), 10**6) / 2
    for offset in [0, Decimal("1e-9"), Decimal("-1e-9"), Decimal("1e-25")]:
        emit(half + offset, tick, source.randrange(3))
for _ in range(300):
    # Quotients near and beyond what a double and a 64-bit integer hold.
    number = Decimal(source.randint(-(10**18), 10**18)).scaleb(source.randint(-4, 6))
    emit(number, ticks(), source.randrange(3))
for _ in range(150):
    digits = source.randint(20, 38)
    number = Decimal(source.randint(10 ** (digits - 1), 10**digits - 1)).scaleb(-source.randint(0, 38))
    emit(number, Decimal(source.randint(1, 10**18)).scaleb(-source.randint(0, 18)), source.randrange(3))

with open("tick_vectors.txt", "w", encoding="ascii", newline="\n") as out:
    out.write("\n".join(rows) + "\n")
