# Seconds, best of five, that cov.wt needs for the weighted covariances of covariance_benchmark. Run with
# OPENBLAS_NUM_THREADS=1 for one thread.
for (size in list(c(1000000, 10), c(200000, 50), c(100000, 100), c(20000, 500))) {
  n <- size[1]
  p <- size[2]
  set.seed(1)
  x <- matrix(runif(n * p), n, p) + rep(seq_len(p) - 1, each = n)
  w <- sample(4, n, replace = TRUE)
  w <- w / sum(w)
  times <- replicate(5, system.time(cov.wt(x, wt = w))[["elapsed"]])
  cat(sprintf("cov.wt | %7d | %3d | %.4f\n", n, p, min(times)))
}
