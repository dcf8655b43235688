#include "scan.h"

#include <algorithm>
#include <utility>

#include "text.h"

namespace support {
namespace {

void Extend(FieldScan& field, const Range& range) {
  if (!field.hasRange) field.range = range;
  field.hasRange = true;
  field.range.min = std::min(field.range.min, range.min);
  field.range.max = std::max(field.range.max, range.max);
}

// Counts the cell as what it looks like.
void Classify(const Cell& cell, const ScanField& field, std::uint64_t chunk, std::int64_t line,
              FieldScan& scan) {
  if (cell.kind == Cell::kMissing) {
    ++scan.missing;
  } else if (cell.kind == Cell::kNumber) {
    ++scan.numbers;
  } else {
    double number = 0;
    const Reading reading = field.isText ? Reading::kText : ReadNumber(cell.text, number);
    ++(reading == Reading::kText ? scan.texts : scan.numbers);
    BadCell& first = reading == Reading::kText ? scan.firstText : scan.firstBad;
    if (first.line == 0) first = {chunk, line, std::string(cell.text), reading};
  }
}

}  // namespace

void Categories::Add(std::string_view text) {
  if (CodeOf(text) >= 0) return;
  fIsFull |= fTexts.size() >= kMost;
  if (fIsFull) return;
  fCodes.emplace(text, static_cast<int>(fTexts.size()));
  fTexts.emplace_back(text);
}

void ScanPart::Merge(ScanPart&& right) {
  counts.rows += right.counts.rows;
  counts.used += right.counts.used;
  counts.missing += right.counts.missing;
  counts.badWeight += right.counts.badWeight;
  counts.sumFrequency += right.counts.sumFrequency;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    FieldScan& field = fields[i];
    const FieldScan& other = right.fields[i];
    field.missing += other.missing;
    field.numbers += other.numbers;
    field.texts += other.texts;
    if (other.firstText.IsBefore(field.firstText)) field.firstText = other.firstText;
    if (other.firstBad.IsBefore(field.firstBad)) field.firstBad = other.firstBad;
    if (other.hasRange) Extend(field, other.range);
    for (const std::string& text : other.categories.Texts()) field.categories.Add(text);
    if (other.categories.IsFull()) field.categories = other.categories;
  }
}

ScanPart ScanChunk(const Dialect& dialect, const std::vector<RowReader::Column>& wanted,
                   const std::vector<ScanField>& fields, Chunk& chunk) {
  ScanPart part;
  part.fields.resize(fields.size());
  RowReader row(dialect, wanted);
  row.Start(chunk);
  while (row.Next()) {
    const std::vector<Cell>& cells = row.Cells();
    double frequency = 1;
    bool isMissing = false, isBadWeight = false;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      Classify(cells[i], fields[i], chunk.number, row.Line(), part.fields[i]);
      isMissing |= cells[i].kind == Cell::kMissing;
      if (fields[i].isWeight && cells[i].kind == Cell::kNumber) {
        isBadWeight |= !(cells[i].number > 0);
        if (fields[i].isFrequency) frequency = cells[i].number;
      }
    }
    part.counts.missing += isMissing;
    part.counts.badWeight += !isMissing && isBadWeight;
    if (isMissing || isBadWeight) continue;
    ++part.counts.used;
    part.counts.sumFrequency += frequency;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const Cell& cell = cells[i];
      if (cell.kind == Cell::kNumber) {
        Extend(part.fields[i], {cell.number, cell.number, cell.number});
      } else if (Categories& categories = part.fields[i].categories;
                 categories.CodeOf(cell.text) < 0 && !categories.IsFull()) {
        if (!IsXmlText(cell.text))
          throw DataError{Quoted(cell.text) + " is not UTF-8 text", row.Line(), fields[i].name};
        categories.Add(cell.text);
      }
    }
  }
  part.counts.rows = row.RowsTaken();
  return part;
}

}  // namespace support
