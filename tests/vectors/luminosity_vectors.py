#!/usr/bin/env python3
"""Writes luminosity_vectors.txt beside this script: pixels drawn on others, with the lightness of the one and the hue
and saturation of the other.

Computed in fractions, and with colours in full strength, as the blend mode is defined; the library works with floating
point numbers and with colours multiplied by their alphas. Run again after a change here; the result is checked in.

One case a line, three pixels as red, green, blue and alpha in hexadecimal digits, the colours multiplied by the alpha:
what is there, what is drawn, and the result.
"""

import os
import random
from fractions import Fraction

WEIGHTS = (Fraction(30, 100), Fraction(59, 100), Fraction(11, 100))


def lightness(color):
    return sum(weight * part for weight, part in zip(WEIGHTS, color))


def clipped(color):
    grey = lightness(color)
    low, high = min(color), max(color)
    if low < 0:
        color = [grey + (part - grey) * grey / (grey - low) for part in color]
    if high > 1:
        color = [grey + (part - grey) * (1 - grey) / (high - grey) for part in color]
    return color


def with_lightness(color, grey):
    change = grey - lightness(color)
    return clipped([part + change for part in color])


def full(pixel):
    return [Fraction(part, pixel[3]) if pixel[3] else Fraction(0) for part in pixel[:3]]


def blended(below, over):
    a, b = Fraction(below[3], 255), Fraction(over[3], 255)
    lower, upper = full(below), full(over)
    mixed = with_lightness(lower, lightness(upper))
    parts = [
        b * (1 - a) * upper[i] + a * (1 - b) * lower[i] + a * b * mixed[i]
        for i in range(3)
    ]
    return [rounded(part * 255) for part in parts + [a + b - a * b]]


def rounded(number):
    return int(number + Fraction(1, 2))


def pixel(generator):
    alpha = generator.choice((0, 1, 17, 128, 254, 255, 255, 255))
    return [generator.randint(0, alpha) for _ in range(3)] + [alpha]


def written(parts):
    return "".join(f"{part:02x}" for part in parts)


def main():
    generator = random.Random(28)
    cases = [
        ([255, 0, 0, 255], [128, 128, 128, 255]),
        ([255, 0, 0, 255], [0, 0, 0, 255]),
        ([255, 0, 0, 255], [255, 255, 255, 255]),
        ([0, 0, 255, 255], [0, 255, 0, 255]),
        ([0, 0, 0, 0], [10, 20, 30, 40]),
        ([10, 20, 30, 40], [0, 0, 0, 0]),
    ]
    cases += [(pixel(generator), pixel(generator)) for _ in range(400)]
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "luminosity_vectors.txt")
    with open(path, "w", encoding="ascii") as file:
        for below, over in cases:
            print(written(below), written(over), written(blended(below, over)), sep="|", file=file)


main()
