#include "logistic.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

#include <nqcommon/math/numeric/NQDistFun.h>

#include "iteration.h"

using NQCommon_940::NQStatus;
using NQCommon_940::NQWarnings;
using NQMath_940::NQDistFun;
using support::CaseReader;
using support::Chunk;
using support::Column;
using support::ModelData;

namespace logistic {
namespace {

constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();

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
    const double logOdds = fit.LinearPredictor(taken.Values());
    const bool isEvent = taken.Values()[data.TargetPosition()] == event;
    part.ranking.Add(isEvent, taken.Frequency(), logOdds);
    part.table[isEvent][Probability(logOdds) > options.cutoff] += taken.Frequency();
    if (options.summaries) part.summaries.Add(taken);
  }
  return part;
}

// ---- The figures --------------------------------------------------------------------------------

double SignificanceOfChi(double chiSquare, double df) {
  return df > 0 ? NQDistFun::SigChi(chiSquare, df) : kUndefined;
}

// Twice the log-likelihood of a share, with its sign turned.
double DevianceOfShare(double events, double n) {
  const double others = n - events;
  return -2 * (events * std::log(events / n) + others * std::log(others / n));
}

Coefficient Described(Coefficient c, double estimate, double variance) {
  static const double kWidth = NQDistFun::IdfNorm(0.975, 0, 1);
  c.estimate = estimate + 0.0;  // no -0
  c.stdError = std::sqrt(variance);
  c.z = estimate / c.stdError;
  c.sig = 2 * NQDistFun::CdfNorm(-std::fabs(c.z), 0, 1);
  c.oddsRatio = std::exp(estimate);
  c.margin = kWidth * c.stdError;
  c.lower = std::exp(estimate - c.margin);
  c.upper = std::exp(estimate + c.margin);
  return c;
}

Coefficient Redundant(Coefficient c) {
  c.redundant = true;
  c.stdError = c.z = c.sig = c.margin = c.oddsRatio = c.lower = c.upper = kUndefined;
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

// Where the columns have their weighted means, origins included.
std::vector<double> CentreOf(const LogisticFit& fit) {
  std::vector<double> centre = fit.centre;
  for (std::size_t k = 0; k < centre.size(); ++k) centre[k] += fit.columns[k].origin;
  return centre;
}

// At the zero of all inputs, which the scaled columns have at minus their origins.
Coefficient Intercept(const LogisticFit& fit) {
  Coefficient intercept;
  intercept.name = support::kInterceptName;
  double estimate = fit.constant;
  for (std::size_t k = 0; k < fit.b.size(); ++k) estimate -= fit.b[k] * fit.columns[k].origin;
  return Described(intercept, estimate, fit.Variance(CentreOf(fit)));
}

void Describe(LogisticFit& fit, const ModelData& data, const std::vector<Column>& columns,
              const State& state) {
  const std::vector<std::string> names = support::CoefficientNames(data, columns, true);
  fit.coefficients.push_back(Intercept(fit));
  std::size_t k = 0;
  for (int j = 0; j < static_cast<int>(columns.size()); ++j) {
    Coefficient c;
    const Column& column = columns[static_cast<std::size_t>(j)];
    c.name = names[static_cast<std::size_t>(j)];
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
  fit.covariances = support::Covariances(fit.covariance, 1, fit.columns, 0, CentreOf(fit),
                                         fit.coefficients.front().stdError);
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
  fit.nullDeviance = DevianceOfShare(fit.events, n);
  fit.deviance = fit.b.empty() ? fit.nullDeviance : states[0].deviance;
  fit.dfModel = static_cast<double>(fit.b.size());
  fit.dfResidual = n - 1 - fit.dfModel;
  fit.aic = fit.deviance + 2 * (fit.dfModel + 1);
  fit.bic = fit.deviance + std::log(n) * (fit.dfModel + 1);
  fit.mcFadden = 1 - fit.deviance / fit.nullDeviance;
  fit.nagelkerke =
      std::expm1((fit.deviance - fit.nullDeviance) / n) / std::expm1(-fit.nullDeviance / n) + 0.0;
  const auto test = [&](int variable, double deviance, double df) {
    const double chiSquare = std::max(deviance - fit.deviance, 0.0);
    return Test{variable, df, df > 0 ? chiSquare : kUndefined, SignificanceOfChi(chiSquare, df)};
  };
  fit.model = test(-1, fit.nullDeviance, fit.dfModel);
  for (int i = 0; i < data.NInputs(); ++i) {
    const State& without = states[static_cast<std::size_t>(i) + 1];
    fit.terms.push_back(
        test(i, without.deviance, fit.dfModel - static_cast<double>(without.b.size())));
  }
}

void Warn(LogisticFit& fit) {
  const auto warn = [&](NQStatus status, const std::vector<std::string>& names) {
    fit.warnings.AddWarning(status, NQWarnings::ToBoth);
    for (const std::string& name : names) fit.warnings.AddParameter(status, name);
  };
  NQStatus notConverged(kNotConverged, true);
  notConverged.SetDiscreteDatum(0, fit.iterations);
  std::vector<std::string> redundant;
  for (const Coefficient& c : fit.coefficients) {
    if (c.redundant) redundant.push_back(c.name);
  }
  if (!fit.separated.empty()) {
    warn(NQStatus(kSeparated, true), fit.separated);
  } else if (!fit.converged) {
    warn(notConverged, {});
  }
  if (!redundant.empty()) warn(NQStatus(kRedundant, true), redundant);
}

}  // namespace

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

  const std::vector<State> states = Iterate(data, columns, event, options, team);
  const State& whole = states[0];
  fit.iterations = whole.iterations;
  fit.converged = whole.converged;
  SetPredictor(fit, whole, columns);
  Describe(fit, data, columns, whole);
  Warn(fit);
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
