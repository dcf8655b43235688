// The fast products give the bits of the plain loops, on every instruction set of the machine.
#include <nqcommon/math/matrix/internal/dense_kernels.h>

#include <gtest/gtest.h>

#include "support/compare.h"
#include "support/packed.h"

namespace NQMath_940::internal {
namespace {

using namespace nqtest;

// Sizes around the borders of tiles and blocks: m, inner, n.
constexpr std::size_t kSizes[][3] = {{4, 64, 4},   {4, 8, 33},    {9, 8, 15},    {16, 16, 16},
                                     {17, 129, 8}, {33, 5, 260},  {257, 12, 31}, {64, 128, 48},
                                     {31, 300, 9}, {65, 257, 65}, {100, 3, 100}, {270, 20, 270}};

TEST(DenseKernels, EveryFormGivesTheBitsOfThePlainLoop) {
  // Long enough for any layout of any size, not finite in places.
  Values data = RandomPositiveDefinite(500);
  data[1234] = std::numeric_limits<double>::infinity();
  data[40000] = std::numeric_limits<double>::quiet_NaN();
  for (const auto& [m, inner, n] : kSizes) {
    for (const Operand& a :
         {RowsAt(data.data(), inner + 3), TransposeOf(data.data(), m), TriangleAt(data.data())}) {
      for (const Operand& b :
           {RowsAt(&data[77], n), TransposeOf(&data[77], inner), TriangleAt(data.data())}) {
        // A triangle is square.
        const bool square = a.layout == Operand::Layout::kTriangle;
        const std::size_t rows = square ? inner : m;
        const std::size_t columns = b.layout == Operand::Layout::kTriangle ? inner : n;
        Values wanted(rows * columns, 7), got = wanted;
        Values wantedLower(RowStart(rows), 7), gotLower = wantedLower;
        MultiplyPlain(a, b, rows, inner, columns, wanted.data());
        MultiplyLowerPlain(a, TransposeOf(a), rows, inner, wantedLower.data());
        for (Isa isa : kIsas) {
          Multiply(a, b, rows, inner, columns, got.data(), isa);
          MultiplyLower(a, TransposeOf(a), rows, inner, gotLower.data(), isa);
          EXPECT_TRUE(AreSame(got, wanted))
              << static_cast<int>(isa) << ' ' << m << ' ' << inner << ' ' << n;
          EXPECT_TRUE(AreSame(gotLower, wantedLower))
              << static_cast<int>(isa) << ' ' << rows << ' ' << inner;
        }
      }
    }
  }
}

}  // namespace
}  // namespace NQMath_940::internal
