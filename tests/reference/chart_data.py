#!/usr/bin/python3
"""Writes chart_histogram.inc: weighted cases with what their histogram shows.

A row: {name, {nBins, min, max}, {{f, r, x}}, {mean, tolerance, std. deviation, tolerance}, {{mean,
sum of f}} of the bins with cases}.
The numbers are exact rationals rounded to double once, the deviation by a square root of 50 digits.
The tolerances are relative: n roundings of numbers as large as the largest value.
"""
import os
import random
from fractions import Fraction

import mpmath

mpmath.mp.dps = 50
EPS = 2.0**-52
random.seed(17)


def text(x):
    return "%.17g" % float(x)


def braces(items):
    return "{" + ", ".join(i if isinstance(i, str) else text(i) for i in items) + "}"


def bin_of(x, lowest, largest, n):
    if n < 2:
        return 0
    k = int((x - lowest) / ((largest - lowest) / n))
    return max(0, min(k, n - 1))


def mean(pairs):
    return sum(w * x for w, x in pairs) / sum(w for w, _ in pairs)


def grouped(cases, key):
    groups = {}
    for case in cases:
        groups.setdefault(key(case), []).append(case)
    return [groups[k] for k in sorted(groups)]


def histogram(name, shape, cases):
    n, lowest, largest = (Fraction(v) for v in shape)
    exact = [tuple(Fraction(v) for v in c) for c in cases]
    total = sum(f * r for f, r, _ in exact)
    center = mean([(f * r, x) for f, r, x in exact])
    squares = sum(f * r * (x - center) ** 2 for f, r, x in exact) / (total - 1)
    deviation = mpmath.sqrt(mpmath.mpf(squares.numerator) / squares.denominator)
    scale = len(cases) * EPS * float(max(abs(x) for _, _, x in exact))
    bins = grouped(exact, lambda c: bin_of(c[2], lowest, largest, int(n)))
    rows = [braces([mean([(f * r, x) for f, r, x in b]), sum(f for f, _, _ in b)]) for b in bins]
    got = [center, "%.2g" % (scale / abs(float(center))), deviation,
           "%.2g" % (scale / float(deviation))]
    return '{"%s", %s,\n %s,\n %s, %s},\n' % (
        name, braces(shape), braces([braces(c) for c in cases]), braces(got), braces(rows))


def some(count, offset, f=(1.0,), r=(1.0,)):
    """Dyadic values, most of them within 0 .. 8 of the offset."""
    return [(f[i % len(f)], r[i % len(r)], offset + random.randrange(-32, 160) / 16)
            for i in range(count)]


HISTOGRAMS = [
    ("weights of 1", (4, 0.0, 8.0), some(9, 0.0)),
    ("both weights", (5, 0.0, 8.0), some(10, 0.0, (2.0, 0.5, 3.0), (0.25, 1.5))),
    ("about 1e9", (3, 1e9, 1e9 + 8), some(8, 1e9, (1.0, 2.0))),
    ("huge ratio of weights", (2, 0.0, 8.0), some(6, 0.0, (2.0**-40, 1.0, 2.0**40))),
]
here = os.path.dirname(os.path.abspath(__file__))
with open(os.path.join(here, "chart_histogram.inc"), "w") as out:
    out.write("// written by chart_data.py\n")
    out.writelines(histogram(*row) for row in HISTOGRAMS)
