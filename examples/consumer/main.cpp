// A user's program against the installed library: fit y = 1 + 2 x from cross-products.
#include <cmath>
#include <cstdio>

#include <nqcommon/nqcommon.h>

int main() {
  using namespace NQMath_940;

  NQSymMatrix s(3, true);  // intercept, x, y
  for (double x : {1.0, 2.0, 4.0, 8.0}) s.UpdateXX({1, x, 1 + 2 * x}, 1.0);

  NQBitSet swept;
  s.SweepOnSelected({0, 1}, defaultepse, swept, false);
  std::vector<double> b;
  s.GetRegCoeffs(b, swept);
  std::printf("y = %.15g + %.15g x\n", b[0], b[1]);
  return std::fabs(b[0] - 1) < 1e-12 && std::fabs(b[1] - 2) < 1e-12 ? 0 : 1;
}
