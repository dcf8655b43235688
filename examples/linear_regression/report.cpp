#include "report.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <locale>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

namespace regression {
namespace {

std::string Figure(double x) {
  if (!std::isfinite(x)) return {};
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << std::showpoint << std::setprecision(15) << x;
  return out.str();
}

}  // namespace

void PrintReport(std::ostream& out, const Regression& fit) {
  std::size_t width = 0;
  for (const Coefficient& c : fit.coefficients) width = std::max(width, c.name.size());
  const auto line = [&](const std::string& name, const std::string& estimate,
                        const std::string& stdError, const std::string& t) {
    out << std::left << std::setw(static_cast<int>(width)) << name << std::right;
    for (const std::string& cell : {estimate, stdError, t}) out << "  " << std::setw(22) << cell;
    out << '\n';
  };

  out << "Regression of " << fit.target << (fit.intercept ? "" : " without intercept") << ", "
      << fit.n << " rows\n\n";
  line("", "Estimate", "Standard error", "t");
  std::string redundant;
  for (const Coefficient& c : fit.coefficients) {
    line(c.name, c.redundant ? "redundant" : Figure(c.estimate), Figure(c.stdError), Figure(c.t));
    if (c.redundant) redundant += (redundant.empty() ? "" : ", ") + c.name;
  }

  const auto figure = [&](const std::string& name, double x, const std::string& remark) {
    const std::string text = Figure(x);
    out << std::left << std::setw(29) << name << std::right << std::setw(22)
        << (text.empty() ? "undefined" : text) << remark << '\n';
  };
  const std::string origin = fit.intercept ? "" : " about zero";
  const std::string dfResidual = std::to_string(fit.dfResidual) + " degrees of freedom";
  out << '\n';
  figure("Residual standard deviation", fit.residualStdDev, "  on " + dfResidual);
  figure("R squared" + origin, fit.rSquared, "");
  figure("F" + origin, fit.fStatistic,
         "  on " + std::to_string(fit.dfModel) + " and " + dfResidual);
  if (!redundant.empty()) out << "\nRedundant inputs, left out of the fit: " << redundant << '\n';
}

std::string ToJson(const Regression& fit) {
  using Json = nlohmann::ordered_json;  // which writes a number that is not finite as null
  Json coefficients = Json::array();
  for (const Coefficient& c : fit.coefficients) {
    coefficients.push_back({{"name", c.name},
                            {"estimate", c.estimate},
                            {"stdError", c.stdError},
                            {"t", c.t},
                            {"redundant", c.redundant}});
  }
  const Json json = {{"n", fit.n},
                     {"rSquared", fit.rSquared},
                     {"residualStdDev", fit.residualStdDev},
                     {"fStatistic", fit.fStatistic},
                     {"dfModel", fit.dfModel},
                     {"dfResidual", fit.dfResidual},
                     {"coefficients", coefficients}};
  // Column names come from a file of any encoding; JSON must be UTF-8.
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace regression
