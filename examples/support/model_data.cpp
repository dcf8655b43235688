#include "model_data.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

#include <nqcommon/model/INQEncoder.h>
#include <nqcommon/model/NQContVar.h>

#include "text.h"

using NQXML_940::INQVariable;
using NQXML_940::NQSettings;

namespace support {
namespace {

[[noreturn]] void Fail(const std::string& message) { throw std::runtime_error(message); }

std::string TextOf(const NQSettings& settings, const char* name) {
  std::string text;
  settings.GetSettingValByName(name, text);
  return text;
}

std::vector<std::string> ListOf(const NQSettings& settings, const char* name) {
  std::vector<std::string> list;
  settings.GetSettingValByName(name, list);
  return list;
}

std::vector<std::string> SplitAtCommas(const std::string& text) {
  std::vector<std::string> items;
  for (std::size_t at = 0, comma = 0; comma != text.npos; at = comma + 1) {
    comma = text.find(',', at);
    items.push_back(text.substr(at, comma - at));
  }
  return items;
}

// The names in arguments, each of which is a name or several between commas.
std::vector<std::string> NamesIn(const std::vector<std::string>& arguments,
                                 const std::vector<std::string>& known) {
  std::vector<std::string> names;
  for (const std::string& argument : arguments) {
    const bool isName = std::find(known.begin(), known.end(), argument) != known.end();
    const std::vector<std::string> items = isName ? std::vector{argument} : SplitAtCommas(argument);
    names.insert(names.end(), items.begin(), items.end());
  }
  return names;
}

Dialect DialectOf(const NQSettings& settings) {
  Dialect dialect;
  const std::string separator = TextOf(settings, kSettingSeparator);
  if (separator == "tab" || separator == "\\t") {
    dialect.separator = '\t';
  } else if (separator.size() == 1 &&
             std::string("\"\r\n\\.+-").find(separator) == std::string::npos &&
             !(separator[0] >= '0' && separator[0] <= '9') && separator[0] > 0) {
    dialect.separator = separator[0];
  } else if (!separator.empty()) {
    Fail("the separator must be one character, or tab");
  }
  for (const std::string& argument : ListOf(settings, kSettingMissing)) {
    dialect.usualMissing = false;
    for (std::string& mark : SplitAtCommas(argument)) dialect.missing.push_back(std::move(mark));
  }
  return dialect;
}

const char* Complaint(Reading reading) {
  if (reading == Reading::kNotFinite) return " is not finite";
  if (reading == Reading::kTooSmall) return " is too close to 0 for a number";
  return " is not a number";
}

}  // namespace

ModelData::ModelData(const NQSettings& settings, Team& team, std::uint64_t chunkBytes)
    : fSource(OpenSource({TextOf(settings, kSettingData), TextOf(settings, kSettingTable),
                          TextOf(settings, kSettingQuery)},
                         DialectOf(settings), chunkBytes)) {
  ChooseFields(settings);
  fSource->Prepare(team);
  std::vector<ScanField> fields;
  fields.reserve(fFields.size());
  for (int i = 0; i < static_cast<int>(fFields.size()); ++i) {
    fields.push_back({NameOf(i), IsCategorical(i), i == fFrequencyPosition || i == fWeightPosition,
                      i == fFrequencyPosition});
  }
  const std::vector<RowReader::Column> places = PlacesIn(*fSource, false);
  ScanPart scan = team.Gather<ScanPart>(*fSource, [&](Chunk& chunk) {
    return ScanChunk(fSource->GetDialect(), places, fields, chunk);
  });
  fCounts = scan.counts;
  if (fCounts.rows == 0) Fail(fSource->Path() + " has no rows");
  RefuseCells(scan);
  if (fCounts.used == 0) {
    Fail(fCounts.badWeight > 0 ? "no case has a weight above 0"
                               : "every case has a missing cell in a column of the model");
  }
  DecideTypes(scan);
  ChooseReferences(ListOf(settings, kSettingReference));
  MakeVariables();
  TakeNotes();
}

std::vector<RowReader::Column> ModelData::PlacesIn(const Source& source, bool inputsAlone) const {
  const std::vector<std::string>& names = source.ColumnNames();
  std::vector<RowReader::Column> places(names.size());
  const int n = inputsAlone ? fNInputs : static_cast<int>(fFields.size());
  for (int i = 0; i < n; ++i) {
    const auto found = std::find(names.begin(), names.end(), NameOf(i));
    if (found == names.end()) Fail(source.Path() + " has no column " + Quoted(NameOf(i)));
    places[static_cast<std::size_t>(found - names.begin())] = {
        IsCategorical(i) ? RowReader::Use::kAsText : RowReader::Use::kAsNumber, i};
  }
  return places;
}

// ---- The fields ---------------------------------------------------------------------------------

void ModelData::ChooseFields(const NQSettings& settings) {
  const std::vector<std::string>& names = fSource->ColumnNames();
  std::map<std::string, std::string> roles;
  const auto choose = [&](const std::string& name, const char* role) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
      Fail("no column " + Quoted(name) +
           (names[0].starts_with('#') ? "; is line 1 a comment? They are not passed over" : ""));
    }
    const auto [place, isNew] = roles.emplace(name, role);
    if (!isNew) Fail("column " + Quoted(name) + " is both " + place->second + " and " + role);
    fFields.push_back({name, false, {}, {}, 0});
    return static_cast<int>(fFields.size()) - 1;
  };

  const std::string target = TextOf(settings, kSettingTarget);
  const std::string frequency = TextOf(settings, kSettingFreqWeight);
  const std::string weight = TextOf(settings, kSettingRegWeight);
  std::vector<std::string> inputs = NamesIn(ListOf(settings, kSettingInputs), names);
  if (inputs.empty()) {
    inputs = names;
    std::erase_if(inputs, [&](const std::string& name) {
      return name == target || name == frequency || name == weight;
    });
  }
  for (const std::string& name : inputs) choose(name, "an input");
  fNInputs = static_cast<int>(fFields.size());
  fFields[static_cast<std::size_t>(choose(target, "the target"))].categorical =
      settings.FindSetting(kSettingEvent) != nullptr;
  if (!frequency.empty()) fFrequencyPosition = choose(frequency, "the frequency weight");
  if (!weight.empty()) fWeightPosition = choose(weight, "the regression weight");

  for (const std::string& name : NamesIn(ListOf(settings, kSettingCategorical), names)) {
    const auto end = fFields.begin() + fNInputs;
    const auto found =
        std::find_if(fFields.begin(), end, [&](const Field& field) { return field.name == name; });
    if (found == end) Fail("categorical column " + Quoted(name) + " is not an input");
    found->categorical = true;
  }
}

