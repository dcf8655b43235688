#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/export.h>

namespace NQMath_940 {

class NQSymMatrix;

// View of a sparse vector: a list of indices and a list of their values. Elements whose index is
// not listed are 0.
//
// Lifetime  the view owns nothing. Both lists must outlive it and all its copies, and must keep
//           their lengths and the indices their values; the values may change. A list whose length
//           has changed makes the view invalid.
// Valid     the index list is not empty, both lists have the same length, and the indices are not
//           negative and strictly increasing.
// Failure   an operation on an invalid view, or one that does not fit, returns false or the
//           system-missing value and touches nothing, as does one without memory. Nothing throws.
// Cost      with the number of elements, not with the length of the vector.
// Threads   reading the lists is all that an operation does with them.
class NQ_API NQSparseVector {
 public:
  NQSparseVector(const std::vector<int>& indices, const std::vector<double>& values);
  // A view of a temporary list, or of one in braces, would dangle at the end of the statement.
  NQSparseVector(const std::vector<int>&&, const std::vector<double>&) = delete;
  NQSparseVector(const std::vector<int>&, const std::vector<double>&&) = delete;
  NQSparseVector(const std::vector<int>&&, const std::vector<double>&&) = delete;

  bool IsValid() const {
    return fValid && fpIndices->size() == static_cast<std::size_t>(fNElements) &&
           fpValues->size() == fpIndices->size();
  }
  // GetNElements is the length of the index list.
  int GetNElements() const { return fNElements; }
  // The lists themselves.
  const std::vector<int>& GetIndices() const { return *fpIndices; }
  const std::vector<double>& GetValues() const { return *fpValues; }
  // Last index + 1, the shortest dense vector that holds this one (INT_MAX for a last index of
  // INT_MAX); 0 for an invalid view.
  int GetMinVecSize() const;
  // The i-th entry of the lists, whether the view is valid or not: -1, or the system-missing value,
  // where a list has no such entry.
  int GetIndex(int i) const;
  double GetValue(int i) const;

  // ---- Dense vectors ---------------------------------------------------------------------------

  // out = GetMinVecSize() values.
  bool ConvertToRegularVector(std::vector<double>& out) const;
  // v[offset + index] += a x value.
  bool IncrementPart(std::vector<double>& v, int offset, double a) const;
  // The sum of value x v[offset + index].
  double InnerProductWithPart(const std::vector<double>& v, int offset) const;
  // The sum of val1 x val2 over equal indices of two ascending lists; 0 when a count is 0,
  // system-missing when a pointer is null or a count negative.
  static double InnerProduct(const int* idx1, const double* val1, int count1, const int* idx2,
                             const double* val2, int count2);

  // ---- Symmetric matrices ----------------------------------------------------------------------
  // v is this vector; only cells with listed indices are written.

  // s(i,j) <- v[i] v[j], and s(i,j) += w v[i] v[j].
  bool QuadraticOuterProduct(NQSymMatrix& s) const;
  bool QuadraticOuterProductIncr(NQSymMatrix& s, double w) const;
  // s(offset + i, offset + j) += w v[i] v[j].
  bool QuadraticOuterProductPartIncr(NQSymMatrix& s, int offset, double w) const;
  // s(row, offset + i) += w v[i].
  bool IncrementRowPart(NQSymMatrix& s, int row, int offset, double w) const;

  // ---- Probabilities ---------------------------------------------------------------------------

  // Takes v for the linear predictors of nClasses classes, 0 where none is listed (a reference
  // class): out[c] = exp(v[c]) / the sum of the exponentials. The largest predictor is subtracted
  // first, so nothing overflows; infinite ones share all the probability. NaN makes all NaN. False
  // when a predictor is system-missing or its class not below nClasses.
  bool ComputeProbabilities(int nClasses, std::vector<double>& out) const;

 private:
  int fNElements;
  const std::vector<int>* fpIndices;
  const std::vector<double>* fpValues;
  bool fValid;
};

}  // namespace NQMath_940
