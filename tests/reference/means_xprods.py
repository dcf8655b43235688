#!/usr/bin/python3
"""Writes means_xprods.inc: weighted cases of three variables with their means and cross-products.

Row: {name, intercept, {cases}, record, pairs}. A case is its values and its weight. The record is W, the means
and the packed products, about the means with intercept; pairs are W, both means, both variances and
the covariance of pairs (1, 0), (2, 0), (2, 1), none where W is not above 1. They are exact rational
numbers, rounded to double once.

Each number is followed by how much it may be off, in three grades: what rounding costs when the
means are known first, when deviations are taken from means that are rounded, and when raw sums are
centred. With c the largest value over the smallest deviation, that is 1, c and c^2 for products.
"""
import os
import random
from fractions import Fraction

P = 3


def values(count, offset, scale):
    """Dyadic, so that the offset is added without rounding."""
    return [offset + scale * random.randrange(-512, 513) / 256 for _ in range(count)]


def cases(count, offsets, scales, weights):
    columns = [values(count, o, s) for o, s in zip(offsets, scales)]
    return [list(row) for row in zip(*columns, (weights[i % len(weights)] for i in range(count)))]


random.seed(5)
NONE, ONES = [0.0] * P, [1.0] * P
TABLE = [
    ("one case", True, cases(1, NONE, ONES, [0.5])),
    ("two cases", True, cases(2, NONE, ONES, [1.0])),
    ("weights of 1", True, cases(9, NONE, ONES, [1.0])),
    ("fractional weights", True, cases(10, NONE, ONES, [0.25, 0.7, 3.1])),
    ("some weights of 0", True, cases(12, NONE, ONES, [2.0, 0.0, 0.5])),
    ("huge ratio of weights", True, cases(9, NONE, ONES, [1e-12, 1.0, 1e12])),
    ("shift of 1e9", True, cases(11, [1e9, -1e9, 1e9], ONES, [1.0, 2.0])),
    ("columns of different scale", True, cases(8, NONE, [2.0**-30, 1.0, 2.0**40], [1.5, 1.0])),
    ("raw products", False, cases(10, [3.0, 0.0, 0.0], ONES, [0.25, 0.7, 3.1])),
]


EPS = 2.0**-52


def number(value, scale, costs):
    return "{%s, {%s}}" % (float(value).hex(), ", ".join("%.2g" % (2 * EPS * scale * c) for c in costs))


def numbers(items):
    return "{" + ",\n  ".join(number(*item) for item in items) + "}"


def row(name, intercept, rows):
    exact = [[Fraction(x) for x in r] for r in rows]
    total = sum(r[P] for r in exact)
    means = [sum(r[P] * r[i] for r in exact) / total for i in range(P)]
    center = means if intercept else [0] * P
    products = [[sum(r[P] * (r[i] - center[i]) * (r[j] - center[j]) for r in exact)
                 for j in range(P)] for i in range(P)]
    largest = [float(max(abs(r[i]) for r in exact)) for i in range(P)]
    deviation = [float(products[i][i] / total)**0.5 for i in range(P)]
    condition = max([1.0] + [x / d for x, d in zip(largest, deviation) if d > 0])
    flat, raw = [1, 1, 1], [1, condition, condition**2]

    def product(i, j, divisor):
        size = float(products[i][i] * products[j][j])**0.5
        return products[i][j] / divisor, size / float(divisor), raw

    record = [(total, float(total), flat)]
    record += [(means[i], largest[i], flat) for i in range(P)]
    record += [product(i, j, 1) for i in range(P) for j in range(i + 1)]
    pairs = []
    for i in range(1, P):
        for j in range(i) if intercept and total > 1 else ():
            pairs += [(total, float(total), flat), (means[i], largest[i], flat),
                      (means[j], largest[j], flat)]
            pairs += [product(r, c, total - 1) for r, c in ((i, i), (j, j), (i, j))]
    cases = ",\n  ".join("{" + ", ".join(x.hex() for x in r) + "}" for r in rows)
    return '{"%s", %s,\n {%s},\n %s,\n %s},\n' % (name, str(intercept).lower(), cases,
                                                  numbers(record), numbers(pairs))


with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "means_xprods.inc"), "w") as out:
    out.write("// {name, intercept, {cases}, {record}, {pairs}}, written by means_xprods.py\n")
    out.writelines(row(*entry) for entry in TABLE)
