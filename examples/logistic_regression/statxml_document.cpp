#include "statxml_document.h"

#include <utility>
#include <vector>

#include <nqcommon/output/NQStatXMLTags.h>
#include <nqcommon/output/NQStatXMLUtil.h>

#include "report.h"
#include "support/statxml_parts.h"

using namespace NQStatXMLTags;
using support::Append;
using support::ModelData;
using support::NewElement;
using support::Owned;
using support::Tree;
using Build = NQXML_940::NQStatXMLUtil;

namespace logistic {
namespace {

Tree Summary(const ModelData& data, const LogisticFit& fit) {
  Tree summary = support::StatXmlSummary(data, true,
                                         {{"events", fit.events},
                                          {"deviance", fit.deviance},
                                          {"nullDeviance", fit.nullDeviance},
                                          {"dfModel", fit.dfModel},
                                          {"dfResidual", fit.dfResidual},
                                          {"aic", fit.aic},
                                          {"bic", fit.bic},
                                          {"mcFadden", fit.mcFadden},
                                          {"nagelkerke", fit.nagelkerke},
                                          {"iterations", static_cast<double>(fit.iterations)},
                                          {"area", fit.auc},
                                          {"areaBinning", fit.aucBinning},
                                          {"cutoff", fit.cutoff}});
  summary->AddAttribute("event", fit.event);
  summary->AddAttribute("other", fit.other);
  summary->AddAttribute("converged", fit.converged ? XML_VAL_TRUE : XML_VAL_FALSE);
  return summary;
}

Tree Warned(const std::string& warning) {
  Tree message = Owned(Build::CreateElem(XML_ELE_MESSAGE, "severity", XML_VAL_WARNING));
  message->AddElement(NQXML_940::XMLString::Create(warning));
  return message;
}

Tree ChiTest(const Test& test) {
  Tree element = NewElement(XML_VAL_CHITEST);
  support::AddFigures(
      element,
      {{XML_ATT_CHISQUARE, test.chiSquare}, {XML_ATT_DF1, test.df}, {XML_ATT_SIG, test.sig}});
  return element;
}

Tree Estimates(const ModelData& data, const LogisticFit& fit) {
  Tree estimates = NewElement(XML_ELE_PARAMESTIMATES);
  double index = 0;
  for (const Coefficient& c : fit.coefficients) {
    Append(estimates, support::StatXmlParameter(data, c, index++,
                                                {{XML_ATT_ESTIMATE, c.estimate},
                                                 {XML_ATT_STDERROR, c.stdError},
                                                 {XML_ATT_ZTEST, c.z},
                                                 {XML_ATT_SIG, c.sig},
                                                 {XML_ATT_CONFINTERVALLOWER, c.estimate - c.margin},
                                                 {XML_ATT_CONFINTERVALUPPER, c.estimate + c.margin},
                                                 {XML_ATT_EXPESTIMATE, c.oddsRatio},
                                                 {XML_ATT_EXPCILOWER, c.lower},
                                                 {XML_ATT_EXPCIUPPER, c.upper}}));
  }
  return estimates;
}

Tree Tests(const ModelData& data, const LogisticFit& fit) {
  Tree tests = NewElement(XML_ELE_MODELTESTSTATS);
  for (const Test& term : fit.terms) {
    Tree test = ChiTest(term);
    test->AddAttribute(XML_ATT_FIELDNAME, data.NameOf(term.variable));
    Append(tests, std::move(test));
  }
  return tests;
}

// The event before the other category.
Tree Classification(const LogisticFit& fit) {
  const std::vector<std::string> names = {fit.event, fit.other};
  auto* labels = Build::CreateElemMatrixLabels(
      Build::Elements{Build::CreateElemRowColLabels(names, XML_VAL_ROW),
                      Build::CreateElemRowColLabels(names, XML_VAL_COL)});
  const auto row = [&](int i) { return std::vector{fit.table[i][1], fit.table[i][0]}; };
  return Owned(Build::CreateElemMatrix(labels, {row(1), row(0)}, 2, 2, XML_VAL_ANY, true));
}

Tree Curve(const LogisticFit& fit) {
  Tree curve =
      Owned(Build::CreateElem(XML_ELE_BIVARIATEDATE, "description", std::string("ROC curve")));
  const std::vector<RocPoint> points = fit.ranking.Curve();
  const auto add = [&](const char* name, double RocPoint::*figure) {
    std::vector<double> values;
    values.reserve(points.size());
    for (const RocPoint& point : points) values.push_back(point.*figure);
    Append(curve, Owned(Build::CreateElemCoordinates(name, "", "", values)));
  };
  add("falsePositives", &RocPoint::falsePositives);
  add("truePositives", &RocPoint::truePositives);
  add("probability", &RocPoint::probability);
  return curve;
}

}  // namespace

std::string StatXmlDocument(const ModelData& data, const LogisticFit& fit) {
  const Tree root = Owned(Build::BuildRoot());
  Append(root, Summary(data, fit));
  for (const std::string& warning : Warnings(fit)) Append(root, Warned(warning));
  Append(root, ChiTest(fit.model));
  support::AppendCharts(root, data, fit.summaries);
  Append(root, Estimates(data, fit));
  Append(root, Tests(data, fit));
  Append(root, Classification(fit));
  Append(root, Curve(fit));
  Append(root, support::StatXmlPoints("calibration", fit.ranking.Calibration()));
  Append(root, support::StatXmlCovariances(fit.coefficients, fit.covariances));
  return support::DocumentText(root);
}

}  // namespace logistic
