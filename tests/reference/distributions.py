#!/usr/bin/python3
"""Writes distribution_{normal,gamma,beta,t_and_f}.inc: values to 50 digits by mpmath, as doubles.

Row: {function, {arguments}, value, relative tolerance, status}. The tolerance grows with the
logarithm of a tail, whose rounding the exponential turns into relative error, and with the
parameters, as NQDistFun.h states. Quantiles are solved by Newton's iteration on the logarithm of
the smaller tail. The last rows of each table hold the ends of the ranges and invalid arguments,
with their documented result written out.
"""
import math
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from incomplete import beta_tails, gamma_tails  # noqa: E402
from mpmath import (atan, erf, erfc, exp, expm1, log, log1p, loggamma, mp, mpf, ncdf, npdf, pi, sin,
                    sqrt)  # noqa: E402

mp.dps = 50
UP, DOWN = math.inf, -math.inf
near = math.nextafter


def tolerance(value):
    """For a value whose exponent is off by some epsilons."""
    return 1e-14 + 6e-16 * abs(float(log(abs(value)))) if value else 0


# ---- distribution functions --------------------------------------------------------------------

def f_point(x, df1, df2):
    x, a, b = mpf(x), mpf(df1) / 2, mpf(df2) / 2
    return a * x / (a * x + b), a, b, b / (a * x + b)


def f_tails(x, df1, df2):
    return beta_tails(*f_point(x, df1, df2)) if x > 0 else (mpf(0), mpf(1))


def t_tails(t, df):
    """P(T <= t), P(T > t)."""
    if df > 1e8:
        return ncdf(mpf(t)), ncdf(-mpf(t))
    inside, outside = f_tails(mpf(t) ** 2, 1, df)
    below, above = (1 + inside) / 2, outside / 2
    return (below, above) if t >= 0 else (above, below)


def t_density(x, df):
    x, df = mpf(x), mpf(df)
    return exp(loggamma((df + 1) / 2) - loggamma(df / 2) - (df + 1) / 2 * log1p(x * x / df)) \
        / sqrt(df * pi)


def gamma_density(x, shape, rate):
    x, shape, rate = mpf(x), mpf(shape), mpf(rate)
    return exp(shape * log(rate) + (shape - 1) * log(x) - rate * x - loggamma(shape))


def lower_exponential(x, rate):
    return -expm1(-mpf(x) * mpf(rate))


# ---- quantiles ---------------------------------------------------------------------------------

def positive_quantile(v, lower, upper, tails, slope):
    """From v by Newton in ln v on the logarithm of the smaller tail, which is concave."""
    goal, side = (lower, 0) if lower <= upper else (upper, 1)
    longest = mpf(2)
    for _ in range(400):
        value = tails(v)[side]
        step = (log(goal / value) * value / slope(v) if value else longest) * (1 - 2 * side)
        if abs(step) > longest:
            step, longest = longest * (1 if step > 0 else -1), longest * mpf(1.5)
        v *= exp(step)
        if abs(step) < mpf(10) ** -30:
            return v
    raise ArithmeticError("no convergence")


def gamma_quantile(p, shape):
    a = mpf(shape)
    return positive_quantile(a, mpf(p), 1 - mpf(p), lambda x: gamma_tails(x, a),
                             lambda x: exp(a * log(x) - x - loggamma(a)))


def f_quantile(p, df1, df2, upper=None):
    def slope(x):
        point, a, b, rest = f_point(x, df1, df2)
        return exp(a * log(point) + b * log(rest)
                   + loggamma(a + b) - loggamma(a) - loggamma(b))
    return positive_quantile(mpf(1), mpf(p), 1 - mpf(p) if upper is None else upper,
                             lambda x: f_tails(x, df1, df2), slope)


def t_quantile(p, df):
    outside = 2 * min(mpf(p), 1 - mpf(p))
    size = sqrt(f_quantile(1 - outside, 1, df, outside))
    return -size if p < 0.5 else size


def beta_quantile(p, a, b):
    ratio = f_quantile(p, 2 * mpf(a), 2 * mpf(b))
    return f_point(ratio, 2 * mpf(a), 2 * mpf(b))[0]


