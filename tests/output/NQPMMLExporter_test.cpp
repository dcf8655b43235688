// The bytes of the parts of PMML documents, and what is left of them after errors.
#include <nqcommon/output/NQPMMLExporter.h>

#include <cstdlib>
#include <ctime>

#include <nqcommon/model/NQApplicInfo4XML.h>
#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQCatVar.h>
#include <nqcommon/model/NQContVar.h>
#include <nqcommon/model/NQUniStats.h>
#include <nqcommon/model/NQVarList.h>

#include "support/comma_locale.h"
#include "support/element_text.h"
#include "support/testing.h"

namespace NQCommon_940 {
namespace {

using namespace NQXML_940;
using namespace nqtest;
using V = INQVariable;

const NQPMMLExporter kExporter(nullptr);

// The element, after the error if there is one. The old value of the out-parameter is no pointer:
// it must be neither read nor left.
template <class Export>
std::string Exported(Export run) {
  auto* out = reinterpret_cast<XMLElement*>(64);
  NQStatus status;
  if constexpr (std::is_void_v<decltype(run(out))>)
    run(out);
  else
    status = run(out);
  const std::string text = Text(out);
  if (!status.IsError()) return text;
  return "error " + std::to_string(status.GetErrorCode()) + " (" +
         std::to_string(status.GetDiscreteDatum(0)) + "): " + text;
}
#define EXPORTED(...) Exported([&](XMLElement*& out) { return __VA_ARGS__; })

std::string List(const double* values, unsigned long n) {
  XMLElement* const element = XMLElement::Create("e");
  AddDoublesList(*element, values, n);
  return Text(element);
}

// Of every kind, with encoders of its own and others.
NQVarList Kinds() {
  NQVarList list;
  const auto at = [&list](int i) -> NQCatVar& {
    return dynamic_cast<NQCatVar&>(*list.GetVarAt(i));
  };
  list.SetWeightVar("weight", "", V::RoundAsIs);
  for (const char* name : {"numbers", "number flag"}) {
    const int i = list.AddCatVar(name, "a<b", Doubles{2.5, 0.1}, V::RoleInput, true);
    list.GetEncoderAt(i)->SetValueLabels({"a", "b"});
    list.GetEncoderAt(i)->AddDiscreteUserMissing(9, "m");
    list.GetEncoderAt(i)->SetMissingInterval(1, 2);
  }
  at(2).SetBinaryFlag(true, 1);
  list.AddCatVar("texts", "", Texts{" a"}, V::RoleInput, false);
  list.GetEncoderAt(3)->SetValueLabels({"A", "one too many"});
  list.AddCatVar("text flag", "", Texts{"no ", "yes"}, V::RoleInput, false);
  list.GetEncoderAt(4)->SetValueLabels({"Nay", ""});
  list.GetEncoderAt(4)->AddDiscreteUserMissing("", "not told");
  list.GetEncoderAt(4)->AddDiscreteUserMissing("?", "");
  at(4).SetBinaryFlag(true, 0);
  for (const char* name : {"numbers as texts", "one bound", "empty flag", "no encoder"})
    list.AddCatVar(name, "", 2, V::LevelStringCategorical, V::RoleInput, false);
  at(5).ChangeEncoder(new NQCatNumEncoder(Doubles{7}));
  list.GetEncoderAt(5)->AddDiscreteUserMissing(0.1, "m");
  list.GetEncoderAt(5)->SetMissingInterval(-1.5, kInf);
  at(6).ChangeEncoder(new NQCatNumEncoder());
  list.GetEncoderAt(6)->SetMissingInterval(kMissing, 0);
  at(7).SetBinaryFlag(true, 0);
  at(8).SetBinaryFlag(true, 0);
  at(8).ChangeEncoder(nullptr);
  return list;
}

TEST(PMMLExporter, Bytes) {
  const CommaCLocale locale;
  const NQApplicInfo4XML none, full("a", "2", "<c>"), name("a", "", "c"), version("", "2", "c");
  const double values[] = {0.1, kMissing, -kInf};
  NQVarList codes, gapped, unused;
  for (int code = -1; code <= 8; ++code) {
    const auto role = static_cast<V::VariableRole>(code);
    const int i = codes.AddContVar(std::to_string(code), "", 0, 1, role, false, 0);
    codes.GetVarAt(i)->SetVariableStorage(static_cast<V::VariableStorage>(code));
  }
  const NQVarList kinds = Kinds();
  for (const int i : {5, 6}) {
    auto& variable = dynamic_cast<NQContVar&>(*codes.GetVarAt(i));
    variable.SetOutlierHandleMethod(static_cast<NQContVar::OutlierHandleMethod>(i - 4));
    variable.SetMissingValueReplacement("0.5");
  }
  gapped.AddContVar("x", "X", 0, 1, V::RoleInput, false, 0);
  gapped.GetVarAt(0)->SetFieldFormatElement(XMLElement::Create("f"));
  gapped.AddContVar("gone", "", 0, 1, V::RoleInput, false, 0);
  gapped.RemoveVar(1);
  gapped.AddContVar("u", "", 0, 1, V::RoleUnused, false, 0);
  gapped.SetFieldFormatsElement(XMLElement::Create("formats"));
  unused.AddContVar("u", "", 0, 1, V::RoleUnused, false, 0);
  const struct {
    const char* label;
    std::string got;
    const char* want;
  } rows[] = {
#include "golden/pmml_elements.inc"
  };
  for (const auto& row : rows) EXPECT_EQ(row.got, row.want) << row.label;
}

// The second time zone is set after an export in the first.
TEST(PMMLExporter, TimestampIsLocalTime) {
  for (const auto& [zone, ahead] : {std::pair("AAA-0:30", 1800), std::pair("BBB-12", 43200)}) {
    setenv("TZ", zone, 1);
    std::string got;
    std::time_t now;
    do {
      now = std::time(nullptr);
      got = EXPORTED(kExporter.ExportHeader(nullptr, "", true, out));
    } while (now != std::time(nullptr));
    now += ahead;
    const std::string text = std::asctime(std::gmtime(&now));
    EXPECT_EQ(got, R"(<Header copyright="Copyright (c) 2026 the nqcommon authors"><Timestamp>)" +
                       text.substr(0, 24) + "</Timestamp></Header>");
  }
  unsetenv("TZ");
}

}  // namespace
}  // namespace NQCommon_940
