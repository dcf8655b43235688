#!/usr/bin/python3
"""Writes guarded.inc.

Row: {operation, {operands}, value, tolerance, code}. In-range values are exact products or 50-digit powers and exponentials by
mpmath, rounded to double. Code 0 in range, 1 below the smallest normal double (value 0), 2 above the
largest, 3 undefined (2 and 3: the system-missing value). An odd root of a negative base is minus
that of its magnitude. The last rows of each table hold special operands, with their documented
result written out.
"""
import os
import sys
from fractions import Fraction

from mpmath import exp, mp, mpf

mp.dps = 50
MAX, MIN = sys.float_info.max, sys.float_info.min

POWERS = [
    # ordinary and near the ends of the range
    (2.0, 0.5), (10.0, 308.0), (10.0, -307.0), (10.0, 309.0), (10.0, -308.0), (1.5, 1750.0),
    (1.0 + 2**-52, 2.0**60), (1.0 - 2**-53, 2.0**62), (3.0, 1e300), (3.0, -1e300),
    (5e-324, 0.5), (5e-324, -0.5), (2.0, 1023.5), (2.0, -1022.0), (2.0, -1022.5),
    # integer powers of negative bases
    (-2.0, 3.0), (-2.0, 10.0), (-2.0, -3.0), (-1.0, 2.0**53 - 1), (-1.0, 1e300), (-10.0, 309.0),
    (-10.0, -309.0), (-1e200, 3.0),
    # odd roots of negative bases
    (-8.0, 1 / 3), (-8.0, -1 / 3), (-1e300, 1 / 3), (-32.0, 0.2), (-7.0, 1 / 49), (-7.0, 1 / 99999),
    (-5e-324, 1 / 7),
]
SPECIAL_POWERS = """{"Power", {0, 0}, 1, 0, 0}, {"Power", {0, 0.5}, 0, 0, 0}, {"Power", {0, -1}, kMissing, 0, 2},
{"Power", {-8, 0.5}, kMissing, 0, 3}, {"Power", {-8, 2.0 / 3}, kMissing, 0, 3},
{"Power", {-8, 0.33}, kMissing, 0, 3}, {"Power", {-8, 1e-10}, kMissing, 0, 3},
{"Power", {kInf, 2}, kMissing, 0, 2}, {"Power", {kInf, -2}, 0, 0, 1}, {"Power", {-2, kInf}, kMissing, 0, 2},
{"Power", {kMissing, 2}, kMissing, 0, 3}, {"Power", {2, kMissing}, kMissing, 0, 3},
{"Power", {kMissing, 0}, kMissing, 0, 3}, {"Power", {kNaN, 0}, kNaN, 0, 0},
{"Power", {0, kNaN}, kNaN, 0, 0},
"""
PRODUCTS = [(3.0, -4.0), (0.0, MAX), (MAX, 0.0), (MIN, 0.5), (-MIN, 1.0), (1e200, 1e200), (1e200, -1e200),
            (1e-200, -1e-200), (MAX, 0.5), (0.1, 3.0)]
# the largest double, negated, is the system-missing value: it counts as out of range
SPECIAL_PRODUCTS = """{"Multiply", {kMax, -1}, kMissing, 0, 2}, {"Multiply", {kInf, 0}, kMissing, 0, 3},
{"Multiply", {kInf, 2}, kMissing, 0, 2}, {"Multiply", {kMissing, 0}, kMissing, 0, 3},
{"Multiply", {1, kMissing}, kMissing, 0, 3}, {"Multiply", {kNaN, 0}, kNaN, 0, 0},
"""
EXPONENTS = [-745.0, -708.39, -1.0, 0.0, 1e-17, 1.0, 709.0]
# the limits 709 and -708.39 are inside what a double can hold; the step beyond each is out of range
SPECIAL_EXPONENTS = """{"Exponent", {709.0000000000001}, kMissing, 0, 2}, {"Exponent", {-708.3900000000001}, 0, 0, 1},
{"Exponent", {kMissing}, 0, 0, 1}, {"Exponent", {kInf}, kMissing, 0, 2}, {"Exponent", {kNaN}, kNaN, 0, 0},
"""
ROOTS = [(1.0, -2.0, 4.0, 10.0), (1e300, 2e300, 4e300, 1e301), (0.0, 3e-320, -4e-320, 0.0),
         (1e-300, 2e-300, -4e-300, 1e-299), (1e-200, 1.0, 1e200, 1.0), (0.0, 0.0, 0.0, 0.0),
         (MAX / 2, MAX / 2, 0.0, MAX / 2), (MAX, 0.0, MAX, 0.0)]
SPECIAL_ROOTS = """{"SumSqRoot", {kInf, 1, -kInf, 0}, kMissing, 0, 2}, {"SumSqRoot", {1, kMissing, kNaN, 1}, kMissing, 0, 3},
{"SumSqRoot", {1, kNaN, kInf, 2}, kNaN, 0, 0}, {"SumSqRoot", {kInf, kInf, 2, kNaN}, kNaN, 0, 0},
"""


def power(x, y):
    size = mp.power(mpf(abs(x)), mpf(y))
    return -size if x < 0 and (not y.is_integer() or int(y) % 2) else size


def product(x, y):
    exact = Fraction(x) * Fraction(y)
    return mpf(exact.numerator) / mpf(exact.denominator)


def root(*terms):
    return mp.sqrt(sum(mpf(term) ** 2 for term in terms))


def write(out, name, tolerance, operation, rows, special):
    for row in rows:
        value = operation(*row)
        code, text = 0, None
        if abs(value) > mpf(MAX):
            code, text = 2, "kMissing"
        elif 0 < abs(value) < mpf(MIN) and operation != root:  # a root cannot underflow
            code, text = 1, "0"
        operands = ", ".join(x.hex() for x in row)
        out.write(f'{{"{name}", {{{operands}}}, {text or float(value).hex()}, {tolerance}, {code}}},\n')
    out.write(special)


with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "guarded.inc"), "w") as file:
    file.write("// {operation, {operands}, value, tolerance, code}, written by guarded.py\n")
    write(file, "Power", 2.3e-16, power, POWERS, SPECIAL_POWERS)
    write(file, "Multiply", 0, product, PRODUCTS, SPECIAL_PRODUCTS)
    write(file, "Exponent", 2.3e-16, lambda x: exp(mpf(x)), [(x,) for x in EXPONENTS], SPECIAL_EXPONENTS)
    write(file, "SumSqRoot", 4e-16, root, ROOTS, SPECIAL_ROOTS)
