#include <gtest/gtest.h>

#include <nqcommon/model/NQApplicInfo4XML.h>
#include <nqcommon/model/NQUniStats.h>
#include <nqcommon/output/NQPMMLExporter.h>
#include <nqcommon/output/NQStatXMLUtil.h>

#include "support/element_text.h"
#include "support/failing_new.h"
#include "support/variable_list_checks.h"

namespace {

using namespace NQXML_940;
using nqtest::Injection;
using nqtest::MemoryCase;
using nqtest::Verdict;
using U = NQStatXMLUtil;
using Doubles = std::vector<double>;
using Ints = std::vector<int>;
using Texts = std::vector<std::string>;

const std::string kLong(40, 'x');

// `make` gives the element of the run with all memory, or none. Elements passed to it are those of
// the list, which must be gone after a failure.
MemoryCase Makes(const char* operation, std::function<XMLElement*(const U::Elements&)> make,
                 bool mayThrow = true) {
  const auto passed = [] { return U::Elements{XMLElement::Create("a"), XMLElement::Create("b")}; };
  return {operation,
          [=](Injection& inject) {
            const std::string want = nqtest::Text(make(passed()));
            const U::Elements elements = passed();
            XMLElement* made = nullptr;
            inject([&] { made = make(elements); });
            const std::string got = nqtest::Text(made);
            return Verdict{got == (inject.HasFailed() && !made ? "null" : want), got};
          },
          mayThrow};
}

// Of elements that take none.
template <class Make>
MemoryCase Alone(const char* operation, Make make, bool mayThrow = true) {
  return Makes(
      operation,
      [make](const U::Elements& elements) {
        for (const XMLElement* element : elements) delete element;
        return make();
      },
      mayThrow);
}

// A builder by its call; one with elements `e` takes them over.
#define BUILDS(...) Alone(#__VA_ARGS__, [] { return U::__VA_ARGS__; })
#define BUILDS_OF(...) Makes(#__VA_ARGS__, [](const U::Elements& e) { return U::__VA_ARGS__; })

TEST(Memory, StatXML) {
  static NQVariateData data;
  data.SetCounts({NQXMLCounts(1, 2, 3, 4)});
  data.AddStatistic("mean", 0.5);
  data.SetCoordinates({{kLong, kLong, kLong, Texts{"a b", kLong}}});
  static NQXMLCoordinatesGroup group(kLong);
  group.SetCoordinates(data.GetCoordinates());
  static const NQXMLRecordInfo record(kLong, kLong, {Ints{1}, Doubles{2}});
  nqtest::RunMemoryCases("StatXML", {BUILDS(BuildRoot()),
                                     BUILDS(CreateElemUnivarData(kLong)),
                                     BUILDS(CreateElemVarData("MultivariateData", kLong, data)),
                                     BUILDS(CreateElemStatistic(kLong, kLong)),
                                     BUILDS(CreateElemFieldInfo(kLong, 1, true)),
                                     BUILDS(CreateElemFactor(kLong, kLong, true)),
                                     BUILDS(CreateElemCovariate(kLong, 2)),
                                     BUILDS(CreateElemLabel(kLong)),
                                     BUILDS(CreateElemArray(Ints{1, 2, 3})),
                                     BUILDS(CreateElemArray(Doubles{1, 2})),
                                     BUILDS(CreateElemArray(Texts{"a b", kLong})),
                                     BUILDS(CreateElemRecordInfo(record)),
                                     BUILDS(CreateElemCoordinatesGroup(group)),
                                     BUILDS(CreateElem(kLong, "a", kLong, "b", kLong, "c", "d")),
                                     BUILDS_OF(CreateElemCoordinatesGroup(nullptr, e, kLong)),
                                     BUILDS_OF(CreateElemRegressionParameter(kLong, true, e, {})),
                                     BUILDS_OF(CreateElemLabel(e)),
                                     BUILDS_OF(CreateElemRowColLabels(e, "row")),
                                     BUILDS_OF(CreateElemMatrixLabels(e)),
                                     BUILDS_OF(CreateElemMatrix(nullptr, e, 1, 2, "any", true)),
                                     BUILDS_OF(CreateElemSegmentInfo(kLong, e)),
                                     BUILDS_OF(CreateElemSegmentData(e[0], e[1]))});
}

// An export: an element with a status that is OK, or none with kNoMemory.
template <class Run>
MemoryCase Exports(const char* operation, Run run) {
  const auto exported = [run] {
    XMLElement* out = nullptr;
    const NQCommon_940::NQStatus status = run(out);
    const bool isTold = out ? status.IsOK() : status.GetErrorCode() == 103;
    return isTold ? out : XMLElement::Create("not told");
  };
  return Alone(operation, exported, false);
}

#define EXPORTS(...) Exports(#__VA_ARGS__, [](XMLElement*& out) { return exporter.__VA_ARGS__; })

TEST(Memory, PMML) {
  static const NQCommon_940::NQPMMLExporter exporter(nullptr);
  static const NQVarList list = nqtest::FullVariableList();
  static const NQApplicInfo4XML info(kLong, kLong, kLong);
  static const NQUniStats statistics(kLong, 3, {1, 2, 3}, {1, 2}, true, {});
  static const NQUniStats categories(kLong, 3, {1, 2});
  const auto extension = [] {
    XMLElement* out;
    exporter.ExportExtension(kLong, 0.5, out);
    return out;
  };
  nqtest::RunMemoryCases(
      "PMML", {EXPORTS(ExportHeader(&info, kLong, false, out)),
               EXPORTS(ExportDataDictionary(list, {}, out)),
               EXPORTS(ExportMiningSchema(list, {}, out)), EXPORTS(ExportDataModel(list, {}, out)),
               EXPORTS(ExportUniStats(statistics, out)), EXPORTS(ExportUniStats(categories, out)),
               Alone(
                   "ExportPMMLElement", [] { return exporter.ExportPMMLElement(); }, false),
               Alone("ExportExtension", extension, false)});
}

}  // namespace
