#include <nqcommon/math/kernels/packed_algebra.h>

#include <algorithm>

#include <nqcommon/math/kernels/packed_triangle.h>

namespace NQMath_940::internal {

void SymTimesVector(const double* s, std::size_t n, const double* v, std::size_t nRows,
                    double* out) {
  std::fill(out, out + nRows, 0.0);
  for (std::size_t i = 0; i < n; ++i) {
    const double* row = s + RowStart(i);
    if (i < nRows) out[i] = DotProduct(i + 1, row, v);
    AddScaled(std::min(i, nRows), v[i], row, out);
  }
}

void LowerTimesVector(const double* l, std::size_t n, const double* v, double* out) {
  for (std::size_t i = 0; i < n; ++i) out[i] = DotProduct(i + 1, l + RowStart(i), v);
}

void LowerTransTimesVector(const double* l, std::size_t n, const double* v, double* out) {
  std::fill(out, out + n, 0.0);
  for (std::size_t i = 0; i < n; ++i) AddScaled(i + 1, v[i], l + RowStart(i), out);
}

void LowerSolve(const double* l, std::size_t n, double* x) {
  bool dropped = false;  // a row before i
  for (std::size_t i = 0; i < n; ++i) {
    const double* row = l + RowStart(i);
    if (row[i] == 0) {
      x[i] = 0;
      dropped = true;
      continue;
    }
    double sum = 0;
    if (dropped) {
      for (std::size_t k = 0; k < i; ++k) {
        if (l[DiagIndex(k)] != 0) sum += row[k] * x[k];
      }
    } else {
      sum = DotProduct(i, row, x);
    }
    x[i] = (x[i] - sum) / row[i];
  }
}

void LowerTransSolve(const double* l, std::size_t n, double* x) {
  for (std::size_t i = n; i-- > 0;) {
    const double* row = l + RowStart(i);
    x[i] = row[i] != 0 ? x[i] / row[i] : 0;
    if (row[i] != 0) AddScaled(i, -x[i], row, x);
  }
}

// From the last row up: rows after k already hold the inverse as far as it depends on them. Row k
// joins as (-l(k,j) / l(k,k), 1 / l(k,k)), and each later row i takes l(i,k) times it.
void InvertLower(double* l, std::size_t n) {
  for (std::size_t k = n; k-- > 0;) {
    double* pivotRow = l + RowStart(k);
    if (pivotRow[k] == 0) {
      ForEachInRow(l, n, k, [](std::size_t, double& x) { x = 0; });
      continue;
    }
    const double inverse = 1 / pivotRow[k];
    for (std::size_t j = 0; j < k; ++j) pivotRow[j] = 0 - pivotRow[j] * inverse;  // not -0
    pivotRow[k] = inverse;
    for (std::size_t i = k + 1; i < n; ++i) {
      double* row = l + RowStart(i);
      AddScaled(k, row[k], pivotRow, row);
      row[k] *= inverse;
    }
  }
}

// From the last row up, each row from its diagonal left, so that nothing is read after it has been
// overwritten.
void LowerTimesTrans(double* l, std::size_t n) {
  for (std::size_t i = n; i-- > 0;) {
    double* row = l + RowStart(i);
    for (std::size_t j = i + 1; j-- > 0;) row[j] = DotProduct(j + 1, row, l + RowStart(j));
  }
}

}  // namespace NQMath_940::internal
