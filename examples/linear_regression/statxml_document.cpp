#include "statxml_document.h"

#include <cmath>
#include <memory>
#include <sstream>
#include <utility>
#include <vector>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/model/INQEncoder.h>
#include <nqcommon/output/NQStatXMLTags.h>
#include <nqcommon/output/NQStatXMLUtil.h>
#include <nqcommon/xml/write_tree.h>

using namespace NQStatXMLTags;
using NQCommon_940::NQMV;
using NQXML_940::XMLElement;
using Build = NQXML_940::NQStatXMLUtil;

namespace regression {
namespace {

double FiniteOrMissing(double x) { return std::isfinite(x) ? x : NQMV::Missing(); }

void AddFigures(XMLElement& element,
                const std::vector<std::pair<std::string, double>>& namesAndFigures) {
  for (const auto& [name, figure] : namesAndFigures) {
    if (std::isfinite(figure)) element.AddAttribute(name, figure);
  }
}

XMLElement* Summary(const Regression& fit) {
  XMLElement* summary =
      Build::CreateElem(XML_ELE_TRAININGSUMMARY, XML_ATT_TARGETFIELD, fit.target,
                        XML_ATT_ISINTERCEPT, fit.intercept ? XML_VAL_TRUE : XML_VAL_FALSE);
  summary->AddElement(Build::CreateElemCounts(fit.n, static_cast<double>(fit.rows.missing),
                                              static_cast<double>(fit.rows.badWeight), -1));
  const std::pair<const char*, double> statistics[] = {
      {"rowsUsed", static_cast<double>(fit.rows.used)},
      {"rSquared", fit.rSquared},
      {"adjustedRSquared", fit.adjustedRSquared},
      {"residualStdDev", fit.residualStdDev},
      {"dfModel", fit.dfModel},
      {"dfResidual", fit.dfResidual}};
  for (const auto& [name, figure] : statistics)
    summary->AddElement(Build::CreateElemStatistic(name, FiniteOrMissing(figure)));
  return summary;
}

XMLElement* FTest(const Regression& fit) {
  XMLElement* test = XMLElement::Create(XML_ELE_FTEST);
  AddFigures(*test, {{XML_ATT_FSTATISTIC, fit.fStatistic},
                     {XML_ATT_DF1, fit.dfModel},
                     {XML_ATT_DF2, fit.dfResidual},
                     {XML_ATT_SIG, fit.fSig}});
  return test;
}

XMLElement* Parameter(const ModelData& data, const Coefficient& c) {
  if (c.variable < 0) return Build::CreateElemRegressionParameter(c.name, true);
  const std::string& field = data.Variables().GetVarAt(c.variable)->GetVariableName();
  if (c.category < 0) {
    return Build::CreateElemRegressionParameter(
        c.name, false, Build::Elements{}, Build::Elements{Build::CreateElemCovariate(field, 1)});
  }
  const std::string category = data.Variables().GetEncoderAt(c.variable)->Decode(c.category);
  return Build::CreateElemRegressionParameter(
      c.name, false, Build::Elements{Build::CreateElemFactor(field, category, false)},
      Build::Elements{});
}

XMLElement* Estimates(const ModelData& data, const Regression& fit) {
  XMLElement* estimates = XMLElement::Create(XML_ELE_PARAMESTIMATES);
  double index = 0;
  for (const Coefficient& c : fit.coefficients) {
    XMLElement* parameter = XMLElement::Create(XML_ELE_PARAMSTATS);
    parameter->AddAttribute(XML_ATT_PARAMINDEX, index++);
    parameter->AddAttribute(XML_ATT_PARAMNAME, c.name);
    AddFigures(*parameter, {{XML_ATT_ESTIMATE, c.estimate},
                            {XML_ATT_STDERROR, c.stdError},
                            {XML_ATT_TTEST, c.t},
                            {XML_ATT_SIG, c.sig},
                            {XML_ATT_CONFINTERVALLOWER, c.lower},
                            {XML_ATT_CONFINTERVALUPPER, c.upper}});
    parameter->AddAttribute(XML_ATT_ISREDUNDANT, c.redundant ? XML_VAL_TRUE : XML_VAL_FALSE);
    parameter->AddElement(Parameter(data, c));
    estimates->AddElement(parameter);
  }
  return estimates;
}

XMLElement* Covariances(const Regression& fit) {
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
  XMLElement* labels = Build::CreateElemMatrixLabels(
      Build::Elements{Build::CreateElemRowColLabels(names, XML_VAL_BOTH)});
  return Build::CreateElemMatrix(labels, rows, order, order, XML_VAL_SYMMETRIC, true);
}

}  // namespace

std::string StatXmlDocument(const ModelData& data, const Regression& fit,
                            InputSummaries& summaries) {
  const auto root = std::unique_ptr<XMLElement>(Build::BuildRoot());
  root->AddElement(Summary(fit));
  root->AddElement(FTest(fit));
  for (int i = 0; i < data.NInputs(); ++i)
    root->AddElement(summaries.Chart(i).GetUnivariateDataElem());
  root->AddElement(Estimates(data, fit));
  root->AddElement(Covariances(fit));
  std::ostringstream out;
  NQXML_940::WriteTree(out, nullptr, root.get(), true);
  return out.str() + "\n";
}

}  // namespace regression
