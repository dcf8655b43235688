#include "prediction.h"

#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include <nqcommon/math/numeric/NQDistFun.h>

#include "support/text.h"

using NQMath_940::NQDistFun;
using support::Cell;
using support::ModelData;
using support::RowReader;

namespace regression {
namespace {

constexpr const char* kTitles[] = {"fit", "se", "lower", "upper", "predLower", "predUpper"};

enum class Verdict { kKnown, kMissing, kUnseen };

Verdict TakeValues(const ModelData& data, const RowReader& row, std::vector<double>& values) {
  Verdict verdict = Verdict::kKnown;
  for (int i = 0; i < data.NInputs(); ++i) {
    const Cell& cell = row.Cells()[static_cast<std::size_t>(i)];
    double& value = values[static_cast<std::size_t>(i)];
    if (cell.kind == Cell::kMissing) return Verdict::kMissing;
    if (data.IsCategorical(i)) {
      value = data.CodeOf(i, cell.text);
      if (value < 0) verdict = Verdict::kUnseen;
    } else if (cell.kind == Cell::kText) {
      throw support::DataError{support::Quoted(cell.text) + " is not a finite number", row.Line(),
                               data.NameOf(i)};
    } else {
      value = cell.number;
    }
  }
  return verdict;
}

class Writer {
 public:
  Writer(const Regression& fit, char separator)
      : fPredictor(fit.predictor),
        fSeparator(separator),
        fSigma(fit.residualStdDev),
        fWidth(fit.dfResidual > 0 ? NQDistFun::IdfT(0.975, fit.dfResidual, NQMath_940::defaultepsz,
                                                    NQMath_940::defaultepse)
                                  : std::numeric_limits<double>::quiet_NaN()) {}

  void Write(const double* values, std::string& to) const {
    const Predictor::Answer answer = fPredictor.At(values);
    const double se = fSigma * std::sqrt(answer.leverage);
    const double width = fWidth * se;
    const double newWidth = fWidth * fSigma * std::sqrt(1 + answer.leverage);
    for (const double x : {answer.fit, se, answer.fit - width, answer.fit + width,
                           answer.fit - newWidth, answer.fit + newWidth}) {
      to += fSeparator;
      if (std::isfinite(x)) to += support::Shortest(x);
    }
  }
  void WriteNothing(std::string& to) const { to.append(std::size(kTitles), fSeparator); }

 private:
  const Predictor& fPredictor;
  char fSeparator;
  double fSigma;
  double fWidth;
};

}  // namespace

PredictionCounts WritePredictions(const ModelData& data, const Regression& fit,
                                  const std::string& path, support::Team& team, std::ostream& out) {
  const support::Dialect& dialect = data.File().GetDialect();
  support::CsvFile file(path, dialect);
  team.FindQuotes(file);
  const std::vector<RowReader::Column> places = data.PlacesIn(file, true);
  const Writer writer(fit, dialect.separator);
  PredictionCounts counts;
  std::vector<double> values(static_cast<std::size_t>(data.NInputs()));
  RowReader row(dialect, places);
  support::Chunk chunk;
  std::string text = file.HeaderText();
  for (const char* title : kTitles) text.append(1, dialect.separator).append(title);
  text += '\n';
  support::Team inOrder(1, team.Query());
  inOrder.ForEachChunk(file, [&](std::uint64_t number, int) {
    file.Load(number, chunk);
    const std::string asItStands(chunk.begin, chunk.end);  // the reader changes quoted cells
    row.Start(chunk);
    while (row.Next()) {
      text.append(asItStands, static_cast<std::size_t>(row.RowText().data() - chunk.begin),
                  row.RowText().size());
      const Verdict verdict = TakeValues(data, row, values);
      counts.missing += verdict == Verdict::kMissing;
      counts.unseen += verdict == Verdict::kUnseen;
      if (verdict == Verdict::kKnown) {
        writer.Write(values.data(), text);
      } else {
        writer.WriteNothing(text);
      }
      text += '\n';
    }
    counts.rows += row.RowsTaken();
    if (!out.write(text.data(), static_cast<std::streamsize>(text.size())))
      throw std::runtime_error("cannot write the predictions");
    text.clear();
  });
  file.CheckUnchanged();
  return counts;
}

}  // namespace regression
