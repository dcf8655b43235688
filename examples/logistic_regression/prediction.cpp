#include "prediction.h"

#include <nqcommon/math/numeric/NQDistFun.h>

namespace logistic {
namespace {

// The text as the cell of a row of separated values.
std::string Cell(const std::string& text) {
  if (text.find_first_of("\",;\t \r\n") == text.npos) return text;
  std::string cell = "\"";
  for (const char c : text) cell.append(c == '"' ? 2 : 1, c);
  return cell + '"';
}

}  // namespace

support::Scorer PredictionOf(const LogisticFit& fit) {
  const double z = NQMath_940::NQDistFun::IdfNorm(0.975, 0, 1);
  return [&fit, z](const double* values, std::vector<std::string>& cells) {
    const double eta = fit.LinearPredictor(values), width = z * fit.StdError(values);
    const double p = Probability(eta);
    cells = {support::FigureCell(p), support::FigureCell(Probability(eta - width)),
             support::FigureCell(Probability(eta + width)),
             Cell(p > fit.cutoff ? fit.event : fit.other)};
  };
}

}  // namespace logistic
