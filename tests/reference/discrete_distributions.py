#!/usr/bin/python3
"""Writes distribution_discrete.inc: values to 50 digits by mpmath, rounded to double.

Probabilities go through log gamma, binomial tails through the incomplete beta function,
hypergeometric tails term by term. Quantiles are built from their answer k: a q that only rounding
separates from P(X <= k) gives k, one 1e-12 above k + 1.
"""
import math
import os

from distributions import Table, normal_quantile
from incomplete import beta_tails
from mpmath import exp, log, log1p, loggamma, mp, mpf, sqrt, workdps

mp.dps = 50


def tolerance(value):
    """Rounding of an exponent of the size of ln(value)."""
    return 5e-15 + 6e-16 * abs(float(log(value))) if value else 0


def log_choose(n, k):
    with workdps(120):
        return loggamma(mpf(n) + 1) - loggamma(mpf(k) + 1) - loggamma(mpf(n) - mpf(k) + 1)


def binomial(k, n, p):
    with workdps(100):
        p = mpf(p)
        return exp(log_choose(n, k) + k * log(p) + (mpf(n) - k) * log1p(-p))


def binomial_lower(k, n, p):
    return beta_tails(p, mpf(k) + 1, mpf(n) - k)[1]


def negative_binomial(k, r, p):
    with workdps(100):
        k, r, p = mpf(k), mpf(r), mpf(p)
        return exp(loggamma(k + r) - loggamma(r) - loggamma(k + 1) + r * log(p) + k * log1p(-p))


def hypergeometric(k, total, draws, successes):
    return exp(log_choose(successes, k) + log_choose(total - successes, draws - k)
               - log_choose(total, draws))


def hypergeometric_lower(k, total, successes, draws):
    above = k * total > successes * draws
    step = 1 if above else -1
    j = k + 1 if above else k
    rest = total - successes - draws
    term = hypergeometric(j, total, draws, successes)
    tail = mpf(0)
    while term > tail * mpf(10) ** -40:
        tail += term
        if above:
            term *= mpf((successes - j) * (draws - j)) / ((j + 1) * (rest + j + 1))
        else:
            term *= mpf(j * (rest + j)) / ((successes - j + 1) * (draws - j + 1))
        j += step
    return 1 - tail if above else tail


def add_binomials(table):
    cases = [(1, 0.3), (2, 1e-9), (5, 0.5), (33, 0.02), (40, 0.999999), (100, 0.5), (1000, 0.1),
             (9999, 0.7), (10000, 1e-4), (10 ** 6, 0.25), (10 ** 9, 3e-9), (10 ** 9, 0.5),
             (3 * 10 ** 9, 0.4)]
    for n, p in cases:
        sd = math.sqrt(n * p * (1 - p))
        counts = {0, 1, n - 1, n} | {int(n * p + z * sd) for z in (-9, -3, -0.5, 0, 0.7, 4, 12)}
        for k in sorted(k for k in counts if 0 <= k <= n):
            if (value := binomial(k, n, p)) > mpf(10) ** -290:
                table.add("PdfBin", (k, n, p), value, tolerance(value))
            if k < n and (value := binomial_lower(k, n, p)) > mpf(10) ** -290:
                table.add("CdfBin", (k + 0.75 * (n < 100), n, p), value, tolerance(value))
                if k % 2 and mpf(10) ** -60 < value < 1 - mpf(10) ** -9:
                    table.add("IdfBin", (float(value), n, p), k, 0)
                    table.add("IdfBin", (float(value * (1 + mpf(10) ** -12)), n, p), k + 1, 0)
    far, below = 0, binomial(0, 4000, 0.5)
    while below < mpf(10) ** -300:
        far += 1
        below += binomial(far, 4000, 0.5)
    table.add("IdfBin", (1e-300, 4000, 0.5), far, 0)
    far, above = 101, mpf(0)
    while above <= mpf(2) ** -48:
        far -= 1
        above += binomial(far, 100, 0.5)
    table.add("IdfBin", (1 - 2.0 ** -48, 100, 0.5), far, 0)
    # where doubles hold every eighth count; the normal quantile is off by far less than a count
    n = mpf(10) ** 17
    table.add("IdfBin", (0.1, n, 0.5), (n + normal_quantile(0.1) * sqrt(n) - 1) / 2, 2e-16)
    # powers, to an ulp or two
    for n, p in [(1000, 0.5), (3, 0.3), (40, 0.999), (10 ** 6, 7e-4), (10 ** 10, 6e-8), (7 * 10 ** 10, 9.9e-9)]:
        table.add("PdfBin", (0, n, p), binomial(0, n, p), 4e-16)
        table.add("CdfBin", (0, n, p), binomial(0, n, p), 4e-16)
        if (value := binomial(n, n, p)) > mpf(10) ** -300:
            table.add("PdfBin", (n, n, p), value, 4e-16)
    for n, k in [(4.5, 2), (10.25, 10), (1e4 + 0.5, 3000)]:
        table.add("PdfBin", (k, n, 0.3), binomial(k, n, 0.3), 2e-14)