// The first cell of the source that its column cannot have.
void ModelData::RefuseCells(const ScanPart& scan) const {
  const BadCell none;
  const BadCell* first = &none;
  int column = 0;
  for (int i = 0; i < static_cast<int>(fFields.size()); ++i) {
    const FieldScan& field = scan.fields[static_cast<std::size_t>(i)];
    if (field.missing == fCounts.rows)
      Fail("column " + Quoted(NameOf(i)) + " has no value in any row");
    if (IsCategorical(i)) continue;
    const bool mustBeNumeric = i >= fNInputs || field.numbers > 0;
    for (const BadCell* cell : {&field.firstText, &field.firstBad}) {
      if (!mustBeNumeric || !cell->IsBefore(*first)) continue;
      first = cell;
      column = i;
    }
  }
  if (first->line == 0) return;
  std::string message = fSource->PlaceOf(first->chunk, first->line) + ", column " +
                        Quoted(NameOf(column)) + ": " + Quoted(first->text) +
                        Complaint(first->reading);
  if (column < fNInputs) message += "; --missing or --categorical tells what it is";
  Fail(message);
}

void ModelData::DecideTypes(ScanPart& scan) {
  for (int i = 0; i < static_cast<int>(fFields.size()); ++i) {
    Field& field = fFields[static_cast<std::size_t>(i)];
    FieldScan& found = scan.fields[static_cast<std::size_t>(i)];
    field.categorical = field.categorical || found.numbers == 0;
    field.range = found.range;
    if (!field.categorical) continue;
    if (found.categories.IsFull()) {
      Fail("column " + Quoted(field.name) + " has more than " + std::to_string(Categories::kMost) +
           " categories; is it an input?");
    }
    field.categories = std::move(found.categories);
  }
}

