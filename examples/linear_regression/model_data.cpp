#include "model_data.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/model/INQEncoder.h>
#include <nqcommon/model/NQContVar.h>

#include "csv_reader.h"
#include "progress.h"
#include "xml_text.h"

using NQCommon_940::NQMV;
using NQXML_940::INQEncoder;
using NQXML_940::INQVariable;
using NQXML_940::NQContVar;
using NQXML_940::NQSettings;

namespace regression {
namespace {

constexpr int kMostCategories = 1000;

// For a message of one line.
std::string Quoted(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  std::string quoted = "'" + std::string(text.substr(0, kLongest));
  std::replace_if(
      quoted.begin(), quoted.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
  return quoted + (text.size() > kLongest ? "...'" : "'");
}

[[noreturn]] void Fail(const std::string& message) { throw std::runtime_error(message); }

[[noreturn]] void FailAt(const CsvReader& row, const std::string& message) {
  Fail("line " + std::to_string(row.Line()) + ": " + message);
}

[[noreturn]] void FailAt(const CsvReader& row, const std::string& column,
                         const std::string& message) {
  Fail("line " + std::to_string(row.Line()) + ", column " + Quoted(column) + ": " + message);
}

bool IsMissing(const Cell& cell) {
  return cell.text.empty() || (!cell.quoted && (cell.text == "NA" || cell.text == "NaN"));
}

enum class Reading { kNumber, kNotFinite, kText };

Reading ReadNumber(std::string_view text, double& number) {
  const auto isBlank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);  // quoted ones keep blanks
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error == std::errc::invalid_argument || stop != end) return Reading::kText;
  return error == std::errc() && std::isfinite(number) ? Reading::kNumber : Reading::kNotFinite;
}

std::string Text(const NQSettings& settings, const char* name) {
  std::string text;
  settings.GetSettingValByName(name, text);
  return text;
}

std::vector<std::string> List(const NQSettings& settings, const char* name) {
  std::vector<std::string> list;
  settings.GetSettingValByName(name, list);
  return list;
}

std::vector<std::string> ColumnNames(const CsvReader& header) {
  std::vector<std::string> names;
  std::set<std::string_view> seen;
  for (const Cell& cell : header.Cells()) {
    names.emplace_back(cell.text);
    if (cell.text.empty())
      FailAt(header, "column " + std::to_string(names.size()) + " has no name");
    if (!seen.insert(cell.text).second)
      FailAt(header, "two columns are named " + Quoted(cell.text));
  }
  return names;
}

}  // namespace

ModelData::ModelData(const NQSettings& settings) : fPath(Text(settings, kSettingData)) {
  CsvReader header(fPath);
  if (!header.Next()) Fail("the data are empty: no header row");
  ChooseFields(header, settings);
  Scan();

  fVariables.SetListwiseDeletion(true);
  fVariables.SetUnweightedCount(static_cast<double>(fCounts.used));
  fVariables.SetWeightedCount(fCounts.sumFrequency);
  fVariables.SetDroppedCount(static_cast<double>(fCounts.Dropped()));
  fVariables.SetBadWeightCount(static_cast<double>(fCounts.badWeight));
  fVariables.UpdateNumbersOfCategories();
  for (int i = 0; i < fVariables.GetNumVars(); ++i) {
    if (auto* variable = dynamic_cast<NQContVar*>(fVariables.GetVarAt(i)))
      variable->SetMinMax(At(i).range.min, At(i).range.max);
  }
}

std::vector<std::string> ModelData::Categories(int position) const {
  std::vector<std::string> texts;
  const INQEncoder& encoder = *At(position).encoder;
  texts.reserve(static_cast<std::size_t>(encoder.GetNumberOfCategories()));
  for (int code = 0; code < encoder.GetNumberOfCategories(); ++code)
    texts.push_back(encoder.Decode(code));
  return texts;
}

// ---- The fields ---------------------------------------------------------------------------------

void ModelData::ChooseFields(const CsvReader& header, const NQSettings& settings) {
  const std::vector<std::string> names = ColumnNames(header);
  fNColumns = names.size();
  std::map<std::string, std::string> roles;
  const auto choose = [&](const std::string& name, const char* role) {
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) Fail("no column " + Quoted(name));
    const auto [place, isNew] = roles.emplace(name, role);
    if (!isNew) Fail("column " + Quoted(name) + " is both " + place->second + " and " + role);
    if (!IsXmlText(name)) FailAt(header, "the name " + Quoted(name) + " is not UTF-8 text");
    fFields.push_back({name, static_cast<std::size_t>(found - names.begin()), false, {}, nullptr});
    return static_cast<int>(fFields.size()) - 1;
  };

  const std::string target = Text(settings, kSettingTarget);
  const std::string frequency = Text(settings, kSettingFreqWeight);
  const std::string weight = Text(settings, kSettingRegWeight);
  std::vector<std::string> inputs = List(settings, kSettingInputs);
  if (inputs.empty()) {
    inputs = names;
    std::erase_if(inputs, [&](const std::string& name) {
      return name == target || name == frequency || name == weight;
    });
  }
  for (const std::string& name : inputs) choose(name, "an input");
  fNInputs = static_cast<int>(fFields.size());
  choose(target, "the target");
  if (!frequency.empty()) fFrequencyPosition = choose(frequency, "the frequency weight");
  if (!weight.empty()) fWeightPosition = choose(weight, "the regression weight");

  for (const std::string& name : List(settings, kSettingCategorical)) {
    const auto end = fFields.begin() + fNInputs;
    const auto found =
        std::find_if(fFields.begin(), end, [&](const Field& field) { return field.name == name; });
    if (found == end) Fail("categorical column " + Quoted(name) + " is not an input");
    found->categorical = true;
  }
}

