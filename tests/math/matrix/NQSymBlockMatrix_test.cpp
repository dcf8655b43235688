#include <nqcommon/math/matrix/NQSymBlockMatrix.h>

#include <array>
#include <climits>

#include "math/matrix/matrix_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

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
  // blocks and their order asked for, blocks, order of each and of all, blocks stored
  for (const auto& [nb, bs, wantedBlocks, wantedSize, order, stored] :
       {std::array{3, 2, 3, 2, 6, 6},
        {-2, 4, 0, 4, 0, 0},
        {3, -1, 3, 0, 0, 6},
        {0, 0, 0, 0, 0, 0},
        {INT_MAX, 1, -1, -1, -1, 0},
        {1, INT_MAX, -1, -1, -1, 0}}) {
    const NQSymBlockMatrix blocks(nb, bs);
    NQSymMatrix out;
    EXPECT_EQ((std::array{blocks.GetNBlocks(), blocks.GetBlockSize(), blocks.CopyToSymMatrix(out),
                          static_cast<int>(blocks.AsVectorSSConst().size())}),
              (std::array{wantedBlocks, wantedSize, order, stored}))
        << nb << ", " << bs;
    EXPECT_EQ(blocks.IsValid(), order >= 0) << nb << ", " << bs;
  }
}

}  // namespace
}  // namespace NQMath_940