bool ModelData::ChooseReference(const std::string& text) {
  for (std::size_t at = text.find('='); at != text.npos; at = text.find('=', at + 1)) {
    for (int i = 0; i < fNInputs; ++i) {
      Field& field = fFields[static_cast<std::size_t>(i)];
      const int code = field.categories.CodeOf(std::string_view(text).substr(at + 1));
      if (text.compare(0, at, field.name) != 0 || code < 0) continue;
      field.reference = code;
      return true;
    }
  }
  return false;
}

void ModelData::ChooseReferences(const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    if (ChooseReference(text)) continue;
    for (const std::string& item : SplitAtCommas(text)) {
      if (!ChooseReference(item))
        Fail("reference " + Quoted(item) + " is not CATEGORICAL_INPUT=CATEGORY of the cases used");
    }
  }
}

INQVariable::VariableRole ModelData::RoleOf(int position) const {
  return position < fNInputs    ? INQVariable::RoleInput
         : position == fNInputs ? INQVariable::RoleTarget
                                : INQVariable::RoleUnused;
}

void ModelData::MakeVariables() {
  for (int i = 0; i < static_cast<int>(fFields.size()); ++i) {
    const Field& field = At(i);
    if (i == fFrequencyPosition) {
      fVariables.SetWeightVar(field.name, "", INQVariable::RoundAsIs);
    } else if (field.categorical) {
      fVariables.AddCatVar(field.name, "", 0, INQVariable::LevelStringCategorical, RoleOf(i),
                           false);
      fVariables.GetVarAt(i)->SetVariableStorage(INQVariable::StorageString);
      for (const std::string& text : field.categories.Texts())
        fVariables.GetEncoderAt(i)->Encode(text);
    } else {
      fVariables.AddContVar(field.name, "", field.range.min, field.range.max, RoleOf(i), false, 0);
      fVariables.GetVarAt(i)->SetVariableStorage(INQVariable::StorageReal);
    }
  }
  fVariables.SetListwiseDeletion(true);
  fVariables.SetUnweightedCount(static_cast<double>(fCounts.used));
  fVariables.SetWeightedCount(fCounts.sumFrequency);
  fVariables.SetDroppedCount(static_cast<double>(fCounts.Dropped()));
  fVariables.SetBadWeightCount(static_cast<double>(fCounts.badWeight));
  fVariables.UpdateNumbersOfCategories();
}

void ModelData::TakeNotes() {
  for (int i = 0; i < fNInputs; ++i) {
    if (NCategories(i) < 3 || NCategories(i) < fCounts.used) continue;
    fNotes.push_back("column " + Quoted(NameOf(i)) + " has a category for each case, the first " +
                     Quoted(CategoriesOf(i)[0]) + "; is it meant to be categorical?");
  }
}

// ---- The cases ----------------------------------------------------------------------------------

CaseReader::CaseReader(const ModelData& data)
    : fData(data),
      fRow(data.File().GetDialect(), data.PlacesIn(data.File(), false)),
      fValues(fRow.Cells().size()) {}

bool CaseReader::Next() {
  while (fRow.Next()) {
    const std::vector<Cell>& cells = fRow.Cells();
    bool used = true;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      used &= cells[i].kind != Cell::kMissing;
      fValues[i] = cells[i].number;
    }
    if (!used) continue;
    for (int i = 0; i <= fData.TargetPosition(); ++i) {
      if (!fData.IsCategorical(i)) continue;
      const auto place = static_cast<std::size_t>(i);
      fValues[place] = fData.CodeOf(i, cells[place].text);
    }
    const int frequency = fData.FrequencyPosition(), weight = fData.WeightPosition();
    if (frequency >= 0) fFrequency = fValues[static_cast<std::size_t>(frequency)];
    if (weight >= 0) fWeight = fValues[static_cast<std::size_t>(weight)];
    if (fFrequency > 0 && fWeight > 0) return true;
  }
  return false;
}

}  // namespace support