def add_negative_binomials(table):
    for r, p in [(1e-8, 0.5), (0.3, 0.2), (0.9999, 1e-6), (1, 0.25), (2, 0.75), (40, 1e-3), (1e6, 0.9),
                 (1e9, 0.5)]:
        mean = r * (1 - p) / p
        for k in sorted({0, 1, 2, 3, int(mean), int(1.001 * mean) + 30}):
            if (value := negative_binomial(k, r, p)) > mpf(10) ** -290:
                table.add("PdfNegBin", (k, r, p), value, tolerance(value))
    # the power alone underflows
    for r, p in [(1e6, math.exp(-709e-6)), (1e9, math.exp(-710e-9))]:
        table.add("PdfNegBin", (1, r, p), negative_binomial(1, r, p), 5e-16)


def add_hypergeometrics(table):
    # total, draws, successes; the last have too many terms that matter to add them one by one
    cases = [(10, 4, 5), (20, 1, 20), (20, 20, 7), (90, 50, 26), (1000, 3, 999), (5000, 400, 2600),
             (10 ** 6, 2500, 4000), (10 ** 6, 500000, 300000), (10 ** 7, 4000000, 5000000),
             (10 ** 9, 10 ** 6, 2 * 10 ** 7)]
    for total, draws, successes in cases:
        smallest, largest = max(0, draws + successes - total), min(draws, successes)
        mean = draws * successes / total
        sd = math.sqrt(mean * (1 - successes / total) * (total - draws) / (total - 1))
        counts = {smallest, largest} | {int(mean + z * sd) for z in (-20, -5, -0.5, 0, 0.5, 6)}
        for k in sorted(k for k in counts if smallest <= k <= largest):
            if (value := hypergeometric(k, total, draws, successes)) > mpf(10) ** -290:
                table.add("PdfHyper", (k, total, draws, successes), value, tolerance(value))
                if k < largest:
                    lower = hypergeometric_lower(k, total, successes, draws)
                    table.add("CDFHyper", (k + 0.5, total, successes, draws), lower,
                              tolerance(lower))


    # the first probability alone underflows; counts below a first scale of change, and far below
    for args in [(49822693, 10 ** 9, 5 * 10 ** 8, 10 ** 8), (78050, 552166719, 250850338, 171977),
                 (136300598, 246316685, 138323544, 242720526)]:
        lower = hypergeometric_lower(*args)
        table.add("CDFHyper", args, lower, tolerance(lower))
    # others without number: the binomial distribution
    lower = binomial_lower(900720, 2 ** 53, mpf(1e150) / mpf(1e160))
    table.add("CDFHyper", (900720, 1e160, 2.0 ** 53, 1e150), lower, 1e-12)


def add_coefficients(table):
    for n, k in [(1e-3, 5e-4), (0.5, 0.25), (2, 1), (5.5, 5), (33, 16), (33, 16.5), (34, 17), (60, 1),
                 (1e4, 3), (1e4, 5e3), (1e6, 999999), (1e9, 5e8), (1e9, 1e-3), (1e15, 40), (1e18, 5e17)]:
        value = log_choose(n, k)
        table.add("dnlbnc", (n, k), value, 5e-15 if value > 1e-3 else 1e-9)


