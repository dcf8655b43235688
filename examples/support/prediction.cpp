#include "prediction.h"

#include <cmath>
#include <stdexcept>

#include "text.h"

namespace support {
namespace {

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
      throw DataError{Quoted(cell.text) + " is not a finite number", row.Line(), data.NameOf(i)};
    } else {
      value = cell.number;
    }
  }
  return verdict;
}

}  // namespace

std::string FigureCell(double x) { return std::isfinite(x) ? Shortest(x) : std::string(); }

PredictionCounts WritePredictions(const ModelData& data, const std::vector<std::string>& titles,
                                  const Scorer& score, const std::string& path, Team& team,
                                  std::ostream& out) {
  const Dialect& dialect = data.File().GetDialect();
  CsvFile file(path, dialect);
  team.FindQuotes(file);
  PredictionCounts counts;
  std::vector<double> values(static_cast<std::size_t>(data.NInputs()));
  std::vector<std::string> cells(titles.size());
  RowReader row(dialect, data.PlacesIn(file, true));
  Chunk chunk;
  std::string text = file.HeaderText();
  const auto append = [&](const std::string& cell) {
    text.append(1, dialect.separator).append(cell);
  };
  for (const std::string& title : titles) append(title);
  text += '\n';
  Team inOrder(1, team.Query());
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
      cells.assign(titles.size(), "");
      if (verdict == Verdict::kKnown) score(values.data(), cells);
      for (const std::string& cell : cells) append(cell);
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

void PrintCounts(std::ostream& out, const PredictionCounts& counts) {
  out << "Predicted rows: " << counts.rows - counts.missing - counts.unseen << " of "
      << counts.rows;
  if (counts.missing > 0) out << "; " << counts.missing << " with a missing cell";
  if (counts.unseen > 0) out << "; " << counts.unseen << " with an unknown category";
  out << '\n';
}

}  // namespace support
