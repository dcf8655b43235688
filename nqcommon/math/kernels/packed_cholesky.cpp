#include <nqcommon/math/kernels/packed_cholesky.h>

#include <nqcommon/math/kernels/packed_kernels.h>
#include <nqcommon/math/kernels/packed_triangle.h>

#include <new>
#include <optional>

namespace NQMath_940::internal {
namespace {

double SumOfProducts(const double* x, const double* y, std::size_t count) {
  double sum = 0;
  for (std::size_t k = 0; k < count; ++k) sum += x[k] * y[k];
  return sum;
}

}  // namespace

std::size_t CholeskyPlain(double* s, std::size_t n, const double* t, double eps,
                          std::vector<bool>* aliased) {
  if (aliased != nullptr) aliased->assign(n, false);
  CholeskyJob job{s, n, t, eps, aliased};
  for (std::size_t i = 0; i < n; ++i) {
    double* row = s + RowStart(i);
    for (std::size_t j = 0; j < i; ++j) {
      const double* above = s + RowStart(j);
      const double sum = SumOfProducts(row, above, j);
      row[j] = above[j] != 0 ? (row[j] - sum) / above[j] : 0.0;
    }
    job.MakePivot(i, SumOfProducts(row, row, i));
  }
  return job.aliasedRows;
}

std::size_t Cholesky(double* s, std::size_t n, const double* t, double eps,
                     std::vector<bool>* aliased, Isa isa) {
  std::optional<AlignedDoubles> work;
  try {
    work.emplace((n + kPanelTile) * kPanelTile);
  } catch (const std::bad_alloc&) {
    return CholeskyPlain(s, n, t, eps, aliased);
  }
  if (aliased != nullptr) aliased->assign(n, false);
  CholeskyJob job{s, n, t, eps, aliased};
  KernelsFor(isa).cholesky(job, work->data());
  return job.aliasedRows;
}

}  // namespace NQMath_940::internal
