// The parts of a StatXML document that models from files share.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <nqcommon/math/matrix/NQSymMatrix.h>

#include "coefficient.h"
#include "input_summaries.h"
#include "model_data.h"
#include "xml_tree.h"

namespace support {

// Throws std::runtime_error when a name or a category has "]]>", which no such document can hold.
void RefuseForStatXml(const ModelData& data);

using NamedFigures = std::vector<std::pair<std::string, double>>;

// The figure, or the system-missing value where it is not finite.
double FiniteOrMissing(double x);

// The finite ones as attributes.
void AddFigures(const Tree& element, const NamedFigures& figures);

// TrainingSummary targetField isIntercept dataName: Counts (missing: rows with a missing cell;
// invalid: rows with a bad weight), the Statistics rowsRead and rowsUsed, those given, and those of
// the columns freqWeight and regWeight; a FieldInfo for the reference category of each categorical
// input. Figures that are not finite have no value.
Tree StatXmlSummary(const ModelData& data, bool intercept, const NamedFigures& figures);

// A UnivariateData for the target and each input: a histogram or a bar chart.
void AppendCharts(const Tree& root, const ModelData& data, const InputSummaries& summaries);

// ParameterStats paramIndex paramName, the figures, isRedundant: the RegressionParameter.
Tree StatXmlParameter(const ModelData& data, const Coefficient& c, double index,
                      const NamedFigures& figures);

// Matrix: the lower triangle of the covariances of the coefficients that are not redundant, each a
// support::Coefficient.
Tree StatXmlMatrix(const std::vector<std::string>& names, NQMath_940::NQSymMatrix matrix);
template <class C>
Tree StatXmlCovariances(const std::vector<C>& coefficients,
                        const NQMath_940::NQSymMatrix& covariances) {
  std::vector<std::string> names;
  for (const C& c : coefficients) {
    if (!c.redundant) names.push_back(c.name);
  }
  return StatXmlMatrix(names, covariances);
}

// BivariateData: x, y and frequency of the points, and the Statistics xMinimum, xMaximum, yMinimum,
// yMaximum and mostCases, which a renderer needs first. There is a point.
Tree StatXmlPoints(const std::string& description, const std::vector<Point>& points);

}  // namespace support
