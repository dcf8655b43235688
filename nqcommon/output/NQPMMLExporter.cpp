#include <nqcommon/output/NQPMMLExporter.h>

#include <ctime>
#include <memory>

#include <nqcommon/model/NQApplicInfo4XML.h>
#include <nqcommon/model/NQUniStats.h>
#include <nqcommon/output/NQPMMLTags.h>
#include <nqcommon/output/internal/joined_list.h>
#include <nqcommon/output/internal/new_element.h>

namespace NQCommon_940 {

using namespace NQPMMLTags;
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

}  // namespace

// ---- Root and header ----------------------------------------------------------------------------

XMLElement* NQPMMLExporter::ExportPMMLElement() const {
  return NewElement(XML_ELE_PMMLMODEL, XML_ATT_VERSION, XML_VAL_PMMLVERSION42, XML_ATT_XMLNS,
                    XML_VAL_PMMLNAMESPACE42, XML_ATT_XMLNSXSI, XML_VAL_SCHEMAINSTANCE,
                    XML_ATT_SCHEMALOC, XML_VAL_SCHEMAFILE42)
      .release();
}

XMLElement* NQPMMLExporter::ExportPMMLElement40() const { return ExportPMMLElement(); }

NQStatus NQPMMLExporter::ExportHeader(const NQApplicInfo4XML* info, const std::string& description,
                                      bool withTimestamp, XMLElement*& out) const {
  out = nullptr;
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
  out = header.release();
  return {};
}

// ---- Statistics ---------------------------------------------------------------------------------

NQStatus NQPMMLExporter::ExportUniStats(const NQUniStats& statistics, XMLElement*& out) const {
  out = nullptr;
  if (!statistics.IsValid()) return {kStatisticsNotValid, false};
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
    XMLElement* continuous;
    ExportCutPointsFreqs(statistics.GetCutPoints(), statistics.GetFrequencies(),
                         statistics.IsOpenLeft(), continuous);
    element->AddElement(continuous);
  }
  out = element.release();
  return {};
}

void ExportCutPointsFreqs(const std::vector<double>& cutPoints, const std::vector<double>& freqs,
                          bool openLeft, XMLElement*& out) {
  out = nullptr;
  ElementPtr element = NewElement(XML_ELE_CONTSTATS);
  const std::string& closure = openLeft ? XML_VAL_OPENCLOSED : XML_VAL_CLOSEDOPEN;
  for (std::size_t i = 1; i < cutPoints.size(); ++i) {
    element->AddElement(NewElement(XML_ELE_INTERVAL, XML_ATT_LEFTMARGIN,
                                   NotMissing{cutPoints[i - 1]}, XML_ATT_RIGHTMARGIN,
                                   NotMissing{cutPoints[i]}, XML_ATT_CLOSURE, closure)
                            .release());
  }
  if (!cutPoints.empty() && !freqs.empty()) element->AddElement(NewFrequencies(freqs).release());
  out = element.release();
}

void AddDoublesList(XMLElement& element, const double* values, unsigned long n) {
  NQXML_940::internal::AddNumbers(element, NQXML_940::internal::Listed(values, n), kMissingWord);
}

// ---- Extensions ---------------------------------------------------------------------------------

void NQPMMLExporter::ExportExtension(const std::string& name, double value,
                                     XMLElement*& out) const {
  ExportExtensionImpl(name, "", value, true, out);
}

void NQPMMLExporter::ExportExtension(const std::string& name, const std::string& value,
                                     XMLElement*& out) const {
  ExportExtensionImpl(name, value, NQMV::Missing(), false, out);
}

void ExportExtensionImpl(const std::string& name, const std::string& strValue, double value,
                         bool useDouble, XMLElement*& out) {
  out = nullptr;
  ElementPtr extension = NewElement(XML_ELE_EXTENSION, XML_ATT_NAME, NonEmpty{name});
  if (useDouble) {
    extension->AddAttribute(XML_ATT_VALUE, value);
  } else {
    NQXML_940::internal::AddAttribute(*extension, XML_ATT_VALUE, NonEmpty{strValue});
  }
  extension->AddAttribute(XML_ATT_EXTENDER, XML_VAL_TARNCOM);
  out = extension.release();
}

}  // namespace NQCommon_940
