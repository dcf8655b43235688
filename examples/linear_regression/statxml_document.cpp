#include "statxml_document.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>
#include <vector>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/stats/charts/NQScatterPlotData.h>
#include <nqcommon/output/NQStatXMLTags.h>
#include <nqcommon/output/NQStatXMLUtil.h>

#include "support/text.h"
#include "support/xml_tree.h"

using namespace NQStatXMLTags;
using NQCommon_940::NQMV;
using NQMath_940::NQScatterPlotData;
using support::Append;
using support::ModelData;
using support::NewElement;
using support::Owned;
using support::Tree;
using Build = NQXML_940::NQStatXMLUtil;

namespace regression {
namespace {

double FiniteOrMissing(double x) { return std::isfinite(x) ? x : NQMV::Missing(); }

void AddFigures(const Tree& element,
                const std::vector<std::pair<std::string, double>>& namesAndFigures) {
  for (const auto& [name, figure] : namesAndFigures) {
    if (std::isfinite(figure)) element->AddAttribute(name, figure);
  }
}

Tree Summary(const ModelData& data, const Regression& fit) {
  Tree summary =
      Owned(Build::CreateElem(XML_ELE_TRAININGSUMMARY, XML_ATT_TARGETFIELD, fit.target,
                              XML_ATT_ISINTERCEPT, fit.intercept ? XML_VAL_TRUE : XML_VAL_FALSE));
  summary->AddAttribute(XML_ATT_DATANAME, data.File().Path());
  Append(summary, Owned(Build::CreateElemCounts(fit.n, static_cast<double>(fit.rows.missing),
                                                static_cast<double>(fit.rows.badWeight), -1)));
  const std::pair<const char*, double> statistics[] = {
      {"rowsRead", static_cast<double>(fit.rows.rows)},
      {"rowsUsed", static_cast<double>(fit.rows.used)},
      {"rSquared", fit.rSquared},
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
      {"residualMax", fit.residuals.max}};
  for (const auto& [name, figure] : statistics)
    Append(summary, Owned(Build::CreateElemStatistic(name, FiniteOrMissing(figure))));
  const std::pair<const char*, int> weights[] = {{"freqWeight", data.FrequencyPosition()},
                                                 {"regWeight", data.WeightPosition()}};
  for (const auto& [name, position] : weights) {
    if (position >= 0)
      Append(summary, Owned(Build::CreateElemStatistic(name, data.NameOf(position))));
  }
  for (int i = 0; i < data.NInputs(); ++i) {
    if (!data.IsCategorical(i)) continue;
    const auto code = static_cast<std::size_t>(data.ReferenceOf(i));
    Append(summary,
           Owned(Build::CreateElemFieldInfo(data.NameOf(i), data.CategoriesOf(i)[code], false)));
  }
  return summary;
}

Tree FTest(double f, double df1, double df2, double sig) {
  Tree test = NewElement(XML_ELE_FTEST);
  AddFigures(test,
             {{XML_ATT_FSTATISTIC, f}, {XML_ATT_DF1, df1}, {XML_ATT_DF2, df2}, {XML_ATT_SIG, sig}});
  return test;
}

Tree Parameter(const ModelData& data, const Coefficient& c) {
  if (c.variable < 0) return Owned(Build::CreateElemRegressionParameter(c.name, true));
  const std::string& field = data.NameOf(c.variable);
  if (c.category < 0) {
    return Owned(Build::CreateElemRegressionParameter(
        c.name, false, Build::Elements{}, Build::Elements{Build::CreateElemCovariate(field, 1)}));
  }
  const std::string& category = data.CategoriesOf(c.variable)[static_cast<std::size_t>(c.category)];
  return Owned(Build::CreateElemRegressionParameter(
      c.name, false, Build::Elements{Build::CreateElemFactor(field, category, false)},
      Build::Elements{}));
}

Tree Estimates(const ModelData& data, const Regression& fit) {
  Tree estimates = NewElement(XML_ELE_PARAMESTIMATES);
  double index = 0;
  for (const Coefficient& c : fit.coefficients) {
    Tree parameter = NewElement(XML_ELE_PARAMSTATS);
    parameter->AddAttribute(XML_ATT_PARAMINDEX, index++);
    parameter->AddAttribute(XML_ATT_PARAMNAME, c.name);
    AddFigures(parameter, {{XML_ATT_ESTIMATE, c.estimate},
                           {XML_ATT_STDERROR, c.stdError},
                           {XML_ATT_TTEST, c.t},
                           {XML_ATT_SIG, c.sig},
                           {XML_ATT_CONFINTERVALLOWER, c.lower},
                           {XML_ATT_CONFINTERVALUPPER, c.upper}});
    parameter->AddAttribute(XML_ATT_ISREDUNDANT, c.redundant ? XML_VAL_TRUE : XML_VAL_FALSE);
    AddFigures(parameter, {{"standardized", c.standardized}});
    Append(parameter, Parameter(data, c));
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

// Points with the ranges of both axes and the most cases of one, which a renderer needs first.
Tree ScatterPlot(const std::string& description, const std::vector<Regression::Point>& points) {
  NQScatterPlotData plot;
  Regression::Point least = points.front(), most = points.front();
  for (const Regression::Point& point : points) {
    plot.UpdateData(point.frequency, 1, point.x, point.y);
    least = {std::min(least.x, point.x), std::min(least.y, point.y), 0};
    most = {std::max(most.x, point.x), std::max(most.y, point.y),
            std::max(most.frequency, point.frequency)};
  }
  auto data = plot.GetNQVariateData(description);
  data.SetDescription(description);
  const std::pair<const char*, double> statistics[] = {{"xMinimum", least.x},
                                                       {"xMaximum", most.x},
                                                       {"yMinimum", least.y},
                                                       {"yMaximum", most.y},
                                                       {"mostCases", most.frequency}};
  for (const auto& [name, figure] : statistics) data.AddStatistic(name, figure);
  return Owned(data.GetBivariateDataElem());
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

Tree Covariances(const Regression& fit) {
  std::vector<std::string> names;
  for (const Coefficient& c : fit.coefficients) {
    if (!c.redundant) names.push_back(c.name);
  }
  const int order = fit.covariance.GetNRows();
  std::vector<std::vector<double>> rows;  // of the lower triangle
  for (int i = 0; i < order; ++i) {
    std::vector<double>& row = rows.emplace_back();
    for (int j = 0; j <= i; ++j) row.push_back(FiniteOrMissing(fit.covariance.GetElem(i, j)));
  }
  auto* labels = Build::CreateElemMatrixLabels(
      Build::Elements{Build::CreateElemRowColLabels(names, XML_VAL_BOTH)});
  return Owned(Build::CreateElemMatrix(labels, rows, order, order, XML_VAL_SYMMETRIC, true));
}

}  // namespace

std::string StatXmlDocument(const ModelData& data, const Regression& fit) {
  const Tree root = Owned(Build::BuildRoot());
  Append(root, Summary(data, fit));
  Append(root, FTest(fit.fStatistic, fit.dfModel, fit.dfResidual, fit.fSig));
  Append(root, Owned(fit.summaries.Chart(data, data.TargetPosition()).GetUnivariateDataElem()));
  for (int i = 0; i < data.NInputs(); ++i)
    Append(root, Owned(fit.summaries.Chart(data, i).GetUnivariateDataElem()));
  Append(root, Estimates(data, fit));
  Append(root, Terms(data, fit));
  if (!fit.residualPlot.empty()) Append(root, ScatterPlot("residuals", fit.residualPlot));
  if (!fit.normalPlot.empty()) Append(root, ScatterPlot("normal quantiles", fit.normalPlot));
  if (!fit.influence.empty()) Append(root, Influence(fit));
  Append(root, Covariances(fit));
  return support::DocumentText(root);
}

void RefuseForStatXml(const ModelData& data) {
  const auto check = [](const std::string& text) {
    if (text.find("]]>") != text.npos) {
      throw std::runtime_error("StatXML and the page cannot hold the ']]>' of " +
                               support::Quoted(text));
    }
  };
  for (int i = 0; i < data.Variables().GetNumVars(); ++i) {
    check(data.NameOf(i));
    for (const std::string& text : data.CategoriesOf(i)) check(text);
  }
}

}  // namespace regression