def normal_quantile(p):
    """Newton on the logarithm of the smaller tail."""
    goal = min(mpf(p), 1 - mpf(p))
    z = mpf(0)
    for _ in range(200):
        step = log(goal / ncdf(z)) * ncdf(z) / npdf(z)
        z += step
        if abs(step) < mpf(10) ** -40:
            return z if p < 0.5 else -z
    raise ArithmeticError("no convergence")


# ---- tables ------------------------------------------------------------------------------------

class Table:
    def __init__(self, name):
        self.path = os.path.join(os.path.dirname(os.path.abspath(__file__)),
                                 f"distribution_{name}.inc")
        self.lines = ["// {function, {arguments}, value, tolerance, status}, written by"
                      " distributions.py\n"]

    def add(self, function, args, value, tol=None):
        if 0 < abs(value) < exp(mpf(-708)):
            value = mpf(0)
        tol = tolerance(value) if tol is None else tol
        text = ", ".join(float(a).hex() for a in args)
        self.lines.append(f'{{"{function}", {{{text}}}, {float(value).hex()}, {tol:.2g}}},\n')

    def write(self, special):
        with open(self.path, "w") as out:
            out.writelines(self.lines)
            out.write(special)


PROBABILITIES = [1e-300, 1e-100, 1e-20, 2e-6, near(2e-6, 0), 1e-3, 0.05, 0.2, near(0.5, 0),
                 near(0.5, 1), 0.7, 0.95, 0.999, near(0.999998, 1), 1 - 1e-9, near(1.0, 0)]


def normal():
    table = Table("normal")
    # -4/7 to -28: the ends of the pieces of Mills' ratio
    points = [-37.5, -30.1, -28.1, -27.9, -20, -12.1, -11.9, -8.3, -6.7, -6.6, -5, -4.1, -3.9, -2.41,
              -2.39, -2, -1.34, -1.33, -0.7, -0.572, -0.571, -0.3, -1e-9, -1e-200, 1e-200, 1e-17,
              0.001, 0.46875, 1.1, 2.2, 3.3, 5.9, 6.9, 9.0]
    for z in points:
        table.add("CdfStdNorm", (z,), ncdf(mpf(z)), 8e-16)
        table.add("prbnrm", (z,), ncdf(mpf(z)), 8e-16)
        table.add("PdfNormalStandard", (z,), npdf(mpf(z)), 4e-16)
    for x in [-6.9, -2.2, -0.3, -1e-300, 0.25, 1.0, 2.0, near(2.2, 0), 2.2, 5.5, 6.8, 6.9, 26.0]:
        table.add("derf", (x,), erf(mpf(x)), 3e-16)
        table.add("derfc", (x,), erfc(mpf(x)), 6e-16)
    for args in [(3.5, 1.25, 2.0), (-40.0, 10.0, 4.0), (1e6, 1000000.5, 0.125)]:
        u = (mpf(args[0]) - mpf(args[1])) / mpf(args[2])
        table.add("CdfNorm", args, ncdf(u), 4e-16)
        table.add("PdfNormal", args, npdf(u) / mpf(args[2]), 5e-16)
    table.add("PdfNormal", (2.0, 1.0, -1.0), -npdf(mpf(1)), 4e-16)
    ends = [0.075, near(0.075, 0), 0.925, near(0.925, 1), 1.3887943864964021e-11, 1e-11]  # exp(-25)
    for p in PROBABILITIES + ends + [0.4, 0.51, 5e-324, 1e-310]:
        if p != 0.5:
            table.add("probit", (p,), normal_quantile(p), 8e-16)
    table.add("IdfNorm", (0.975, 10.0, 2.0), 10 + 2 * normal_quantile(0.975), 5e-16)
    table.add("IdfStdNorm", (0.025,), normal_quantile(0.025), 6e-16)
    table.write("""{"CdfStdNorm", {0}, 0.5, 0}, {"prbnrm", {kNaN}, 0.5, 0}, {"CdfStdNorm", {kInf}, 1, 0},
{"CdfStdNorm", {-kInf}, 0, 0}, {"CdfStdNorm", {-37.6}, 0, 0}, {"CdfStdNorm", {kMissing}, 0, 0},
{"CdfNorm", {1, 0, 0}, kMissing, 0}, {"CdfNorm", {1, 0, -1}, kMissing, 0},
{"CdfNorm", {1, kNaN, 1}, 0.5, 0}, {"CdfNorm", {kInf, kInf, 1}, 0.5, 0},
{"PdfNormalStandard", {-38}, 0, 0}, {"PdfNormalStandard", {kInf}, 0, 0},
{"PdfNormalStandard", {kNaN}, kNaN, 0}, {"PdfNormal", {1, 0, 0}, kMissing, 0},
{"PdfNormal", {kNaN, 0, 1}, kNaN, 0}, {"PdfNormal", {1, 0, kInf}, 0, 0},
{"derf", {0}, 0, 0}, {"derf", {kInf}, 1, 0}, {"derf", {-kInf}, -1, 0}, {"derf", {kNaN}, kNaN, 0},
{"derfc", {0}, 1, 0}, {"derfc", {26.6}, 0, 0}, {"derfc", {kInf}, 0, 0}, {"derfc", {-kInf}, 2, 0},
{"derfc", {kNaN}, kNaN, 0}, {"probit", {0.5}, 0, 0}, {"probit", {0}, kMissing, 0},
{"probit", {1}, kMissing, 0}, {"probit", {kNaN}, kMissing, 0}, {"IdfStdNorm", {0.5}, 0, 0},
{"IdfStdNorm", {0}, kMissing, 0}, {"IdfStdNorm", {1}, kMissing, 0},
{"IdfStdNorm", {-0.1}, kMissing, 0}, {"IdfNorm", {0.5, 0.1, 0.3}, 0.1, 0},
{"IdfNorm", {0, 1, 0.5}, kMissing, 0}, {"IdfNorm", {1, 1, 0.5}, kMissing, 0},
{"IdfNorm", {0.3, 0, 0}, kMissing, 0}, {"IdfNorm", {0.3, kNaN, 1}, kMissing, 0},
{"IdfNorm", {0.3, 0, kNaN}, kMissing, 0},
""")


