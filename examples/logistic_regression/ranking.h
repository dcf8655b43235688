// Cases by their fitted probability.
#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "support/input_summaries.h"

namespace logistic {

// 1 / (1 + exp(-logOdds)), without overflow.
double Probability(double logOdds);

// Cases of one fitted probability, or of those in a bin.
struct ProbabilityBin {
  double events = 0;
  double others = 0;
  double sum = 0;  // of the probabilities

  double Cases() const { return events + others; }
  double Mean() const { return sum / Cases(); }
  void Add(bool isEvent, double frequency, double p);
  void Merge(const ProbabilityBin& right);
};

// Cases of a probability and above, as shares of the other cases and of the events.
struct RocPoint {
  double falsePositives;
  double truePositives;
  double probability;  // the least of them, or the mean of their last bin
};

// Cases by their fitted probability: each probability for itself while there are no more than
// kMostExact, and always in bins of equal width of the log-odds, from -kReach to kReach.
class Ranking {
 public:
  static constexpr std::size_t kMostExact = 4096;
  static constexpr int kBins = 8192;
  static constexpr double kReach = 16;

  void Add(bool isEvent, double frequency, double logOdds);
  void Merge(Ranking&& right);

  // The share of pairs of an event and another case in which the event has the larger probability;
  // pairs that cannot be told apart count one half, and `uncertain` is the half of the share of
  // those that only the bins make alike.
  double Area(double& uncertain) const;
  // The ROC curve from no case to all cases. A point that is nearer to the one before it than
  // 1/128, along both axes together, is left out.
  std::vector<RocPoint> Curve() const;
  // Mean probability and share of events of groups of cases in the order of their probability, each
  // of a twentieth of the cases and ten of them at least. Means and shares are exact; equal
  // probabilities, and those in a bin when they are not exact, are not parted.
  std::vector<support::Point> Calibration() const;

  template <class A>
  void Transfer(A& a) {
    std::vector<double> places;
    std::vector<ProbabilityBin> bins;
    for (const auto& [p, bin] : fExact) {
      places.push_back(p);
      bins.push_back(bin);
    }
    a(fIsExact);
    a(places);
    a(bins);
    a(fBins);
    for (std::size_t i = 0; i < places.size(); ++i) fExact[places[i]] = bins[i];
  }

 private:
  void DropExact();
  std::vector<ProbabilityBin> Cells() const;  // with cases, from the least probability up

  bool fIsExact = true;
  std::map<double, ProbabilityBin> fExact;
  std::vector<ProbabilityBin> fBins = std::vector<ProbabilityBin>(kBins);
};

}  // namespace logistic
