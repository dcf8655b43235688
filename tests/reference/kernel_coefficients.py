#!/usr/bin/python3
"""Prints the coefficient tables of nqcommon/math/: kernels/log_gamma.cpp, and normal_tail.h and
incomplete_gamma.cpp of numeric/internal/. Chebyshev fits of functions to 50 digits, powers of s in [-1, 1]."""
from fractions import Fraction

from mpmath import atanh, chebyfit, erfc, exp, gammaprod, log, loggamma, mp, mpf, pi, sqrt

mp.dps = 50


def show(name, rows):
    print(name)
    for row in rows:
        print("    {" + ", ".join(repr(float(c)) for c in row) + "},")


def fit(function, low, high, degree):
    poly, error = chebyfit(lambda s: function(low + (high - low) * (s + 1) / 2), [-1, 1], degree + 1,
                           error=True)
    print("// error", mp.nstr(error, 2))
    return poly[::-1]


def mills(z):
    """(1 - Phi(z))/phi(z), by its continued fraction far out."""
    if z < 40:
        return sqrt(pi / 2) * erfc(z / sqrt(mpf(2))) * exp(z * z / 2)
    f = mpf(0)
    for k in range(400, 0, -1):
        f = k / (z + f)
    return 1 / (z + f)


def mills_pieces(pieces, degree):
    def scaled(t):
        return mpf(1) if t < 1e-20 else mills(4 / t - 4) * 4 / t
    return [fit(scaled, mpf(k) / pieces, mpf(k + 1) / pieces, degree) for k in range(pieces)]


def stirling_error(x):
    return loggamma(x) - ((x - mpf(1) / 2) * log(x) - x + log(2 * pi) / 2)


def stirling_pieces(ends, degree):
    return [fit(lambda u: stirling_error(1 / u), 1 / mpf(high), 1 / mpf(low), degree)
            for low, high in zip(ends, ends[1:])]


def half_ratio(u):
    """Gamma(b + 1/2)/(Gamma(b) sqrt(b)), b = 1/u."""
    return gammaprod([1 / u + mpf(1) / 2], [1 / u]) * sqrt(u) if u > 1e-30 else mpf(1)


def artanh_rest(s):
    """(artanh(r) - r)/r^3, s = r^2."""
    return (atanh(sqrt(s)) / sqrt(s) - 1) / s if s > 1e-25 else mpf(1) / 3


def powers(function, high, degree):
    """Powers of the argument itself, on [0, high]."""
    poly, error = chebyfit(function, [mpf(10) ** -30, mpf(high)], degree + 1, error=True)
    print("// error", mp.nstr(error, 2))
    return poly[::-1]


def temme(count):
    """eta/mu in powers of eta, mu - ln(1 + mu) = eta^2/2: mu mu' = eta (1 + mu)."""
    mu = [Fraction(0), Fraction(1)]
    for n in range(2, count + 1):
        known = sum((i + 1) * mu[i + 1] * mu[n - i] for i in range(1, n - 1))
        mu.append((mu[n - 1] - known) / (n + 1))
    out = [Fraction(1)]
    for n in range(1, count):
        out.append(-sum(mu[k + 1] * out[n - k] for k in range(1, n + 1)))
    return out


if __name__ == "__main__":
    show("kMillsPieces", mills_pieces(8, 10))
    show("kStirlingMiddle", stirling_pieces([1, 2, 4, 10], 12))
    show("kHalfSeries", [powers(half_ratio, 0.1, 8)])
    show("kArtanh", [powers(artanh_rest, mpf(1) / 9, 10)])
    show("kTemme", [temme(27)])
    show("kAboutTwo", [[1 - mp.euler] + [(-1) ** k * (mp.zeta(k) - 1) / k for k in range(2, 27)]])
