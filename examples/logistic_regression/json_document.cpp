#include "json_document.h"

#include "support/json_text.h"

using support::JsonArrayText;
using support::JsonNumber;
using support::JsonObjectText;
using support::JsonString;
using support::ModelData;

namespace logistic {
namespace {

std::string Flag(bool flag) { return flag ? "true" : "false"; }

std::string CoefficientObject(const ModelData& data, const Coefficient& c) {
  support::JsonMembers members = support::JsonOfCoefficient(data, c);
  members.insert(members.end(), {{"z", JsonNumber(c.z)},
                                 {"sig", JsonNumber(c.sig)},
                                 {"oddsRatio", JsonNumber(c.oddsRatio)},
                                 {"lower", JsonNumber(c.lower)},
                                 {"upper", JsonNumber(c.upper)},
                                 {"redundant", Flag(c.redundant)}});
  return JsonObjectText(members);
}

std::string TestObject(const std::string& name, const Test& test) {
  return JsonObjectText({{"name", name},
                         {"df", JsonNumber(test.df)},
                         {"chiSquare", JsonNumber(test.chiSquare)},
                         {"sig", JsonNumber(test.sig)}});
}

}  // namespace

std::string JsonDocument(const ModelData& data, const LogisticFit& fit) {
  return support::JsonDocumentText(
      {{"n", JsonNumber(fit.n)},
       {"nDropped", JsonNumber(static_cast<double>(fit.rows.Dropped()))},
       {"event", JsonString(fit.event)},
       {"events", JsonNumber(fit.events)},
       {"deviance", JsonNumber(fit.deviance)},
       {"nullDeviance", JsonNumber(fit.nullDeviance)},
       {"dfModel", JsonNumber(fit.dfModel)},
       {"dfResidual", JsonNumber(fit.dfResidual)},
       {"aic", JsonNumber(fit.aic)},
       {"bic", JsonNumber(fit.bic)},
       {"mcFadden", JsonNumber(fit.mcFadden)},
       {"nagelkerke", JsonNumber(fit.nagelkerke)},
       {"iterations", std::to_string(fit.iterations)},
       {"converged", Flag(fit.converged)},
       {"separated", JsonArrayText(fit.separated, JsonString)},
       {"auc", JsonNumber(fit.auc)},
       {"aucBinning", JsonNumber(fit.aucBinning)},
       {"classification", JsonObjectText({{"cutoff", JsonNumber(fit.cutoff)},
                                          {"truePositive", JsonNumber(fit.table[1][1])},
                                          {"falseNegative", JsonNumber(fit.table[1][0])},
                                          {"falsePositive", JsonNumber(fit.table[0][1])},
                                          {"trueNegative", JsonNumber(fit.table[0][0])}})},
       {"model", TestObject("null", fit.model)},
       {"terms", JsonArrayText(fit.terms,
                               [&](const Test& test) {
                                 return TestObject(JsonString(data.NameOf(test.variable)), test);
                               })},
       {"coefficients", JsonArrayText(fit.coefficients, [&](const Coefficient& c) {
          return CoefficientObject(data, c);
        })}});
}

}  // namespace logistic
