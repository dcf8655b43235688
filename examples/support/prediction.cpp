#include "prediction.h"

#include <cmath>
#include <memory>
#include <stdexcept>

#include "csv_row.h"
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
                                  const Scorer& score, const SourceName& table, Team& team,
                                  std::ostream& out) {
  const Dialect& dialect = data.File().GetDialect();
  const std::unique_ptr<Source> source = OpenSource(table, dialect);
  source->Prepare(team);
  PredictionCounts counts;
  std::vector<double> values(static_cast<std::size_t>(data.NInputs()));
  std::vector<std::string> cells(titles.size());
  RowReader row(dialect, data.PlacesIn(*source, true));
  Chunk chunk;
  std::string text = source->HeaderText();
  const auto append = [&](const std::string& cell) {
    text.append(1, dialect.separator).append(cell);
  };
  for (const std::string& title : titles) append(title);
  text += '\n';
  const auto load = [&](std::uint64_t number, int) { return source->Load(number, chunk); };
  Team inOrder(1, team.Query());
  inOrder.ForEachChunk(*source, load, [&](std::uint64_t, int) {
    // The reader changes quoted cells.
    const std::string asItStands = chunk.isText ? std::string(chunk.begin, chunk.end) : "";
    const std::size_t nColumns = source->ColumnNames().size();
    row.Start(chunk);
    while (row.Next()) {
      if (chunk.isText) {
        text.append(asItStands, static_cast<std::size_t>(row.RowText().data() - chunk.begin),
                    row.RowText().size());
      } else {
        const auto number = static_cast<std::size_t>(row.RowsTaken() - 1);
        AppendRow(text, &chunk.values[number * nColumns], nColumns, dialect.separator);
      }
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
