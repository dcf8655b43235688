#include <nqcommon/math/matrix/NQSparseVector.h>

#include <algorithm>
#include <limits>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/math/matrix/internal/argument_checks.h>
#include <nqcommon/math/matrix/internal/sparse_run.h>
#include <nqcommon/math/numeric/NQPower.h>

namespace NQMath_940 {

using internal::FitsIn;
using internal::RunOf;
using NQCommon_940::NQMV;

namespace {

bool AreVector(const std::vector<int>& indices, const std::vector<double>& values) {
  const auto stays = [](int a, int b) { return a >= b; };
  return !indices.empty() && indices.size() == values.size() &&
         indices.size() <= static_cast<std::size_t>(std::numeric_limits<int>::max()) &&
         indices.front() >= 0 &&
         std::adjacent_find(indices.begin(), indices.end(), stays) == indices.end();
}

}  // namespace

NQSparseVector::NQSparseVector(const std::vector<int>& indices, const std::vector<double>& values)
    : fNElements(static_cast<int>(indices.size())),
      fpIndices(&indices),
      fpValues(&values),
      fValid(AreVector(indices, values)) {}

int NQSparseVector::GetMinVecSize() const {
  if (!IsValid()) return 0;
  const int last = fpIndices->back();
  return last < std::numeric_limits<int>::max() ? last + 1 : last;
}

int NQSparseVector::GetIndex(int i) const {
  const bool listed = i >= 0 && static_cast<std::size_t>(i) < fpIndices->size();
  return listed ? (*fpIndices)[static_cast<std::size_t>(i)] : -1;
}

double NQSparseVector::GetValue(int i) const {
  const bool listed = i >= 0 && static_cast<std::size_t>(i) < fpValues->size();
  return listed ? (*fpValues)[static_cast<std::size_t>(i)] : NQMV::Missing();
}

// ---- Dense vectors -----------------------------------------------------------------------------

bool NQSparseVector::ConvertToRegularVector(std::vector<double>& out) const {
  return IsValid() && internal::MakeVector(
                          static_cast<std::size_t>(fpIndices->back()) + 1, out,
                          [this](std::vector<double>& dense) {
                            RunOf(*this).ForEach([&](std::size_t i, double x) { dense[i] = x; });
                          });
}

bool NQSparseVector::IncrementPart(std::vector<double>& v, int offset, double a) const {
  if (!FitsIn(*this, v.size(), offset)) return false;
  // v may be the list of values itself: it is long enough only where each index is its own place,
  // so that each value is read before it is written.
  internal::AddScaled(RunOf(*this), a, v.data() + offset);
  return true;
}

double NQSparseVector::InnerProductWithPart(const std::vector<double>& v, int offset) const {
  return FitsIn(*this, v.size(), offset) ? internal::DotProduct(RunOf(*this), v.data() + offset)
                                         : NQMV::Missing();
}

double NQSparseVector::InnerProduct(const int* idx1, const double* val1, int count1,
                                    const int* idx2, const double* val2, int count2) {
  if (!idx1 || !val1 || !idx2 || !val2 || count1 < 0 || count2 < 0) return NQMV::Missing();
  return internal::DotProduct(internal::SparseRun{idx1, val1, static_cast<std::size_t>(count1)},
                              internal::SparseRun{idx2, val2, static_cast<std::size_t>(count2)});
}

// ---- Symmetric matrices ------------------------------------------------------------------------

namespace {

bool Holds(const NQSymMatrix& s, const NQSparseVector& v, int offset) {
  return s.IsValidMatrix() && FitsIn(v, static_cast<std::size_t>(s.GetNRows()), offset);
}

}  // namespace

bool NQSparseVector::QuadraticOuterProduct(NQSymMatrix& s) const {
  if (!Holds(s, *this, 0)) return false;
  double* packed = s.AsVector().data();
  internal::ForEachOuter(RunOf(*this), 0,
                         [packed](std::size_t at, double vi, double vj) { packed[at] = vi * vj; });
  return true;
}

bool NQSparseVector::QuadraticOuterProductIncr(NQSymMatrix& s, double w) const {
  return QuadraticOuterProductPartIncr(s, 0, w);
}

bool NQSparseVector::QuadraticOuterProductPartIncr(NQSymMatrix& s, int offset, double w) const {
  if (!Holds(s, *this, offset)) return false;
  internal::AddOuter(RunOf(*this), static_cast<std::size_t>(offset), w, s.AsVector().data());
  return true;
}

bool NQSparseVector::IncrementRowPart(NQSymMatrix& s, int row, int offset, double w) const {
  if (!Holds(s, *this, offset) || row < 0 || row >= s.GetNRows()) return false;
  double* packed = s.AsVector().data();
  RunOf(*this).ForEach([&](std::size_t j, double x) {
    packed[internal::SymIndex(static_cast<std::size_t>(row),
                              static_cast<std::size_t>(offset) + j)] += w * x;
  });
  return true;
}

// ---- Probabilities -----------------------------------------------------------------------------

bool NQSparseVector::ComputeProbabilities(int nClasses, std::vector<double>& out) const {
  if (nClasses < 0 || !FitsIn(*this, static_cast<std::size_t>(nClasses)) ||
      std::any_of(fpValues->begin(), fpValues->end(), NQMV::IsMissing))
    return false;
  return internal::MakeVector(
      static_cast<std::size_t>(nClasses), out, [this](std::vector<double>& shares) {
        RunOf(*this).ForEach([&](std::size_t i, double x) { shares[i] = x; });
        const double largest = *std::max_element(shares.begin(), shares.end());
        double sum = 0;
        for (double& share : shares) {
          // An infinite share minus itself would be NaN.
          if (share == largest) {
            share = 1;
          } else {
            NQPower::Exponent(share - largest, share);
          }
          sum += share;
        }
        for (double& share : shares) share /= sum;
      });
}

}  // namespace NQMath_940
