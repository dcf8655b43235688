#include <nqcommon/math/matrix/NQSymBlockMatrix.h>

#include <algorithm>
#include <cassert>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/math/kernels/packed_triangle.h>
#include <nqcommon/math/matrix/internal/matrix_results.h>

namespace NQMath_940 {

NQSymBlockMatrix& NQSymBlockMatrix::operator=(const NQSymBlockMatrix& other) noexcept {
  if (this == &other) return *this;
  fNBlocks = other.fNBlocks;
  fBlockSize = other.fBlockSize;
  FailUnless(NQCommon_940::GuardMemory([&] { fvBlocks = other.fvBlocks; }));
  return *this;
}

bool NQSymBlockMatrix::SetNRows(int nb, int bs, bool clear) {
  fNBlocks = std::max(nb, 0);
  fBlockSize = std::max(bs, 0);
  const bool resized = FailUnless(NQCommon_940::GuardMemory([&] {
    fvBlocks.resize(internal::RowStart(static_cast<std::size_t>(fNBlocks)));
    for (NQSymMatrix& block : fvBlocks) {
      if (!block.Resize(fBlockSize)) break;
    }
  }));
  if (resized && clear) Clear();
  return resized;
}

// FailUnless leaves what a failed allocation leaves unless all is there; a block tells by its order
// that it has not got its storage.
bool NQSymBlockMatrix::FailUnless(bool allocated) {
  const auto valid = [](const NQSymMatrix& block) { return block.IsValidMatrix(); };
  if (allocated && std::all_of(fvBlocks.begin(), fvBlocks.end(), valid)) return true;
  fvBlocks = {};
  fNBlocks = fBlockSize = -1;
  return false;
}

std::size_t NQSymBlockMatrix::PositionOf(int I, int J) const {
  assert(I >= 0 && J >= 0 && I < fNBlocks && J < fNBlocks);
  return internal::SymIndex(static_cast<std::size_t>(I), static_cast<std::size_t>(J));
}

void NQSymBlockMatrix::Clear() {
  for (NQSymMatrix& block : fvBlocks) block.Clear();
}

int NQSymBlockMatrix::CopyToSymMatrix(INQSymMatrix& out) const {
  const long long n = static_cast<long long>(fNBlocks) * fBlockSize;
  NQSymMatrix* dense = internal::AsDenseSym(out);
  const auto whole = [this](const NQSymMatrix& block) { return block.GetNRows() == fBlockSize; };
  if (!dense || !IsValid() || !internal::FitsInt(n) ||
      fvBlocks.size() != internal::RowStart(static_cast<std::size_t>(fNBlocks)) ||
      !std::all_of(fvBlocks.begin(), fvBlocks.end(), whole))
    return -1;
  const auto fillRow = [&](int i, std::vector<double>& row) {
    row.resize(static_cast<std::size_t>(i) + 1);
    for (int j = 0; j <= i; ++j) {
      const NQSymMatrix& block = GetElemSSRef(i / fBlockSize, j / fBlockSize);
      row[static_cast<std::size_t>(j)] = block.GetElem(i % fBlockSize, j % fBlockSize);
    }
    return true;
  };
  return internal::PutRows(static_cast<int>(n), dense, fillRow) ? static_cast<int>(n) : -1;
}

void NQSymBlockMatrix::Display() const {
  using NQDisplay_940::DisplayI;
  using NQDisplay_940::DisplayText;
  NQCommon_940::GuardMemory([this] {
    DisplayText(1, "NQSymBlockMatrix display start");
    DisplayI("The number of rows in the NQSymBlockMatrix", fNBlocks);
    DisplayI("The number of rows in each NQMATH_NAMESPACE::NQSymMatrix matrix", fBlockSize);
    for (int I = 0; I < fNBlocks; ++I) {
      for (int J = 0; J <= I; ++J) {
        DisplayI("Row number in the NQSymBlockMatrix", I);
        DisplayI("Column number in the NQSymBlockMatrix", J);
        DisplayText(1, "NQMATH_NAMESPACE::NQSymMatrix matrix:");
        GetElemSSRef(I, J).Display();
      }
    }
    DisplayText(1, "NQSymBlockMatrix display end");
  });
}

}  // namespace NQMath_940
