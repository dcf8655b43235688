#!/usr/bin/python3
"""Writes random_streams.inc: the first values of seeded generators, {name, {values}}.

The twister's words come from Python's own generator, by an array of keys or with a state set by the
standard initialisation. The methods are written out here in double precision, in the order in which
they take uniforms; incomplete functions come from mpmath.
"""
import os
import random
import struct
from math import exp, floor, inf, isfinite, isnan, log, log1p, nan, pi, sqrt

from mpmath import betainc, erfc, findroot, mp, mpf
from mpmath import log as mplog

mp.dps = 40


# ---- Uniforms --------------------------------------------------------------------------------------

def seeded(s):
    words = [s & 0xffffffff]
    for i in range(1, 624):
        words.append((1812433253 * (words[-1] ^ (words[-1] >> 30)) + i) & 0xffffffff)
    generator = random.Random()
    generator.setstate((3, tuple(words) + (624,), None))
    return generator


def keyed(*key):
    generator = random.Random()
    generator.seed(sum(word << (32 * i) for i, word in enumerate(key)))
    return generator


def opened(s):
    generator = seeded(s)
    return lambda: (generator.getrandbits(32) + 0.5) / 2**32


def by_double(s):
    if not isnan(s) and 0 <= s <= 2147483647 and s == int(s):
        return seeded(int(s)).random
    if isfinite(s):
        a, e = abs(s), 0
        while a >= 1:
            a, e = a * 0.5, e + 2
        while a < 0.5:
            a, e = a * 2.0, e + 2
    else:
        a, e = (0.0 if isnan(s) else 0.5), 2050
    one_or_more = 0 if abs(s) < 1 else 1
    a *= 2**26
    upper = floor(a)
    lower = floor((a - upper) * 2**27)
    first = 2 * ((1 if s < 0 else 0) + 2 * (e | one_or_more))
    if lower:
        return keyed(first, upper, lower).random
    # The seeding above would drop a last word of 0.
    return by_array([first, upper, lower]).random


def by_array(key):
    mt = list(seeded(19650218).getstate()[1][:624])
    i, j = 1, 0
    for _ in range(max(624, len(key))):
        mt[i] = ((mt[i] ^ ((mt[i - 1] ^ (mt[i - 1] >> 30)) * 1664525)) + key[j] + j) & 0xffffffff
        i, j = i + 1, (j + 1) % len(key)
        if i == 624:
            mt[0], i = mt[623], 1
    for _ in range(623):
        mt[i] = ((mt[i] ^ ((mt[i - 1] ^ (mt[i - 1] >> 30)) * 1566083941)) - i) & 0xffffffff
        i += 1
        if i == 624:
            mt[0], i = mt[623], 1
    mt[0] = 0x80000000
    generator = random.Random()
    generator.setstate((3, tuple(mt) + (624,), None))
    return generator


assert [by_array([5, 6, 7]).random() for _ in range(9)] == [keyed(5, 6, 7).random() for _ in range(9)]


def congruential(state):
    state = [state]

    def step():
        product = state[0] * 397204094 & (2**64 - 1)
        product = struct.unpack("q", struct.pack("Q", product))[0]
        remainder = product % 2147483647  # Python's has the sign of the modulus
        state[0] = remainder or 1
        return state[0] / 2**31
    return step


# ---- Variates --------------------------------------------------------------------------------------

XI = 2.216035867166471
# (up to this first uniform, start, slope, accepted up to, height)
WEDGES = ((0.911312780288703, 0.479727404222441, -0.59550713801594, 0.805577924423817, 0.053377549506886),
          (0.958720824790463, 0.479727404222441, 1.10547366102207, 0.87283497667179, 0.049264496373128),
          (0.973310954173898, XI, -0.63083480192196, 0.755591531667601, 0.034240503750111))
TRIANGLE = 0.884070402298758, 1.13113163544418
TAIL_START, POSITIVE_TAIL = 2.455407482284127, 0.986655477086949


def over_triangle(t):
    if t == 0:
        return 0.0
    triangle = 0.180025191068563 * max(0.0, XI - abs(t))
    return max(0.0, 0.3989422804014327 * exp(-t * t / 2) - triangle)


