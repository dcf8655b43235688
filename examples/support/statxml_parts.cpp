#include "statxml_parts.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/math/stats/charts/NQScatterPlotData.h>
#include <nqcommon/output/NQStatXMLTags.h>
#include <nqcommon/output/NQStatXMLUtil.h>

#include "text.h"

using namespace NQStatXMLTags;
using NQMath_940::NQScatterPlotData;
using NQMath_940::NQSymMatrix;
using Build = NQXML_940::NQStatXMLUtil;

namespace support {
namespace {

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

}  // namespace

void RefuseForStatXml(const ModelData& data) {
  const auto check = [](const std::string& text) {
    if (text.find("]]>") != text.npos) {
      throw std::runtime_error("StatXML and the page cannot hold the ']]>' of " + Quoted(text));
    }
  };
  for (int i = 0; i < data.Variables().GetNumVars(); ++i) {
    check(data.NameOf(i));
    for (const std::string& text : data.CategoriesOf(i)) check(text);
  }
}

double FiniteOrMissing(double x) { return std::isfinite(x) ? x : NQCommon_940::NQMV::Missing(); }

void AddFigures(const Tree& element, const NamedFigures& figures) {
  for (const auto& [name, figure] : figures) {
    if (std::isfinite(figure)) element->AddAttribute(name, figure);
  }
}

Tree StatXmlSummary(const ModelData& data, bool intercept, const NamedFigures& figures) {
  const CaseCounts& rows = data.Counts();
  Tree summary = Owned(Build::CreateElem(XML_ELE_TRAININGSUMMARY, XML_ATT_TARGETFIELD,
                                         data.NameOf(data.TargetPosition()), XML_ATT_ISINTERCEPT,
                                         intercept ? XML_VAL_TRUE : XML_VAL_FALSE));
  summary->AddAttribute(XML_ATT_DATANAME, data.File().Path());
  Append(summary,
         Owned(Build::CreateElemCounts(rows.sumFrequency, static_cast<double>(rows.missing),
                                       static_cast<double>(rows.badWeight), -1)));
  const auto add = [&](const std::string& name, const auto& value) {
    Append(summary, Owned(Build::CreateElemStatistic(name, value)));
  };
  add("rowsRead", static_cast<double>(rows.rows));
  add("rowsUsed", static_cast<double>(rows.used));
  for (const auto& [name, figure] : figures) add(name, FiniteOrMissing(figure));
  if (data.HasFrequency()) add("freqWeight", data.NameOf(data.FrequencyPosition()));
  if (data.HasWeight()) add("regWeight", data.NameOf(data.WeightPosition()));
  for (int i = 0; i < data.NInputs(); ++i) {
    if (!data.IsCategorical(i)) continue;
    const auto code = static_cast<std::size_t>(data.ReferenceOf(i));
    Append(summary,
           Owned(Build::CreateElemFieldInfo(data.NameOf(i), data.CategoriesOf(i)[code], false)));
  }
  return summary;
}

void AppendCharts(const Tree& root, const ModelData& data, const InputSummaries& summaries) {
  Append(root, Owned(summaries.Chart(data, data.TargetPosition()).GetUnivariateDataElem()));
  for (int i = 0; i < data.NInputs(); ++i)
    Append(root, Owned(summaries.Chart(data, i).GetUnivariateDataElem()));
}

Tree StatXmlParameter(const ModelData& data, const Coefficient& c, double index,
                      const NamedFigures& figures) {
  Tree parameter = NewElement(XML_ELE_PARAMSTATS);
  parameter->AddAttribute(XML_ATT_PARAMINDEX, index);
  parameter->AddAttribute(XML_ATT_PARAMNAME, c.name);
  AddFigures(parameter, figures);
  parameter->AddAttribute(XML_ATT_ISREDUNDANT, c.redundant ? XML_VAL_TRUE : XML_VAL_FALSE);
  Append(parameter, Parameter(data, c));
  return parameter;
}

Tree StatXmlMatrix(const std::vector<std::string>& names, NQSymMatrix matrix) {
  for (int i = 0; i < matrix.GetNRows(); ++i) {
    for (int j = 0; j <= i; ++j) matrix.SetElem(i, j, FiniteOrMissing(matrix.GetElem(i, j)));
  }
  auto* labels = Build::CreateElemMatrixLabels(
      Build::Elements{Build::CreateElemRowColLabels(names, XML_VAL_BOTH)});
  return Owned(Build::CreateElemMatrix(labels, matrix));
}

Tree StatXmlPoints(const std::string& description, const std::vector<Point>& points) {
  NQScatterPlotData plot;
  Point least = points.front(), most = points.front();
  for (const Point& point : points) {
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

}  // namespace support
