#include <nqcommon/model/NQStringEncoder.h>

#include <nqcommon/common/display.h>
#include <nqcommon/model/internal/Categories.h>

namespace NQXML_940 {

using internal::Categories;

namespace {
constexpr double kNoCode = -1;
}

NQStringEncoder::NQStringEncoder(int expected)
    : fCategories(new Categories<std::string>(expected)) {}
NQStringEncoder::NQStringEncoder(const std::vector<std::string>& texts) : NQStringEncoder() {
  for (const std::string& text : texts) fCategories->Index().FindOrAdd(text);
}
NQStringEncoder::NQStringEncoder(const NQStringEncoder&) = default;
NQStringEncoder& NQStringEncoder::operator=(const NQStringEncoder&) = default;
NQStringEncoder::~NQStringEncoder() = default;

int NQStringEncoder::GetNumberOfCategories() const { return fCategories->Index().Size(); }

double NQStringEncoder::Encode(double) { return kNoCode; }
double NQStringEncoder::EncodeConst(double) const { return kNoCode; }

double NQStringEncoder::Encode(const std::string& text) {
  return fUserMissing.Contains(text) ? kNoCode : fCategories->Index().FindOrAdd(text);
}

double NQStringEncoder::EncodeConst(const std::string& text) const {
  return fUserMissing.Contains(text) ? kNoCode : fCategories->Index().Find(text);
}

bool NQStringEncoder::IsMissing(const std::string& text) const {
  return fUserMissing.Contains(text);
}

std::string NQStringEncoder::Decode(int code) const {
  const std::string* text = fCategories->ValueAt(code);
  return text ? *text : std::string();
}

NQStringEncoder* NQStringEncoder::Clone() const { return new NQStringEncoder(*this); }

bool NQStringEncoder::SetValueLabels(const std::vector<std::string>& labels) {
  fCategories->SetLabels(labels);
  return true;
}

bool NQStringEncoder::SetValueLabel(int code, const std::string& label) {
  return fCategories->SetLabel(code, label);
}

bool NQStringEncoder::AddDiscreteUserMissing(const std::string& value, const std::string& label) {
  fUserMissing.Add(value, label);
  return true;
}

const std::vector<std::string>& NQStringEncoder::GetValueLabels() const {
  return fCategories->GetLabels();
}

const std::vector<std::string>& NQStringEncoder::GetDiscreteMissValuesStr() const {
  return fUserMissing.GetValues();
}

const std::vector<std::string>& NQStringEncoder::GetMissValueLabels() const {
  return fUserMissing.GetLabels();
}

int NQStringEncoder::WriteObjectXML(std::ostream& os, int indent) const {
  ObjectWriter writer(os, "NQStringEncoder", indent);
  fCategories->Write(writer);
  internal::WriteUserMissing(writer, fUserMissing);
  return writer.End();
}

int NQStringEncoder::ReadObjectXML(std::ifstream& in) {
  return internal::ReadObject(in, "NQStringEncoder", [this](ObjectReader& reader) {
    fCategories->Read(reader);
    internal::ReadUserMissing(reader, fUserMissing);
  });
}

void NQStringEncoder::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQStringEncoder display start");
  DisplayCode("Encoder type", GetEncoderType());
  DisplaySV("Category texts", fCategories->Index().GetValues());
  DisplaySV("Value labels", GetValueLabels());
  DisplaySV("User-missing texts", fUserMissing.GetValues());
  DisplaySV("Labels of user-missing texts", fUserMissing.GetLabels());
  DisplayText(1, "NQStringEncoder display end");
}

}  // namespace NQXML_940
