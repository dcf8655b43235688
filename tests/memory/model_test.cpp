#include <gtest/gtest.h>

#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQContEncoder.h>
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

// An operation that says whether it succeeded, or throws: with success the object is as in a run with
// all memory, else as it was. There is success where no allocation fails.
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

TEST(Memory, Settings) {
  static char text[] = "0123456789012345678901234567890123456789";
  static const char* const texts[] = {text, nullptr};
  static const NQSettings inner = Full();
  static const NQSettings* const lists[] = {&inner, nullptr};
  using S = NQSettings;
  RunAll(
      "Settings",
      {
          On("AddSetting number", Full, [](S& s) { return s.AddSetting(kLong, 1, false); }),
          On("AddSetting replacing", Full, [](S& s) { return s.AddSetting("number", 1, true); }),
          On("AddSetting text", Full, [](S& s) { return s.AddSetting("a", kLong, false); }),
          On("AddNewSetting number", Full, [](S& s) { return s.AddNewSetting("a", 1, kLong); }),
          On("AddNewSetting text", Full, [](S& s) { return s.AddNewSetting("a", kLong, kLong); }),
          On("AddNewSetting settings", Full, [](S& s) { return s.AddNewSetting("a", inner, ""); }),
          On("AddNewSetting texts", Full, [](S& s) { return s.AddNewSetting("a", texts, 2, ""); }),
          On("AddNewSetting lists", Full, [](S& s) { return s.AddNewSetting("a", lists, 2, ""); }),
          On(
              "AddNewSetting list", Full,
              [](S& s) { return s.AddNewSetting("a", Texts{kLong}, ""); }, true),
          On("RemoveSetting", Full, [](S& s) { return s.RemoveSetting("text", true); }),
          Throws("assignment", Full, [](S& s) { s = inner; }),
          Throws("Clear", Full, [](S& s) { s.Clear(); }),
          Throws("Display", Full, [](S& s) { s.Display(); }),
          Throws("Clone", Full, [](S& s) { s = std::move(*std::unique_ptr<S>(s.Clone())); }),
          Throws("SetValue number", Text, [](NQSetting& s) { s.SetValue(1.0); }),
          Throws("SetValue text", Text, [](NQSetting& s) { s.SetValue(kOther); }),
          Throws("SetValue settings", Text, [](NQSetting& s) { s.SetValue(inner); }),
          Throws("SetValue value", Text, [](NQSetting& s) { s.SetValue(*s.GetValue()); }),
          Throws("assigned setting", Text, [](NQSetting& s) { s = *inner.GetSettingAt(2); }),
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
          Gives("Compare", 2, 0, [] { return inner.Compare(inner); }),
      });
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

template <class T>
MemoryCase Writes(const char* operation, T (*make)()) {
  return Throws(operation, make, [](T& object) { nqtest::Saved(object); });
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
  using N = NQCatNumEncoder;
  using S = NQStringEncoder;
  RunAll("Encoders",
         {
             On("Encode number", Numbers, [](N& e) { return e.Encode(8) == 8; }),
             On("Encode text", Strings, [](S& e) { return e.Encode(kOther) == 8; }),
             Gives(
                 "EncodeConst", -2.0, 3.0, [] { return Numbers().EncodeConst(3); }, true),
             On("AddDiscreteUserMissing", Numbers,
                [](N& e) { return e.AddDiscreteUserMissing(3, kLong); }),
             On("AddDiscreteUserMissing text", Strings,
                [](S& e) { return e.AddDiscreteUserMissing(kOther, kLong); }),
             On(
                 "SetValueLabels", Strings, [](S& e) { return e.SetValueLabels({"a"}); }, true),
             On("SetValueLabel", Strings, [](S& e) { return e.SetValueLabel(0, kLong); }),
             Gives(
                 "Decode", std::string(), kLong, [] { return Strings().Decode(7); }, true),
             Gives(
                 "Decode bin", std::string(), std::string("(1, 2]"),
                 [] { return Continuous().Decode(1); }, true),
             Throws("SetBinning", Continuous,
                    [](NQContEncoder& e) {
                      e.SetBinning(e.GetBinning().CreateRebinned({1, 1, 1, 1}, 2));
                    }),
             Throws("AdjustBinning", Continuous,
                    [](NQContEncoder& e) {
                      NQBinningEncoder bins = e.GetBinning();
                      bins.AdjustBinning({1, 1, 1, 1}, 2);
                      e.SetBinning(bins);
                    }),
             Copies("copies of NQCatNumEncoder", Numbers),
             Copies("copies of NQStringEncoder", Strings),
             Copies("copies of NQContEncoder", Continuous),
             Copies("copies of NQRoundEncoder", Rounding),
             Reads("NQCatNumEncoder::ReadObjectXML", Numbers),
             Reads("NQStringEncoder::ReadObjectXML", Strings),
             Reads("NQRoundEncoder::ReadObjectXML", Rounding),
             Writes("NQStringEncoder::WriteObjectXML", Strings),
         });
}

// ---- Variables ----------------------------------------------------------------------------------

NQCatVar Categorical() { return {kLong, kLong, 0, V::RoleInput, true, {"a", kLong}}; }
NQContVar Binned() { return {kLong, kLong, 0, 8, V::RoleInput, true, 4}; }
NQWeightVar Weight() { return {kLong, kLong, V::RoundDown}; }

TEST(Memory, Variables) {
  using L = NQVarList;
  constexpr auto full = nqtest::FullVariableList;
  RunAll(
      "Variables",
      {
          Copies("copies of NQCatVar", Categorical),
          Copies("copies of NQContVar", Binned),
          Copies("copies of NQWeightVar", Weight),
          Reads("NQCatVar::ReadObjectXML", Categorical),
          Reads("NQContVar::ReadObjectXML", Binned),
          Reads("NQWeightVar::ReadObjectXML", Weight),
          Reads("NQVarList::ReadObjectXML", full),
          Writes("NQVarList::WriteObjectXML", full),
          Throws("SetVariableLabel", Binned, [](V& v) { v.SetVariableLabel(kOther); }),
          Throws("SetMissingValueReplacement", Binned,
                 [](V& v) { v.SetMissingValueReplacement(kLong); }),
          Throws("GetCutPoints", Binned, [](NQContVar& v) { v.GetCutPoints(); }),
          Throws("SetNBins", Binned, [](NQContVar& v) { v.SetNBins(7); }),
          Throws("SetMinMax", Binned, [](NQContVar& v) { v.SetMinMax(1, 2); }),
          Throws("SetSumFreqWts", Categorical,
                 [](NQCatVar& v) {
                   v.SetSumFreqWts({1, 2});
                 }),
          Throws("AddContVar", full,
                 [](L& l) { l.AddContVar(kLong, "", 0, 1, V::RoleInput, true, 2); }),
          Throws("AddContVar cut points", full,
                 [](L& l) { l.AddContVar("c", "", 0, 1, V::RoleInput, Doubles{0.5}); }),
          Throws("AddCatVar", full,
                 [](L& l) {
                   l.AddCatVar("c", "", 2, V::LevelNumericCategorical, V::RoleInput, true);
                 }),
          Throws("AddCatVar texts", full,
                 [](L& l) { l.AddCatVar("c", "", Texts{kLong}, Doubles{1}, V::RoleInput, true); }),
          Throws("AddCatVar numbers", full,
                 [](L& l) { l.AddCatVar("c", "", Doubles{1}, Doubles{1}, V::RoleInput, true); }),
          Throws("SetWeightVar", full, [](L& l) { l.SetWeightVar(kLong, "", V::RoundDown); }),
          Throws("AddNewVar", full, [](L& l) { l.AddNewVar(l.GetVarAt(0)); }),
          Throws("assigned list", full, [](L& l) { l = L(l); }),
          Throws("GetVarNames", full, [](L& l) { l.GetVarNames(); }),
          On("RemoveVar", full, [](L& l) { return l.RemoveVar("name"); }),
      });
}

}  // namespace