def check_density():
    """The constants above, and the rules of normal() below, make the normal density."""
    def density_of_wedge(start, slope, sure, height, share):
        # of the two uniforms the smaller is m; they are apart by at most 1 - m
        def accepted(m):
            if start + slope * m < 0:
                return 0.0
            return min(1 - m, max(sure - m, over_triangle(start + slope * m) / height))
        n = 20000
        total = sum(accepted((k + 0.5) / n) for k in range(n)) / n
        return lambda t: (share / 2 * accepted((t - start) / slope) / total / abs(slope)
                          if 0 <= (t - start) / slope <= 1 and t >= 0 else 0.0)

    def triangle(t):  # of XI (c u + v - 1), u up to the share
        share, c = TRIANGLE
        total = t / XI + 1
        return max(0.0, min(share, total / c) - max(0.0, (total - 1) / c)) / XI

    shares = [TRIANGLE[0]] + [wedge[0] for wedge in WEDGES]
    wedges = [density_of_wedge(*wedge[1:], wedge[0] - before) for wedge, before in zip(WEDGES, shares)]
    for k in range(1, 2200):
        t = k / 1000
        density = sum(wedge(t) for wedge in wedges)
        normal_density = exp(-t * t / 2) / sqrt(2 * pi)
        for sign in (1, -1):
            assert abs(density + triangle(sign * t) - normal_density) < 2e-8, (t, density)
    tail = float(erfc(XI / sqrt(2)) / 2)
    for share in (POSITIVE_TAIL - shares[-1], 1 - POSITIVE_TAIL):
        assert abs(share - tail) < 1e-12
    assert abs(TAIL_START - XI**2 / 2) < 1e-15


check_density()


def normal(u):
    first = u()
    if first < TRIANGLE[0]:
        return XI * (TRIANGLE[1] * first + u() - 1)
    while first >= WEDGES[-1][0]:
        second, third = u(), u()
        t = TAIL_START - log(third)
        if second * second * t < TAIL_START:
            return sqrt(2 * t) if first < POSITIVE_TAIL else -sqrt(2 * t)
    start, slope, sure, height = next(wedge[1:] for wedge in WEDGES if first < wedge[0])
    while True:
        second, third = u(), u()
        t = start + slope * min(second, third)
        if t < 0:
            continue
        if max(second, third) <= sure or height * abs(second - third) <= over_triangle(t):
            return t if second < third else -t


def exponential(u):
    return -log1p(-u())


def gamma(u, a):
    if a == 1:
        return exponential(u)
    if a >= 1e12:
        return a * (1 - 1 / (9 * a) + normal(u) / (3 * sqrt(a)))**3
    while a > 1:
        e = exponential(u)
        if log1p(-u()) <= (a - 1) * (1 - e + log(e)):
            return a * e
    c = (a + 2.718281828459045) / 2.718281828459045
    while True:
        p = c * u()
        if p <= 1:
            power = log(p) / a
            x = exp(power) if power >= -708.39 else 0.0
            if u() <= exp(-x):
                return x
        else:
            x = -log((c - p) / a)
            if log1p(-u()) <= (a - 1) * log(x):
                return x


def beta(u, a, b):
    powers = a - 1, b - 1
    total = sum(powers)
    if min(a, b) > 1 and total >= 1 and 16 * powers[0] * powers[1] >= total**2:
        mode = mpf(powers[0]) / total
        while True:
            s = mpf(normal(u))
            x = mode + s / (2 * mp.sqrt(total))
            if not 0 < x < 1:
                continue
            density = powers[0] * mplog(x / mode) + powers[1] * mplog((1 - x) / (1 - mode))
            if mplog(u()) <= density + s * s / 2:
                return float(x)
    p = u()
    return float(findroot(lambda x: betainc(a, b, 0, x, regularized=True) - p, (1e-20, 1 - 1e-20),
                          solver="anderson", tol=1e-30))


def binomial(u, n, p):
    count = 0
    while n > 40 and 0 < p < 1:
        middle = (n + 1) // 2
        x = beta(u, middle, n + 1 - middle)
        if x <= p:
            count, n, p = count + middle, n - middle, (p - x) / (1 - x)
        else:
            n, p = middle - 1, p / x
    return count + (n if p == 1 else sum(u() <= p for _ in range(n)) if p > 0 else 0)


def box(u):  # -1 .. 1 by 5 .. 9 by 0 .. 1/1000
    return -1 + 2 * u(), 5 + 4 * u(), 0.001 * u()


def degenerate(u):  # means 1, 2 and -1, the third variable the first less the second
    z = normal(u), normal(u), normal(u)
    return 1 + 2 * z[0], 2 + z[0] / 2 + sqrt(1.75) * z[1], -1 + 1.5 * z[0] - sqrt(1.75) * z[1]


def bivariate(u):  # means 1 and -1, covariance matrix 4 | 2 3
    z = normal(u), normal(u)
    return 1 + 2 * z[0], -1 + (z[0] + sqrt(2) * z[1])


