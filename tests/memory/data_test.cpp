// Values, records, warnings and loading; trees, JSON and saved objects; settings, encoders and
// variables; StatXML and PMML. Operations that only make and return something are left out: all
// that they can do where memory ends is to let std::bad_alloc pass.
#include <nqcommon/common/MemoryRecordIterator.h>
#include <nqcommon/common/NQDynamicLoadedLibrary.h>
#include <nqcommon/common/NQWarnings.h>
#include <nqcommon/common/ValueRecord.h>
#include <nqcommon/model/NQApplicInfo4XML.h>
#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQContEncoder.h>
#include <nqcommon/model/NQRecordEncoder.h>
#include <nqcommon/model/NQRoundEncoder.h>
#include <nqcommon/model/NQStringEncoder.h>
#include <nqcommon/model/NQUniStats.h>
#include <nqcommon/model/NQWeightVar.h>
#include <nqcommon/model/settings/NQSettings.h>
#include <nqcommon/output/NQPMMLExporter.h>
#include <nqcommon/output/NQStatXMLUtil.h>
#include <nqcommon/xml/JsonObject.h>
#include <nqcommon/xml/XMLObj.h>
#include <nqcommon/xml/save_format.h>
#include <nqcommon/xml/write_tree.h>

#include "support/failing_new.h"
#include "support/testing.h"
#include "support/variable_list_checks.h"

