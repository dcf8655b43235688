#pragma once

#include <string>
#include <vector>

#include <nqcommon/common/GuardedCopy.h>
#include <nqcommon/export.h>
#include <nqcommon/output/NQVariateData.h>

namespace NQMath_940 {

// One categorical field: the sum of the weights of each category, for a bar chart.
//
// Failure   where memory ends: no categories, also in a copy; variate data without counts, which
//           the next call tries again to put together.
// Threads   one object, one thread at a time.
class NQ_API NQBarChartData {
 public:
  // Categories 0 .. nCategories - 1; none for nCategories < 1 and for more than there is memory
  // for. With `proportions` the chart shows the shares of the total weight.
  NQBarChartData(int nCategories, bool proportions);

  // Adds the weight w to a category, its code without the fraction. False, nothing changed, unless
  // 0 <= category < nCategories. Changes no variate data that has been asked for.
  bool UpdateData(double w, double category);

  double GetTotalWeight() const { return fTotalWeight; }

  // The data for CreateElemVarData, put together by the first call; later calls return the same.
  //   counts        the total weight
  //   coordinates   the label, and under "frequency" the weight or the share, of each category
  //                 where that is above 0. With a description the labels are "observed" and their
  //                 field the description. A category beyond the labels has its code for a label.
  // With proportions the call turns the weights kept here into shares, unless the total is 0: it
  // comes after the last update.
  NQXML_940::NQVariateData& GenerateNQVariateData(const std::string& description,
                                                  const std::vector<std::string>& categoryLabels);

  void Display() const;

 private:
  NQCommon_940::GuardedCopy<std::vector<double>> fvWeights;
  bool fProportions;
  double fTotalWeight = 0;
  NQCommon_940::GuardedCopy<NQXML_940::NQVariateData> fVariateData;
};

}  // namespace NQMath_940
