#include <nqcommon/math/matrix/MatrixStorage.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_triangle.h>

namespace NQMath_940 {

std::size_t TriangleShape::Count() const {
  return fNRows > 0 ? internal::RowStart(static_cast<std::size_t>(fNRows)) : 0;
}

std::size_t RectShape::Count() const {
  return fNRows < 0 ? 0 : static_cast<std::size_t>(fNRows) * static_cast<std::size_t>(fNCols);
}

template <class Shape>
MatrixStorage<Shape>& MatrixStorage<Shape>::operator=(const MatrixStorage& other) noexcept {
  if (this == &other) return *this;
  Shape::operator=(other);
  if (Allocate()) std::copy(other.fvData.begin(), other.fvData.end(), fvData.begin());
  return *this;
}

template <class Shape>
MatrixStorage<Shape>& MatrixStorage<Shape>::operator=(MatrixStorage&& other) noexcept {
  if (this == &other) return *this;
  Shape::operator=(std::exchange<Shape>(other, {}));
  fvData = std::exchange(other.fvData, {});
  return *this;
}

template <class Shape>
bool MatrixStorage<Shape>::Allocate() noexcept {
  if (!NQCommon_940::GuardMemory([&] { fvData.resize(this->Count()); })) {
    fvData = {};
    this->Fail();
  }
  return this->fNRows >= 0;
}

template class MatrixStorage<TriangleShape>;
template class MatrixStorage<DiagonalShape>;
template class MatrixStorage<RectShape>;

}  // namespace NQMath_940