namespace {

using namespace NQCommon_940;
using namespace NQXML_940;
using namespace nqtest;
using V = INQVariable;
using U = NQStatXMLUtil;
using Pairs = std::vector<std::pair<std::string, std::string>>;

const std::string kLong(40, 'x'), kOther(40, 'y');  // longer than a string holds in itself

// ---- What an object is, as a text ---------------------------------------------------------------

template <class T>
std::string Text(const T& object) {
  if constexpr (requires { object.Display(); })
    return Displayed(object);
  else
    return testing::PrintToString(object);
}
std::string Text(const std::vector<NQSettings>& list) { return Text(NQSetting("", list)); }
std::string Text(const Value& value) { return std::to_string(value.GetType()) + value.GetString(); }
std::string Text(const ValueRecord& record) {
  std::string all = Displayed(record);
  for (const std::string& name : record.Names(true)) all += std::to_string(record.IndexOf(name));
  return all;
}
std::string Text(const JsonObject& object) { return object.GetJsonString(true); }
template <class Node>
std::string Text(const std::unique_ptr<Node>& node) {
  ExportFormat format;
  std::string text;
  if (node) node->ToString(text, format);
  return text;
}
std::string Text(const Record& row) {
  return Text(Doubles(row.GetAll(), row.GetAll() + row.Size()));
}
std::string Text(const RawRecord& row) { return row.Size() > 0 ? row[0].fText : "none"; }
std::string Text(const NQWarnings& warnings) {
  NQWarnings copy = warnings;
  std::string text;
  for (const bool current : {true, false})
    for (const NQStatus& status : copy.GetWarnings(current))
      text += std::to_string(status.GetErrorCode()) + (current ? "c" : "a");
  for (const long code : {1L, 2L})
    for (const auto& parameter : copy.GetParameters(NQStatus(code, true)))
      text += "|" + std::to_string(parameter.ToInteger()) + parameter.ToString();
  return text;
}

// ---- Rows ---------------------------------------------------------------------------------------

// The object is as a call with all memory leaves it, or as before where the call throws or answers
// false. It does neither where no allocation fails.
template <class Make, class Call>
MemoryCase On(const char* operation, Make make, Call call, bool mayThrow) {
  const auto run = [=](Injection& inject) {
    auto object = make(), wanted = make();
    const std::string before = Text(object);
    bool done = false;
    call(wanted);
    inject([&] {
      if constexpr (std::is_same_v<decltype(call(object)), bool>)
        done = call(object);
      else
        call(object), done = true;
    });
    const std::string got = Text(object);
    return Verdict{got == (done ? Text(wanted) : before) && (done || inject.HasFailed()), got};
  };
  return {operation, run, mayThrow};
}

// Rows by the text of the call, on an object `o` that `make` makes.
#define CALL(...) [&](auto& o) -> decltype(auto) { return (o.__VA_ARGS__); }
#define ANSWERS(make, ...) On(#__VA_ARGS__, make, CALL(__VA_ARGS__), false)
#define THROWS(make, ...) On(#__VA_ARGS__, make, CALL(__VA_ARGS__), true)

void RunAll(const char* title, const std::vector<MemoryCase>& cases) {
  std::ostream nowhere(nullptr);
  std::ostream& before = NQDisplay_940::GetOutStream();
  std::streambuf* const errors = std::cerr.rdbuf(nullptr);  // failures of readers
  NQDisplay_940::SetOutStream(nowhere);
  RunMemoryCases(title, cases);
  NQDisplay_940::SetOutStream(before);
  std::cerr.rdbuf(errors);
  std::cerr.clear();
}

// ---- Values, records, warnings, loading ---------------------------------------------------------

std::string NoText() { return {}; }
Value Null() { return {}; }
Value Nested() {
  Value value;
  value[1]["key " + kLong] = kLong;
  return value;
}

TEST(Memory, Values) {
  const Value nested = Nested();
  const auto getString = [&](std::string& text) { text = nested.GetString(); };
  RunAll("values", {THROWS(Nested, operator=(nested)), THROWS(Nested, operator[](0) = o),
                    THROWS(Nested, operator=(kLong)), THROWS(Null, SetValue(kLong)),
                    THROWS(Null, operator std::string&()), THROWS(Nested, operator[](500)),
                    THROWS(Nested, Resize(1000)), THROWS(Nested, operator[](kLong)),
                    THROWS(Null, operator[]("literal of 24 characters")),
                    On("GetString", NoText, getString, true)});
}

ValueRecord Named() {
  ValueRecord record;
  record.Add(kLong, 1);
  record.Add("b", kLong);
  return record;
}
ValueRecord Shared() {
  const ValueRecord record = Named();
  return ValueRecord(record);
}
Record NoCells() { return Record(0); }
RawRecord NoRawCells() { return RawRecord(0); }

TEST(Memory, Records) {
  const Texts names = {"x", kLong + "y", "b"};
  const Record three(3);
  RawRecord raw(2);
  raw[0].fText = kLong;
  double values[] = {1, 2};
  const auto iterator = [&](Injection& inject) {
    bool isRight = false;
    inject([&] {
      MemoryRecordIterator rows(2, 1, values, values, nullptr);
      const Record* row = rows.Next();
      isRight = row ? (*row)[1] == 1 : !rows.HasMore();
    });
    return Verdict{isRight};
  };
  RunAll("records", {THROWS(Named, operator=(ValueRecord(names))),
                     THROWS(Named, Add("c" + kLong, kLong)),
                     THROWS(Named, Add("b", kLong + "x")),
                     THROWS(Shared, Add("c" + kLong, kLong)),
                     THROWS(Shared, Set("b", kLong + "x", true)),
                     THROWS(Shared, Remove(kLong)),
                     ANSWERS(NoCells, operator=(Record(5)).Size() == 5),
                     ANSWERS(NoCells, operator=(three).Size() == 3),
                     ANSWERS(NoCells, Resize(6) && std::fill_n(o.GetAll(), 6, 7.0)),
                     ANSWERS(NoRawCells, operator=(raw).Size() == 2),
                     {"MemoryRecordIterator", iterator}});
}

const NQStatus one(1, true), two(2, true);

NQWarnings Warned() {
  NQWarnings warnings;
  warnings.AddWarning(one, NQWarnings::ToBoth);
  warnings.AddParameter(one, kLong);
  return warnings;
}

TEST(Memory, WarningsAndLoading) {
  // The warning and its parameter are added, or one of them, or none.
  const auto merges = [](Injection& inject) {
    NQWarnings warnings = Warned(), other;
    other.AddWarnings({two});
    other.AddParameter(two, kLong);
    inject([&] { warnings.AddWarnings(std::move(other)); });
    const bool isAdded = warnings.GetWarnings(true).size() == 2 && warnings.HasParameter(two);
    return Verdict{isAdded != inject.HasFailed() && warnings.GetParameters(one).size() == 1};
  };
  const auto loads = [](Injection& inject) {
    NQDynamicLoadedLibrary absent("/no/such/" + kLong, 1);
    int result = 0;
    void* address = &result;
    inject([&] { result = absent.LoadLibraryNow(), address = absent.GetSymbolAddress("x"); });
    const bool hasText = absent.GetErrorText().find(kLong) != std::string::npos;
    return Verdict{result == -1 && !address &&
                   (hasText || (inject.HasFailed() && absent.GetErrorText().empty()))};
  };
  RunAll("warnings and loading",
         {ANSWERS(Warned, AddWarning(two, NQWarnings::ToCurrent), o.GetWarnings(true).size() == 2),
          ANSWERS(Warned, AddParameter(two, 7)),
          ANSWERS(Warned, GetParameters(one).size() == 1),
          {"NQWarnings::AddWarnings", merges},
          {"NQDynamicLoadedLibrary", loads}});
}

// ---- Trees, JSON, saved objects -----------------------------------------------------------------

XMLElement* NewElement() { return XMLElement::Create("e" + kLong); }

std::unique_ptr<XMLElement> Tree() {
  std::unique_ptr<XMLElement> root(NewElement());
  root->AddAttribute(XMLAttribute::Create("a", " <" + kLong));
  root->AddElement(XMLString::Create("<" + kLong));
  root->AddElement(NewElement());
  return root;
}
JsonObject Json() {
  JsonObject object("a" + kLong, JsonObject("k", kLong));
  object.AddPair("b", true);
  return object;
}

TEST(Memory, XmlAndJson) {
  const JsonObject part = Json();
  RunAll("XML and JSON",
         {THROWS(Tree, get()->AddElement(NewElement())),
          THROWS(Tree, get()->AddElement(XMLString::Create("&" + kLong))),
          THROWS(Tree, get()->AddAttribute(XMLAttribute::Create("b", kLong))),
          THROWS(Tree, get()->AddAttribute("b" + kLong, kLong + kLong)),
          THROWS(Tree, get()->AddAttribute(kLong + kLong, 0.1)),
          THROWS(Json, AddPair("c" + kLong, part)), THROWS(Json, AddPair("b", kLong.c_str()))});
}

// ---- Settings -----------------------------------------------------------------------------------

NQSettings Two() {
  NQSettings settings;
  settings.AddSetting("number", 2.5, false);
  settings.AddSetting("text", kLong, false);
  return settings;
}
NQSettings Full() {
  NQSettings settings = Two();
  settings.AddNewSetting("nested", Two(), kLong);
  settings.AddNewSetting("doubles", Doubles{1, 2}, "");
  settings.AddNewSetting("texts", Texts{"1", "2", kLong}, "");
  settings.AddNewSetting("digits", Texts{"1", "2"}, "");
  settings.AddNewSetting("pairs", Pairs{{"a", kLong}}, "");
  settings.AddNewSetting("list", std::vector<NQSettings>{Two()}, "");
  return settings;
}
NQSetting Setting() { return NQSetting("name", kLong); }

template <class Out>
MemoryCase Get(const char* name) {
  const auto get = [name, settings = Full()](Out& out) {
    return settings.GetSettingValByName(name, out);
  };
  return On(
      name, [] { return Out(); }, get, false);
}

TEST(Memory, Settings) {
  const NQSettings inner = Full();
  const char* const texts[] = {kLong.c_str(), nullptr};
  const NQSettings* const lists[] = {&inner, nullptr};
  RunAll("settings", {ANSWERS(Full, AddSetting(kLong, 1, false)),
                      ANSWERS(Full, AddSetting("a", kLong, false)),
                      ANSWERS(Full, AddNewSetting("a", kLong, kLong)),
                      ANSWERS(Full, AddNewSetting("a", inner, "")),
                      ANSWERS(Full, AddNewSetting("a", texts, 2, "")),
                      ANSWERS(Full, AddNewSetting("a", lists, 2, "")),
                      THROWS(Full, AddNewSetting("a", Texts{kLong}, "")),
                      ANSWERS(Full, RemoveSetting("text", true)),
                      THROWS(Full, operator=(inner)),
                      THROWS(Full, operator=(std::move(*std::unique_ptr<NQSettings>(o.Clone())))),
                      THROWS(Full, Display()),
                      THROWS(Setting, SetValue(kOther)),
                      THROWS(Setting, SetValue(inner)),
                      THROWS(Setting, SetValue(*o.GetValue())),
                      THROWS(Setting, operator=(*inner.GetSettingAt(2))),
                      Get<std::string>("text"),
                      Get<NQSettings>("nested"),
                      Get<Doubles>("doubles"),
                      Get<Texts>("doubles"),
                      Get<Doubles>("digits"),
                      Get<std::vector<NQSettings>>("list")});
}

// ---- Encoders and variables ---------------------------------------------------------------------

NQCatNumEncoder Numbers() { return NQCatNumEncoder(Doubles{0, 1, 2, 3, 4, 5, 6, 7}); }
NQStringEncoder Strings() {
  NQStringEncoder encoder(Texts{"", "1", "2", "3", "4", "5", "6", kLong});
  encoder.AddDiscreteUserMissing(kLong, kLong);
  return encoder;
}
NQContEncoder Continuous() { return NQContEncoder(Doubles{1, 2, 3}); }
NQRoundEncoder Rounding() { return NQRoundEncoder(); }
NQCatVar Categorical() { return {kLong, kLong, 0, V::RoleInput, true, {"a", kLong}}; }
NQContVar Binned() { return {kLong, kLong, 0, 8, V::RoleInput, true, 4}; }
NQWeightVar Weight() { return {kLong, kLong, V::RoundDown}; }

// Reading leaves an object that can be saved, and saved again after that was read.
template <class T>
MemoryCase Reads(T (*make)()) {
  return {"ReadObjectXML",
          [=](Injection& inject) {
            T object = make(), wanted = make();
            const std::string saved = Saved(wanted);
            const MemoryFile file(saved);
            std::ifstream in = file.Open();
            bool done = false;
            inject([&] {
              try {
                done = object.ReadObjectXML(in) > 0;
              } catch (IOException* failure) {
                delete failure;
              }
            });
            const std::string left = Saved(object);
            return Verdict{
                done ? left == saved : inject.HasFailed() && Restore(wanted, left).lines > 0, left};
          },
          true};
}

// What it takes to copy an object and to assign to it.
template <class T>
MemoryCase Copies(T (*make)()) {
  const auto copy = [](T& object) { object = T(*std::unique_ptr<T>(object.Clone())); };
  return On("Clone", make, copy, true);
}

TEST(Memory, Encoders) {
  RunAll("encoders",
         {ANSWERS(Numbers, Encode(8) == 8), ANSWERS(Strings, Encode(kOther) == 8),
          ANSWERS(Numbers, AddDiscreteUserMissing(3, kLong)),
          ANSWERS(Strings, AddDiscreteUserMissing(kOther, kLong)),
          ANSWERS(Strings, SetValueLabels(o.GetMissValueLabels())),
          ANSWERS(Strings, SetValueLabel(0, kLong)),
          THROWS(Continuous, SetBinning(o.GetBinning().CreateRebinned({1, 1, 1, 1}, 2))),
          Copies(Strings), Copies(Continuous), Reads(Strings), Reads(Rounding)});
}

TEST(Memory, Variables) {
  constexpr auto full = FullVariableList;
  const auto encode = [](NQVarList& list) {
    double row[6];
    NQRecordEncoder(list, Texts{"name", "age"}).EncodeConst(std::vector<Value>(2, 1.5), row);
  };
  RunAll(
      "variables",
      {Copies(Categorical), Copies(Binned), Reads(Binned), Reads(Weight), Reads(full),
       On("NQRecordEncoder", full, encode, true), THROWS(Binned, SetMissingValueReplacement(kLong)),
       THROWS(Binned, SetNBins(7)), THROWS(Binned, SetMinMax(1, 2)),
       THROWS(full, AddContVar(kLong, "", 0, 1, V::RoleInput, true, 2)),
       THROWS(full, AddCatVar("c", "", 2, V::LevelNumericCategorical, V::RoleInput, true)),
       THROWS(full, AddCatVar("c", "", Texts{kLong}, Doubles{1}, V::RoleInput, true)),
       THROWS(full, SetWeightVar(kLong, "", V::RoundDown)), THROWS(full, AddNewVar(o.GetVarAt(0))),
       THROWS(full, operator=(NQVarList(o))), ANSWERS(full, RemoveVar("name"))});
}

// ---- StatXML and PMML ---------------------------------------------------------------------------

U::Elements NoElements() { return {}; }
U::Elements TwoElements() { return {XMLElement::Create("a"), XMLElement::Create("b")}; }

// `make` gives the element of the run with all memory, or none. The elements passed to it are those
// of the list, which must be gone after a failure.
template <class Make>
MemoryCase Builds(const char* operation, U::Elements (*passed)(), Make make, bool mayThrow) {
  const auto run = [=](Injection& inject) {
    const std::unique_ptr<XMLElement> want(make(passed()));
    const U::Elements elements = passed();
    std::unique_ptr<XMLElement> made;
    inject([&] { made.reset(make(elements)); });
    return Verdict{(inject.HasFailed() && !made) || Text(made) == Text(want), Text(made)};
  };
  return {operation, run, mayThrow};
}

// An export: an element with a status that is OK, or none with kNoMemory.
template <class Export>
MemoryCase Exports(const char* operation, Export exportTo) {
  const auto exported = [=](const U::Elements&) {
    XMLElement* out = nullptr;
    const NQStatus status = exportTo(out);
    const bool isTold = out ? status.IsOK() : status.GetErrorCode() == NQPMMLExporter::kNoMemory;
    return isTold ? out : XMLElement::Create("not told");
  };
  return Builds(operation, NoElements, exported, false);
}

#define BUILDS(...) \
  Builds(           \
      #__VA_ARGS__, NoElements, [&](const U::Elements&) { return U::__VA_ARGS__; }, true)
#define BUILDS_OF(...) \
  Builds(              \
      #__VA_ARGS__, TwoElements, [](const U::Elements& e) { return U::__VA_ARGS__; }, true)
#define EXPORTS(...) Exports(#__VA_ARGS__, [&](XMLElement*& out) { return exporter.__VA_ARGS__; })

TEST(Memory, StatXML) {
  NQVariateData data;
  data.SetCounts({NQXMLCounts(1, 2, 3, 4)});
  data.AddStatistic("mean", 0.5);
  data.SetCoordinates({{kLong, kLong, kLong, Texts{"a b", kLong}}});
  NQXMLCoordinatesGroup group(kLong);
  group.SetCoordinates(data.GetCoordinates());
  const NQXMLRecordInfo record(kLong, kLong, {Ints{1}, Doubles{2}});
  RunAll("StatXML",
         {BUILDS(CreateElemVarData("MultivariateData", kLong, data)),
          BUILDS(CreateElemRecordInfo(record)), BUILDS(CreateElemCoordinatesGroup(group)),
          BUILDS_OF(CreateElemCoordinatesGroup(nullptr, e, kLong)),
          BUILDS_OF(CreateElemRegressionParameter(kLong, true, e, {})),
          BUILDS_OF(CreateElemLabel(e)), BUILDS_OF(CreateElemMatrix(nullptr, e, 1, 2, "any", true)),
          BUILDS_OF(CreateElemSegmentData(e[0], e[1]))});
}

TEST(Memory, PMML) {
  const NQPMMLExporter exporter(nullptr);
  const NQVarList list = FullVariableList();
  const NQApplicInfo4XML info(kLong, kLong, kLong);
  const NQUniStats statistics(kLong, 3, {1, 2, 3}, {1, 2}, true, {}), categories(kLong, 3, {1, 2});
  const auto root = [&](const U::Elements&) { return exporter.ExportPMMLElement(); };
  const auto extension = [&](const U::Elements&) {
    XMLElement* out;
    exporter.ExportExtension(kLong, 0.5, out);
    return out;
  };
  RunAll("PMML",
         {EXPORTS(ExportHeader(&info, kLong, false, out)),
          EXPORTS(ExportDataDictionary(list, {}, out)), EXPORTS(ExportMiningSchema(list, {}, out)),
          EXPORTS(ExportDataModel(list, {}, out)), EXPORTS(ExportUniStats(statistics, out)),
          EXPORTS(ExportUniStats(categories, out)),
          Builds("ExportPMMLElement", NoElements, root, false),
          Builds("ExportExtension", NoElements, extension, false)});
}

}  // namespace
