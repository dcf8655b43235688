#include "json_document.h"

#include "support/json_text.h"

using support::JsonArrayText;
using support::JsonMembers;
using support::JsonNumber;
using support::JsonObjectText;
using support::JsonString;
using support::ModelData;

namespace regression {
namespace {

std::string CoefficientObject(const ModelData& data, const Coefficient& c) {
  JsonMembers members = support::JsonOfCoefficient(data, c);
  members.insert(members.end(), {{"t", JsonNumber(c.t)},
                                 {"sig", JsonNumber(c.sig)},
                                 {"lower", JsonNumber(c.lower)},
                                 {"upper", JsonNumber(c.upper)},
                                 {"standardized", JsonNumber(c.standardized)},
                                 {"redundant", c.redundant ? "true" : "false"}});
  return JsonObjectText(members);
}

}  // namespace

std::string JsonDocument(const ModelData& data, const Regression& fit) {
  std::vector<int> factors;
  for (int i = 0; i < data.NInputs(); ++i) {
    if (data.IsCategorical(i)) factors.push_back(i);
  }
  const ResidualFigures& r = fit.residuals;
  const JsonMembers members = {
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
      {"residuals", JsonObjectText({{"min", JsonNumber(r.min)},
                                    {"q1", JsonNumber(r.q1)},
                                    {"median", JsonNumber(r.median)},
                                    {"q3", JsonNumber(r.q3)},
                                    {"max", JsonNumber(r.max)}})},
      {"references", JsonArrayText(factors,
                                   [&](int i) {
                                     const auto code =
                                         static_cast<std::size_t>(data.ReferenceOf(i));
                                     return JsonObjectText(
                                         {{"name", JsonString(data.NameOf(i))},
                                          {"category", JsonString(data.CategoriesOf(i)[code])}});
                                   })},
      {"coefficients",
       JsonArrayText(fit.coefficients,
                     [&](const Coefficient& c) { return CoefficientObject(data, c); })},
      {"terms", JsonArrayText(fit.terms,
                              [&](const Term& term) {
                                return JsonObjectText(
                                    {{"name", JsonString(data.NameOf(term.variable))},
                                     {"df", JsonNumber(term.df)},
                                     {"f", JsonNumber(term.f)},
                                     {"sig", JsonNumber(term.sig)},
                                     {"vif", JsonNumber(term.vif)}});
                              })},
      {"influence", JsonArrayText(fit.influence, [](const InfluentialCase& c) {
         return JsonObjectText({{"row", std::to_string(c.row)},
                                {"leverage", JsonNumber(c.leverage)},
                                {"cooksDistance", JsonNumber(c.cooksDistance)},
                                {"residual", JsonNumber(c.residual)}});
       })}};
  return support::JsonDocumentText(members);
}

}  // namespace regression