def gamma():
    table = Table("gamma")
    # the joints of the log gamma, its zeros, tiny and huge arguments
    for x in [1e-300, 1e-20, 0.001, 0.25, near(0.5, 0), near(0.5, 1), 0.8, near(1.0, 0), near(1.0, 2),
              1.25, near(1.5, 0), 1.5, near(2.0, 0), near(2.0, 3), 2.4, near(2.5, 0), 2.5, 3.5, 8.0,
              near(10.0, 0), 10.0, 171.5, 1e6, 1e15, 1e300]:
        for function in ("dnlgam", "tarndnlgam"):
            table.add(function, (x,), loggamma(mpf(x)), 6e-16)
    # both sides of the joints: x = 1, x = a + 1, shapes 1, 20 and 1e4, the ends of the uniform
    # expansion near x/a = 0.48 and 1.84, of its short form near 0.74 and 1.31
    for a in [1e-8, 0.4, near(1.0, 0), near(1.0, 2), 1.5, 9.75]:
        for x in [1e-3 * a, 0.3, near(1.0, 0), near(1.0, 2), near(a + 1, 0), near(a + 1, UP), a + 30]:
            lower, upper = gamma_tails(x, a)
            table.add("gammad", (x, a, 1), lower)
            table.add("gammad", (x, a, 0), upper)
    for a in [near(20.0, 0), 20.0, 300.0, near(1e4, 0), 1e4]:
        ends = [0.47, 0.49, 0.73, 0.75, 1.3, 1.32, 1.83, 1.85] if a < 1e3 else [0.8, 0.9, 1.09, 1.2]
        for x in [ratio * a for ratio in ends] + [near(a, 0), near(a, UP)]:
            lower, upper = gamma_tails(x, a)
            table.add("gammad", (x, a, 1), lower)
            table.add("gammad", (x, a, 0), upper)
    for a in [1e6, 1e9, 1e12]:
        for z in [-30, -6, -0.5, 2, 30]:
            x = a + z * math.sqrt(a)
            lower, upper = gamma_tails(x, a)
            table.add("gammad", (x, a, 1), lower)
            table.add("gammad", (x, a, 0), upper)
    for x, df in [(3.841458820694124, 1.0), (1e-10, 2.0), (1500.0, 3.0), (1e-20, 0.5), (80.0, 100.0)]:
        lower, upper = gamma_tails(mpf(x) / 2, mpf(df) / 2)
        table.add("CdfChi", (x, df), lower)
        table.add("SigChi", (x, df), upper)
    for x, rate in [(1e-17, 1.0), (0.25, 3.0), (1e3, 1.0), (5e-300, 0.5)]:
        table.add("cdfexp", (x, rate), lower_exponential(x, rate), 4e-16)
        table.add("CdfGam", (x, 1.0, rate), lower_exponential(x, rate), 4e-16)
    table.add("CdfGam", (2.0, 2.0, 0.5), gamma_tails(1, 2.0)[0])
    for args in [(0.5, 1.0, 2.0), (1e-30, 0.5, 3.0), (2.0, 0.25, 3.0), (3.0, 2.0, 2.0),
                 (1e-5, 30.0, 1.0), (700.0, 20.0, 1.0), (1e4, 1e4, 1.0), (0.125, 1e3, 8192.0),
                 (1e6, 1e6, 1.0), (1e9, 1e9, 1.0), (1e-250, 1e-6, 1.0), (0.9, 0.3, 1.125)]:
        table.add("PdfGamma", args, gamma_density(*args))
    for df in [0.01, 0.3, 0.32, 0.4, 1.0, 2.0, 10.0, 100.0, 5e3]:
        for p in PROBABILITIES[df > 1::2]:
            x = 2 * gamma_quantile(p, mpf(df) / 2)
            if x > 1e-290:
                table.add("tarnidfchi", (p, df), x, 4e-15 + 4e-16 * abs(float(log(x))))
                table.add("idfchb", (p, df), x, 4e-15 + 4e-16 * abs(float(log(x))))
    table.add("IdfChi", (0.95, 4.0), 2 * gamma_quantile(0.95, 2), 1e-15)
    table.add("IdfGam", (0.3, 2.5, 4.0), gamma_quantile(0.3, 2.5) / 4, 1e-15)
    table.add("tarnidfchi", (0.25, 2e6), 2 * gamma_quantile(0.25, 1e6), 1e-14)
    table.write("""{"dnlgam", {1}, 0, 0}, {"dnlgam", {2}, 0, 0}, {"dnlgam", {0.5}, 0.5723649429247001, 0},
{"dnlgam", {0}, kMissing, 0}, {"dnlgam", {-1.5}, kMissing, 0}, {"dnlgam", {kNaN}, kMissing, 0},
{"dnlgam", {kInf}, kInf, 0}, {"gammad", {1, 0, 1}, kMissing, 0, 1}, {"gammad", {1, -2, 0}, kMissing, 0, 1},
{"gammad", {1, kNaN, 0}, kMissing, 0, 1}, {"gammad", {kNaN, 1, 0}, kMissing, 0, 1},
{"gammad", {0, 3, 1}, 0, 0}, {"gammad", {-1, 3, 0}, 1, 0}, {"gammad", {kInf, 3, 1}, 1, 0},
{"gammad", {kInf, 3, 0}, 0, 0}, {"gammad", {5, kInf, 1}, 0, 0}, {"gammad", {5, kInf, 0}, 1, 0},
{"gammad", {709, 1, 0}, 0, 0}, {"gammad", {709, 1, 1}, 1, 0}, {"gammad", {1e-300, 3, 1}, 0, 0},
{"gammad", {1e80, 3, 0}, 0, 0}, {"gammad", {1e305, 1e300, 0}, 0, 0},
{"CdfChi", {0, 3}, 0, 0}, {"SigChi", {0, 3}, 1, 0}, {"CdfChi", {2, 0}, kMissing, 0},
{"SigChi", {2, -1}, kMissing, 0}, {"CdfChi", {kNaN, 3}, kMissing, 0}, {"CdfChi", {5, 1e-320}, 1, 0},
{"CdfGam", {-1, 2, 3}, 0, 0}, {"CdfGam", {-1, 0, 3}, kMissing, 0}, {"CdfGam", {-1, 2, 0}, kMissing, 0},
{"CdfGam", {kInf, 2, 3}, 1, 0}, {"CdfGam", {kNaN, 2, 3}, kMissing, 0}, {"CdfGam", {0, 2, kInf}, 0, 0}, {"cdfexp", {0, kInf}, 0, 0},
{"cdfexp", {1, 0}, kMissing, 0, 1}, {"cdfexp", {kNaN, 1}, kMissing, 0, 1}, {"cdfexp", {kInf, 1}, 1, 0},
{"PdfGamma", {-1, 2, 3}, 0, 0}, {"PdfGamma", {0, 0.5, 3}, kMissing, 0}, {"PdfGamma", {0, 1, 3}, 3, 0},
{"PdfGamma", {0, 2, 3}, 0, 0}, {"PdfGamma", {1, 0, 3}, kMissing, 0}, {"PdfGamma", {1, 1, 0}, kMissing, 0},
{"PdfGamma", {710, 1, 1}, 0, 0}, {"PdfGamma", {1, 1, 1e308}, 0, 0}, {"PdfGamma", {kInf, 2, 1}, 0, 0},
{"PdfGamma", {5e-324, 1e-3, 1e-10}, kMissing, 0}, {"PdfGamma", {1e-320, 1e-3, 1}, kMissing, 0},
{"PdfGamma", {kNaN, 2, 1}, kMissing, 0},
{"tarnidfchi", {0, 3}, 0, 0}, {"tarnidfchi", {1, 3}, kMissing, 0, 1}, {"tarnidfchi", {-0.1, 3}, kMissing, 0, 1},
{"tarnidfchi", {0.5, 0}, kMissing, 0, 1}, {"tarnidfchi", {kNaN, 3}, kMissing, 0, 1},
{"tarnidfchi", {0.5, kNaN}, kMissing, 0, 1}, {"tarnidfchi", {0.5, 1e-3}, 0, 0}, {"idfchb", {0, 3}, 0, 0},
{"idfchb", {1, 3}, kMissing, 0, 1}, {"idfchb", {0.5, 0}, kMissing, 0, 1}, {"idfchb", {0.5, 1e-3}, 0, 0},
{"IdfChi", {0.5, 0}, kMissing, 0}, {"IdfGam", {0, 0, 1}, 0, 0}, {"IdfGam", {0.5, 0, 1}, kMissing, 0},
{"IdfGam", {0, 2, 0}, kMissing, 0}, {"IdfGam", {1, 2, 1}, kMissing, 0},
{"IdfGam", {0, -1, 1}, kMissing, 0}, {"IdfGam", {kNaN, 2, 1}, kMissing, 0},
{"IdfGam", {0.5, 1e3, 1e-310}, kMissing, 0}, {"IdfGam", {0.5, kInf, 1e-300}, kMissing, 0},
""")