def wishart(u):  # 3.5 degrees of freedom, scale matrix 4 | 2 2 | 2 3 6 = L L', L = 2 | 1 1 | 1 2 1
    a = sqrt(2 * gamma(u, 3.5 / 2))
    b = normal(u), sqrt(2 * gamma(u, 2.5 / 2))
    c = normal(u), normal(u), sqrt(2 * gamma(u, 1.5 / 2))
    rows = (2 * a,), (a + b[0], b[1]), (a + 2 * b[0] + c[0], 2 * b[1] + c[1], c[2])  # L A
    return tuple(sum(x * y for x, y in zip(row, other)) for i, row in enumerate(rows) for other in rows[:i + 1])


def standard_wishart(u):  # 2 degrees of freedom, 2 x 2 identity
    a = sqrt(2 * gamma(u, 1.0))
    c = normal(u)
    b = sqrt(2 * gamma(u, 0.5))
    return a**2, a * c, c**2 + b**2


ROWS = {}


def row(name, draw, count):
    values = []
    while len(values) < count:
        value = draw()
        values += value if isinstance(value, tuple) else (value,)
    ROWS[name] = values


for seed in (0.0, 42.0, 2147483647.0, 2147483648.0, 42.5, -42.0, 1.5, 0.3, 0.75, 0.1, -1e300, 5e-324, inf, -inf,
             nan):
    row(f"NQRNGUTwister {seed}", by_double(seed), 3)
for seed, state in (("0.0", 1), ("0.7", 1), ("-0.3", 1), ("nan", 1), ("12345.9", 12345), ("1e12", 2147483647)):
    row("NQRNGUCongruential " + seed, congruential(state), 3)
for seed in (12345, 2**31 + 5, 2**62 + 1024, 2**63 + 2**14, 2**64 - 2048):
    row(f"NQURandom {seed} 0", congruential(seed), 3)

SEED = 34567
row(f"NQURandom {SEED} 1", opened(SEED), 3)
source = opened(SEED)
row("RVUni -2 3", lambda: -2 + 5 * source(), 3)
for name, method in (("RVNor 0 1", normal), ("RVGam 1 2", lambda u: gamma(u, 1) / 2),
                     ("RVChi 3", lambda u: 2 * gamma(u, 1.5)), ("RVGam 0.001 1", lambda u: gamma(u, 0.001)),
                     ("RVGam 0.3 2", lambda u: gamma(u, 0.3) / 2),
                     ("RVGam 25 0.5", lambda u: 2 * gamma(u, 25.0)), ("RVGam 1e12 1", lambda u: gamma(u, 1e12)),
                     ("UniformVector", box), ("StandardUniform", lambda u: (u(), u(), u())), ("DegenerateNormal", degenerate),
                     ("StandardNormal", lambda u: (normal(u), normal(u), normal(u))),
                     ("NormalVector", bivariate), ("Wishart", wishart),
                     ("StandardWishart", standard_wishart)):
    source = opened(SEED)
    row(name, lambda: method(source), {"RVNor 0 1": 120}.get(name, 6 if name.isalpha() else 8))
source = opened(SEED)  # the last of each ten thousand: every decision and constant counts many times
row("RVNor 0 1 sparse", lambda: [normal(source) for _ in range(10000)][-1], 200)
for name, method, count in (("NQRNGNormal 5 2", lambda u: 5 + 2 * normal(u), 40),
                            ("NQRNGBeta 2.5 3.5", lambda u: beta(u, 2.5, 3.5), 5),
                            ("NQRNGBeta 0.5 2", lambda u: beta(u, 0.5, 2), 3),
                            # both sides of where the method changes: the sum 3, the mode 0.933
                            ("NQRNGBeta 1.5 1.5", lambda u: beta(u, 1.5, 1.5), 8),
                            ("NQRNGBeta 1.4 1.5", lambda u: beta(u, 1.4, 1.5), 2),
                            ("NQRNGBeta 14 2", lambda u: beta(u, 14, 2), 4),
                            ("NQRNGBeta 15.5 2", lambda u: beta(u, 15.5, 2), 2),
                            ("NQRNGBinomial 40 0.3", lambda u: binomial(u, 40, 0.3), 4),
                            ("NQRNGBinomial 1000 0.3", lambda u: binomial(u, 1000, 0.3), 6),
                            ("NQRNGBinomial 1e9 1e-8", lambda u: binomial(u, 10**9, 1e-8), 4)):
    for uniforms, source in (("own", congruential(1)), ("twister", by_double(42.0))):
        row(f"{name} {uniforms}", lambda: method(source), count)

with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "random_streams.inc"), "w") as out:
    out.write("// {name, values}, written by random_streams.py\n")
    for name, values in ROWS.items():
        out.write('{"%s", {%s}},\n' % (name, ", ".join(float(v).hex() for v in values)))
