#include "iteration.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <new>
#include <numeric>
#include <stdexcept>
#include <utility>

#include <nqcommon/math/matrix/NQBitSet.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>

#include "support/products.h"

using NQMath_940::NQBitSet;
using NQMath_940::NQMeansXProducts;
using NQMath_940::NQRectMatrix;
using NQMath_940::NQSymMatrix;
using support::CaseReader;
using support::Chunk;
using support::Column;
using support::kBlockRows;
using support::ModelData;

namespace logistic {
namespace {

constexpr double kTolerance = 1e-8;
constexpr double kMostHalvings = 60;

// ---- A reading ----------------------------------------------------------------------------------

// What a pass over cases gives for one model.
struct Sums {
  NQMeansXProducts products;  // of its columns and the working response
  double deviance = 0;

  template <class A>
  void Transfer(A& a) {
    support::TransferProducts(a, products);
    a(deviance);
  }
};

struct StepPart {
  static constexpr bool kIsOfOneLength = true;

  std::vector<Sums> models;

  template <class A>
  void Transfer(A& a) {
    a(models);
  }

  void Merge(StepPart&& right) {
    for (std::size_t i = 0; i < models.size(); ++i) {
      models[i].deviance += right.models[i].deviance;
      if (!models[i].products.Merge(right.models[i].products))
        throw std::runtime_error("the weights are too large");
    }
  }
};

struct Working {
  double response;
  double weight;
  double deviance;
};

Working WorkingCase(bool isEvent, double eta, double frequency) {
  constexpr double kFarOut = 100;  // beyond it a case says no more than that it is on its side
  eta = std::clamp(eta, -kFarOut, kFarOut);
  const double p = Probability(eta), q = Probability(-eta);
  return {isEvent ? 1 / p : -1 / q, frequency * p * q,
          2 * frequency * std::log1p(std::exp(isEvent ? -eta : eta))};
}

// The first working case, whose response is the linear predictor itself.
Working FirstCase(bool isEvent, double frequency) {
  const double p = ((isEvent ? frequency : 0) + 0.5) / (frequency + 1), q = 1 - p;
  return {std::log(p / q) + (isEvent ? 1 / p : -1 / q), frequency * p * q, 0};
}

// Blocks of cases of one model, on their way into its products.
class Collector {
 public:
  Collector(const State& state, Sums& sums)
      : fState(state), fSums(sums), fN(static_cast<int>(state.columns.size())) {
    fSums.products = NQMeansXProducts(fN + 1, true, false, true);
    fBlock = NQRectMatrix(kBlockRows, fN + 2, true);
    if (!fBlock.IsValidMatrix() || fSums.products.GetNVars() != fN + 1) throw std::bad_alloc();
  }

  void Add(const double* row, bool isEvent, double frequency) {
    const Working working = fState.isStarted ? WorkingCase(isEvent, fState.Predict(row), frequency)
                                             : FirstCase(isEvent, frequency);
    double* to = fBlock.GetRowPtr(fFilled);
    for (int k = 0; k < fN; ++k) to[k] = row[fState.columns[static_cast<std::size_t>(k)]];
    to[fN] = working.response;
    to[fN + 1] = working.weight;
    fSums.deviance += working.deviance;
    if (++fFilled == kBlockRows) Flush();
  }

  void Flush() {
    if (fFilled > 0 && !fSums.products.Update(fBlock, fFilled))
      throw std::runtime_error("the weights are too large");
    fFilled = 0;
  }

