#include "json_document.h"

#include <initializer_list>
#include <utility>
#include <vector>

#include "support/text.h"

using support::JsonNumber;
using support::JsonString;
using support::ModelData;

namespace regression {
namespace {

// Names and values that are JSON already.
using Members = std::vector<std::pair<const char*, std::string>>;

std::string Object(const Members& members) {
  std::string json = "{";
  for (const auto& [name, value] : members)
    json += (json.size() > 1 ? ", " : "") + JsonString(name) + ": " + value;
  return json + "}";
}

// An item a line.
template <class Items, class Item>
std::string Array(const Items& items, Item item) {
  std::string json = "[";
  for (const auto& x : items) json += (json.size() > 1 ? ",\n    " : "\n    ") + item(x);
  return json + (items.empty() ? "]" : "\n  ]");
}

std::string CoefficientObject(const ModelData& data, const Coefficient& c) {
  const auto codes = [&] { return data.CategoriesOf(c.variable); };
  return Object(
      {{"name", JsonString(c.name)},
       {"variable", c.variable < 0 ? "null" : JsonString(data.NameOf(c.variable))},
       {"category",
        c.category < 0 ? "null" : JsonString(codes()[static_cast<std::size_t>(c.category)])},
       {"estimate", JsonNumber(c.estimate)},
       {"stdError", JsonNumber(c.stdError)},
       {"t", JsonNumber(c.t)},
       {"sig", JsonNumber(c.sig)},
       {"lower", JsonNumber(c.lower)},
       {"upper", JsonNumber(c.upper)},
       {"standardized", JsonNumber(c.standardized)},
       {"redundant", c.redundant ? "true" : "false"}});
}

}  // namespace

std::string JsonDocument(const ModelData& data, const Regression& fit) {
  std::vector<int> factors;
  for (int i = 0; i < data.NInputs(); ++i) {
    if (data.IsCategorical(i)) factors.push_back(i);
  }
  const ResidualFigures& r = fit.residuals;
  const Members members = {
      {"n", JsonNumber(fit.n)},
      {"nDropped", JsonNumber(static_cast<double>(fit.rows.Dropped()))},
      {"rSquared", JsonNumber(fit.rSquared)},
      {"adjustedRSquared", JsonNumber(fit.adjustedRSquared)},
      {"residualStdDev", JsonNumber(fit.residualStdDev)},
      {"fStatistic", JsonNumber(fit.fStatistic)},
      {"fSig", JsonNumber(fit.fSig)},
      {"dfModel", JsonNumber(fit.dfModel)},
      {"dfResidual", JsonNumber(fit.dfResidual)},
      {"logLik", JsonNumber(fit.logLik)},
      {"aic", JsonNumber(fit.aic)},
      {"bic", JsonNumber(fit.bic)},
      {"durbinWatson", JsonNumber(fit.durbinWatson)},
      {"conditionNumber", JsonNumber(fit.conditionNumber)},
      {"residuals", Object({{"min", JsonNumber(r.min)},
                            {"q1", JsonNumber(r.q1)},
                            {"median", JsonNumber(r.median)},
                            {"q3", JsonNumber(r.q3)},
                            {"max", JsonNumber(r.max)}})},
      {"references", Array(factors,
                           [&](int i) {
                             const auto code = static_cast<std::size_t>(data.ReferenceOf(i));
                             return Object({{"name", JsonString(data.NameOf(i))},
                                            {"category", JsonString(data.CategoriesOf(i)[code])}});
                           })},
      {"coefficients",
       Array(fit.coefficients, [&](const Coefficient& c) { return CoefficientObject(data, c); })},
      {"terms", Array(fit.terms,
                      [&](const Term& term) {
                        return Object({{"name", JsonString(data.NameOf(term.variable))},
                                       {"df", JsonNumber(term.df)},
                                       {"f", JsonNumber(term.f)},
                                       {"sig", JsonNumber(term.sig)},
                                       {"vif", JsonNumber(term.vif)}});
                      })},
      {"influence", Array(fit.influence, [](const InfluentialCase& c) {
         return Object({{"row", std::to_string(c.row)},
                        {"leverage", JsonNumber(c.leverage)},
                        {"cooksDistance", JsonNumber(c.cooksDistance)},
                        {"residual", JsonNumber(c.residual)}});
       })}};
  std::string json = "{\n";
  for (const auto& [name, value] : members) {
    json += "  " + JsonString(name) + ": " + value;
    json += name == members.back().first ? "\n" : ",\n";
  }
  return json + "}\n";
}

}  // namespace regression
