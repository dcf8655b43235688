#include <nqcommon/math/stats/NQProvMeans.h>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>

namespace NQMath_940 {

NQProvMeans::~NQProvMeans() = default;

bool NQProvMeans::Update(const std::vector<double>& x, double w) {
  if (w == 0) return HasValues(x);
  return w > 0 ? AddCase(x, w) : DeleteCase(x, -w);
}

void NQProvMeans::Display() const {
  NQCommon_940::GuardMemory([&] {
    NQDisplay_940::DisplayText(1, "NQProvMeans display start");
    NQMeansXProdData::Display();
    NQDisplay_940::DisplayText(1, "NQProvMeans display end");
  });
}

}  // namespace NQMath_940
