#include <nqcommon/math/matrix/NQSymBlockDiagMatrix.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/kernels/scaling.h>
#include <nqcommon/math/matrix/internal/block_results.h>
#include <nqcommon/math/matrix/internal/symmetric_forms.h>

namespace NQMath_940 {

using NQCommon_940::NQMV;

// ---- Factor ------------------------------------------------------------------------------------

int NQSymBlockDiagMatrix::Factor(const std::vector<double>& t, double eps, NQBitSet* nonRedundant,
                                 bool check) {
  const auto negative = [](double x) { return x < 0; };
  if (check && (eps < 0 || std::any_of(t.begin(), t.end(), negative))) return -1;
  if (t.size() < Order()) return -1;
  if (nonRedundant && nonRedundant->Size() < fNRows) {
    nonRedundant->Resize(fNRows, false);
  } else if (nonRedundant) {
    nonRedundant->Clear();
  }
  int aliased = 0;
  NQBitSet members;
  ForEachBlock([&](INQSymMatrix& block, int first) {
    const std::vector<double> slice(t.begin() + first, t.begin() + first + block.GetNRows());
    aliased += block.LTChol(slice, eps, members, false);
    for (int i = 0; nonRedundant && i < block.GetNRows(); ++i)
      nonRedundant->Set(first + i, members.IsIn(i));
  });
  return aliased;
}

int NQSymBlockDiagMatrix::LTChol(const std::vector<double>& t, double eps, bool check) {
  return Factor(t, eps, nullptr, check);
}

int NQSymBlockDiagMatrix::LTChol(const std::vector<double>& t, double eps, NQBitSet& nonRedundant,
                                 bool check) {
  return Factor(t, eps, &nonRedundant, check);
}

int NQSymBlockDiagMatrix::LTChol(double eps, double& minPivot, bool check) {
  return internal::FactorByOwnReferences(*this, eps, minPivot, check);
}

// ---- Determinant and inverses ------------------------------------------------------------------

int NQSymBlockDiagMatrix::LTDetInverse(NQDeterminant& det, int job) {
  int zeroes = 0;
  NQDeterminant product{1, 0}, ofBlock;
  ForEachBlock([&](INQSymMatrix& block, int) {
    zeroes += block.LTDetInverse(ofBlock, job);
    if (job % 10 == 0) return;
    internal::MultiplyScaled(product, ofBlock.first);
    product.second += ofBlock.second;
  });
  if (job % 10 != 0) det = zeroes > 0 ? NQDeterminant{0, 0} : product;
  return zeroes;
}

bool NQSymBlockDiagMatrix::LTInverse() {
  NQDeterminant det;
  LTDetInverse(det, 10);
  return IsValidMatrix();
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
  bool found = true;
  ForEachBlock([&](const INQSymMatrix& block, int) {
    if (block.GetNRows() < 1 || !found || product.first == 0) return;
    found = block.ComputeDeterminant(eps, ofBlock);
    internal::MultiplyScaled(product, ofBlock.first);
    product.second += ofBlock.second;
  });
  if (found) det = product.first == 0 ? NQDeterminant{0, 0} : product;
  return found;
}

// The blocks' inverses, in a copy that `out` takes at the end.
int NQSymBlockDiagMatrix::InvertInto(INQSymMatrix& out, const std::vector<double>& t, double eps,
                                     NQBitSet* nonRedundant, double* minPivot) const {
  NQSymBlockDiagMatrix inverse(*this);
  if (out.GetType() == 1 || !inverse.IsValidMatrix()) return -1;
  const int aliased = inverse.Factor(t, eps, nonRedundant, false);
  if (aliased < 0) return aliased;
  if (minPivot) *minPivot = internal::SmallestPivot(inverse);
  inverse.LTInverse();
  inverse.LTLTransL();
  const int rank = fNRows - aliased;
  return internal::PutBlocks(std::move(inverse), out) ? rank : -1;
}

int NQSymBlockDiagMatrix::CholInverse(const std::vector<double>& t, double eps,
                                      INQSymMatrix& out) const {
  return InvertInto(out, t, eps, nullptr, nullptr);
}

int NQSymBlockDiagMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                                      NQBitSet& nonRedundant) const {
  return InvertInto(out, t, eps, &nonRedundant, nullptr);
}

int NQSymBlockDiagMatrix::CholInverse(const std::vector<double>& t, double eps, INQSymMatrix& out,
                                      double& minPivot) const {
  minPivot = NQMV::Missing();
  return InvertInto(out, t, eps, nullptr, &minPivot);
}

// ---- Solve -------------------------------------------------------------------------------------

int NQSymBlockDiagMatrix::LTSolve(const std::vector<double>& b, double eps,
                                  std::vector<double>& x) {
  if (!HasOrder(b.size()) || !(eps >= 0)) return -1;
  int aliased = 0;
  std::vector<double> solution, part;
  ForEachBlock([&](INQSymMatrix& block, int first) {
    part.assign(b.begin() + first, b.begin() + first + block.GetNRows());
    aliased += block.LTSolve(part, eps, part);
    solution.insert(solution.end(), part.begin(), part.end());
  });
  x = std::move(solution);
  return aliased;
}

}  // namespace NQMath_940
