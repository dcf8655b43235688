"""Tails of the gamma and beta distributions to 50 digits, for the generators of the tables.

Small cases sum the series of positive terms, with as many digits as the complement takes away;
large ones integrate the density outward from the point by Gauss-Legendre quadrature on 80 panels.
"""
from mpmath import exp, inf, linspace, log, log1p, loggamma, mp, mpf, quad, sqrt, workdps

DIGITS = 50
MAX_TERMS = 50000


def _both(lower_at):
    """(lower, 1 - lower), both to 50 digits."""
    digits = DIGITS + 15
    while True:
        with workdps(digits):
            lower = lower_at()
            upper = 1 - lower
            if upper > mpf(10) ** (DIGITS + 5 - digits):
                return +lower, +upper
        if digits > 2000:
            return lower, mpf(0)
        digits *= 2


def _sum(ratio):
    total = term = mpf(1)
    i = 0
    while term > total * mpf(10) ** (-mp.dps - 5):
        term *= ratio(i)
        total += term
        i += 1
    return total


def _outward(log_density, x, scale, sign):
    """The integral of exp(log_density(x + d)) over d of the given sign, density relative to x."""
    with workdps(DIGITS + 15):
        return scale * quad(lambda u: exp(log_density(sign * scale * u)), linspace(0, 20, 81))


def gamma_tails(x, a):
    """P(a, x), Q(a, x)."""
    x, a = mpf(x), mpf(a)
    if x <= 0:
        return mpf(0), mpf(1)
    if max(x, a) <= MAX_TERMS:
        def lower():
            return exp(a * log(x) - x - loggamma(a + 1)) * _sum(lambda i: x / (a + 1 + i))
        return _both(lower)
    with workdps(DIGITS + 30):
        term = exp((a - 1) * log(x) - x - loggamma(a))
        sign = 1 if x > a else -1
        scale = sqrt(max(a, mpf(1)))

        def density(d):
            return (a - 1) * log1p(d / x) - d if d > -x else -inf
        tail = term * _outward(density, x, scale, sign)
        return (1 - tail, tail) if sign > 0 else (tail, 1 - tail)


def beta_tails(x, a, b, y=None):
    """I_x(a, b) and its complement; y = 1 - x where x is next to 1."""
    with workdps(400):
        x, a, b = mpf(x), mpf(a), mpf(b)
        y = 1 - x if y is None else mpf(y)
    if x <= 0:
        return mpf(0), mpf(1)
    if y <= 0:
        return mpf(1), mpf(0)
    if x > y:
        lower, upper = beta_tails(y, b, a, x)
        return upper, lower
    if (a + b) * x <= MAX_TERMS:
        def lower():
            term = exp(a * log(x) + b * log1p(-x) + loggamma(a + b) - loggamma(a + 1) - loggamma(b))
            return term * _sum(lambda i: (a + b + i) / (a + 1 + i) * x)
        return _both(lower)
    with workdps(DIGITS + 40):
        term = exp((a - 1) * log(x) + (b - 1) * log1p(-x)
                   + loggamma(a + b) - loggamma(a) - loggamma(b))
        sign = 1 if x > a / (a + b) else -1
        scale = sqrt(a * b / (a + b) ** 3)

        def density(d):
            if not -x < d < y:
                return -inf
            return (a - 1) * log1p(d / x) + (b - 1) * log1p(-d / y)
        tail = term * _outward(density, x, scale, sign)
        return (1 - tail, tail) if sign > 0 else (tail, 1 - tail)
