// What a first reading tells of the columns of a model.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "row_reader.h"

namespace support {

struct CaseCounts {
  std::int64_t rows = 0;  // all rows below the header
  std::int64_t used = 0;
  std::int64_t missing = 0;    // dropped for a missing cell of the model
  std::int64_t badWeight = 0;  // dropped for a weight that is not above 0
  double sumFrequency = 0;     // over the cases used; their number without a frequency weight

  std::int64_t Dropped() const { return missing + badWeight; }
};

// Of a continuous variable, over the cases used.
struct Range {
  double min = 0;
  double max = 0;
  double first = 0;  // the value of the first case
};

// Distinct texts, with codes in the order of first appearance.
class Categories {
 public:
  static constexpr std::size_t kMost = 1000;

  // The code; -1 for a text that is none of them.
  int CodeOf(std::string_view text) const {
    const auto found = fCodes.find(text);
    return found == fCodes.end() ? -1 : found->second;
  }
  // Adds a text that is new, and is not one too many: IsFull then.
  void Add(std::string_view text);
  bool IsFull() const { return fIsFull; }
  const std::vector<std::string>& Texts() const { return fTexts; }

  template <class A>
  void Transfer(A& a) {
    std::vector<std::string> texts = fTexts;
    a(texts);
    if constexpr (A::kReads) {
      for (const std::string& text : texts) Add(text);
    }
    a(fIsFull);
  }

 private:
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };

  std::vector<std::string> fTexts;
  std::unordered_map<std::string, int, Hash, std::equal_to<>> fCodes;
  bool fIsFull = false;
};

// A cell that a numeric column could not have.
struct BadCell {
  std::uint64_t chunk = 0;
  std::int64_t line = 0;  // within the chunk; 0: there is none
  std::string text;
  Reading reading = Reading::kText;

  template <class A>
  void Transfer(A& a) {
    a(chunk);
    a(line);
    a(text);
    a(reading);
  }
  bool IsBefore(const BadCell& other) const {
    return line > 0 &&
           (other.line == 0 || chunk < other.chunk || (chunk == other.chunk && line < other.line));
  }
};

struct FieldScan {
  std::int64_t missing = 0;
  std::int64_t numbers = 0;  // cells that look like numbers, those out of range included
  std::int64_t texts = 0;
  BadCell firstText;
  BadCell firstBad;  // no finite number, but not a text either
  bool hasRange = false;
  Range range;
  Categories categories;  // of the texts

  template <class A>
  void Transfer(A& a) {
    a(missing);
    a(numbers);
    a(texts);
    a(firstText);
    a(firstBad);
    a(hasRange);
    a(range);
    a(categories);
  }
};

// A mergeable part of the reading: of a run of chunks.
struct ScanPart {
  static constexpr bool kIsOfOneLength = false;
  CaseCounts counts;
  std::vector<FieldScan> fields;  // by place

  void Merge(ScanPart&& right);
  template <class A>
  void Transfer(A& a) {
    a(counts);
    a(fields);
  }
};

// What a field is to the reading.
struct ScanField {
  std::string name;
  bool isText = false;    // whatever its cells look like
  bool isWeight = false;  // cases have one above 0
  bool isFrequency = false;
};

// Reads a chunk. `wanted` places the fields.
ScanPart ScanChunk(const Dialect& dialect, const std::vector<RowReader::Column>& wanted,
                   const std::vector<ScanField>& fields, Chunk& chunk);

}  // namespace support
