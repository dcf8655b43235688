#include <nqcommon/math/kernels/packed_cholesky.h>

#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_kernels.h>
#include <nqcommon/math/kernels/packed_triangle.h>

#include <algorithm>

namespace NQMath_940::internal {

std::size_t CholeskyPlain(double* s, std::size_t n, const double* t, double eps,
                          std::vector<bool>* aliased) {
  if (aliased != nullptr) aliased->assign(n, false);
  CholeskyJob job{s, n, t, eps, aliased};
  for (std::size_t i = 0; i < n; ++i) {
    double* row = s + RowStart(i);
    for (std::size_t j = 0; j < i; ++j) {
      const double* above = s + RowStart(j);
      const double sum = DotProduct(j, row, above);
      row[j] = above[j] != 0 ? (row[j] - sum) / above[j] : 0.0;
    }
    job.MakePivot(i, DotProduct(i, row, row));
  }
  return job.aliasedRows;
}

std::size_t Cholesky(double* s, std::size_t n, const double* t, double eps,
                     std::vector<bool>* aliased, Isa isa) {
  const PackedKernels& kernels = KernelsFor(isa);
  // As many groups of rows as half of the second-level cache holds.
  const std::size_t size = kernels.groupRows * (n + kernels.groupRows);
  const std::size_t fitting = std::clamp<std::size_t>(Caches().l2 / 16 / size, 1, 8);
  const std::size_t groups = std::min(fitting, n / kernels.groupRows + 1);
  const auto work = AlignedDoubles::Try(groups * size);
  if (!work) return CholeskyPlain(s, n, t, eps, aliased);
  if (aliased != nullptr) aliased->assign(n, false);
  CholeskyJob job{s, n, t, eps, aliased};
  kernels.cholesky(job, work->data(), groups);
  return job.aliasedRows;
}

}  // namespace NQMath_940::internal
