#!/usr/bin/python3
"""Seconds, best of five, that numpy.cov needs for the weighted covariances of covariance_benchmark.

Run with OPENBLAS_NUM_THREADS=1 for one thread.
"""
import time

import numpy as np

for n, p in ((1000000, 10), (200000, 50), (100000, 100), (20000, 500)):
    random = np.random.default_rng(1)
    x = random.random((n, p)) + np.arange(p)
    w = random.integers(1, 5, n)
    times = []
    for _ in range(5):
        start = time.perf_counter()
        np.cov(x, rowvar=False, fweights=w)
        times.append(time.perf_counter() - start)
    print("numpy.cov | %7d | %3d | %.4f" % (n, p, min(times)), flush=True)
