#include "prediction.h"

#include <cmath>
#include <limits>

#include <nqcommon/math/numeric/NQDistFun.h>

using NQMath_940::NQDistFun;

namespace regression {

support::Scorer PredictionOf(const Regression& fit) {
  const double halfWidth =
      fit.dfResidual > 0
          ? NQDistFun::IdfT(0.975, fit.dfResidual, NQMath_940::defaultepsz, NQMath_940::defaultepse)
          : std::numeric_limits<double>::quiet_NaN();
  return [&fit, halfWidth](const double* values, std::vector<std::string>& cells) {
    const Predictor::Answer answer = fit.predictor.At(values);
    const double se = fit.residualStdDev * std::sqrt(answer.leverage);
    const double width = halfWidth * se;
    const double newWidth = halfWidth * fit.residualStdDev * std::sqrt(1 + answer.leverage);
    const double figures[] = {
        answer.fit,           se, answer.fit - width, answer.fit + width, answer.fit - newWidth,
        answer.fit + newWidth};
    for (std::size_t i = 0; i < cells.size(); ++i) cells[i] = support::FigureCell(figures[i]);
  };
}

}  // namespace regression
