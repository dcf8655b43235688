#include <nqcommon/model/NQVariableBase.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQContEncoder.h>
#include <nqcommon/model/NQRoundEncoder.h>
#include <nqcommon/model/NQStringEncoder.h>
#include <nqcommon/model/internal/saved_fields.h>
#include <nqcommon/xml/XMLElement.h>

namespace NQXML_940 {

namespace {

// Null for a code of no encoder.
std::unique_ptr<INQEncoder> MakeEncoder(INQEncoder::EncoderType type) {
  switch (type) {
    case INQEncoder::EncoderContinuous:
      return std::make_unique<NQContEncoder>();
    case INQEncoder::EncoderNumericCategorical:
      return std::make_unique<NQCatNumEncoder>();
    case INQEncoder::EncoderStringCategorical:
      return std::make_unique<NQStringEncoder>();
    case INQEncoder::EncoderRounding:
      return std::make_unique<NQRoundEncoder>();
    default:
      return nullptr;
  }
}

}  // namespace

NQVariableBase::NQVariableBase(std::string name, std::string label, VariableRole role,
                               std::unique_ptr<INQEncoder> encoder)
    : fName(std::move(name)), fLabel(std::move(label)), fRole(role), fEncoder(std::move(encoder)) {}
NQVariableBase::NQVariableBase(const NQVariableBase&) = default;
NQVariableBase& NQVariableBase::operator=(const NQVariableBase&) = default;
NQVariableBase::~NQVariableBase() = default;

bool NQVariableBase::SetVariableRole(VariableRole role) {
  fRole = role;
  return true;
}

void NQVariableBase::SetFieldFormatElement(XMLElement* element) { fFormatElement.Reset(element); }

bool NQVariableBase::SetMissingValueReplacement(const std::string& text) {
  fReplacement = text;
  fHasReplacement = true;
  return true;
}

bool NQVariableBase::GetMissingValueReplacement(std::string& text) const {
  if (fHasReplacement) text = fReplacement;
  return fHasReplacement;
}

bool NQVariableBase::SetFlagVariable(bool) { return false; }

void NQVariableBase::WriteReplacement(ObjectWriter& writer) const {
  writer.Value(fHasReplacement);
  if (fHasReplacement) writer.Value(fReplacement);
}

void NQVariableBase::ReadReplacement(ObjectReader& reader) {
  reader.Value(fHasReplacement);
  fReplacement.clear();
  if (fHasReplacement) reader.Value(fReplacement);
}

void NQVariableBase::WriteEncoder(ObjectWriter& writer) const {
  const auto type = fEncoder ? fEncoder->GetEncoderType() : INQEncoder::EncoderNone;
  writer.Value(type);
  if (type != INQEncoder::EncoderNone) writer.Object(*fEncoder);
}

void NQVariableBase::ReadEncoder(ObjectReader& reader,
                                 std::initializer_list<INQEncoder::EncoderType> accepted) {
  auto type = INQEncoder::EncoderNone;
  internal::ReadCode(reader, type);
  reader.Require(std::find(accepted.begin(), accepted.end(), type) != accepted.end());
  fEncoder.Reset(MakeEncoder(type).release());
  if (fEncoder) reader.Object(*fEncoder);
}

void NQVariableBase::DisplayCommon() const {
  using namespace NQDisplay_940;
  DisplayS("Name", fName);
  DisplayS("Label", fLabel);
  DisplayCode("Measure level", GetMeasureLevel());
  DisplayCode("Role", fRole);
  DisplayCode("Storage", fStorage);
  if (fHasReplacement) DisplayS("Missing value replacement", fReplacement);
}

void NQVariableBase::DisplayEncoder() const {
  if (fEncoder)
    fEncoder->Display();
  else
    INQEncoder::DisplayCode("Encoder type", INQEncoder::EncoderNone);
}

}  // namespace NQXML_940
