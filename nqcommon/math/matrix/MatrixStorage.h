#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/export.h>

namespace NQMath_940 {

// The shapes of the dense matrices: the number of entries, 0 for a failed shape, and the shape that
// an allocation that failed leaves.
struct NQ_API TriangleShape {
  std::size_t Count() const;
  void Fail() { fNRows = -1; }

  int fNRows = 0;
  int fNBlocks = 1;
  int fBlockSize = 0;
};

struct NQ_API DiagonalShape {
  std::size_t Count() const { return fNRows > 0 ? static_cast<std::size_t>(fNRows) : 0; }
  void Fail() { fNRows = -1; }

  int fNRows = 0;
};

struct NQ_API RectShape {
  std::size_t Count() const;
  void Fail() { fNRows = fNCols = -1; }

  int fNRows = 0;
  int fNCols = 0;
};

// What the dense matrices keep, private to them: a shape and the array of its entries. Memory that
// ends leaves the failed shape and no entries; nothing throws. Moves leave an empty matrix.
template <class Shape>
class NQ_API MatrixStorage : protected Shape {
 protected:
  MatrixStorage() = default;
  MatrixStorage(const MatrixStorage& other) noexcept : Shape() { *this = other; }
  MatrixStorage& operator=(const MatrixStorage& other) noexcept;
  MatrixStorage(MatrixStorage&& other) noexcept : Shape() {
    *this = static_cast<MatrixStorage&&>(other);
  }
  MatrixStorage& operator=(MatrixStorage&& other) noexcept;
  ~MatrixStorage() = default;

  // Gives the array the length that the shape asks for: old entries stay, new ones are 0. False,
  // the shape failed, when there is no storage.
  bool Allocate() noexcept;

  std::vector<double> fvData;
};

extern template class MatrixStorage<TriangleShape>;
extern template class MatrixStorage<DiagonalShape>;
extern template class MatrixStorage<RectShape>;

}  // namespace NQMath_940
