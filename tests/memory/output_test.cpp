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

TEST(Memory, StatXML) {
  static const NQVariateData data = [] {
    NQVariateData some;
    some.AddCounts(NQXMLCounts(1, 2, 3, 4));
    some.AddStatistic("mean", 0.5);
    some.AddCoordinates({kLong, kLong, kLong, Texts{"a b", kLong}});
    return some;
  }();
  static const NQXMLRecordInfo record(kLong, kLong, {Ints{1}, Doubles{2}});
  static const Doubles row = {1, 2};
  static const Texts texts = {"a b", kLong};
  static const NQXMLCoordinatesGroup group = [] {
    NQXMLCoordinatesGroup some(kLong);
    some.AddCoordinates(data.GetCoordinates()[0]);
    return some;
  }();
  using E = const U::Elements&;
  nqtest::RunMemoryCases(
      "StatXML",
      {
          Alone("BuildRoot", U::BuildRoot),
          Alone("CreateElemUnivarData", [] { return U::CreateElemUnivarData(kLong); }),
          Alone("CreateElemVarData",
                [] { return U::CreateElemVarData("MultivariateData", kLong, data); }),
          Alone("CreateElemStatistic", [] { return U::CreateElemStatistic(kLong, kLong); }),
          Alone("CreateElemFieldInfo", [] { return U::CreateElemFieldInfo(kLong, 1, true); }),
          Alone("CreateElemFactor", [] { return U::CreateElemFactor(kLong, kLong, true); }),
          Alone("CreateElemCovariate", [] { return U::CreateElemCovariate(kLong, 2); }),
          Alone("CreateElemLabel", [] { return U::CreateElemLabel(kLong); }),
          Alone("CreateElemArray ints",
                [] {
                  return U::CreateElemArray(Ints{1, 2, 3});
                }),
          Alone("CreateElemArray doubles", [] { return U::CreateElemArray(row.data(), 2); }),
          Alone("CreateElemArray texts", [] { return U::CreateElemArray(texts); }),
          Alone("CreateElemRecordInfo", [] { return U::CreateElemRecordInfo(record); }),
          Alone("CreateElemCoordinatesGroup", [] { return U::CreateElemCoordinatesGroup(group); }),
          Alone("CreateElem",
                [] { return U::CreateElem(kLong, "a", kLong, "b", kLong, "c", "d"); }),
          Makes("Coordinates",
                [](E e) {
                  delete e[1];
                  return U::CreateElemCoordinates(kLong, kLong, kLong, row, e[0]);
                }),
          Makes("CreateElemCoordinatesGroup of elements",
                [](E e) { return U::CreateElemCoordinatesGroup(nullptr, e, kLong); }),
          Makes("CreateElemRegressionParameter",
                [](E e) { return U::CreateElemRegressionParameter(kLong, true, e, {}); }),
          Makes("CreateElemLabel of elements", [](E e) { return U::CreateElemLabel(e); }),
          Makes("CreateElemRowColLabels", [](E e) { return U::CreateElemRowColLabels(e, "row"); }),
          Makes("CreateElemMatrixLabels", [](E e) { return U::CreateElemMatrixLabels(e); }),
          Makes("CreateElemMatrix",
                [](E e) { return U::CreateElemMatrix(nullptr, e, 1, 2, "any", true); }),
          Makes("CreateElemSegmentInfo", [](E e) { return U::CreateElemSegmentInfo(kLong, e); }),
          Makes("CreateElemSegmentData", [](E e) { return U::CreateElemSegmentData(nullptr, e); }),
      });
}

// `run` exports: an element with a status that is OK, or none with kNoMemory.
template <class Run>
MemoryCase Exports(const char* operation, Run run) {
  return Alone(
      operation,
      [run] {
        XMLElement* out = nullptr;
        const NQCommon_940::NQStatus status = run(out);
        const bool isTold = out ? status.IsOK() : status.GetErrorCode() == 103;
        return isTold ? out : XMLElement::Create("not told");
      },
      false);
}

TEST(Memory, PMML) {
  static const NQCommon_940::NQPMMLExporter exporter(nullptr);
  static const NQVarList list = nqtest::FullVariableList();
  static const NQApplicInfo4XML info(kLong, kLong, kLong);
  static const NQUniStats statistics(kLong, 3, {1, 2, 3}, {1, 2}, true, {});
  static const NQUniStats categories(kLong, 3, {1, 2});
  using Out = XMLElement*&;
  nqtest::RunMemoryCases(
      "PMML", {
                  Alone(
                      "ExportPMMLElement", [] { return exporter.ExportPMMLElement(); }, false),
                  Exports("ExportHeader",
                          [](Out out) { return exporter.ExportHeader(&info, kLong, false, out); }),
                  Exports("ExportDataDictionary",
                          [](Out out) { return exporter.ExportDataDictionary(list, {}, out); }),
                  Exports("ExportMiningSchema",
                  [](Out out) { return exporter.ExportMiningSchema(list, {}, out); }),
          Exports("ExportDataModel",
                          [](Out out) { return exporter.ExportDataModel(list, {}, out); }),
                  Exports("ExportUniStats",
                          [](Out out) { return exporter.ExportUniStats(statistics, out); }),
                  Exports("ExportUniStats",
                          [](Out out) { return exporter.ExportUniStats(categories, out); }),
                  Alone(
                      "ExportExtension",
                      [] {
                        XMLElement* out;
                        exporter.ExportExtension(kLong, 0.5, out);
                        return out;
                      },
                      false),
                  Alone(
                      "ExportExtensionImpl",
                      [] {
                        XMLElement* out;
                        NQCommon_940::ExportExtensionImpl(kLong, kLong, 0, false, out);
                        return out;
                      },
                      false),
              });
}

}  // namespace
