#include "ranking.h"

#include <algorithm>

namespace logistic {

void ProbabilityBin::Add(bool isEvent, double frequency, double p) {
  (isEvent ? events : others) += frequency;
  sum += frequency * p;
}

void ProbabilityBin::Merge(const ProbabilityBin& right) {
  events += right.events;
  others += right.others;
  sum += right.sum;
}

void Ranking::Add(bool isEvent, double frequency, double p) {
  const int place = std::min(static_cast<int>(p * kBins), kBins - 1);
  fBins[static_cast<std::size_t>(place)].Add(isEvent, frequency, p);
  if (!fIsExact) return;
  fExact[p].Add(isEvent, frequency, p);
  DropExact();
}

void Ranking::Merge(Ranking&& right) {
  for (std::size_t i = 0; i < fBins.size(); ++i) fBins[i].Merge(right.fBins[i]);
  fIsExact = fIsExact && right.fIsExact;
  for (const auto& [p, bin] : right.fExact) fExact[p].Merge(bin);
  DropExact();
}

void Ranking::DropExact() {
  fIsExact = fIsExact && fExact.size() <= kMostExact;
  if (!fIsExact) fExact.clear();
}

double Ranking::Area(double& uncertain) const {
  double events = 0, others = 0, larger = 0, alike = 0;
  const auto add = [&](const ProbabilityBin& bin) {
    larger += bin.events * others;
    alike += bin.events * bin.others;
    events += bin.events;
    others += bin.others;
  };
  if (fIsExact) {
    for (const auto& [p, bin] : fExact) add(bin);
  } else {
    for (const ProbabilityBin& bin : fBins) add(bin);
  }
  const double pairs = events * others;
  uncertain = fIsExact ? 0 : alike / 2 / pairs;
  return (larger + alike / 2) / pairs;
}

}  // namespace logistic
