#pragma once

#include <nqcommon/math/numeric/internal/incomplete_beta.h>
#include <nqcommon/math/numeric/internal/tails.h>

namespace NQMath_940::internal {

// C(k + rest, k) p^k (1-p)^rest, 0 < p < 1, at the point of p for k and rest, whole or not.
ExpTerm BinomialTerm(const BetaPoint& at, double k, double rest);

// Items by two marks; the sums of the rows and columns are given, so that one count moves them all.
struct FourfoldTable {
  double markedDrawn;
  double markedLeft;
  double othersDrawn;
  double othersLeft;

  double Drawn() const { return markedDrawn + othersDrawn; }
  double Left() const { return markedLeft + othersLeft; }
  FourfoldTable Down(double by) const {
    return {markedDrawn - by, markedLeft + by, othersDrawn + by, othersLeft - by};
  }
  FourfoldTable SwapDrawnAndLeft() const {
    return {markedLeft, markedDrawn, othersLeft, othersDrawn};
  }
  // P of the table with one marked item fewer among the drawn, over P of this one.
  double RatioDown() const {
    return markedDrawn / (markedLeft + 1) * (othersLeft / (othersDrawn + 1));
  }
};

// P of the table, given its sums; the counts need not be whole.
ExpTerm HypergeometricTerm(const FourfoldTable& at);

// P of this table and all below, for a table up to about the mean: P falls downwards.
double HypergeometricLowerTail(const FourfoldTable& from);

}  // namespace NQMath_940::internal
