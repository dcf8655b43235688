#include "logistic.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <new>
#include <numeric>
#include <stdexcept>
#include <utility>

#include <nqcommon/math/matrix/NQBitSet.h>
#include <nqcommon/math/matrix/NQRectMatrix.h>
#include <nqcommon/math/numeric/NQDistFun.h>
#include <nqcommon/math/stats/NQMeansXProducts.h>

#include "support/products.h"

using NQMath_940::NQBitSet;
using NQMath_940::NQDistFun;
using NQMath_940::NQMeansXProducts;
using NQMath_940::NQRectMatrix;
using NQMath_940::NQSymMatrix;
using support::CaseReader;
using support::Chunk;
using support::Column;
using support::ModelData;

namespace logistic {
namespace {

constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kTolerance = 1e-8;
constexpr double kStillMoving = 0.01;
constexpr double kMostHalvings = 60;
constexpr int kBlockRows = 256;

// ---- One model among those that are fitted together ---------------------------------------------

// The columns it has, where it stands, and where it came from.
struct State {
  std::vector<int> columns;  // of the design; after the first step those that are not redundant
  std::vector<double> b;     // scaled
  double constant = 0;
  std::vector<double> step;
  double stepOfConstant = 0;
  double deviance = kInfinity;  // at the place before the step
  int iterations = 0;
  int halvings = 0;
  bool isStarted = false;
  bool isDone = false;
  bool converged = false;
  std::vector<double> movement;  // by column: how far the last step moved a linear predictor
  NQSymMatrix inverse;           // of the weighted cross-products
  std::vector<double> means;
  double sumWeights = 0;

  double Predict(const double* row) const {
    double eta = constant;
    for (std::size_t k = 0; k < b.size(); ++k) eta += b[k] * row[columns[k]];
    return eta;
  }
};

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

// ---- The fitted cases ---------------------------------------------------------------------------

struct FittedPart {
  static constexpr bool kIsOfOneLength = false;

  Ranking ranking;
  double table[2][2] = {};
  support::InputSummaries summaries;

