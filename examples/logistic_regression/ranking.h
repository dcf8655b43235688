// Cases by their fitted probability.
#pragma once

#include <cstddef>
#include <map>
#include <vector>

namespace logistic {

// Cases of one fitted probability, or of those in a bin.
struct ProbabilityBin {
  double events = 0;
  double others = 0;
  double sum = 0;  // of the probabilities

  void Add(bool isEvent, double frequency, double p);
  void Merge(const ProbabilityBin& right);
};

// Cases by their fitted probability: each probability for itself while there are no more than
// kMostExact, and always in bins of equal width.
class Ranking {
 public:
  static constexpr std::size_t kMostExact = 4096;
  static constexpr int kBins = 8192;

  void Add(bool isEvent, double frequency, double p);
  void Merge(Ranking&& right);

  const std::vector<ProbabilityBin>& Bins() const { return fBins; }
  // The share of pairs of an event and another case in which the event has the larger probability;
  // pairs that cannot be told apart count one half, and `uncertain` is the half of the share of
  // those that only the bins make alike.
  double Area(double& uncertain) const;

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

  bool fIsExact = true;
  std::map<double, ProbabilityBin> fExact;
  std::vector<ProbabilityBin> fBins = std::vector<ProbabilityBin>(kBins);
};

}  // namespace logistic
