#include <nqcommon/model/NQVariableBase.h>

#include <algorithm>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQContEncoder.h>
#include <nqcommon/model/NQRoundEncoder.h>
#include <nqcommon/model/NQStringEncoder.h>
#include <nqcommon/model/internal/owned.h>
#include <nqcommon/model/internal/saved_fields.h>
#include <nqcommon/xml/XMLElement.h>

namespace NQXML_940 {

namespace {

// MakeEncoder gives null for a code of no encoder.
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

NQVariableBase::Owned::Owned(std::unique_ptr<INQEncoder> encoder) : fEncoder(std::move(encoder)) {}
NQVariableBase::Owned::Owned(const Owned& other)
    : fEncoder(internal::CloneOf(other.fEncoder)),
      fFormatElement(internal::CloneOf(other.fFormatElement)) {}
NQVariableBase::Owned& NQVariableBase::Owned::operator=(const Owned& other) {
  Owned copy(other);
  fEncoder.swap(copy.fEncoder);
  fFormatElement.swap(copy.fFormatElement);
  return *this;
}
NQVariableBase::Owned::~Owned() = default;

NQVariableBase::NQVariableBase(std::string name, std::string label, VariableRole role,
                               std::unique_ptr<INQEncoder> encoder)
    : fName(std::move(name)), fLabel(std::move(label)), fRole(role), fOwned(std::move(encoder)) {}
NQVariableBase::NQVariableBase(const NQVariableBase&) = default;
NQVariableBase& NQVariableBase::operator=(const NQVariableBase&) = default;
NQVariableBase::~NQVariableBase() = default;

void NQVariableBase::ReplaceEncoder(INQEncoder* encoder) {
  internal::TakeOver(fOwned.fEncoder, encoder);
}

bool NQVariableBase::SetVariableRole(VariableRole role) {
  fRole = role;
  return true;
}

void NQVariableBase::SetFieldFormatElement(XMLElement* element) {
  internal::TakeOver(fOwned.fFormatElement, element);
}

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

struct NQVariableBase::Saved {
  template <class Self, class Archive>
  static void Replacement(Self& self, Archive& archive) {
    archive.Value(self.fHasReplacement);
    if (self.fHasReplacement) archive.Value(self.fReplacement);
  }
};

void NQVariableBase::ReplacementFields(ObjectWriter& writer) const {
  Saved::Replacement(*this, writer);
}
void NQVariableBase::ReplacementFields(ObjectReader& reader) { Saved::Replacement(*this, reader); }

void NQVariableBase::EncoderFields(ObjectWriter& writer, EncoderTypes) const {
  const auto type = Encoder() ? Encoder()->GetEncoderType() : INQEncoder::EncoderNone;
  writer.Value(type);
  if (type != INQEncoder::EncoderNone) writer.Object(*Encoder());
}

void NQVariableBase::EncoderFields(ObjectReader& reader, EncoderTypes accepted) {
  auto type = INQEncoder::EncoderNone;
  reader.Value(type);
  reader.Require(std::find(accepted.begin(), accepted.end(), type) != accepted.end());
  fOwned.fEncoder = MakeEncoder(type);
  if (Encoder()) reader.Object(*Encoder());
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
  if (Encoder())
    Encoder()->Display();
  else
    INQEncoder::DisplayCode("Encoder type", INQEncoder::EncoderNone);
}

}  // namespace NQXML_940
