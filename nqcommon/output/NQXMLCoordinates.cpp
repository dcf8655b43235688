#include <nqcommon/output/NQXMLCoordinates.h>

#include <nqcommon/common/display.h>
#include <nqcommon/output/NQStatXMLUtil.h>

namespace NQXML_940 {

namespace {

void DisplayValues(std::monostate) { NQDisplay_940::DisplayText(1, "Error"); }

void DisplayValues(const std::vector<int>& values) { NQDisplay_940::DisplayIV("Values", values); }

void DisplayValues(const std::vector<double>& values) {
  NQDisplay_940::DisplayDV("Values", values, true);
}

void DisplayValues(const std::vector<std::string>& values) {
  NQDisplay_940::DisplaySV("Values", values);
}

}  // namespace

XMLElement* NQXMLCoordinates::GetCoordinates() const {
  return NQStatXMLUtil::CreateElemCoordinates(*this);
}

void NQXMLCoordinates::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, " Coordinates display start: ");
  DisplayS("Feature", fFeature);
  DisplayS("Field", fField);
  DisplayS("Statistic", fStatistic);
  std::visit([](const auto& values) { DisplayValues(values); }, fValues);
  DisplayText(1, " Coordinates display end. ");
}

}  // namespace NQXML_940
