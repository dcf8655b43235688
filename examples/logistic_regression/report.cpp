#include "report.h"

#include <ostream>

#include "support/text.h"
#include "support/text_table.h"

using support::Figure;
using support::ModelData;
using support::Padded;
using support::RightAligned;
using support::Shortest;
using support::Significance;
using support::TableColumn;

namespace logistic {
namespace {

void PrintCoefficients(std::ostream& out, const std::vector<Coefficient>& coefficients) {
  constexpr TableColumn kColumns[] = {
      {"Estimate", 9, 15},   {"Std. error", 6, 11}, {"z", 5, 9},         {"Significance", 5, 12},
      {"Odds ratio", 6, 11}, {"Lower 95%", 6, 11},  {"Upper 95%", 6, 11}};
  support::PrintTable(
      out, kColumns, coefficients, "", [](const Coefficient& c) { return c.name; },
      [](const Coefficient& c, std::size_t j, int digits) -> std::string {
        if (c.redundant) return j == 0 ? "redundant" : "";
        if (j == 3) return Significance(c.sig);
        const double figures[] = {c.estimate,  c.stdError, c.z,    c.sig,
                                  c.oddsRatio, c.lower,    c.upper};
        return Figure(figures[j], digits);
      });
}

void PrintTests(std::ostream& out, const ModelData& data, const LogisticFit& fit) {
  constexpr TableColumn kColumns[] = {
      {"df", 0, 5}, {"Likelihood ratio", 8, 18}, {"Significance", 5, 12}};
  std::vector<Test> tests = fit.terms;
  tests.push_back(fit.model);
  support::PrintTable(
      out, kColumns, tests, "Input",
      [&](const Test& test) { return test.variable < 0 ? "(all)" : data.NameOf(test.variable); },
      [](const Test& test, std::size_t j, int digits) -> std::string {
        if (j == 0) return Shortest(test.df);
        return j == 1 ? Figure(test.chiSquare, digits) : Significance(test.sig);
      });
}

}  // namespace

std::vector<std::string> Warnings(const LogisticFit& fit) {
  NQCommon_940::NQWarnings warnings = fit.warnings;
  std::vector<std::string> lines;
  for (const NQCommon_940::NQStatus& status : fit.warnings.GetWarnings(true)) {
    std::string names;
    for (const auto& name : warnings.GetParameters(status))
      names += (names.empty() ? "" : ", ") + name.ToString();
    const long code = status.GetErrorCode();
    lines.push_back(
        code == kSeparated ? "no finite estimates: " + names +
                                 " tell the events from the other cases, of all or of some"
        : code == kNotConverged
            ? "no convergence in " + std::to_string(status.GetDiscreteDatum(0)) + " iterations"
            : "redundant, left out of the fit: " + names);
  }
  return lines;
}

void PrintReport(std::ostream& out, const ModelData& data, const LogisticFit& fit) {
  out << "Logistic regression of " << fit.target << ": the odds of " << fit.event << " against "
      << fit.other << '\n'
      << support::CasesLine(fit.rows, fit.n) << "; events: " << Shortest(fit.events) << '\n'
      << "Iterations: " << fit.iterations << (fit.converged ? "" : ", not converged") << '\n';
  for (const std::string& warning : Warnings(fit)) out << "Warning: " << warning << '\n';
  out << '\n';
  PrintCoefficients(out, fit.coefficients);
  out << '\n';
  PrintTests(out, data, fit);

  const auto figure = [&](const char* name, double x, const std::string& remark) {
    out << Padded(name, 29) << RightAligned(Figure(x, 10), 17) << remark << '\n';
  };
  out << '\n';
  figure("Deviance", fit.deviance, "  on " + Shortest(fit.dfResidual) + " degrees of freedom");
  figure("Null deviance", fit.nullDeviance, "");
  figure("R squared (McFadden)", fit.mcFadden, "");
  figure("R squared (Nagelkerke)", fit.nagelkerke, "");
  figure("AIC", fit.aic, "  BIC " + Figure(fit.bic, 8));
  figure("Area under the ROC curve", fit.auc,
         fit.aucBinning > 0 ? "  +- " + Figure(fit.aucBinning, 2) + " by the bins" : "");
  out << "\nClassified by a probability above " << Shortest(fit.cutoff) << '\n';
  constexpr TableColumn kColumns[] = {{"as other", 0, 12}, {"as event", 0, 12}, {"right", 4, 9}};
  const std::vector<int> rows = {1, 0};
  support::PrintTable(
      out, kColumns, rows, "", [&](int i) { return i == 1 ? fit.event : fit.other; },
      [&](int i, std::size_t j, int digits) {
        if (j < 2) return Shortest(fit.table[i][j]);
        return Figure(fit.table[i][i] / (fit.table[i][0] + fit.table[i][1]), digits);
      });
}

}  // namespace logistic