SPECIAL = """{"CdfBin", {2, 2.5, 0.5}, kMissing, 0, 3}, {"CdfBin", {2, kNaN, 0.5}, kMissing, 0, 3},
{"CdfBin", {0, 0, 0.5}, kMissing, 0, 1}, {"CdfBin", {0, 3, -0.1}, kMissing, 0, 1},
{"CdfBin", {0, 3, 1.1}, kMissing, 0, 1}, {"CdfBin", {-0.5, 3, 0.5}, 0, 0}, {"CdfBin", {-0.5, 3, 0}, 0, 0},
{"CdfBin", {0, 3, 0}, 1, 0}, {"CdfBin", {0, 3, 1}, 0, 0}, {"CdfBin", {3, 3, 1}, 1, 0},
{"CdfBin", {3, 3, 0.5}, 1, 0}, {"CdfBin", {0, 2000, 0.5}, 0, 0}, {"CdfBin", {kInf, 3, 0.5}, 1, 0},
{"CdfBin", {-kInf, 3, 0.5}, 0, 0}, {"CdfBin", {7, kInf, 0.5}, 0, 0},
{"PdfBin", {2.5, 10, 0.3}, 0, 0}, {"PdfBin", {0, 10, 0}, 1, 0}, {"PdfBin", {1, 10, 0}, 0, 0},
{"PdfBin", {10, 10, 1}, 1, 0}, {"PdfBin", {0, 10, 1}, 0, 0}, {"PdfBin", {-1, 10, 0.3}, 0, 0},
{"PdfBin", {11, 10, 0.3}, 0, 0}, {"PdfBin", {3, 0.5, 0.3}, kMissing, 0, 1}, {"PdfBin", {3, 5, 2}, kMissing, 0, 1},
{"PdfBin", {3, 5, -1}, kMissing, 0, 1}, {"PdfBin", {kMax, kInf, 0.25}, 0, 0}, {"PdfBin", {3000, 10000, 0.9}, 0, 0},
{"IdfBin", {0, 5, 0.3}, -1, 0}, {"IdfBin", {0, 5, 1}, 4, 0}, {"IdfBin", {0.2, 5, 1}, 5, 0},
{"IdfBin", {0.2, 5, 0}, 0, 0}, {"IdfBin", {1, 5, 0}, 0, 0}, {"IdfBin", {1, 5, 1e-9}, 5, 0},
{"IdfBin", {0.5, 2.5, 0.3}, kMissing, 0, 1},
{"IdfBin", {0.5, 0, 0.3}, kMissing, 0, 2}, {"IdfBin", {-0.1, 5, 0.3}, kMissing, 0, 2},
{"IdfBin", {1.1, 5, 0.3}, kMissing, 0, 2}, {"IdfBin", {0.5, 5, -0.3}, kMissing, 0, 2},
{"IdfBin", {0.5, 5, 1.3}, kMissing, 0, 2},
{"PdfNegBin", {-1, 2, 0.5}, 0, 0}, {"PdfNegBin", {1.5, 2, 0.5}, 0, 0}, {"PdfNegBin", {0, 0, 0.5}, 1, 0},
{"PdfNegBin", {3, 0, 0.5}, 0, 0}, {"PdfNegBin", {0, 2, 1}, 1, 0}, {"PdfNegBin", {3, 1, 1}, 0, 0},
{"PdfNegBin", {1, 2, 0}, kMissing, 0, 1}, {"PdfNegBin", {1, 2, 1.5}, kMissing, 0, 1},
{"PdfNegBin", {1, -2, 0.5}, kMissing, 0, 1}, {"PdfNegBin", {kInf, 2, 0.5}, 0, 0}, {"PdfNegBin", {1, kInf, 0.5}, 0, 0},
{"PdfHyper", {0, 9, 0, 3}, kMissing, 0}, {"PdfHyper", {0, 9, 3, 0}, kMissing, 0},
{"PdfHyper", {1, 9, 10, 3}, kMissing, 0}, {"PdfHyper", {1, 9, 3, 10}, kMissing, 0},
{"PdfHyper", {4, 9, 3, 5}, kMissing, 0}, {"PdfHyper", {0, 9, 6, 5}, kMissing, 0},
{"PdfHyper", {-0x1p63, 9, 6, 5}, kMissing, 0}, {"PdfHyper", {0, 5000, 2500, 2500}, 0, 0}, {"PdfHyper", {1, 1, 1, 1}, 1, 0},
{"CDFHyper", {-1, 9, 3, 4}, 0, 0}, {"CDFHyper", {1.9, 9, 5, 6}, 0, 0}, {"CDFHyper", {3, 9, 3, 4}, 1, 0},
{"CDFHyper", {0, 1, 0, 1}, 1, 0}, {"CDFHyper", {kInf, 1e300, 3, 4}, 1, 0}, {"CDFHyper", {-kInf, 9, 3, 4}, 0, 0},
{"CDFHyper", {1, 0, 0, 0}, kMissing, 0, 1}, {"CDFHyper", {1, 9.5, 3, 4}, kMissing, 0, 1},
{"CDFHyper", {1, 9, 3.5, 4}, kMissing, 0, 1}, {"CDFHyper", {1, 9, 3, 10}, kMissing, 0, 1},
{"CDFHyper", {1, 9, -3, 4}, kMissing, 0, 1}, {"CDFHyper", {1, kInf, 3, 4}, kMissing, 0, 1},
{"CDFHyper", {2.5e17, 1e18, 5e17, 5e17}, 0.5, 2e-8}, {"CDFHyper", {33, 1e160, 0x1p53, 1e150}, 0, 0},
{"dnlbnc", {5, 0}, 0, 0}, {"dnlbnc", {5, 5}, 0, 0}, {"dnlbnc", {-1, 0}, kMissing, 0, 1},
{"dnlbnc", {5, -1}, kMissing, 0, 1}, {"dnlbnc", {5, 6}, kMissing, 0, 1}, {"dnlbnc", {kInf, kInf}, 0, 0},
"""


if __name__ == "__main__":
    out = Table("discrete")
    out.lines[0] = out.lines[0].replace("distributions.py", os.path.basename(__file__))
    for family in (add_binomials, add_negative_binomials, add_hypergeometrics, add_coefficients):
        family(out)
    out.write(SPECIAL)
