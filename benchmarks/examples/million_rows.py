"""Writes a regression problem of any length as CSV: 20 numeric and 3 categorical inputs, target y.

usage: million_rows.py [ROWS] > FILE
The same rows each time; memory does not grow with their number.
"""
import random
import sys

LEVELS = {"region": 5, "grade": 8, "site": 20}


def main():
    rows = int(sys.argv[1]) if len(sys.argv) > 1 else 1_000_000
    draw = random.Random(20240607)
    names = [f"x{j}" for j in range(1, 21)]
    texts = {name: [f"{name}_{k}" for k in range(n)] for name, n in LEVELS.items()}
    effects = {name: [draw.gauss(0, 2) for _ in range(n)] for name, n in LEVELS.items()}
    slopes = [draw.gauss(0, 1) for _ in names]
    centres = [draw.uniform(-100, 100) for _ in names]
    write = sys.stdout.write
    write(",".join([*names, *LEVELS, "y"]) + "\n")
    gauss, choose = draw.gauss, draw.randrange
    for _ in range(rows):
        deviations = [gauss(0, 1) for _ in names]
        codes = [choose(n) for n in LEVELS.values()]
        y = 10 + sum(b * d for b, d in zip(slopes, deviations)) + gauss(0, 3)
        y += sum(effects[name][k] for name, k in zip(LEVELS, codes))
        cells = [f"{c + d:.9g}" for c, d in zip(centres, deviations)]
        cells += [texts[name][k] for name, k in zip(LEVELS, codes)]
        write(",".join(cells) + f",{y:.9g}\n")


if __name__ == "__main__":
    main()
