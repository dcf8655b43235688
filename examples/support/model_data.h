// The variables of a model and its cases, from a source that is read several times.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <nqcommon/model/NQVarList.h>
#include <nqcommon/model/settings/NQSettings.h>

#include "row_reader.h"
#include "scan.h"
#include "source.h"
#include "team.h"

namespace support {

// The settings (Setting... below) name the source and its columns.
//
// Missing      see Dialect; also the system-missing number. A case with a missing cell in a column
//              of the model is dropped.
// Categorical  the columns named so, and inputs of which no cell looks like a number. Categories
//              are texts, with codes in the order of first appearance among the cases used; one of
//              each column, the first unless another is named, is its reference category.
// Target       a number; its categories where the settings have an event, even an empty one
// Numbers      have a decimal point whatever the locale, and are finite. An input with both numbers
//              and texts is refused, and so is a text in the target or in a weight.
// Memory       the categories, of which a column may have 1000, and a chunk for each thread
// Failure      std::runtime_error, which names the line or row where there is one
class ModelData {
 public:
  // Reads the source once, in chunks of so many bytes.
  ModelData(const NQXML_940::NQSettings& settings, Team& team,
            std::uint64_t chunkBytes = kChunkBytes);

  // The inputs in the order asked for, or of the file; the target; the frequency weight and the
  // regression weight, if there are any.
  const NQXML_940::NQVarList& Variables() const { return fVariables; }
  NQXML_940::NQVarList& Variables() { return fVariables; }
  const std::string& NameOf(int position) const { return At(position).name; }
  int NInputs() const { return fNInputs; }
  int TargetPosition() const { return fNInputs; }
  bool HasFrequency() const { return fFrequencyPosition >= 0; }
  bool HasWeight() const { return fWeightPosition >= 0; }
  int FrequencyPosition() const { return fFrequencyPosition; }  // -1: there is none
  int WeightPosition() const { return fWeightPosition; }
  bool IsCategorical(int position) const { return At(position).categorical; }
  const Range& RangeOf(int position) const { return At(position).range; }
  // The texts of the categories, by code; their number; the code of the reference category.
  const std::vector<std::string>& CategoriesOf(int position) const {
    return At(position).categories.Texts();
  }
  int NCategories(int position) const { return static_cast<int>(CategoriesOf(position).size()); }
  int CodeOf(int position, std::string_view text) const {
    return At(position).categories.CodeOf(text);
  }
  int ReferenceOf(int position) const { return At(position).reference; }

  Source& File() const { return *fSource; }
  const CaseCounts& Counts() const { return fCounts; }
  // What the user should know though it is no error: a line each.
  const std::vector<std::string>& Notes() const { return fNotes; }

  // Which cells of a file with these columns the variables are in; of the inputs alone, if so
  // asked. Throws when the file has no such column.
  std::vector<RowReader::Column> PlacesIn(const Source& source, bool inputsAlone) const;

 private:
  struct Field {
    std::string name;
    bool categorical = false;
    Range range;
    Categories categories;
    int reference = 0;
  };

  const Field& At(int position) const { return fFields[static_cast<std::size_t>(position)]; }
  void ChooseFields(const NQXML_940::NQSettings& settings);
  void RefuseCells(const ScanPart& scan) const;
  void DecideTypes(ScanPart& scan);
  void ChooseReferences(const std::vector<std::string>& texts);
  bool ChooseReference(const std::string& text);
  NQXML_940::INQVariable::VariableRole RoleOf(int position) const;
  void MakeVariables();
  void TakeNotes();

  std::unique_ptr<Source> fSource;
  std::vector<Field> fFields;  // by position
  int fNInputs = 0;
  int fFrequencyPosition = -1;
  int fWeightPosition = -1;
  CaseCounts fCounts;
  std::vector<std::string> fNotes;
  NQXML_940::NQVarList fVariables;
};

// The cases used of a chunk.
class CaseReader {
 public:
  explicit CaseReader(const ModelData& data);

  void Start(Chunk& chunk) { fRow.Start(chunk); }
  bool Next();

  // By position: a number or a category's code.
  const double* Values() const { return fValues.data(); }
  double Frequency() const { return fFrequency; }
  double Weight() const { return fWeight; }
  // The row of the case within the chunk, from 1; after the last case all rows of the chunk.
  std::int64_t Row() const { return fRow.RowsTaken(); }

 private:
  const ModelData& fData;
  RowReader fRow;
  std::vector<double> fValues;
  double fFrequency = 1;
  double fWeight = 1;
};

// The names in the settings: texts, and lists of texts for the second group.
inline constexpr const char* kSettingData = "data";
inline constexpr const char* kSettingTable = "table";  // of a database
inline constexpr const char* kSettingQuery = "query";
inline constexpr const char* kSettingTarget = "target";
inline constexpr const char* kSettingEvent = "event";
inline constexpr const char* kSettingFreqWeight = "freq-weight";
inline constexpr const char* kSettingRegWeight = "reg-weight";
inline constexpr const char* kSettingSeparator = "separator";  // "": a comma
inline constexpr const char* kSettingInputs = "inputs";        // none: all the other columns
inline constexpr const char* kSettingCategorical = "categorical";
inline constexpr const char* kSettingReference = "reference";  // COLUMN=CATEGORY
inline constexpr const char* kSettingMissing = "missing";      // none: NA and NaN in any case

}  // namespace support
