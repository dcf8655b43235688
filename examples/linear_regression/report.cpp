#include "report.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iomanip>
#include <locale>
#include <ostream>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

namespace regression {
namespace {

// The columns of the table: significant digits, and the width that any number takes with them.
struct ColumnOfTable {
  const char* title;
  double Coefficient::*figure;
  int digits;
};
constexpr ColumnOfTable kTable[] = {{"Estimate", &Coefficient::estimate, 12},
                                    {"Standard error", &Coefficient::stdError, 12},
                                    {"t", &Coefficient::t, 7},
                                    {"Significance", &Coefficient::sig, 7},
                                    {"Lower 95%", &Coefficient::lower, 12},
                                    {"Upper 95%", &Coefficient::upper, 12}};

std::string Figure(double x, int digits) {
  if (!std::isfinite(x)) return {};
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << std::showpoint << std::setprecision(digits) << x;
  return out.str();
}

// A count, or a sum of fractional frequencies, as short as it can be told.
std::string Shortest(double x) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, x).ptr};
}

// Characters, not bytes, of UTF-8.
std::size_t Width(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string Padded(const std::string& text, std::size_t width) {
  return text + std::string(width - std::min(width, Width(text)), ' ');
}

void PrintCoefficients(std::ostream& out, const std::vector<Coefficient>& coefficients) {
  std::size_t width = 0;
  for (const Coefficient& c : coefficients) width = std::max(width, Width(c.name));
  const auto line = [&](const std::string& name, auto cell) {
    out << Padded(name, width) << std::right;
    for (const ColumnOfTable& column : kTable)
      out << "  " << std::setw(column.digits + 7) << cell(column);  // sign, point, exponent
    out << '\n';
  };
  line("", [](const ColumnOfTable& column) -> std::string { return column.title; });
  for (const Coefficient& c : coefficients) {
    line(c.name, [&c](const ColumnOfTable& column) -> std::string {
      if (c.redundant) return column.figure == &Coefficient::estimate ? "redundant" : "";
      return Figure(c.*column.figure, column.digits);
    });
  }
}

std::string CasesLine(const Regression& fit) {
  const CaseCounts& rows = fit.rows;
  std::string line = "Cases used: " + std::to_string(rows.used);
  if (fit.n != static_cast<double>(rows.used)) line += ", sum of frequencies " + Shortest(fit.n);
  line += "; dropped: " + std::to_string(rows.Dropped());
  if (rows.missing > 0) line += ", " + std::to_string(rows.missing) + " with a missing cell";
  if (rows.badWeight > 0)
    line += ", " + std::to_string(rows.badWeight) + " without a weight above 0";
  return line;
}

// ---- JSON ---------------------------------------------------------------------------------------

std::string JsonNumber(double x) { return std::isfinite(x) ? Shortest(x) : "null"; }

std::string JsonString(std::string_view text) {
  constexpr char kHex[] = "0123456789abcdef";
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      json.append({'\\', c});
    } else if (c >= 0 && c < ' ') {
      json.append("\\u00").append({kHex[c >> 4], kHex[c & 15]});
    } else {
      json += c;
    }
  }
  return json + '"';
}

std::string JsonCoefficient(const Coefficient& c) {
  return "{\"name\": " + JsonString(c.name) + ", \"estimate\": " + JsonNumber(c.estimate) +
         ", \"stdError\": " + JsonNumber(c.stdError) + ", \"t\": " + JsonNumber(c.t) +
         ", \"sig\": " + JsonNumber(c.sig) + ", \"lower\": " + JsonNumber(c.lower) +
         ", \"upper\": " + JsonNumber(c.upper) +
         ", \"redundant\": " + (c.redundant ? "true" : "false") + "}";
}

}  // namespace

void PrintReport(std::ostream& out, const Regression& fit) {
  out << "Linear regression of " << fit.target << (fit.intercept ? "" : " without intercept")
      << '\n'
      << CasesLine(fit) << "\n\n";
  PrintCoefficients(out, fit.coefficients);

  const auto figure = [&](const std::string& name, double x, const std::string& remark) {
    const std::string text = Figure(x, 12);
    out << Padded(name, 29) << std::right << std::setw(19) << (text.empty() ? "undefined" : text)
        << remark << '\n';
  };
  const std::string origin = fit.intercept ? "" : " about zero";
  const std::string dfResidual = Shortest(fit.dfResidual) + " degrees of freedom";
  out << '\n';
  figure("Residual standard deviation", fit.residualStdDev, "  on " + dfResidual);
  figure("R squared" + origin, fit.rSquared, "");
  figure("Adjusted R squared", fit.adjustedRSquared, "");
  figure("F" + origin, fit.fStatistic, "  on " + Shortest(fit.dfModel) + " and " + dfResidual);
  figure("Significance of F", fit.fSig, "");
  std::string redundant;
  for (const Coefficient& c : fit.coefficients) {
    if (c.redundant) redundant += (redundant.empty() ? "" : ", ") + c.name;
  }
  if (!redundant.empty()) out << "\nRedundant, left out of the fit: " << redundant << '\n';
}

std::string ToJson(const Regression& fit) {
  const std::pair<const char*, double> figures[] = {
      {"n", fit.n},
      {"nDropped", static_cast<double>(fit.rows.Dropped())},
      {"rSquared", fit.rSquared},
      {"adjustedRSquared", fit.adjustedRSquared},
      {"residualStdDev", fit.residualStdDev},
      {"fStatistic", fit.fStatistic},
      {"fSig", fit.fSig},
      {"dfModel", fit.dfModel},
      {"dfResidual", fit.dfResidual}};
  std::string json = "{\n";
  for (const auto& [name, x] : figures)
    json += "  " + JsonString(name) + ": " + JsonNumber(x) + ",\n";
  json += "  \"coefficients\": [";
  for (const Coefficient& c : fit.coefficients)
    json += (&c == fit.coefficients.data() ? "\n    " : ",\n    ") + JsonCoefficient(c);
  return json + "\n  ]\n}\n";
}

}  // namespace regression
