// What the documents tell of the variables besides the fit, gathered case by case.
#pragma once

#include <vector>

#include <nqcommon/model/NQUniStats.h>
#include <nqcommon/output/NQVariateData.h>

#include "model_data.h"

namespace support {

// Cases that fall together in a chart.
struct Bin {
  double frequency = 0;
  double weight = 0;  // sum of the products of both weights
  double mean = 0;
  double moment = 0;  // sum of the weighted squares about the mean

  void Add(double f, double w, double x) {
    frequency += f;
    weight += w;
    const double d = x - mean;
    mean += d * (w / weight);
    moment += w * d * (x - mean);
  }
  void Merge(const Bin& right);
};

// A point of a chart, and the cases that it stands for.
struct Point {
  double x, y, frequency;
};

// The bins of a histogram of each continuous variable and the categories of each categorical one:
// the inputs and the target. Bins of equal width by the rule of Sturges (1926, The choice of a
// class interval).
class InputSummaries {
 public:
  // No variables.
  InputSummaries() = default;
  explicit InputSummaries(const ModelData& data);

  void Add(const CaseReader& taken);
  void Merge(const InputSummaries& right);
  template <class A>
  void Transfer(A& a) {
    a(fAxes);
  }

  // A histogram or a bar chart. The statistics of a histogram are "mean", "stdDeviation", and
  // "minimum", "maximum" and "bins", which tell where the bins are.
  NQXML_940::NQVariateData Chart(const ModelData& data, int position) const;
  NQXML_940::NQUniStats Statistics(const ModelData& data, int position) const;

  // Gives the continuous inputs of the list their means, deviations and sums of weights.
  void StoreIn(const ModelData& data, NQXML_940::NQVarList& variables) const;

 private:
  struct Axis {
    bool categorical = false;
    double min = 0;
    double width = 0;
    std::vector<Bin> bins;

    template <class A>
    void Transfer(A& a) {
      a(categorical);
      a(min);
      a(width);
      a(bins);
    }
  };

  Bin Whole(int position) const;

  std::vector<Axis> fAxes;  // by position
};

}  // namespace support
