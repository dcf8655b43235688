#include <nqcommon/model/NQCatNumEncoder.h>

#include <nqcommon/common/display.h>
#include <nqcommon/model/internal/Categories.h>
#include <nqcommon/xml/number_format.h>

namespace NQXML_940 {

using internal::Categories;
using NQCommon_940::NQMV;

namespace {
constexpr double kNoCode = -1;
}

NQCatNumEncoder::NQCatNumEncoder(int expected) : fCategories(new Categories<double>(expected)) {}
NQCatNumEncoder::NQCatNumEncoder(const std::vector<double>& values) : NQCatNumEncoder() {
  for (double value : values) {
    if (!NQMV::IsMissing(value)) fCategories->Index().FindOrAdd(value);
  }
}
NQCatNumEncoder::NQCatNumEncoder(const NQCatNumEncoder&) = default;
NQCatNumEncoder& NQCatNumEncoder::operator=(const NQCatNumEncoder&) = default;
NQCatNumEncoder::~NQCatNumEncoder() = default;

int NQCatNumEncoder::GetNumberOfCategories() const { return fCategories->Index().Size(); }

double NQCatNumEncoder::Encode(double value) {
  return IsMissing(value) ? kNoCode : fCategories->Index().FindOrAdd(value);
}

double NQCatNumEncoder::EncodeConst(double value) const {
  return IsMissing(value) ? kNoCode : fCategories->Index().Find(value);
}

double NQCatNumEncoder::Encode(const std::string&) { return kNoCode; }
double NQCatNumEncoder::EncodeConst(const std::string&) const { return kNoCode; }

std::string NQCatNumEncoder::Decode(int code) const {
  const double* value = fCategories->ValueAt(code);
  return value ? ReplaceSep(*value) : std::string();
}

double NQCatNumEncoder::DecodeNum(int code) const {
  const double* value = fCategories->ValueAt(code);
  return value ? *value : NQMV::Missing();
}

NQCatNumEncoder* NQCatNumEncoder::Clone() const { return new NQCatNumEncoder(*this); }

bool NQCatNumEncoder::SetValueLabels(const std::vector<std::string>& labels) {
  fCategories->SetLabels(labels);
  return true;
}

bool NQCatNumEncoder::SetValueLabel(int code, const std::string& label) {
  return fCategories->SetLabel(code, label);
}

const std::vector<std::string>& NQCatNumEncoder::GetValueLabels() const {
  return fCategories->GetLabels();
}

int NQCatNumEncoder::WriteObjectXML(std::ostream& os, int indent) const {
  ObjectWriter writer(os, "NQCatNumEncoder", indent);
  fCategories->Write(writer);
  WriteMissing(writer);
  return writer.End();
}

int NQCatNumEncoder::ReadObjectXML(std::ifstream& in) {
  return internal::ReadObject(in, "NQCatNumEncoder", [this](ObjectReader& reader) {
    fCategories->Read(reader);
    ReadMissing(reader);
  });
}

void NQCatNumEncoder::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQCatNumEncoder display start");
  DisplayCode("Encoder type", GetEncoderType());
  DisplayDV("Category values", fCategories->Index().GetValues(), true);
  DisplaySV("Value labels", GetValueLabels());
  DisplayMissing();
  DisplayText(1, "NQCatNumEncoder display end");
}

}  // namespace NQXML_940