// The first complete row decides which inputs are categorical.
void ModelData::MakeVariables(const CsvReader& row) {
  const double nothingYet = 0;
  for (int i = 0; i < static_cast<int>(fFields.size()); ++i) {
    Field& field = fFields[static_cast<std::size_t>(i)];
    double number = 0;
    if (i < fNInputs && ReadNumber(row.Cells()[field.column].text, number) == Reading::kText)
      field.categorical = true;
    if (i == fFrequencyPosition) {
      fVariables.SetWeightVar(field.name, "", INQVariable::RoundAsIs);
    } else if (field.categorical) {
      fVariables.AddCatVar(field.name, "", 0, INQVariable::LevelStringCategorical,
                           INQVariable::RoleInput, false);
      fVariables.GetVarAt(i)->SetVariableStorage(INQVariable::StorageString);
    } else {
      const auto role = i < fNInputs    ? INQVariable::RoleInput
                        : i == fNInputs ? INQVariable::RoleTarget
                                        : INQVariable::RoleUnused;
      fVariables.AddContVar(field.name, "", nothingYet, nothingYet, role, false, 0);
      fVariables.GetVarAt(i)->SetVariableStorage(INQVariable::StorageReal);
    }
    field.encoder = fVariables.GetEncoderAt(i);
  }
}

// ---- The cases ----------------------------------------------------------------------------------

void ModelData::Scan() {
  CsvReader row(fPath);
  Progress progress(2 * row.FileSize());
  Case taken;
  taken.values.resize(fFields.size());
  std::int64_t rows = 0;
  row.Next();
  for (; row.Next(); ++rows) {
    progress.Show(row.BytesTaken());
    if (row.Cells().size() != fNColumns) {
      FailAt(row, "expected " + std::to_string(fNColumns) + " cells, found " +
                      std::to_string(row.Cells().size()));
    }
    if (HasMissingCell(row)) {
      ++fCounts.missing;
      continue;
    }
    if (fVariables.GetNumVars() == 0) MakeVariables(row);
    const Verdict verdict = TakeNumbers(row, taken);
    fCounts.missing += verdict == Verdict::kMissing;
    fCounts.badWeight += verdict == Verdict::kBadWeight;
    if (verdict != Verdict::kUsed) continue;
    TakeCategories(row, taken, true);
    UpdateRanges(taken);
    ++fCounts.used;
    fCounts.sumFrequency += taken.frequency;
  }
  if (rows == 0) Fail("no rows below the header");
  if (fCounts.used > 0) return;
  Fail(fCounts.badWeight > 0 ? "no case has a weight above 0"
                             : "every case has a missing cell in a column of the model");
}

void ModelData::ForEachCase(const std::function<void(const Case&)>& use) const {
  CsvReader row(fPath);
  Progress progress(2 * row.FileSize());
  Case taken;
  taken.values.resize(fFields.size());
  std::int64_t used = 0;
  row.Next();
  while (row.Next()) {
    progress.Show(row.FileSize() + row.BytesTaken());
    if (row.Cells().size() != fNColumns) FailChanged();
    if (HasMissingCell(row) || TakeNumbers(row, taken) != Verdict::kUsed) continue;
    TakeCategories(row, taken, false);
    ++used;
    use(taken);
  }
  if (used != fCounts.used) FailChanged();
}

void ModelData::FailChanged() const { Fail(fPath + " has changed while it was read"); }

bool ModelData::HasMissingCell(const CsvReader& row) const {
  return std::any_of(fFields.begin(), fFields.end(),
                     [&](const Field& field) { return IsMissing(row.Cells()[field.column]); });
}

ModelData::Verdict ModelData::TakeNumbers(const CsvReader& row, Case& result) const {
  for (std::size_t i = 0; i < fFields.size(); ++i) {
    const Field& field = fFields[i];
    if (field.categorical) continue;
    const std::string_view text = row.Cells()[field.column].text;
    double number = 0;
    const Reading reading = ReadNumber(text, number);
    if (reading != Reading::kNumber) {
      FailAt(row, field.name,
             Quoted(text) + (reading == Reading::kText ? " is not a number" : " is not finite"));
    }
    const double value = field.encoder->EncodeConst(number);
    const int position = static_cast<int>(i);
    if (position == fFrequencyPosition || position == fWeightPosition) {
      if (!(value > 0)) return Verdict::kBadWeight;  // missing, what rounding to a count left, too
      (position == fWeightPosition ? result.weight : result.frequency) = value;
    } else if (NQMV::IsMissing(value)) {
      return Verdict::kMissing;
    }
    result.values[i] = value;
  }
  return Verdict::kUsed;
}

void ModelData::TakeCategories(const CsvReader& row, Case& result, bool addNew) const {
  std::string text;
  for (std::size_t i = 0; i < fFields.size(); ++i) {
    const Field& field = fFields[i];
    if (!field.categorical) continue;
    text = row.Cells()[field.column].text;
    result.values[i] = field.encoder->EncodeConst(text);
    if (result.values[i] >= 0) continue;
    if (!addNew) FailChanged();
    if (!IsXmlText(text)) FailAt(row, field.name, Quoted(text) + " is not UTF-8 text");
    result.values[i] = field.encoder->Encode(text);
    if (result.values[i] >= kMostCategories) {
      FailAt(row, field.name,
             "more than " + std::to_string(kMostCategories) + " categories; is this an input?");
    }
  }
}

void ModelData::UpdateRanges(const Case& taken) {
  for (std::size_t i = 0; i < fFields.size(); ++i) {
    const double x = taken.values[i];
    Range& range = fFields[i].range;
    if (fCounts.used == 0) range = {x, x, x};
    range.min = std::min(range.min, x);
    range.max = std::max(range.max, x);
  }
}

}  // namespace regression
