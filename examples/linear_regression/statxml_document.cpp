#include "statxml_document.h"

#include <utility>
#include <vector>

#include <nqcommon/output/NQStatXMLTags.h>
#include <nqcommon/output/NQStatXMLUtil.h>

#include "support/statxml_parts.h"

using namespace NQStatXMLTags;
using support::AddFigures;
using support::Append;
using support::FiniteOrMissing;
using support::ModelData;
using support::NewElement;
using support::Owned;
using support::Tree;
using Build = NQXML_940::NQStatXMLUtil;

namespace regression {
namespace {

Tree Summary(const ModelData& data, const Regression& fit) {
  return support::StatXmlSummary(data, fit.intercept,
                                 {{"rSquared", fit.rSquared},
                                  {"adjustedRSquared", fit.adjustedRSquared},
                                  {"residualStdDev", fit.residualStdDev},
                                  {"dfModel", fit.dfModel},
                                  {"dfResidual", fit.dfResidual},
                                  {"logLik", fit.logLik},
                                  {"aic", fit.aic},
                                  {"bic", fit.bic},
                                  {"durbinWatson", fit.durbinWatson},
                                  {"conditionNumber", fit.conditionNumber},
                                  {"residualMin", fit.residuals.min},
                                  {"residualQ1", fit.residuals.q1},
                                  {"residualMedian", fit.residuals.median},
                                  {"residualQ3", fit.residuals.q3},
                                  {"residualMax", fit.residuals.max}});
}

Tree FTest(double f, double df1, double df2, double sig) {
  Tree test = NewElement(XML_ELE_FTEST);
  AddFigures(test,
             {{XML_ATT_FSTATISTIC, f}, {XML_ATT_DF1, df1}, {XML_ATT_DF2, df2}, {XML_ATT_SIG, sig}});
  return test;
}

Tree Estimates(const ModelData& data, const Regression& fit) {
  Tree estimates = NewElement(XML_ELE_PARAMESTIMATES);
  double index = 0;
  for (const Coefficient& c : fit.coefficients) {
    Tree parameter = support::StatXmlParameter(data, c, index++,
                                               {{XML_ATT_ESTIMATE, c.estimate},
                                                {XML_ATT_STDERROR, c.stdError},
                                                {XML_ATT_TTEST, c.t},
                                                {XML_ATT_SIG, c.sig},
                                                {XML_ATT_CONFINTERVALLOWER, c.lower},
                                                {XML_ATT_CONFINTERVALUPPER, c.upper}});
    AddFigures(parameter, {{"standardized", c.standardized}});
    Append(estimates, std::move(parameter));
  }
  return estimates;
}

Tree Terms(const ModelData& data, const Regression& fit) {
  Tree tests = NewElement(XML_ELE_MODELTESTSTATS);
  for (const Term& term : fit.terms) {
    Tree test = FTest(term.f, term.df, fit.dfResidual, term.sig);
    test->AddAttribute(XML_ATT_FIELDNAME, data.NameOf(term.variable));
    AddFigures(test, {{"vif", term.vif}});
    Append(tests, std::move(test));
  }
  return tests;
}

Tree Influence(const Regression& fit) {
  Tree influence = Owned(Build::CreateElemMultivariateData("influence"));
  const auto add = [&](const char* name, auto figure) {
    std::vector<double> values;
    for (const InfluentialCase& c : fit.influence) values.push_back(FiniteOrMissing(figure(c)));
    Append(influence, Owned(Build::CreateElemCoordinates(name, "", "", values)));
  };
  add("row", [](const InfluentialCase& c) { return static_cast<double>(c.row); });
  add("leverage", [](const InfluentialCase& c) { return c.leverage; });
  add("cooksDistance", [](const InfluentialCase& c) { return c.cooksDistance; });
  add("residual", [](const InfluentialCase& c) { return c.residual; });
  return influence;
}

}  // namespace

std::string StatXmlDocument(const ModelData& data, const Regression& fit) {
  const Tree root = Owned(Build::BuildRoot());
  Append(root, Summary(data, fit));
  Append(root, FTest(fit.fStatistic, fit.dfModel, fit.dfResidual, fit.fSig));
  support::AppendCharts(root, data, fit.summaries);
  Append(root, Estimates(data, fit));
  Append(root, Terms(data, fit));
  if (!fit.residualPlot.empty())
    Append(root, support::StatXmlPoints("residuals", fit.residualPlot));
  if (!fit.normalPlot.empty())
    Append(root, support::StatXmlPoints("normal quantiles", fit.normalPlot));
  if (!fit.influence.empty()) Append(root, Influence(fit));
  Append(root, support::StatXmlCovariances(fit.coefficients, fit.covariance));
  return support::DocumentText(root);
}

}  // namespace regression
