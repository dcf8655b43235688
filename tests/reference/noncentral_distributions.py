#!/usr/bin/python3
"""Writes distribution_noncentral.inc: values to 50 digits by mpmath, rounded to double.

The searches for a noncentrality are problems built from their answer: prob is the distribution
function at a chosen ncp, rounded to double, which moves the answer by its tolerance.
"""
import math
import os

from distributions import Table, near
from mixtures import noncentral_beta, noncentral_gamma, noncentral_t, noncentral_t_density
from mpmath import findroot, log, mp, mpf, workdps

mp.dps = 50


def tolerance(value):
    return 2e-14 + 6e-16 * abs(float(log(value)))


def chi_square(x, df, ncp):
    return noncentral_gamma(mpf(x) / 2, mpf(df) / 2, mpf(ncp) / 2)


def beta(x, a, b, ncp):
    with workdps(80):
        return noncentral_beta(mpf(x), 1 - mpf(x), a, b, mpf(ncp) / 2)


def variance_ratio(x, df1, df2, ncp):
    with workdps(80):
        a, b = mpf(df1) / 2, mpf(df2) / 2
        sum_ = a * mpf(x) + b
        return noncentral_beta(a * mpf(x) / sum_, b / sum_, a, b, mpf(ncp) / 2)


def add(table, function, args, value):
    if value > mpf(10) ** -306:
        table.add(function, args, value, tolerance(value))


def add_chi_squares(table):
    for df, ncp in [(0.01, 0.5), (1, 1e-300), (1, 1e-4), (3, 2), (4, 170), (7, 161.9), (30, 1000), (1e4, 5),
                    (2, 3e4), (300, 600), (1e6, 1e3), (3, 1e6)]:
        mean, sd = df + ncp, math.sqrt(2 * df + 4 * ncp)
        # the sum changes sides at the mean
        points = {mean - 20 * sd, mean - 6 * sd, mean - sd, near(mean, 0), mean, mean + 5 * sd, mean / 1e3}
        for x in sorted(x for x in points if x > 0):
            add(table, "NonCentralCdfChi", (x, df, ncp), chi_square(x, df, ncp))


def add_variance_ratios(table):
    for df1, df2, ncp in [(0.2, 0.3, 0.1), (1, 5, 1e-3), (3, 20, 12), (4, 1e4, 100), (2, 0.5, 300), (50, 8, 1e3),
                          (1e4, 200, 1e4), (3, 100, 1e6)]:
        mean = (df1 + ncp) / df1
        for x in [mean / 50, mean / 3, near(mean, 0), mean * 1.0000001, mean * 2, mean * 40]:
            args = (x, df1, df2, ncp, 1e-12)
            add(table, "NonCentralCdfF", args, variance_ratio(x, df1, df2, ncp))
    # a small second shape, where the tail falls slowly: both sides of the mean
    for args in [(1135349.0350334453, 0.12533283201786694, 0.096610861548855412, 15179.552416718187),
                 (20000.0, 2, 1, 20000), (6e5, 2, 1, 20000), (5000.0, 3, 0.02, 3000),
                 (312865941380461.69, 5.7832965204820654e-09, 2.9061480158289417e-07, 323.04805487120097),
                 (0.0007121469360915485, 501.8547546851191, 5.746845701408524, 0.0015446315524178117)]:
        add(table, "NonCentralCdfF", args + (0,), variance_ratio(*args))
    for args in [(0.25, 0.5, 0.75, 2), (0.6, 3, 2, 50), (0.9, 100, 30, 20), (1e-9, 2, 3, 4), (near(1.0, 0), 2, 3, 4)]:
        add(table, "ncdbet", args + (0,), beta(*args))


def add_ts(table):
    cases = [(0.02, 1.5), (0.7, -2), (1, 0.25), (3, 5), (10, -0.5), (25, 12), (200, -3), (5e3, 40), (1e6, 2),
             (10, 1e-6)]
    for df, ncp in cases:
        for t in {-7.0, -0.5, 0.0, 1e-3, 2.0, ncp, ncp * 1.25, ncp * 4}:
            if t and abs(ncp) < 20 or t == ncp:
                add(table, "NonCentralCdfT", (t, df, ncp, 1e-12), noncentral_t(t, df, ncp))
            if t in (-0.5, 0.0, 2.0, ncp):
                add(table, "NonCentralPdfT", (t, df, ncp), noncentral_t_density(t, df, ncp))
    for args in [(990.0, 50, 1e3), (214.70923127365975, 0.39781118352374983, 116.38344108455858),
                 (-30.0, 0.05, -20.0), (1.2e9, 2e4, 1.17e9), (1e155, 1e-3, 0.5), (-1e155, 1e-3, -0.5),
                 (195.0, 1e5, 200.0), (201.5, 1e5, 200.0)]:
        add(table, "NonCentralCdfT", args + (0,), noncentral_t(*args))
    # x of the chi variable rounds: the square root of df epsilons
    table.add("NonCentralCdfT", (1e9, 1e9, 1e9, 0), noncentral_t(1e9, 1e9, 1e9), 1e-12)
    # at 0 nothing but the exponent of the normal density rounds
    table.add("NonCentralPdfT", (0.0, 3, 25.7), noncentral_t_density(0, 3, 25.7), 3e-15)
    # t s - ncp would cancel
    for args in [(1e6 + 3, 10, 1e6), (2.5e12, 3, -1e12), (1e12, 1e4, 1e12), (-7e30, 0.5, -1e30)]:
        add(table, "NonCentralPdfT", args, noncentral_t_density(*args))


