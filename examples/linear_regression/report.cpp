#include "report.h"

#include <algorithm>
#include <ostream>
#include <vector>

#include "support/text.h"
#include "support/text_table.h"

using support::Figure;
using support::ModelData;
using support::Padded;
using support::PrintTable;
using support::RightAligned;
using support::Shortest;
using support::Significance;
using support::TableColumn;

namespace regression {
namespace {

void PrintCoefficients(std::ostream& out, const std::vector<Coefficient>& coefficients) {
  constexpr TableColumn kColumns[] = {{"Estimate", 10, 16}, {"Std. error", 8, 14},
                                      {"t", 5, 11},         {"Significance", 5, 12},
                                      {"Lower 95%", 6, 12}, {"Upper 95%", 6, 12}};
  PrintTable(
      out, kColumns, coefficients, "", [](const Coefficient& c) { return c.name; },
      [](const Coefficient& c, std::size_t j, int digits) -> std::string {
        if (c.redundant) return j == 0 ? "redundant" : "";
        if (j == 3) return Significance(c.sig);
        const double figures[] = {c.estimate, c.stdError, c.t, c.sig, c.lower, c.upper};
        return Figure(figures[j], digits);
      });
}

void PrintTerms(std::ostream& out, const ModelData& data, const Regression& fit) {
  constexpr TableColumn kColumns[] = {{"df", 0, 5},
                                      {"F", 6, 14},
                                      {"Significance", 5, 12},
                                      {"Inflation (VIF)", 6, 16},
                                      {"Standardized", 6, 14}};
  PrintTable(
      out, kColumns, fit.terms, "Input",
      [&](const Term& term) { return data.NameOf(term.variable); },
      [&](const Term& term, std::size_t j, int digits) -> std::string {
        if (j == 0) return Shortest(term.df);
        if (j == 1) return Figure(term.f, digits);
        if (j == 2) return Significance(term.sig);
        if (j == 3) return Figure(term.vif, digits);
        if (data.IsCategorical(term.variable)) return "";
        const auto found =
            std::find_if(fit.coefficients.begin(), fit.coefficients.end(),
                         [&](const Coefficient& c) { return c.variable == term.variable; });
        return Figure(found->standardized, digits);
      });
}

void PrintInfluence(std::ostream& out, const std::vector<InfluentialCase>& cases) {
  constexpr TableColumn kColumns[] = {
      {"Cook's distance", 6, 16}, {"Leverage", 6, 12}, {"Residual", 6, 14}};
  PrintTable(
      out, kColumns, cases, "Row", [](const InfluentialCase& c) { return std::to_string(c.row); },
      [](const InfluentialCase& c, std::size_t j, int digits) {
        const double figures[] = {c.cooksDistance, c.leverage, c.residual};
        return Figure(figures[j], digits);
      });
}

}  // namespace

void PrintReport(std::ostream& out, const ModelData& data, const Regression& fit) {
  out << "Linear regression of " << fit.target << (fit.intercept ? "" : " without intercept")
      << '\n'
      << support::CasesLine(fit.rows, fit.n) << '\n';
  std::string references;
  for (int i = 0; i < data.NInputs(); ++i) {
    if (!data.IsCategorical(i)) continue;
    const auto code = static_cast<std::size_t>(data.ReferenceOf(i));
    references +=
        (references.empty() ? "" : ", ") + data.NameOf(i) + "=" + data.CategoriesOf(i)[code];
  }
  if (!references.empty()) out << "Reference categories: " << references << '\n';
  out << '\n';
  PrintCoefficients(out, fit.coefficients);

  const auto figure = [&](const std::string& name, const std::string& text,
                          const std::string& remark) {
    out << Padded(name, 29) << RightAligned(text.empty() ? "undefined" : text, 17) << remark
        << '\n';
  };
  const auto number = [&](const std::string& name, double x, const std::string& remark) {
    figure(name, Figure(x, 10), remark);
  };
  const std::string origin = fit.intercept ? "" : " about zero";
  const std::string dfResidual = Shortest(fit.dfResidual) + " degrees of freedom";
  out << '\n';
  number("Residual standard deviation", fit.residualStdDev, "  on " + dfResidual);
  number("R squared" + origin, fit.rSquared, "");
  number("Adjusted R squared", fit.adjustedRSquared, "");
  number("F" + origin, fit.fStatistic, "  on " + Shortest(fit.dfModel) + " and " + dfResidual);
  figure("Significance of F", Significance(fit.fSig), "");
  number("Log-likelihood", fit.logLik,
         "  AIC " + Figure(fit.aic, 8) + "  BIC " + Figure(fit.bic, 8));
  number("Durbin-Watson", fit.durbinWatson, "");
  number("Condition number", fit.conditionNumber, "  of the correlations");
  const ResidualFigures& r = fit.residuals;
  out << "\nResiduals  minimum " << Figure(r.min, 6) << "  quartiles " << Figure(r.q1, 6) << "  "
      << Figure(r.median, 6) << "  " << Figure(r.q3, 6) << "  maximum " << Figure(r.max, 6) << '\n';
  if (!fit.terms.empty()) {
    out << '\n';
    PrintTerms(out, data, fit);
  }
  if (!fit.influence.empty()) {
    out << '\n';
    PrintInfluence(out, fit.influence);
  }
  std::string redundant;
  for (const Coefficient& c : fit.coefficients) {
    if (c.redundant) redundant += (redundant.empty() ? "" : ", ") + c.name;
  }
  if (!redundant.empty()) out << "\nRedundant, left out of the fit: " << redundant << '\n';
}

}  // namespace regression
