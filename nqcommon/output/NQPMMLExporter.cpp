#include <nqcommon/output/NQPMMLExporter.h>

#include <ctime>
#include <memory>

#include <nqcommon/model/NQApplicInfo4XML.h>
#include <nqcommon/model/NQUniStats.h>
#include <nqcommon/output/NQPMMLTags.h>
#include <nqcommon/output/internal/joined_list.h>
#include <nqcommon/output/internal/new_element.h>
#include <nqcommon/output/internal/pmml_export.h>

namespace NQCommon_940 {

using namespace NQPMMLTags;
using internal::Export;
using internal::NewExtension;
using NQXML_940::NQApplicInfo4XML;
using NQXML_940::NQUniStats;
using NQXML_940::XMLElement;
using NQXML_940::XMLString;
using NQXML_940::internal::ElementPtr;
using NQXML_940::internal::NewElement;
using NQXML_940::internal::NonEmpty;
using NQXML_940::internal::NotMissing;

namespace {

constexpr char kMissingWord[] = "NaN";

// The local time, as ctime has it but for the line feed; empty for a year of more than four digits.
std::string LocalTime() {
  const std::time_t now = std::time(nullptr);
  char text[26];  // the room that ctime_r asks for
  tzset();        // which ctime does, and ctime_r may not: a time zone set since would be missed
  if (ctime_r(&now, text) == nullptr) return "";
  return std::string(text, 24);
}

ElementPtr NewFrequencies(const std::vector<double>& frequencies) {
  ElementPtr array = NewElement(XML_ELE_ARRAY, XML_ATT_TYPE, XML_VAL_REAL);
  AddDoublesList(*array, frequencies.data(), frequencies.size());
  return array;
}

ElementPtr NewNumericInfo(const NQUniStats::Summary& summary) {
  // An accumulator of maxima that saw no case may hold the negated system-missing value.
  const bool hasMaximum = !NQMV::IsMissing(-summary.fMaximum);
  return NewElement(XML_ELE_NUMERICINFO, XML_ATT_MINIMUM, NotMissing{summary.fMinimum},
                    XML_ATT_MAXIMUM, NotMissing{hasMaximum ? summary.fMaximum : NQMV::Missing()},
                    XML_ATT_MEAN, NotMissing{summary.fMean}, XML_ATT_STDDEV,
                    NotMissing{summary.fStdDev});
}

ElementPtr NewContStats(const std::vector<double>& cutPoints,
                        const std::vector<double>& frequencies, bool openLeft) {
  ElementPtr element = NewElement(XML_ELE_CONTSTATS);
  const std::string& closure = openLeft ? XML_VAL_OPENCLOSED : XML_VAL_CLOSEDOPEN;
  for (std::size_t i = 1; i < cutPoints.size(); ++i) {
    element->AddElement(NewElement(XML_ELE_INTERVAL, XML_ATT_LEFTMARGIN,
                                   NotMissing{cutPoints[i - 1]}, XML_ATT_RIGHTMARGIN,
                                   NotMissing{cutPoints[i]}, XML_ATT_CLOSURE, closure)
                            .release());
  }
  if (!cutPoints.empty() && !frequencies.empty())
    element->AddElement(NewFrequencies(frequencies).release());
  return element;
}

}  // namespace

// ---- Root and header ----------------------------------------------------------------------------

XMLElement* NQPMMLExporter::ExportPMMLElement() const {
  XMLElement* root;
  Export(root, [] {
    return NewElement(XML_ELE_PMMLMODEL, XML_ATT_VERSION, XML_VAL_PMMLVERSION42, XML_ATT_XMLNS,
                      XML_VAL_PMMLNAMESPACE42, XML_ATT_XMLNSXSI, XML_VAL_SCHEMAINSTANCE,
                      XML_ATT_SCHEMALOC, XML_VAL_SCHEMAFILE42);
  });
  return root;
}

XMLElement* NQPMMLExporter::ExportPMMLElement40() const { return ExportPMMLElement(); }

NQStatus NQPMMLExporter::ExportHeader(const NQApplicInfo4XML* info, const std::string& description,
                                      bool withTimestamp, XMLElement*& out) const {
  return Export(out, [&] {
    const NQApplicInfo4XML application = info ? *info : NQApplicInfo4XML();
    const std::string& copyright = application.GetCopyright();
    ElementPtr header = NewElement(XML_ELE_HEADER, XML_ATT_HEADRIGHT,
                                   copyright.empty() ? XML_VAL_HEADRIGHT : copyright,
                                   XML_ATT_DESCRIPTION, NonEmpty{description});
    const std::string& name = application.GetApplicationName();
    const std::string& version = application.GetApplicationVersion();
    if (!name.empty() || !version.empty()) {
      header->AddElement(NewElement(XML_ELE_APPLICATION, XML_ATT_NAME, NonEmpty{name},
                                    XML_ATT_VERSION, NonEmpty{version})
                             .release());
    }
    if (withTimestamp) {
      ElementPtr timestamp = NewElement(XML_ELE_TIMESTAMP);
      timestamp->AddElement(XMLString::Create(LocalTime()));
      header->AddElement(timestamp.release());
    }
    return header;
  });
}

// ---- Statistics ---------------------------------------------------------------------------------

NQStatus NQPMMLExporter::ExportUniStats(const NQUniStats& statistics, XMLElement*& out) const {
  out = nullptr;
  if (!statistics.IsValid()) return {kStatisticsNotValid, false};
  return Export(out, [&] {
    ElementPtr element =
        NewElement(XML_ELE_UNIVARIATESTATS, XML_ATT_FIELD, statistics.GetVariableName());
    element->AddElement(
        NewElement(XML_ELE_COUNTS, XML_ATT_TOTALFREQ, statistics.GetNCases()).release());
    if (statistics.IsCategorical()) {
      ElementPtr discrete = NewElement(XML_ELE_DISCRSTATS);
      discrete->AddElement(NewFrequencies(statistics.GetFrequencies()).release());
      element->AddElement(discrete.release());
    } else {
      element->AddElement(NewNumericInfo(statistics.GetSummary()).release());
      element->AddElement(NewContStats(statistics.GetCutPoints(), statistics.GetFrequencies(),
                                       statistics.IsOpenLeft())
                              .release());
    }
    return element;
  });
}

void ExportCutPointsFreqs(const std::vector<double>& cutPoints, const std::vector<double>& freqs,
                          bool openLeft, XMLElement*& out) {
  Export(out, [&] { return NewContStats(cutPoints, freqs, openLeft); });
}

void AddDoublesList(XMLElement& element, const double* values, unsigned long n) {
  NQXML_940::internal::AddNumbers(element, NQXML_940::internal::Listed(values, n), kMissingWord);
}

// ---- Extensions ---------------------------------------------------------------------------------

void NQPMMLExporter::ExportExtension(const std::string& name, double value,
                                     XMLElement*& out) const {
  Export(out, [&] { return NewExtension(name, value); });
}

void NQPMMLExporter::ExportExtension(const std::string& name, const std::string& value,
                                     XMLElement*& out) const {
  Export(out, [&] { return NewExtension(name, NonEmpty{value}); });
}

void ExportExtensionImpl(const std::string& name, const std::string& strValue, double value,
                         bool useDouble, XMLElement*& out) {
  Export(out, [&] {
    return useDouble ? NewExtension(name, value) : NewExtension(name, NonEmpty{strValue});
  });
}

}  // namespace NQCommon_940
