"""LINPACK's condition estimates in exact rational arithmetic, for positive definite, symmetric
indefinite and triangular matrices (Cline, Moler, Stewart and Wilkinson 1979).

    python3 condition_estimates.py
"""
from fractions import Fraction as F


class Probe:
    def __init__(self, n):
        self.z, self.scale = [F(0)] * n, F(1)

    def shrink(self, factor):
        self.z = [x * factor for x in self.z]
        self.scale *= factor

    def normalise(self):
        self.shrink(1 / sum(map(abs, self.z)))

    def limit(self, value, bound):
        factor = bound / abs(value) if abs(value) > bound else F(1)
        self.shrink(factor)
        return factor

    def divide(self, k, pivot):
        factor = self.limit(self.z[k], abs(pivot))
        self.z[k] /= pivot
        return factor


def norm(a):
    return max(sum(map(abs, column)) for column in zip(*a))


def grow(p, t, order, later):
    """T'w = e, the signs of e chosen so that w grows; later(k) follow row k."""
    e = F(1)
    for k in order:
        if p.z[k] != 0:
            e = abs(e) if p.z[k] < 0 else -abs(e)
        e *= p.limit(e - p.z[k], abs(t[k][k]))
        ways = []
        for value in (e - p.z[k], -e - p.z[k]):
            w = value / t[k][k]
            rest = {j: p.z[j] + w * t[k][j] for j in later(k)}
            ways.append((abs(value) + sum(map(abs, rest.values())), w, rest))
        _, w, rest = ways[1] if ways[0][0] < ways[1][0] else ways[0]
        for j, value in rest.items():
            p.z[j] = value
        p.z[k] = w
    p.normalise()


def solve(p, t, order, later):
    """T z = v by columns."""
    for k in order:
        p.divide(k, t[k][k])
        for i in later(k):
            p.z[i] -= p.z[k] * t[i][k]
    p.normalise()


def triangular(t, upper):
    n, p = len(t), Probe(len(t))
    up, down = range(n), range(n - 1, -1, -1)
    after, before = (lambda k: range(k + 1, n)), range
    grow(p, t, up if upper else down, after if upper else before)
    p.scale = F(1)
    solve(p, t, down if upper else up, before if upper else after)
    return p.scale / norm(t)


def positive(r):
    """Of R'R."""
    n, p = len(r), Probe(len(r))
    a = [[sum(r[k][i] * r[k][j] for k in range(n)) for j in range(n)] for i in range(n)]
    back = range(n - 1, -1, -1)
    grow(p, r, range(n), lambda k: range(k + 1, n))
    solve(p, r, back, range)
    p.scale = F(1)
    for k in range(n):
        p.z[k] -= sum(r[i][k] * p.z[i] for i in range(k))
        p.divide(k, r[k][k])
    p.normalise()
    solve(p, r, back, range)
    return p.scale / norm(a), a


def factor(a):
    """U D U' with pivots, for a regular matrix: U above the diagonal, D, kpvt."""
    a, kpvt, k = [list(map(F, row)) for row in a], [0] * len(a), len(a) - 1
    alpha = (1 + 17**0.5) / 8
    while k >= 0:
        order, row = 1, k
        if k > 0:
            big = max(range(k), key=lambda i: (abs(a[i][k]), -i))
            column, diagonal = abs(a[big][k]), abs(a[k][k])
            if diagonal < alpha * column:
                beside = max(abs(a[big][j]) for j in range(k + 1) if j != big)
                if abs(a[big][big]) >= alpha * beside:
                    row = big
                elif diagonal < alpha * column * (column / beside):
                    order, row = 2, big
        first = k - order + 1
        head = range(k + 1)
        turn = [first if i == row else row if i == first else i for i in head]
        lead = [[a[turn[i]][turn[j]] for j in head] for i in head]
        for i in head:
            a[i][:k + 1] = lead[i]
        block = range(first, k + 1)
        if order == 1:
            inverse = {(k, k): 1 / a[k][k]}
        else:
            x, y, z = a[first][first], a[first][k], a[k][k]
            det = x * z - y * y
            inverse = {(first, first): z / det, (k, k): x / det,
                       (first, k): -y / det, (k, first): -y / det}
        u = [[-sum(a[i][b] * inverse[b, c] for b in block) for c in block] for i in range(first)]
        for i in range(first):
            for j in range(first):
                a[i][j] += sum(u[i][c - first] * a[c][j] for c in block)
        for i in range(first):
            for c in block:
                a[i][c] = u[i][c - first]
        for c in block:
            kpvt[c] = (row + 1) * (1 if order == 1 else -1)
        k -= order
    return a, kpvt


def indefinite(matrix):
    a, kpvt = factor(matrix)
    n, p = len(a), Probe(len(a))
    e = F(1)

    def blocks():
        k = n - 1
        while k >= 0:
            first = k - (kpvt[k] < 0)
            yield first, k, abs(kpvt[k]) - 1
            k = first - 1

    def solve_ud(growing):
        nonlocal e
        for first, k, row in blocks():
            p.z[first], p.z[row] = p.z[row], p.z[first]
            for i in range(k, first - 1, -1):
                if growing:
                    if p.z[i] != 0:
                        e = abs(e) if p.z[i] > 0 else -abs(e)
                    p.z[i] += e
                for r in range(first):
                    p.z[r] += p.z[i] * a[r][i]
            if first == k:
                e *= p.divide(k, a[k][k])
            else:
                x, y, z = a[first][first], a[first][k], a[k][k]
                b, c, det = p.z[first], p.z[k], x * z - y * y
                p.z[first], p.z[k] = (z * b - y * c) / det, (x * c - y * b) / det
        p.normalise()

    def solve_u_trans():
        for first, k, row in reversed(list(blocks())):
            for i in range(first, k + 1):
                p.z[i] += sum(a[r][i] * p.z[r] for r in range(first))
            p.z[first], p.z[row] = p.z[row], p.z[first]
        p.normalise()

    solve_ud(True)
    solve_u_trans()
    p.scale = F(1)
    solve_ud(False)
    solve_u_trans()
    return p.scale / norm(matrix), kpvt


if __name__ == "__main__":
    for r in ([[1, 1, 1, 2], [0, 2, -1, 2], [0, 0, 1, 0], [0, 0, 0, 1]],):
        print("positive", *positive([list(map(F, row)) for row in r]))
    for a in ([[-2, -1, 3, 0], [-1, 0, 0, 3], [3, 0, 2, 3], [0, 3, 3, 2]],
              [[0, 0, 3], [0, -1, 1], [3, 1, 2]]):
        print("indefinite", *indefinite(a), a)
    for a, upper in (([[3, 0, 0, 0], [0, -1, -1, -2], [0, 0, 2, 2], [0, 0, 0, -2]], True),
                     ([[1, 0, 0, 0], [-2, 2, 0, 0], [0, 1, 2, 0], [0, 1, 1, 1]], False)):
        print("triangular", triangular([list(map(F, row)) for row in a], upper), a)