def beta():
    table = Table("beta")
    pairs = [(1e-8, 1e-6), (0.01, 3.0), (0.5, 0.5), (0.5, 2.0), (near(1.0, 0), 2.5), (near(1.0, 2), 2.5),
             (1.0, 0.25), (1.0, 2.0), (3.0, 1.0), (2.0, 7.5), (5.0, 5.0), (0.5, 5e3), (40.0, 300.0),
             (1e4, 1e4), (1.5, 1e4)]
    for a, b in pairs + [(b, a) for a, b in pairs if a != b]:
        swap = (a + 1) / (a + b + 2)
        sd = math.sqrt(a * b / (a + b + 1)) / (a + b)
        mean = a / (a + b)
        points = {near(swap, 0), near(swap, 1), 0.75, near(0.75, 1), mean - 4 * sd, mean + 9 * sd,
                  near(1.0, 0), 1e-250} if min(a, b) > 1e-3 else {1e-250, 0.3, near(1.0, 0)}
        for x in sorted(x for x in points if 0 < x < 1):
            table.add("cdfbet", (x, a, b), beta_tails(x, a, b)[0])
    for a, b in [(5e5, 5e5), (2.5, 1e6), (1e6, 30.0), (3e7, 5e7), (near(1e9, 0), 1e9), (1e9, 1e9),
                 (1e9, 1e12), (1e4, 1e9), (1.5, 5e8), (3e12 + 0.1, 1e12 + 0.7)]:
        for z in ([-2, 8] if min(a, b) > 100 else [0.5, 8]) + ([-30] if min(a, b) >= 1e9 else []):
            x = a / (a + b) + z * math.sqrt(a * b / (a + b)) / (a + b)
            table.add("cdfbet", (x, a, b), beta_tails(x, a, b)[0])
    # where the expansion about the mean begins, by shapes and by distance
    for a, b in [(near(60.0, 0), 60.0), (60.0, 60.0), (31.0, 1e3), (1e4, 40.0)]:
        v = a * b / (a + b)
        for z in [-0.31, -0.29, 0, 0.29, 0.31]:
            x = 1 / (1 + b / a * math.exp(-z))
            table.add("cdfbet", (x, a, b), beta_tails(x, a, b)[0])
    table.add("CdfBeta", (1e-4, 0.5, 2.0), beta_tails(1e-4, 0.5, 2.0)[0])
    for u in [1e-300, 1e-9, 0.5, 0.7499, 0.75, 0.76, near(1.0, 0), 1 + 1e-9, 1.1, 1.25, 1.26, 3.0,
              1e6, 1e100, 1.3e154]:
        v = mpf(u)
        mp.dps = 90
        value = (1 - v * v + 2 * v * log(v)) / (1 - v) ** 2
        mp.dps = 50
        table.add("cbtaux", (u,), value, 4e-15)
    for a, b in [(0.5, 0.5), (0.02, 0.3), (0.5, 2.0), (1.0, 4.0), (4.0, 1.0), (2.0, 5.0), (30.0, 0.5),
                 (8.0, 600.0), (1e4, 3e3), (1.0, 1.0)]:
        for p in PROBABILITIES[a > 1::2]:
            x = beta_quantile(p, a, b) if (a, b) != (0.5, 0.5) else sin(mpf(p) * pi / 2) ** 2
            if x > 1e-290:
                table.add("betinv", (p, a, b), x, 4e-15 + 4e-16 * abs(float(log(x))))
    table.add("IdfBeta", (0.25, 2.0, 3.0), beta_quantile(0.25, 2, 3), 1e-15)
    table.write("""{"cdfbet", {0, 2, 3}, 0, 0}, {"cdfbet", {-kInf, 2, 3}, 0, 0}, {"cdfbet", {1, 2, 3}, 1, 0},
{"cdfbet", {kInf, 2, 3}, 1, 0}, {"cdfbet", {0.3, 0, 3}, kMissing, 0, 1}, {"cdfbet", {0.3, 2, -1}, kMissing, 0, 1},
{"cdfbet", {kNaN, 2, 3}, kMissing, 0, 1}, {"cdfbet", {0.3, kNaN, 3}, kMissing, 0, 1},
{"cdfbet", {0.3, 2, kNaN}, kMissing, 0, 1}, {"cdfbet", {0.3, kInf, 3}, 0, 0}, {"cdfbet", {0.3, 3, kInf}, 1, 0},
{"cdfbet", {0.3, kInf, kInf}, 0, 0}, {"cdfbet", {0.5, kInf, kInf}, 0.5, 0}, {"cdfbet", {0.3, 1, 1}, 0.3, 0},
{"cdfbet", {0.999, 1, 200}, 1, 0}, {"cdfbet", {1e-200, 4, 1}, 0, 0}, {"cdfbet", {1e-200, 4, 3}, 0, 0},
{"CdfBeta", {0.3, 0, 3}, kMissing, 0}, {"cbtaux", {0}, 1, 0}, {"cbtaux", {1}, 0, 0}, {"cbtaux", {2e154}, -1, 0},
{"cbtaux", {kInf}, -1, 0}, {"cbtaux", {-1e-9}, kMissing, 0}, {"cbtaux", {kNaN}, kMissing, 0},
{"betinv", {0, 2, 3}, 0, 0}, {"betinv", {1, 2, 3}, 1, 0}, {"betinv", {0.5, 7, 7}, 0.5, 0},
{"betinv", {-0.1, 2, 3}, kMissing, 0, 1}, {"betinv", {1.1, 2, 3}, kMissing, 0, 1},
{"betinv", {0.2, 0, 3}, kMissing, 0, 1}, {"betinv", {0.2, 2, 0}, kMissing, 0, 1},
{"betinv", {kNaN, 2, 3}, kMissing, 0, 1}, {"betinv", {0.2, kNaN, 3}, kMissing, 0, 1},
{"betinv", {0.2, 2, kNaN}, kMissing, 0, 1}, {"betinv", {0.2, kInf, 3}, 1, 0}, {"betinv", {0.2, 3, kInf}, 0, 1e-290},
{"betinv", {1e-300, 0.4, 1}, 0, 0}, {"IdfBeta", {0.2, 0, 3}, kMissing, 0},
{"IdfBeta", {0.3, 1e-200, 1e-200}, 0, 0}, {"IdfBeta", {0.7, 1e-200, 1e-200}, 1, 0},
""")


