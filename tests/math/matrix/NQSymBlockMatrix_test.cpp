#include <nqcommon/math/matrix/NQSymBlockMatrix.h>

#include <gtest/gtest.h>

#include <climits>

#include <nqcommon/math/matrix/NQDiagMatrix.h>

#include "support/dense.h"
#include "support/displayed.h"

namespace NQMath_940 {
namespace {

using nqtest::Dense;
using nqtest::ToDense;

TEST(NQSymBlockMatrix, SymmetricBlocksMakeASymmetricMatrix) {
  NQSymBlockMatrix blocks(2, 2);
  double x = 0;
  for (NQSymMatrix& block : blocks.AsVectorSS()) block.SetData({x + 1, x + 2, x + 3}), x += 10;
  EXPECT_EQ(&blocks.GetElemSSRef(0, 1), &blocks.GetElemSSRef(1, 0));
  EXPECT_EQ(blocks.GetElemSSRef(1, 0).GetElem(1, 0), 12);
  NQSymMatrix out;
  NQDiagMatrix diagonal;
  EXPECT_EQ(blocks.CopyToSymMatrix(out), 4);
  EXPECT_EQ(ToDense(out),
            Dense({{1, 2, 11, 12}, {2, 3, 12, 13}, {11, 12, 21, 22}, {12, 13, 22, 23}}));
  EXPECT_EQ(blocks.CopyToSymMatrix(blocks.GetElemSSRef(1, 1)), 4);  // into a block, which is read
  EXPECT_EQ(ToDense(blocks.GetElemSSRef(1, 1)), ToDense(out));
  EXPECT_EQ(blocks.CopyToSymMatrix(out), -1);  // now that a block has left its order
  EXPECT_EQ(blocks.CopyToSymMatrix(diagonal), -1);
  EXPECT_TRUE(blocks.SetNRows(2, 2, true));
  EXPECT_EQ(blocks.CopyToSymMatrix(out), 4);
  EXPECT_EQ(ToDense(out), Dense(4, {0, 0, 0, 0}));
}

TEST(NQSymBlockMatrix, Shapes) {
  const struct {
    int nb, bs, wantedBlocks, wantedSize, order;
    std::size_t stored;
  } rows[] = {{3, 2, 3, 2, 6, 6}, {-2, 4, 0, 4, 0, 0},         {3, -1, 3, 0, 0, 6},
              {0, 0, 0, 0, 0, 0}, {INT_MAX, 1, -1, -1, -1, 0}, {1, INT_MAX, -1, -1, -1, 0}};
  for (const auto& [nb, bs, wantedBlocks, wantedSize, order, stored] : rows) {
    const NQSymBlockMatrix blocks(nb, bs);
    NQSymMatrix out;
    EXPECT_EQ(
        (std::vector{blocks.GetNBlocks(), blocks.GetBlockSize(), blocks.CopyToSymMatrix(out)}),
        (std::vector{wantedBlocks, wantedSize, order}))
        << nb << ", " << bs;
    EXPECT_EQ(blocks.IsValid(), order >= 0) << nb << ", " << bs;
    EXPECT_EQ(blocks.AsVectorSSConst().size(), stored) << nb << ", " << bs;
  }
}

TEST(NQSymBlockMatrix, DisplaysItsParts) {
  NQSymBlockMatrix blocks(1, 1);
  EXPECT_EQ(nqtest::Displayed(blocks),
            "\nNQSymBlockMatrix display start\nThe number of rows in the NQSymBlockMatrix = 1"
            "\nThe number of rows in each NQMATH_NAMESPACE::NQSymMatrix matrix = 1"
            "\nRow number in the NQSymBlockMatrix = 0\nColumn number in the NQSymBlockMatrix = 0"
            "\nNQMATH_NAMESPACE::NQSymMatrix matrix:" +
                nqtest::Displayed(blocks.GetElemSSRef(0, 0)) + "\nNQSymBlockMatrix display end");
}

}  // namespace
}  // namespace NQMath_940
