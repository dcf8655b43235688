#include <gtest/gtest.h>

#include <nqcommon/common/Value.h>
#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQContEncoder.h>
#include <nqcommon/model/NQRecordEncoder.h>
#include <nqcommon/model/NQRoundEncoder.h>
#include <nqcommon/model/NQStringEncoder.h>
#include <nqcommon/model/NQWeightVar.h>
#include <nqcommon/model/settings/NQSettings.h>

#include "support/failing_new.h"
#include "support/variable_list_checks.h"

namespace {

using namespace NQXML_940;
using nqtest::Displayed;
using nqtest::Injection;
using nqtest::MemoryCase;
using nqtest::Verdict;
using V = INQVariable;
using Doubles = std::vector<double>;
using Texts = std::vector<std::string>;
using Pairs = std::vector<std::pair<std::string, std::string>>;

// Which no string holds without memory.
const std::string kLong(40, 'x'), kOther(40, 'y');

// An operation that says whether it succeeded, or throws: with success the object is as in a run
// with all memory, else as it was. There is success where no allocation fails.
template <class T, class Act>
MemoryCase On(const char* operation, T (*make)(), Act act, bool mayThrow = false) {
  return {operation,
          [=](Injection& inject) {
            T object = make(), wanted = make();
            act(wanted);
            const std::string before = Displayed(object);
            bool done = false;
            inject([&] { done = act(object); });
            const std::string got = Displayed(object);
            return Verdict{
                got == (done ? Displayed(wanted) : before) && (done || inject.HasFailed()), got};
          },
          mayThrow};
}

// The same, for operations that have no answer but what they throw.
template <class T, class Act>
MemoryCase Throws(const char* operation, T (*make)(), Act act) {
  const auto run = [act](T& object) { return act(object), true; };
  return On(operation, make, run, true);
}

// A const operation whose result is compared; without memory it answers as told, or throws.
template <class Result, class Call>
MemoryCase Gives(const char* operation, Result failure, Result want, Call call,
                 bool mayThrow = false) {
  return {operation,
          [=](Injection& inject) {
            Result result = failure;
            inject([&] { result = call(); });
            return Verdict{result == want || (inject.HasFailed() && result == failure)};
          },
          mayThrow};
}

void RunAll(const char* title, const std::vector<MemoryCase>& cases) {
  std::ostream nowhere(nullptr);
  std::ostream& before = NQDisplay_940::GetOutStream();
  std::streambuf* const errors = std::cerr.rdbuf(nullptr);  // failures of readers
  NQDisplay_940::SetOutStream(nowhere);
  nqtest::RunMemoryCases(title, cases);
  NQDisplay_940::SetOutStream(before);
  std::cerr.rdbuf(errors);
  std::cerr.clear();
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
NQSetting Text() { return NQSetting("name", kLong); }

template <class Out>
MemoryCase Get(const char* name, const Out& want) {
  return Gives("GetSettingValByName", Out(), want, [name, settings = Full()] {
    Out out{};
    settings.GetSettingValByName(name, out);
    return out;
  });
}

const char* const texts[] = {kLong.c_str(), nullptr};
const NQSettings inner = Full();
const NQSettings* const lists[] = {&inner, nullptr};

// An operation by its text, on an object that `make` makes; ANSWERS says whether it succeeded.
#define ANSWERS(make, ...) On(#__VA_ARGS__, make, [](auto& o) { return o.__VA_ARGS__; })
#define THROWS(make, ...) Throws(#__VA_ARGS__, make, [](auto& o) { o.__VA_ARGS__; })

TEST(Memory, Settings) {
  const auto addList = [](NQSettings& s) { return s.AddNewSetting("a", Texts{kLong}, ""); };
  RunAll("Settings", {ANSWERS(Full, AddSetting(kLong, 1, false)),
                      ANSWERS(Full, AddSetting("number", 1, true)),
                      ANSWERS(Full, AddSetting("a", kLong, false)),
                      ANSWERS(Full, AddNewSetting("a", 1, kLong)),
                      ANSWERS(Full, AddNewSetting("a", kLong, kLong)),
                      ANSWERS(Full, AddNewSetting("a", inner, "")),
                      ANSWERS(Full, AddNewSetting("a", texts, 2, "")),
                      ANSWERS(Full, AddNewSetting("a", lists, 2, "")),
                      On("AddNewSetting of a list", Full, addList, true),
                      ANSWERS(Full, RemoveSetting("text", true)),
                      THROWS(Full, operator=(inner)),
                      THROWS(Full, operator=(std::move(*std::unique_ptr<NQSettings>(o.Clone())))),
                      THROWS(Full, Clear()),
                      THROWS(Full, Display()),
                      THROWS(Text, SetValue(1.0)),
                      THROWS(Text, SetValue(kOther)),
                      THROWS(Text, SetValue(inner)),
                      THROWS(Text, SetValue(*o.GetValue())),
                      THROWS(Text, operator=(*inner.GetSettingAt(2))),
                      Get("text", kLong),
                      Get("nested", Two()),
                      Get("doubles", Doubles{1, 2}),
                      Get("doubles", std::vector<int>{1, 2}),
                      Get("doubles", Texts{"1", "2"}),
                      Get("texts", Texts{"1", "2", kLong}),
                      Get("digits", Doubles{1, 2}),
                      Get("digits", std::vector<int>{1, 2}),
                      Get("pairs", Pairs{{"a", kLong}}),
                      Get("list", std::vector<NQSettings>{Two()}),
                      Gives("Compare", 2, 0, [] { return inner.Compare(inner); })});
}

// ---- Encoders -----------------------------------------------------------------------------------

NQCatNumEncoder Numbers() { return NQCatNumEncoder(Doubles{0, 1, 2, 3, 4, 5, 6, 7}); }
NQStringEncoder Strings() {
  NQStringEncoder encoder(Texts{"", "1", "2", "3", "4", "5", "6", kLong});
  encoder.AddDiscreteUserMissing(kLong, kLong);
  return encoder;
}
NQContEncoder Continuous() { return NQContEncoder(Doubles{1, 2, 3}); }
NQRoundEncoder Rounding() { return NQRoundEncoder(); }

// Reading leaves an object that can be saved, and saved again after that was read.
template <class T>
MemoryCase Reads(const char* operation, T (*make)()) {
  return {operation,
          [=](Injection& inject) {
            T object = make(), wanted = make();
            const std::string saved = nqtest::Saved(wanted);
            const nqtest::MemoryFile file(saved);
            std::ifstream in = file.Open();
            bool done = false;
            inject([&] {
              try {
                done = object.ReadObjectXML(in) > 0;
              } catch (IOException* failure) {
                delete failure;
              }
            });
            const std::string left = nqtest::Saved(object);
            return Verdict{done ? left == saved
                                : inject.HasFailed() && nqtest::Restore(wanted, left).lines > 0,
                           left};
          },
          true};
}

// What it takes to copy an object and to assign to it.
template <class T>
MemoryCase Copies(const char* operation, T (*make)()) {
  return Throws(operation, make, [](T& object) {
    const std::unique_ptr<T> copy(object.Clone());
    object = T(*copy);
  });
}

TEST(Memory, Encoders) {
  RunAll(
      "Encoders",
      {ANSWERS(Numbers, Encode(8) == 8), ANSWERS(Strings, Encode(kOther) == 8),
       ANSWERS(Numbers, AddDiscreteUserMissing(3, kLong)),
       ANSWERS(Strings, AddDiscreteUserMissing(kOther, kLong)),
       ANSWERS(Strings, SetValueLabels(o.GetMissValueLabels())),
       ANSWERS(Strings, SetValueLabel(0, kLong)), THROWS(Strings, Decode(7)),
       THROWS(Continuous, Decode(1)),
       THROWS(Continuous, SetBinning(o.GetBinning().CreateRebinned({1, 1, 1, 1}, 2))),
       Copies("copies of NQCatNumEncoder", Numbers), Copies("copies of NQStringEncoder", Strings),
       Copies("copies of NQContEncoder", Continuous), Copies("copies of NQRoundEncoder", Rounding),
       Reads("NQCatNumEncoder::ReadObjectXML", Numbers),
       Reads("NQStringEncoder::ReadObjectXML", Strings),
       Reads("NQRoundEncoder::ReadObjectXML", Rounding)});
}

// ---- Variables ----------------------------------------------------------------------------------

NQCatVar Categorical() { return {kLong, kLong, 0, V::RoleInput, true, {"a", kLong}}; }
NQContVar Binned() { return {kLong, kLong, 0, 8, V::RoleInput, true, 4}; }
NQWeightVar Weight() { return {kLong, kLong, V::RoundDown}; }

TEST(Memory, Variables) {
  constexpr auto full = nqtest::FullVariableList;
  const auto record = [](NQVarList& list) {
    double row[6];
    const std::vector<NQCommon_940::Value> cells(2, 1.5);
    NQRecordEncoder(list, Texts{"name", "age"}).EncodeConst(cells, row);
  };
  RunAll("Variables",
         {Copies("copies of NQCatVar", Categorical),
          Copies("copies of NQContVar", Binned),
          Copies("copies of NQWeightVar", Weight),
          Reads("NQCatVar::ReadObjectXML", Categorical),
          Reads("NQContVar::ReadObjectXML", Binned),
          Reads("NQWeightVar::ReadObjectXML", Weight),
          Reads("NQVarList::ReadObjectXML", full),
          Throws("NQVarList::WriteObjectXML", full, [](auto& list) { nqtest::Saved(list); }),
          Throws("NQRecordEncoder", full, record),
          THROWS(Binned, SetVariableLabel(kOther)),
          THROWS(Binned, SetMissingValueReplacement(kLong)),
          THROWS(Binned, GetCutPoints()),
          THROWS(Binned, SetNBins(7)),
          THROWS(Binned, SetMinMax(1, 2)),
          THROWS(Categorical, SetSumFreqWts({1, 2})),
          THROWS(full, AddContVar(kLong, "", 0, 1, V::RoleInput, true, 2)),
          THROWS(full, AddContVar("c", "", 0, 1, V::RoleInput, Doubles{0.5})),
          THROWS(full, AddCatVar("c", "", 2, V::LevelNumericCategorical, V::RoleInput, true)),
          THROWS(full, AddCatVar("c", "", Texts{kLong}, Doubles{1}, V::RoleInput, true)),
          THROWS(full, AddCatVar("c", "", Doubles{1}, Doubles{1}, V::RoleInput, true)),
          THROWS(full, SetWeightVar(kLong, "", V::RoundDown)),
          THROWS(full, AddNewVar(o.GetVarAt(0))),
          THROWS(full, operator=(NQVarList(o))),
          THROWS(full, GetVarNames()),
          THROWS(full, CanBeReadBack()),
          ANSWERS(full, RemoveVar("name"))});
}

}  // namespace