def add_searches(table):
    families = {
        "FindNCParamChi": (chi_square, [(3, 1), (0.5, 10), (40, 30), (9000, 5)]),
        "FindNCParamF": (variance_ratio, [(3, 1, 4), (0.2, 6, 200), (12, 3, 10), (1.5, 100, 30)]),
        "FindNCParamT": (noncentral_t, [(2, 12), (0.3, 4), (-0.4, 30), (25, 8)]),
    }
    for name, (cdf, cases) in families.items():
        for case in cases:
            for ncp in ([0.01, 1.5, 6, 25] if name == "FindNCParamT" else [0.01, 2, 9, 120]):
                prob = cdf(*case, ncp)
                fall = (cdf(*case, ncp * 1.0001) - cdf(*case, ncp * 0.9999)) / mpf("2e-4")
                if prob > mpf(10) ** -200 and prob < 1 - mpf(10) ** -6:
                    error = 4e-15 + float(abs(prob / fall)) * (4 * tolerance(prob) + 2e-16)
                    tols = (0.0, 1e-12) if name == "FindNCParamT" else (0.0,)
                    table.add(name, (*case, float(prob)) + tols, ncp, error)


def add_underflow(table):
    """prob 0: where the distribution function underflows."""
    root = findroot(lambda ncp: log(chi_square(3, 2, ncp)) + 708, 1600)
    table.add("FindNCParamChi", (3, 2, 0, 0), root, 1e-13)


SPECIAL = """{"NonCentralCdfChi", {0, 3, 2}, 0, 0}, {"NonCentralCdfChi", {-1, 3, 2}, 0, 0},
{"NonCentralCdfChi", {kInf, 3, 2}, 1, 0}, {"NonCentralCdfChi", {4, 0, 2}, kMissing, 0},
{"NonCentralCdfChi", {4, 3, -1}, kMissing, 0}, {"NonCentralCdfChi", {4, 3, kInf}, 0, 0},
{"NonCentralCdfChi", {2, 2, 0}, 0x1.43a54e4e98864p-1, 2e-16}, {"NonCentralCdfChi", {1e9, 3, 2e9}, 0, 0},
{"NonCentralCdfChi", {3e9, 3, 2e9}, 1, 0}, {"NonCentralCdfChi", {1e300, 3, 1e299}, 1, 0},
{"NonCentralCdfChi", {1e299, 3, 1e300}, 0, 0},
{"NonCentralCdfF", {0, 3, 5, 2, 0}, 0, 0}, {"NonCentralCdfF", {kInf, 3, 5, 2, 0}, 1, 0},
{"NonCentralCdfF", {2, 0, 5, 2, 0}, kMissing, 0}, {"NonCentralCdfF", {2, 3, 0, 2, 0}, kMissing, 0},
{"NonCentralCdfF", {2, 3, 5, -2, 0}, kMissing, 0}, {"NonCentralCdfF", {2, 3, 5, kInf, 0}, 0, 0},
{"ncdbet", {0, 3, 5, 2, 0}, 0, 0}, {"ncdbet", {1.5, 3, 5, 2, 0}, 1, 0}, {"ncdbet", {0.5, 0, 5, 2, 0}, kMissing, 0, 1},
{"ncdbet", {0.5, 3, 0, 2, 0}, kMissing, 0, 1}, {"ncdbet", {0.5, 3, 5, -2, 0}, kMissing, 0, 1},
{"ncdbet", {0.5, 1, 1, 0, 0}, 0.5, 0},
{"NonCentralCdfT", {1, 0, 2, 0}, kMissing, 0}, {"NonCentralCdfT", {1, 3, kInf, 0}, 0, 0},
{"NonCentralCdfT", {1, 3, -kInf, 0}, 1, 0}, {"NonCentralCdfT", {kInf, 3, 2, 0}, 1, 0},
{"NonCentralCdfT", {-kInf, 3, 2, 0}, 0, 0}, {"NonCentralCdfT", {0, 3, 1, 0}, 0x1.44ed0bb7cb20bp-3, 4e-16},
{"NonCentralCdfT", {1, 1, 0, 0}, 0.75, 2e-16}, {"NonCentralCdfT", {-1, 3, 45, 0}, 0, 0},
{"NonCentralPdfT", {1, 0, 2}, kMissing, 0, 1}, {"NonCentralPdfT", {kInf, 3, 2}, 0, 0},
{"NonCentralPdfT", {1, 3, kInf}, 0, 0}, {"NonCentralPdfT", {1, 3, 1e300}, 0, 0},
{"FindNCParamChi", {3, 3, 0.9, 0}, kMissing, 0}, {"FindNCParamChi", {3, 3, 0.1, -1}, kMissing, 0},
{"FindNCParamChi", {3, 3, -0.1, 0}, kMissing, 0}, {"FindNCParamChi", {3, 0, 0.1, 0}, kMissing, 0},
{"FindNCParamChi", {-3, 3, 0, 0}, kMissing, 0}, {"FindNCParamChi", {kInf, 3, 0.5, 0}, kMissing, 0},
{"FindNCParamF", {1, 3, 5, 1.1, 0}, kMissing, 0}, {"FindNCParamF", {1, 3, 0, 0.1, 0}, kMissing, 0},
{"FindNCParamT", {1, 3, 0.9, 0, 0}, kMissing, 0}, {"FindNCParamT", {1, -3, 0.1, 0, 0}, kMissing, 0},
"""


if __name__ == "__main__":
    out = Table("noncentral")
    out.lines[0] = out.lines[0].replace("distributions.py", os.path.basename(__file__))
    for family in (add_chi_squares, add_variance_ratios, add_ts, add_searches, add_underflow):
        family(out)
    out.write(SPECIAL)
