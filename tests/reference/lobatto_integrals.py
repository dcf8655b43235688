#!/usr/bin/python3
"""Writes lobatto_integrals.inc: integrals with their exact values, and what defeats the method.

Row: {label, function of x, a, b, pivot, integral, status code of the current warning or 0}. Densities
carry their normalising constant and probabilities come from 50-digit closed forms of mpmath. The
integrator splits until two rules agree to 1e-6; the finer one, which it keeps, is about 256 times
closer, so 1e-7 is the tolerance of every row.
"""
import os

from mpmath import beta, betainc, gamma, gammainc, mp, mpf, ncdf, pi, sqrt

mp.dps = 50


def normal(mean, sd):
    scale = 1 / (mpf(sd) * sqrt(2 * pi))
    z = f"(x - {mean!r}) / {sd!r}"
    return (f"{float(scale).hex()} * std::exp(-0.5 * {z} * ({z}))",
            lambda x: ncdf((mpf(x) - mean) / mpf(sd)))


def gamma_density(shape, rate):
    scale = mpf(rate) ** shape / gamma(mpf(shape))
    return (f"{float(scale).hex()} * std::pow(x, {shape - 1!r}) * std::exp(-{rate!r} * x)",
            lambda x: gammainc(mpf(shape), 0, mpf(x) * rate, regularized=True))


def beta_density(p, q):
    scale = 1 / beta(mpf(p), mpf(q))
    return (f"{float(scale).hex()} * std::pow(x, {p - 1!r}) * std::pow(1 - x, {q - 1!r})",
            lambda x: betainc(mpf(p), mpf(q), 0, mpf(x), regularized=True))


PROBABILITIES = [
    ("both ends inside the bulk", normal(0.0, 1.0), -1, 2.5, 1),
    ("both tails trimmed", normal(0.0, 1.0), -40, 40, 0),
    ("pivot left of the interval", normal(0.0, 1.0), 2, 50, 1),
    ("pivot right of the interval", normal(0.0, 1.0), -50, -2, 1),
    ("a narrow peak, found through the pivot", normal(37.25, 0.125), 0, 100, 37.25),
    ("a far peak", normal(1e6, 1.0), 0, 1e9, 1e6),
    ("a thousand halvings", normal(3.0, 0.5), 0, 1e308, 3),
    ("gamma", gamma_density(3.0, 0.5), 0, 400, 4),
    ("gamma, large shape", gamma_density(50.0, 1.0), 0, 1e4, 49),
    ("exponential, pivot on the left end", gamma_density(1.0, 2.0), 0, 30, 0),
    ("gamma, inside", gamma_density(2.5, 1.0), 4, 9, 1),
    ("beta", beta_density(2.5, 7.0), 0, 1, 0.25),
    ("beta, steep", beta_density(40.0, 3.0), 0, 1, 0.9375),
    ("beta, inside", beta_density(6.0, 4.0), 0.125, 0.75, 0.5),
]
# Bounds, integral and code are C++ text.
PEAK_5, PEAK_20 = normal(5.0, 0.5)[0], normal(20.0, 1.0)[0]
HARD = [
    ("empty", "1.0", "3", "3", "1", "0", 0),
    ("reversed", "1.0", "kInf", "-kInf", "1", "0", 0),
    ("infinite end", normal(0.0, 1.0)[0], "0", "kInf", "0", "kMissing", 902),
    ("infinite start", normal(0.0, 1.0)[0], "-kInf", "4", "0", "kMissing", 902),
    ("NaN bound", "x", "0", "kNaN", "1", "kMissing", 902),
    ("infinite span", "1.0", "-1e308", "1e308", "1", "kMissing", 902),
    ("NaN everywhere", "kNaN", "1", "4", "2", "kNaN", 901),
    ("missing at the middle", "x == 2 ? kMissing : 1.0", "0", "4", "1", "kMissing", 902),
    ("missing after a split", "x == 0.5 ? kMissing : std::fabs(x - 0.9)", "0", "4", "3", "kMissing",
     902),
    # not a node of the halves
    ("missing at a node of the whole", "std::fabs(x - 0.17267) < 1e-5 ? kMissing : 1.0", "0", "1", "3",
     "kMissing", 902),
    ("differences below the tolerance", "1e-9 * std::fabs(x - 0.3)", "0", "1", "3",
     float(mpf("0.29e-9")).hex(), 0),
    # the pivot is not a node: no tail is trimmed and the rest is integrated
    ("missing at the pivot only", "x == 1 ? kMissing : x", "0", "3", "1", "4.5", 0),
    ("infinite at the pivot only", "x == 0 ? kInf : 2 * x", "-1", "4", "0", "15", 0),
    ("a peak missed by every node", normal(3.1, 0.001)[0], "0", "4", "1", "0", 0),
    ("nothing but the pivot", "x == 1 ? 1.0 : 0.0", "-5", "4", "1", "0", 0),
    # the end between the peaks must not be carried over the peak at 5
    ("pivot beyond b", f"{PEAK_5} + {PEAK_20}", "-10", "0", "20", "0", 0),
    # 1 - sqrt(1 - x) at 127/128: closeness 0.01 leaves the last 1/128 out
    ("infinite at b", "0.5 / std::sqrt(1 - x)", "0", "1", "0",
     float(1 - 1 / sqrt(mpf(128))).hex(), 0),
]

here = os.path.dirname(os.path.abspath(__file__))
with open(os.path.join(here, "lobatto_integrals.inc"), "w") as out:
    out.write("// {label, function, a, b, pivot, integral, code}, written by lobatto_integrals.py\n")
    rows = [(label, density, repr(float(a)), repr(float(b)), repr(float(pivot)),
             float(cdf(b) - cdf(a)).hex(), 0)
            for label, (density, cdf), a, b, pivot in PROBABILITIES] + HARD
    for label, function, *numbers in rows:
        function = f"[]([[maybe_unused]] double x) {{ return {function}; }}"
        out.write(f'{{"{label}", {function}, {", ".join(map(str, numbers))}}},\n')
