#!/usr/bin/python3
"""Writes bin_search.inc: the bin of x by trying every bin, in exact integers.

Bounds v = 2 6 10 14 18; bin i is (v[i-1], v[i]], or [v[i-1], v[i]) with the flag set; bin 0 has no
lower bound. Row: {lo, hi, x, {bin with the flag clear, bin with the flag set}}; -1 for an x in none of
the bins lo .. hi, -2 for bins that do not exist.
"""
import os

V = [2, 6, 10, 14, 18]


def find_bin(lo, hi, x, flag):
    if lo < 0 or lo > hi or hi >= len(V):
        return -2
    for i in range(lo, hi + 1):
        above = i == 0 or (V[i - 1] <= x if flag else V[i - 1] < x)
        below = x < V[i] if flag else x <= V[i]
        if above and below:
            return i
    return -1


here = os.path.dirname(os.path.abspath(__file__))
with open(os.path.join(here, "bin_search.inc"), "w") as out:
    out.write("// {lo, hi, x, {bin with flag clear, bin with flag set}}, written by bin_search.py\n")
    for lo, hi in [(0, 4), (0, 3), (1, 4), (2, 3), (2, 2), (0, 0), (3, 2), (0, 5), (-1, 2)]:
        for x in [-2147483647, *range(1, 20), 2147483647]:
            clear, flagged = find_bin(lo, hi, x, False), find_bin(lo, hi, x, True)
            out.write(f"{{{lo}, {hi}, {x}, {{{clear}, {flagged}}}}},\n")
