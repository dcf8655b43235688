#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>

#include <algorithm>

#include <nqcommon/math/kernels/packed_algebra.h>
#include <nqcommon/math/kernels/packed_cholesky.h>
#include <nqcommon/math/matrix/internal/factor_rules.h>
#include <nqcommon/math/matrix/internal/matrix_casts.h>

namespace NQMath_940 {

// ---- Factor ------------------------------------------------------------------------------------

// Factor factors every block on its slice of t; `aliased` gets a flag for each row.
std::size_t NQSymBlockDiagMatrix::Factor(const double* t, double eps, std::vector<bool>& aliased) {
  std::vector<bool> ofBlock;
  ofBlock.reserve(Order());  // nothing is allocated once a block has been factored
  std::size_t count = 0;
  ForEachBlock([&](INQSymMatrix& block, int first) {
    const std::size_t n = internal::OrderOf(block);
    if (NQSymMatrix* dense = internal::AsDenseSym(block)) {
      count += internal::Cholesky(dense->AsVector().data(), n, t + first, eps, &ofBlock);
    } else if (NQDiagMatrix* diagonal = internal::AsDiagonal(block)) {
      count += internal::FactorDiagonal(diagonal->AsVector().data(), n, t + first, eps, &ofBlock);
    }
    std::copy_n(ofBlock.begin(), n, aliased.begin() + first);
  });
  return count;
}

int NQSymBlockDiagMatrix::LTChol(const std::vector<double>& t, double eps, bool check) {
  NQBitSet unused;
  return LTChol(t, eps, unused, check);
}

int NQSymBlockDiagMatrix::LTChol(const std::vector<double>& t, double eps, NQBitSet& nonRedundant,
                                 bool check) {
  if (internal::RefusesFactor(t, eps, Order(), check)) return -1;
  return internal::FactorIntoSet(fNRows, nonRedundant, [&](std::vector<bool>& aliased) {
    return Factor(t.data(), eps, aliased);
  });
}

// ---- Determinant and inverses ------------------------------------------------------------------

int NQSymBlockDiagMatrix::LTDetInverse(NQDeterminant& det, int job) {
  int zeroes = 0;
  NQDeterminant product{1, 0}, ofBlock{1, 0};
  ForEachBlock([&](INQSymMatrix& block, int) {
    zeroes += block.LTDetInverse(ofBlock, job);
    internal::MultiplyScaled(product, ofBlock);
  });
  if (job % 10 != 0) det = zeroes > 0 ? NQDeterminant{0, 0} : product;
  return zeroes;
}

void NQSymBlockDiagMatrix::LTLLTrans() {
  ForEachBlock([](INQSymMatrix& block, int) { block.LTLLTrans(); });
}

void NQSymBlockDiagMatrix::LTLTransL() {
  ForEachBlock([](INQSymMatrix& block, int) { block.LTLTransL(); });
}

bool NQSymBlockDiagMatrix::ComputeDeterminant(double eps, NQDeterminant& det) const {
  if (fNRows < 1 || (eps < 0 && GetNDenseBlocks() > 0)) return false;
  NQDeterminant product{1, 0}, ofBlock;
  for (int b = 0; b < GetNBlocks() && product.first != 0; ++b) {
    if (GetBlockSize(b) < 1) continue;
    if (!Block(b).ComputeDeterminant(eps, ofBlock)) return false;
    internal::MultiplyScaled(product, ofBlock);
  }
  det = product.first == 0 ? NQDeterminant{0, 0} : product;
  return true;
}

// ---- Solve -------------------------------------------------------------------------------------

int NQSymBlockDiagMatrix::LTSolve(const std::vector<double>& b, double eps,
                                  std::vector<double>& x) {
  return internal::SolveByFactor(*this, b, eps, x, [this](std::vector<double>& solution) {
    ForEachBlock([&](const INQSymMatrix& block, int first) {
      double* part = solution.data() + first;
      if (const NQSymMatrix* dense = internal::AsDenseSym(block)) {
        internal::LowerSolve(dense->AsVectorConst().data(), internal::OrderOf(block), part);
        internal::LowerTransSolve(dense->AsVectorConst().data(), internal::OrderOf(block), part);
      } else if (const NQDiagMatrix* diagonal = internal::AsDiagonal(block)) {
        internal::SolveByDiagonal(diagonal->AsVectorConst(), part);
      }
    });
  });
}

}  // namespace NQMath_940