def t_and_f():
    table = Table("t_and_f")
    for df in [0.01, 0.5, near(1.0, 0), 1.0, 3.5, 10.0, 300.0, 1e5, 1e8, near(1e8, UP), 1e12]:
        for t in [1e-160, 1e-4, 1.0, near(1.0, 2), 2.0, 12.0, 35.0, 1e140, 1e200]:
            if df > 1e4 and t > 100:
                continue
            table.add("tarncdft", (-t, df), t_tails(-t, df)[0])
            if t in (1e-4, 1.0, 2.0):
                table.add("tarncdft", (t, df), t_tails(t, df)[0], 4e-16)
            if t in (1e-160, 2.0, 35.0):
                table.add("PdfT", (t, df), t_density(t, df))
        table.add("SigT", (2.0, df), t_tails(2.0, df)[1])
    table.add("CdfT", (-1e10, 1.0), atan(mpf(1e-10)) / pi)
    table.add("PdfT", (1e200, 0.01), t_density(1e200, 0.01))
    grid = [(0.02, 0.5), (1.0, 1.0), (1.0, 10.0), (1.0, 1e9), (2.0, 7.0), (3.0, 2.0), (5.0, 0.3), (12.0, 40.0),
            (1e3, 3e3), (1e4, 2.0), (1e4, 1e4)]
    for df1, df2 in grid:
        for x in [1e-300, 0.02, near(1.0, 0), near(1.0, 2), 1.4, 1e3, 1e200]:
            lower, upper = f_tails(x, df1, df2)
            table.add("tarncdff", (x, df1, df2), lower)
            table.add("SigF", (x, df1, df2), upper)
    for df1, df2 in [(1e6, 1e6), (3.0, 1e9), (1e9, 5.0), (1e8, 1e8), (3e9, 3e9), (1e11, 1e12)]:
        sd = math.sqrt(2 / df1 + 2 / df2)
        for z in [-0.3, 0.5, 6]:
            x = math.exp(z * sd)
            lower, upper = f_tails(x, df1, df2)
            table.add("tarncdff", (x, df1, df2), lower)
            table.add("SigF", (x, df1, df2), upper)
    table.add("CdfF", (2.5, 3.0, 9.0), f_tails(2.5, 3, 9)[0])
    for df in [0.05, 0.7, 1.0, 4.5, 30.0, 2e3]:
        for p in PROBABILITIES[::2] + [0.5 + 1e-10]:
            t = t_quantile(p, df)
            if abs(t) < 1e300:
                table.add("tarnidft", (p, df, 1e-20, 1e-12), t, 2e-15 + 4e-16 * abs(float(log(abs(t)))))
        # the tolerances change nothing
        table.add("IdfT", (0.975, df, 1e-4, 0.25), t_quantile(0.975, df), 1e-14)
    table.add("tarnidft", (0.975, 1e8, 1e-20, 1e-12), normal_quantile(0.975), 6e-16)
    for df1, df2 in [(0.1, 3.0), (1.0, 1.0), (1.0, 25.0), (2.0, 2.0), (4.0, 0.4), (10.0, 60.0), (3e3, 500.0)]:
        for p in PROBABILITIES[1::2]:
            x = f_quantile(p, df1, df2)
            if 1e-290 < x < 1e300:
                table.add("tarnidff", (p, df1, df2), x, 4e-15 + 4e-16 * abs(float(log(x))))
    table.add("IdfF", (0.95, 3.0, 16.0), f_quantile(0.95, 3, 16), 1e-14)
    table.add("tarnidff", (0.999, 3.0, 1e9), f_quantile(0.999, 3, 1e9), 1e-14)
    table.write("""{"tarncdft", {0, 7}, 0.5, 0}, {"tarncdft", {kInf, 7}, 1, 0}, {"tarncdft", {-kInf, 7}, 0, 0},
{"tarncdft", {1, 0}, kMissing, 0, 1}, {"tarncdft", {1, -2}, kMissing, 0, 1}, {"tarncdft", {kNaN, 2}, kMissing, 0, 1},
{"tarncdft", {1, kNaN}, kMissing, 0, 1}, {"CdfT", {1, 0}, kMissing, 0}, {"SigT", {0, 3}, 0.5, 0},
{"SigT", {0, 1e9}, 0.5, 0}, {"SigT", {1, 0}, kMissing, 0}, {"SigT", {kInf, 3}, 0, 0},
{"SigT", {kNaN, 3}, kMissing, 0}, {"PdfT", {1, 0}, kMissing, 0, 1}, {"PdfT", {kNaN, 2}, kMissing, 0, 1},
{"PdfT", {1, kNaN}, kMissing, 0, 1}, {"PdfT", {kInf, 2}, 0, 0}, {"PdfT", {-1e200, 5}, 0, 0},
{"PdfT", {0, kInf}, 0.3989422804014327, 1e-13}, {"tarncdff", {0, 1e-3, 3}, 0, 0}, {"SigF", {0, 1e-3, 3}, 1, 0},
{"tarncdff", {-1, 2, 3}, 0, 0}, {"SigF", {-1, 2, 3}, 1, 0}, {"tarncdff", {kInf, 2, 3}, 1, 0},
{"SigF", {kInf, 2, 3}, 0, 0}, {"tarncdff", {1, 0, 3}, kMissing, 0, 1}, {"tarncdff", {1, 2, 0}, kMissing, 0, 1},
{"tarncdff", {kNaN, 2, 3}, kMissing, 0, 1}, {"tarncdff", {1, kNaN, 3}, kMissing, 0, 1},
{"CdfF", {1, 0, 3}, kMissing, 0}, {"SigF", {1, 0, 3}, kMissing, 0}, {"SigF", {1, 2, -3}, kMissing, 0},
{"SigF", {kNaN, 2, 3}, kMissing, 0}, {"tarncdff", {0.9, kInf, kInf}, 0, 0}, {"SigF", {0.9, kInf, kInf}, 1, 0},
{"tarnidft", {0.5, 3, 1e-20, 1e-12}, 0, 0}, {"tarnidft", {0, 3, 1e-20, 1e-12}, kMissing, 0, 1},
{"tarnidft", {1, 3, 1e-20, 1e-12}, kMissing, 0, 1}, {"tarnidft", {0.3, 0, 1e-20, 1e-12}, kMissing, 0, 1},
{"tarnidft", {kNaN, 3, 1e-20, 1e-12}, kMissing, 0, 1}, {"tarnidft", {0.3, kNaN, 1e-20, 1e-12}, kMissing, 0, 1},
{"tarnidft", {1e-300, 0.5, 1e-20, 1e-12}, kMissing, 0, 2}, {"IdfT", {1e-300, 0.5, 1e-20, 1e-12}, kMissing, 0},
{"IdfT", {0.3, -1, 1e-20, 1e-12}, kMissing, 0}, {"tarnidff", {0, 300, 3}, 0, 0},
{"tarnidff", {1, 2, 3}, kMissing, 0, 1}, {"tarnidff", {-0.1, 2, 3}, kMissing, 0, 1},
{"tarnidff", {0.5, 0, 3}, kMissing, 0, 1}, {"tarnidff", {0.5, 2, 0}, kMissing, 0, 1},
{"tarnidff", {kNaN, 2, 3}, kMissing, 0, 1}, {"tarnidff", {0.5, 2, kNaN}, kMissing, 0, 1},
{"tarnidff", {0.99, 0.01, 0.01}, kMissing, 0, 2}, {"IdfF", {0.99, 0.01, 0.01}, kMissing, 0},
{"IdfF", {0.5, -1, 3}, kMissing, 0}, {"IdfF", {0.3, 1e-4, 2}, 0, 0},
""")


if __name__ == "__main__":
    for family in (normal, gamma, beta, t_and_f):
        family()
