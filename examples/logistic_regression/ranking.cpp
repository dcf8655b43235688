#include "ranking.h"

#include <algorithm>
#include <cmath>
#include <iterator>

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

double Probability(double logOdds) {
  return logOdds >= 0 ? 1 / (1 + std::exp(-logOdds)) : std::exp(logOdds) / (1 + std::exp(logOdds));
}

void Ranking::Add(bool isEvent, double frequency, double logOdds) {
  const double p = Probability(logOdds);
  const double place = (logOdds + kReach) / (2 * kReach) * kBins;
  const double bin = place > 0 ? std::min(place, kBins - 1.0) : 0;
  fBins[static_cast<std::size_t>(bin)].Add(isEvent, frequency, p);
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

std::vector<ProbabilityBin> Ranking::Cells() const {
  std::vector<ProbabilityBin> cells;
  if (fIsExact) {
    for (const auto& [p, bin] : fExact) cells.push_back(bin);
  } else {
    std::copy_if(fBins.begin(), fBins.end(), std::back_inserter(cells),
                 [](const ProbabilityBin& bin) { return bin.Cases() > 0; });
  }
  return cells;
}

double Ranking::Area(double& uncertain) const {
  double events = 0, others = 0, larger = 0, alike = 0;
  for (const ProbabilityBin& cell : Cells()) {
    larger += cell.events * others;
    alike += cell.events * cell.others;
    events += cell.events;
    others += cell.others;
  }
  const double pairs = events * others;
  uncertain = fIsExact ? 0 : alike / 2 / pairs;
  return (larger + alike / 2) / pairs;
}

std::vector<RocPoint> Ranking::Curve() const {
  constexpr double kLeastStep = 1.0 / 128;
  const std::vector<ProbabilityBin> cells = Cells();
  ProbabilityBin all, taken;
  for (const ProbabilityBin& cell : cells) all.Merge(cell);
  std::vector<RocPoint> curve = {{0, 0, 1}};
  for (auto cell = cells.rbegin(); cell != cells.rend(); ++cell) {
    taken.Merge(*cell);
    const bool isLast = cell + 1 == cells.rend();
    const RocPoint point = {isLast ? 1 : taken.others / all.others,
                            isLast ? 1 : taken.events / all.events, cell->Mean()};
    const double step = point.falsePositives - curve.back().falsePositives + point.truePositives -
                        curve.back().truePositives;
    if (isLast || step >= kLeastStep) curve.push_back(point);
  }
  return curve;
}

std::vector<support::Point> Ranking::Calibration() const {
  constexpr double kMostGroups = 20, kLeastCases = 10;
  const std::vector<ProbabilityBin> cells = Cells();
  double left = 0;
  for (const ProbabilityBin& cell : cells) left += cell.Cases();
  const double least = std::max(left / kMostGroups, kLeastCases);
  std::vector<support::Point> groups;
  ProbabilityBin group;
  for (const ProbabilityBin& cell : cells) {
    group.Merge(cell);
    left -= cell.Cases();
    const bool isLast = &cell == &cells.back();
    if (!isLast && (group.Cases() < least || left < least)) continue;
    groups.push_back({group.Mean(), group.events / group.Cases(), group.Cases()});
    group = {};
  }
  return groups;
}

}  // namespace logistic
