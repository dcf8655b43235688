#!/usr/bin/python3
"""Writes guarded_power.inc, guarded_multiply.inc, guarded_exponent.inc and guarded_root.inc.

Row: {{operands}, code, value}. In-range values are exact products or 50-digit powers and exponentials by
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
SPECIAL_POWERS = """{{0, 0}, 0, 1}, {{0, 3}, 0, 0}, {{0, -1}, 2, kMissing}, {{-8, 0.5}, 3, kMissing},
{{-8, 2.0 / 3}, 3, kMissing}, {{-8, 0.33}, 3, kMissing}, {{-8, 1e-10}, 3, kMissing},
{{kInf, 2}, 2, kMissing}, {{kInf, -2}, 1, 0}, {{-2, kInf}, 2, kMissing},
{{kMissing, 2}, 3, kMissing}, {{2, kMissing}, 3, kMissing}, {{kMissing, 0}, 3, kMissing},
{{kNaN, 0}, 0, kNaN}, {{0, kNaN}, 0, kNaN},
"""
PRODUCTS = [(3.0, -4.0), (0.0, MAX), (MIN, 0.5), (-MIN, 1.0), (1e200, 1e200), (1e200, -1e200),
            (1e-200, -1e-200), (MAX, 0.5), (0.1, 3.0)]
# the largest double, negated, is the system-missing value: it counts as out of range
SPECIAL_PRODUCTS = """{{kMax, -1}, 2, kMissing}, {{kInf, 0}, 3, kMissing}, {{kInf, 2}, 2, kMissing},
{{kMissing, 0}, 3, kMissing}, {{1, kMissing}, 3, kMissing}, {{kNaN, 0}, 0, kNaN},
"""
EXPONENTS = [-745.0, -708.39, -1.0, 0.0, 1e-17, 1.0, 709.0]
# the limits 709 and -708.39 are inside what a double can hold; the step beyond each is out of range
SPECIAL_EXPONENTS = """{{709.0000000000001}, 2, kMissing}, {{-708.3900000000001}, 1, 0}, {{kMissing}, 1, 0},
{{kInf}, 2, kMissing}, {{kNaN}, 0, kNaN},
"""
ROOTS = [(1.0, -2.0, 4.0, 10.0), (1e300, 2e300, 4e300, 1e301), (0.0, 3e-320, -4e-320, 0.0),
         (1e-300, 2e-300, -4e-300, 1e-299), (1e-200, 1.0, 1e200, 1.0), (0.0, 0.0, 0.0, 0.0),
         (MAX / 2, MAX / 2, 0.0, MAX / 2), (MAX, 0.0, MAX, 0.0)]
SPECIAL_ROOTS = """{{kInf, 1, -kInf, 0}, 2, kMissing}, {{1, kMissing, kNaN, 1}, 3, kMissing},
{{1, kNaN, kInf, 2}, 0, kNaN}, {{kInf, kInf, 2, kNaN}, 0, kNaN},
"""


def power(x, y):
    size = mp.power(mpf(abs(x)), mpf(y))
    return -size if x < 0 and (not y.is_integer() or int(y) % 2) else size


def product(x, y):
    exact = Fraction(x) * Fraction(y)
    return mpf(exact.numerator) / mpf(exact.denominator)


def root(*terms):
    return mp.sqrt(sum(mpf(term) ** 2 for term in terms))


def write(name, operation, rows, special):
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, f"guarded_{name}.inc"), "w") as out:
        out.write("// {{operands}, code, value}, written by guarded.py\n")
        for row in rows:
            value = operation(*row)
            code, text = 0, None
            if abs(value) > mpf(MAX):
                code, text = 2, "kMissing"
            elif 0 < abs(value) < mpf(MIN) and operation != root:  # a root cannot underflow
                code, text = 1, "0"
            operands = ", ".join(x.hex() for x in row)
            out.write(f"{{{{{operands}}}, {code}, {text or float(value).hex()}}},\n")
        out.write(special)


write("power", power, POWERS, SPECIAL_POWERS)
write("multiply", product, PRODUCTS, SPECIAL_PRODUCTS)
write("exponent", lambda x: exp(mpf(x)), [(x,) for x in EXPONENTS], SPECIAL_EXPONENTS)
write("root", root, ROOTS, SPECIAL_ROOTS)
