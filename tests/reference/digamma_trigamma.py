#!/usr/bin/python3
"""Writes digamma_trigamma.inc: psi and psi' to 50 digits by mpmath, rounded to double.

Row: {x, psi(x), its tolerance, psi'(x), its tolerance}. Tolerances are relative and follow the bands
of accuracy that NQMathFun.h states; from 1 on that of psi is absolute while |psi| < 1.
The last rows hold the arguments that are out of the domain, and the limits.
"""
import math
import os

from mpmath import mp, mpf, psi

mp.dps = 50
ZERO = 1.4616321449683623  # the double next to the positive zero of psi

POINTS = [1.1e-16, 9e-11, 2.5e-6, math.nextafter(1e-5, 0), 1e-5, 3e-5, math.nextafter(1e-4, 0),
          1e-4, 7e-4, 0.003, 0.02, 0.07, 0.125, 0.5, 1.0, 1.25, ZERO - 1e-6,
          math.nextafter(ZERO, 0), ZERO, ZERO + 1e-6, 1.5, 2.0, 3.75, 10.0, 47.3, 1000.0, 1e6,
          1e15, 1e17, 1e155, 1e300]
# (upper end of the band, tolerance of psi, tolerance of psi')
BANDS = [(1e-10, 5e-16, 5e-16), (1e-5, 2e-10, 2e-10), (1e-4, 5e-16, 2e-8), (0.125, 5e-16, 5e-16),
         (1, 2e-15, 5e-16), (math.inf, 2e-15, 1e-15)]
SPECIAL = """{-kInf, kMissing, 0, kMissing, 0}, {kMissing, kMissing, 0, kMissing, 0},
{-0.5, kMissing, 0, kMissing, 0}, {0, kMissing, 0, kMissing, 0}, {1e-16, kMissing, 0, kMissing, 0},
{kInf, kInf, 0, 0, 0}, {kNaN, kNaN, 0, kNaN, 0},
"""

here = os.path.dirname(os.path.abspath(__file__))
with open(os.path.join(here, "digamma_trigamma.inc"), "w") as out:
    out.write("// {x, psi(x), tolerance, psi'(x), tolerance}, written by digamma_trigamma.py\n")
    for x in POINTS:
        digamma, trigamma = float(psi(0, mpf(x))), float(psi(1, mpf(x)))
        tol0, tol1 = next(band[1:] for band in BANDS if x < band[0])
        if x >= 1:
            tol0 /= min(1, abs(digamma))
        out.write(f"{{{x.hex()}, {digamma.hex()}, {tol0:.2g}, {trigamma.hex()}, {tol1}}},\n")
    out.write(SPECIAL)
