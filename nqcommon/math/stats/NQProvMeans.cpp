#include <nqcommon/math/stats/NQProvMeans.h>

#include <nqcommon/math/kernels/display_frame.h>

namespace NQMath_940 {

bool NQProvMeans::Update(const std::vector<double>& x, double w) {
  if (w == 0) return HasValues(x);
  return w > 0 ? AddCase(x, w) : DeleteCase(x, -w);
}

void NQProvMeans::Display() const {
  internal::DisplayObject("NQProvMeans", [&] { NQMeansXProdData::Display(); });
}

}  // namespace NQMath_940