 private:
  const State& fState;
  Sums& fSums;
  int fN;
  int fFilled = 0;
  NQRectMatrix fBlock;
};

StepPart ReadStep(const ModelData& data, const std::vector<Column>& columns, int event,
                  const std::vector<State>& states, Chunk& chunk) {
  StepPart part;
  part.models.resize(states.size());
  std::vector<Collector> collectors;
  collectors.reserve(states.size());
  for (std::size_t i = 0; i < states.size(); ++i) {
    if (!states[i].isDone) collectors.emplace_back(states[i], part.models[i]);
  }
  CaseReader taken(data);
  taken.Start(chunk);
  std::vector<double> row(columns.size());
  while (taken.Next()) {
    support::FillRow(columns, taken.Values(), row.data());
    const bool isEvent = taken.Values()[data.TargetPosition()] == event;
    for (Collector& collector : collectors) collector.Add(row.data(), isEvent, taken.Frequency());
  }
  for (Collector& collector : collectors) collector.Flush();
  return part;
}

// ---- A step -------------------------------------------------------------------------------------

// Takes the swept columns' step, and drops those that are redundant at the first.
void TakeStep(State& state, const NQMeansXProducts& products, const std::vector<double>& ranges) {
  NQSymMatrix s = products.GetXProds();
  const int n = s.GetNRows() - 1;
  std::vector<int> all(static_cast<std::size_t>(n));
  std::iota(all.begin(), all.end(), 0);
  NQBitSet isIn;
  // Later weights may make a column that is not redundant look so: it then stays where it is.
  const double eps = state.isStarted ? 0 : NQMath_940::defaultepse;
  s.SweepOnSelected(all, eps, isIn, false);
  if (isIn.Size() < n) throw std::bad_alloc();

  std::vector<int> kept;
  for (const int k : all) {
    if (state.isStarted || isIn.IsIn(k)) kept.push_back(k);
  }
  std::vector<int> columns;
  state.step.clear();
  state.movement.clear();
  state.means.clear();
  state.stepOfConstant = products.GetMeans().back();
  double largest = 1;
  for (const int k : kept) {
    const auto place = static_cast<std::size_t>(k);
    const int column = state.columns[place];
    const double step = isIn.IsIn(k) ? s.GetElem(n, k) : 0;
    columns.push_back(column);
    state.step.push_back(step);
    state.means.push_back(products.GetMeans()[place]);
    state.stepOfConstant -= step * state.means.back();
    const double range = ranges[static_cast<std::size_t>(column)];
    state.movement.push_back(std::fabs(step) * range);
    if (state.isStarted) largest = std::max(largest, std::fabs(state.b[place]) * range);
  }
  for (double& movement : state.movement) movement /= largest;
  if (!s.ExtractSubmatrix(kept, state.inverse)) throw std::bad_alloc();
  state.inverse.ChangeSign();
  state.sumWeights = products.GetNCases();
  state.columns = std::move(columns);
  if (!state.isStarted) state.b.assign(state.columns.size(), 0);
  for (std::size_t k = 0; k < state.b.size(); ++k) state.b[k] += state.step[k];
  state.constant += state.stepOfConstant;
}

void Halve(State& state) {
  ++state.halvings;
  state.stepOfConstant /= 2;
  state.constant -= state.stepOfConstant;
  for (std::size_t k = 0; k < state.b.size(); ++k) {
    state.step[k] /= 2;
    state.b[k] -= state.step[k];
  }
}

double LargestMovement(const State& state) {
  return state.movement.empty() ? 0
                                : *std::max_element(state.movement.begin(), state.movement.end());
}

// What a pass means to a model.
void Advance(State& state, const Sums& sums, const std::vector<double>& ranges, int maxIterations) {
  if (!state.isStarted) {
    TakeStep(state, sums.products, ranges);
    state.isStarted = true;
    return;
  }
  ++state.iterations;
  const double change = sums.deviance - state.deviance;
  const double unit = kTolerance * (std::fabs(sums.deviance) + 0.1);
  const bool isWorse = !(change < unit) && state.iterations > 1;
  if (isWorse && state.halvings < kMostHalvings && state.iterations < maxIterations) {
    Halve(state);
    return;
  }
  state.deviance = sums.deviance;
  TakeStep(state, sums.products, ranges);
  const bool hasSettled = state.iterations > 1 && std::fabs(change) < unit;
  state.converged = hasSettled && LargestMovement(state) <= kTolerance;
  const bool isSeparated = hasSettled && LargestMovement(state) > kStillMoving;
  state.isDone = state.converged || isSeparated || state.iterations >= maxIterations;
}

void Tell(const State& state, const FitOptions& options,
          std::chrono::steady_clock::time_point start) {
  if (!options.report || state.iterations == 0) return;
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  NQMath_940::NQIterationReporter reporter;
  reporter.SetInfo(&state.b, state.iterations, state.halvings, state.deviance, seconds.count());
  options.report(reporter);
}

// Largest differences between the values of a column.
std::vector<double> RangesOf(const ModelData& data, const std::vector<Column>& columns) {
  std::vector<double> ranges;
  for (const Column& column : columns) {
    const support::Range& range = data.RangeOf(column.variable);
    ranges.push_back(column.category >= 0 ? 1 : (range.max - range.min) * column.scale);
  }
  return ranges;
}

}  // namespace

std::vector<State> Iterate(const ModelData& data, const std::vector<Column>& columns, int event,
                           const FitOptions& options, support::Team& team) {
  std::vector<State> states(static_cast<std::size_t>(data.NInputs()) + 1);
  for (int i = 0; i <= data.NInputs(); ++i) {
    for (int j = 0; j < static_cast<int>(columns.size()); ++j) {
      if (columns[static_cast<std::size_t>(j)].variable != i - 1)
        states[static_cast<std::size_t>(i)].columns.push_back(j);
    }
  }
  const std::vector<double> ranges = RangesOf(data, columns);
  const auto start = std::chrono::steady_clock::now();
  const auto isDone = [](const State& state) { return state.isDone; };
  while (!std::all_of(states.begin(), states.end(), isDone)) {
    const StepPart part = team.Gather<StepPart>(
        data.File(), [&](Chunk& chunk) { return ReadStep(data, columns, event, states, chunk); });
    for (std::size_t i = 0; i < states.size(); ++i) {
      if (!states[i].isDone) Advance(states[i], part.models[i], ranges, options.maxIterations);
    }
    Tell(states[0], options, start);
  }
  return states;
}

}  // namespace logistic
