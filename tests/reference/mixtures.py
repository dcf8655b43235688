"""Noncentral distributions to 50 digits, for the generator of their tables.

Poisson mixtures are summed term by term in the direction in which the central tail grows by its
steps. Where the two series of the noncentral t cancel, and for its density, the conditional value
given the chi variable is integrated by Gauss-Legendre quadrature on panels.
"""
from incomplete import DIGITS, beta_tails, gamma_tails
from mpmath import (exp, floor, linspace, log, loggamma, mpf, ncdf, npdf, quad, sqrt,
                    workdps)


def _mixture(lam, first, tails, step, ratio, side):
    """Sum of the Poisson weights at j = first, first + 1, ... times a tail at j: side 0 lower, 1
    upper. step(j) is the lower tail at j less that at j + 1, ratio(j) = step(j)/step(j - 1)."""
    spread = 25 * sqrt(lam) + 120
    j = first + (max(mpf(0), floor(lam - spread)) if side else floor(lam + spread))
    weight = exp(j * log(lam) - lam - loggamma(j + 1))
    tail = tails(j)[side]
    change = step(j)
    total = mpf(0)
    while True:
        term = weight * tail
        total += term
        if term < total * mpf(10) ** (-DIGITS - 10) and (j > lam) == (side == 1):
            break
        if side:
            tail += change
            j += 1
            weight *= lam / j
            change *= ratio(j)
        elif j == first:
            break
        else:
            weight *= j / lam
            change /= ratio(j)
            j -= 1
            tail += change
    return total


def noncentral_gamma(y, a, lam, side=0):
    y, a, lam = mpf(y), mpf(a), mpf(lam)

    def step(j):
        return exp((a + j) * log(y) - y - loggamma(a + j + 1))
    with workdps(DIGITS + 20):
        return _mixture(lam, mpf(0), lambda j: gamma_tails(y, a + j), step, lambda j: y / (a + j), side)


def noncentral_beta(x, y, a, b, lam, first=0, side=0):
    """y = 1 - x."""
    a, b, lam = mpf(a), mpf(b), mpf(lam)

    def step(j):
        c = a + j
        return exp(c * log(x) + b * log(y) + loggamma(c + b) - loggamma(c + 1) - loggamma(b))
    with workdps(DIGITS + 20):
        return _mixture(lam, mpf(first), lambda j: beta_tails(x, a + j, b, y), step,
                        lambda j: x * (a + b + j - 1) / (a + j), side)


def _given_chi(df, count, t, ncp, given):
    """The integral of given(s) over the density of the chi variable s, divided by sqrt(df). The
    integrand peaks at about (df + t^2) s^2 - t ncp s = count."""
    slope, squares = t * ncp, df + t * t
    peak = log((slope + sqrt(slope * slope + 4 * squares * count)) / (2 * squares))
    width = 1 / sqrt(count + max(slope * exp(peak), 0))
    m = df / 2
    scale = log(mpf(2)) + m * log(m) - loggamma(m)

    def density(u):
        return exp(scale + df * u - m * exp(2 * u)) * given(exp(u))
    top = density(peak)  # quad stops at an absolute error
    ends = [peak + width * k for k in linspace(-16, 16, 65)]
    left = [ends[0] - mpf(2) ** k * width for k in range(40, -1, -1)]
    return top * quad(lambda u: density(u) / top,
                      left + ends + [ends[-1] + 4 * width, ends[-1] + 20 * width])


def _normal_given_chi(t, df, ncp, sign):
    """The integral of ncdf(sign (t s - ncp)) over the density of the chi variable s, over sqrt(df): panels
    about the step of the normal and over the density."""
    m = df / 2
    scale = log(mpf(2)) + m * log(m) - loggamma(m)
    step, width = log(ncp / t), 1 / sqrt(2 * df)
    points = {step} | {width * k for k in linspace(-40, 40, 41)}
    points |= {step + sign * mpf(2) ** k / ncp for k in range(-2, 60) for sign in (-1, 1)
               if mpf(2) ** k / ncp < 60 * width}
    return quad(lambda u: exp(scale + df * u - m * exp(2 * u)) * ncdf(sign * (t * exp(u) - ncp)),
                sorted(points))


def noncentral_t(t, df, ncp, side=0):
    """P(T <= t), or P(T > t) with side 1."""
    t, df, ncp = mpf(t), mpf(df), mpf(ncp)
    with workdps(DIGITS + 20):
        if t == 0:
            return ncdf(ncp if side else -ncp)
        if t < 0:
            return noncentral_t(-t, df, -ncp, 1 - side)
        if ncp > 1000:
            return _normal_given_chi(t, df, ncp, -1 if side else 1)
        if ncp < 0:
            upper = _given_chi(df, df, -t, -ncp, lambda s: ncdf(-(t * s - ncp)))
            return upper if side else 1 - upper
        square = t * t + df
        halves = [noncentral_beta(t * t / square, df / square, 0.5, df / 2, ncp * ncp / 2, first, side)
                  for first in (0, 0.5)]
        return sum(halves) / 2 + (0 if side else ncdf(-ncp))


def noncentral_t_density(t, df, ncp):
    t, df, ncp = mpf(t), mpf(df), mpf(ncp)
    with workdps(DIGITS + 20):
        return _given_chi(df, df + 1, t, ncp, lambda s: s * npdf(t * s - ncp))