  template <class A>
  void Transfer(A& a) {
    a(ranking);
    a(table);
    a(summaries);
  }
  void Merge(FittedPart&& right) {
    ranking.Merge(std::move(right.ranking));
    for (int i : {0, 1}) {
      for (int j : {0, 1}) table[i][j] += right.table[i][j];
    }
    summaries.Merge(right.summaries);
  }
};

FittedPart ReadFitted(const ModelData& data, int event, const LogisticFit& fit,
                      const FitOptions& options, Chunk& chunk) {
  FittedPart part;
  if (options.summaries) part.summaries = support::InputSummaries(data);
  CaseReader taken(data);
  taken.Start(chunk);
  while (taken.Next()) {
    const double p = Probability(fit.LinearPredictor(taken.Values()));
    const bool isEvent = taken.Values()[data.TargetPosition()] == event;
    part.ranking.Add(isEvent, taken.Frequency(), p);
    part.table[isEvent][p > options.cutoff] += taken.Frequency();
    if (options.summaries) part.summaries.Add(taken);
  }
  return part;
}

// ---- The figures --------------------------------------------------------------------------------

double SignificanceOfChi(double chiSquare, double df) {
  return df > 0 ? NQDistFun::SigChi(std::max(chiSquare, 0.0), df) : kUndefined;
}

// Twice the log-likelihood of a share, with its sign turned.
double DevianceOfShare(double events, double n) {
  const double others = n - events;
  return -2 * (events * std::log(events / n) + others * std::log(others / n));
}

std::string NameOf(const ModelData& data, const Column& column) {
  std::string name = data.NameOf(column.variable);
  if (column.category >= 0)
    name += "=" + data.CategoriesOf(column.variable)[static_cast<std::size_t>(column.category)];
  return name;
}

Coefficient Described(Coefficient c, double estimate, double variance) {
  static const double kWidth = NQDistFun::IdfNorm(0.975, 0, 1);
  c.estimate = estimate;
  c.stdError = std::sqrt(variance);
  c.z = estimate / c.stdError;
  c.sig = 2 * NQDistFun::CdfNorm(-std::fabs(c.z), 0, 1);
  c.oddsRatio = std::exp(estimate);
  c.lower = std::exp(estimate - kWidth * c.stdError);
  c.upper = std::exp(estimate + kWidth * c.stdError);
  return c;
}

Coefficient Redundant(Coefficient c) {
  c.redundant = true;
  c.stdError = c.z = c.sig = c.oddsRatio = c.lower = c.upper = kUndefined;
  return c;
}

void SetPredictor(LogisticFit& fit, const State& state, const std::vector<Column>& columns) {
  for (const int column : state.columns)
    fit.columns.push_back(columns[static_cast<std::size_t>(column)]);
  fit.b = state.b;
  fit.constant = state.constant;
  fit.centre = state.means;
  fit.varianceAtCentre = 1 / state.sumWeights;
  fit.covariance = state.inverse;
}

// At the zero of all inputs, which the scaled columns have at minus their origins.
Coefficient Intercept(const LogisticFit& fit) {
  Coefficient intercept;
  intercept.name = "(Intercept)";
  double estimate = fit.constant;
  std::vector<double> distances;
  for (std::size_t k = 0; k < fit.b.size(); ++k) {
    estimate -= fit.b[k] * fit.columns[k].origin;
    distances.push_back(fit.centre[k] + fit.columns[k].origin);
  }
  return Described(intercept, estimate, fit.Variance(distances));
}

void Describe(LogisticFit& fit, const ModelData& data, const std::vector<Column>& columns,
              const State& state) {
  fit.coefficients.push_back(Intercept(fit));
  std::size_t k = 0;
  for (int j = 0; j < static_cast<int>(columns.size()); ++j) {
    Coefficient c;
    const Column& column = columns[static_cast<std::size_t>(j)];
    c.name = NameOf(data, column);
    c.variable = column.variable;
    c.category = column.category;
    if (k < state.columns.size() && state.columns[k] == j) {
      const int place = static_cast<int>(k);
      fit.coefficients.push_back(
          Described(c, fit.b[k] * column.scale,
                    fit.covariance.GetElem(place, place) * column.scale * column.scale));
      ++k;
    } else {
      fit.coefficients.push_back(Redundant(c));
    }
  }
  if (state.converged) return;
  for (k = 0; k < state.columns.size(); ++k) {
    const std::string& name =
        data.NameOf(columns[static_cast<std::size_t>(state.columns[k])].variable);
    const bool isNew = fit.separated.empty() || fit.separated.back() != name;
    if (state.movement[k] > kStillMoving && isNew) fit.separated.push_back(name);
  }
}

void TestTerms(LogisticFit& fit, const ModelData& data, const std::vector<State>& states) {
  const double n = fit.n;
  fit.deviance = states[0].deviance;
  fit.nullDeviance = DevianceOfShare(fit.events, n);
  fit.dfModel = static_cast<double>(fit.b.size());
  fit.dfResidual = n - 1 - fit.dfModel;
  fit.aic = fit.deviance + 2 * (fit.dfModel + 1);
  fit.bic = fit.deviance + std::log(n) * (fit.dfModel + 1);
  fit.mcFadden = 1 - fit.deviance / fit.nullDeviance;
  fit.nagelkerke =
      std::expm1((fit.deviance - fit.nullDeviance) / n) / std::expm1(-fit.nullDeviance / n);
  const auto test = [&](int variable, double deviance, double df) {
    const double chiSquare = deviance - fit.deviance;
    return Test{variable, df, df > 0 ? chiSquare : kUndefined, SignificanceOfChi(chiSquare, df)};
  };
  fit.model = test(-1, fit.nullDeviance, fit.dfModel);
  for (int i = 0; i < data.NInputs(); ++i) {
    const State& without = states[static_cast<std::size_t>(i) + 1];
    fit.terms.push_back(
        test(i, without.deviance, fit.dfModel - static_cast<double>(without.b.size())));
  }
}

}  // namespace

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

double Probability(double eta) {
  return eta >= 0 ? 1 / (1 + std::exp(-eta)) : std::exp(eta) / (1 + std::exp(eta));
}

double LogisticFit::LinearPredictor(const double* values) const {
  double eta = constant;
  for (std::size_t k = 0; k < columns.size(); ++k)
    eta += b[k] * support::Scaled(columns[k], values);
  return eta;
}

double LogisticFit::Variance(const std::vector<double>& distances) const {
  return varianceAtCentre + (distances.empty() ? 0 : covariance.ComputeVSV(distances));
}

double LogisticFit::StdError(const double* values) const {
  std::vector<double> distances;
  for (std::size_t k = 0; k < columns.size(); ++k)
    distances.push_back(support::Scaled(columns[k], values) - centre[k]);
  return std::sqrt(Variance(distances));
}

int EventCode(const ModelData& data, const std::string& text) {
  const int target = data.TargetPosition();
  const std::vector<std::string>& categories = data.CategoriesOf(target);
  const std::string name = "the target " + data.NameOf(target);
  if (categories.size() != 2) {
    throw std::runtime_error(name + " has " + std::to_string(categories.size()) +
                             (categories.size() == 1 ? " category" : " categories") +
                             " in the cases used; there must be two");
  }
  if (text.empty()) return categories[0] < categories[1] ? 1 : 0;
  const int code = data.CodeOf(target, text);
  if (code < 0) throw std::runtime_error(name + " has no category " + text);
  return code;
}

LogisticFit Fit(const ModelData& data, int event, const FitOptions& options, support::Team& team) {
  LogisticFit fit;
  const int target = data.TargetPosition();
  fit.target = data.NameOf(target);
  fit.event = data.CategoriesOf(target)[static_cast<std::size_t>(event)];
  fit.other = data.CategoriesOf(target)[static_cast<std::size_t>(1 - event)];
  fit.rows = data.Counts();
  fit.n = fit.rows.sumFrequency;
  fit.cutoff = options.cutoff;
  std::vector<Column> columns = support::DesignColumns(data, true);
  columns.pop_back();  // the target's
  if (fit.n < static_cast<double>(columns.size() + 1)) {
    throw std::runtime_error("too few cases: " + std::to_string(fit.rows.used) + " for " +
                             std::to_string(columns.size() + 1) + " coefficients");
  }

  // The model, and those without each input.
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

  const State& whole = states[0];
  fit.iterations = whole.iterations;
  fit.converged = whole.converged;
  SetPredictor(fit, whole, columns);
  Describe(fit, data, columns, whole);
  FittedPart fitted = team.Gather<FittedPart>(
      data.File(), [&](Chunk& chunk) { return ReadFitted(data, event, fit, options, chunk); });
  fit.ranking = std::move(fitted.ranking);
  fit.summaries = std::move(fitted.summaries);
  std::copy(&fitted.table[0][0], &fitted.table[0][0] + 4, &fit.table[0][0]);
  fit.events = fit.table[1][0] + fit.table[1][1];
  fit.auc = fit.ranking.Area(fit.aucBinning);
  TestTerms(fit, data, states);
  return fit;
}

}  // namespace logistic
