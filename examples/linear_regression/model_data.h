// The variables of a model and its cases, from a CSV file that is read twice.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <nqcommon/model/NQVarList.h>
#include <nqcommon/model/settings/NQSettings.h>

namespace regression {

class CsvReader;
struct Cell;

struct Case {
  std::vector<double> values;  // by position in the variable list: a number or a category's code
  double frequency = 1;
  double weight = 1;
};

struct CaseCounts {
  std::int64_t used = 0;
  std::int64_t missing = 0;    // dropped for a missing cell of the model
  std::int64_t badWeight = 0;  // dropped for a weight that is not above 0
  double sumFrequency = 0;     // over the cases used; their number without a frequency weight

  std::int64_t Dropped() const { return missing + badWeight; }
};

// What the first reading tells of a continuous variable.
struct Range {
  double min = 0;
  double max = 0;
  double first = 0;  // the value of the first case
};

// The settings (Setting... below) name the file and its columns. The first row of the file has the
// names, which are distinct; the others have as many cells.
//
// Missing      an empty cell, NA and NaN (not in quotes); also the system-missing number. A case
//              with one in a column of the model is dropped.
// Categorical  the columns named so, and inputs whose first cell that is not missing, in a row
//              without missing cells, is no number. Categories are texts, with codes in the order of
//              first appearance among the cases used.
// Numbers      have a decimal point whatever the locale, and are finite. A text in a numeric column
//              is an error.
// Memory       one row and the categories, of which a column may have 1000
// Failure      std::runtime_error, which names the line where there is one
class ModelData {
 public:
  explicit ModelData(const NQXML_940::NQSettings& settings);

  // The inputs in the order asked for, or of the file; the target; the frequency weight and the
  // regression weight, if there are any.
  const NQXML_940::NQVarList& Variables() const { return fVariables; }
  NQXML_940::NQVarList& Variables() { return fVariables; }
  int NInputs() const { return fNInputs; }
  int TargetPosition() const { return fNInputs; }
  bool HasFrequency() const { return fFrequencyPosition >= 0; }
  bool HasWeight() const { return fWeightPosition >= 0; }
  bool IsCategorical(int position) const { return At(position).categorical; }
  const Range& RangeOf(int position) const { return At(position).range; }
  // The texts of the categories, by code.
  std::vector<std::string> Categories(int position) const;

  const CaseCounts& Counts() const { return fCounts; }

  // Reads the file again and hands over the cases used, in their order.
  void ForEachCase(const std::function<void(const Case&)>& use) const;

 private:
  struct Field {
    std::string name;
    std::size_t column = 0;
    bool categorical = false;
    Range range;
    NQXML_940::INQEncoder* encoder = nullptr;  // the variable's
  };
  enum class Verdict { kUsed, kMissing, kBadWeight };

  const Field& At(int position) const { return fFields[static_cast<std::size_t>(position)]; }
  void ChooseFields(const CsvReader& header, const NQXML_940::NQSettings& settings);
  void MakeVariables(const CsvReader& row);
  void Scan();
  bool HasMissingCell(const CsvReader& row) const;
  Verdict TakeNumbers(const CsvReader& row, Case& result) const;
  void TakeCategories(const CsvReader& row, Case& result, bool addNew) const;
  void UpdateRanges(const Case& taken);
  [[noreturn]] void FailChanged() const;

  std::string fPath;
  std::size_t fNColumns = 0;
  std::vector<Field> fFields;  // by position
  int fNInputs = 0;
  int fFrequencyPosition = -1;
  int fWeightPosition = -1;
  CaseCounts fCounts;
  NQXML_940::NQVarList fVariables;
};

// The names in the settings: texts, and lists of texts for the second group.
inline constexpr const char* kSettingData = "data";
inline constexpr const char* kSettingTarget = "target";
inline constexpr const char* kSettingFreqWeight = "freq-weight";
inline constexpr const char* kSettingRegWeight = "reg-weight";
inline constexpr const char* kSettingInputs = "inputs";  // none: all the other columns
inline constexpr const char* kSettingCategorical = "categorical";

}  // namespace regression
