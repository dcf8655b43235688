#include <nqcommon/model/NQRoundEncoder.h>

#include <cmath>

#include <nqcommon/common/display.h>
#include <nqcommon/model/internal/saved_fields.h>

namespace NQXML_940 {

using NQCommon_940::NQMV;

namespace {

double Round(double weight, INQVariable::WRoundingOption option) {
  switch (option) {
    case INQVariable::RoundDown:
      return std::floor(weight);
    case INQVariable::RoundClosest:
      return std::floor(weight + 0.5);
    default:
      return weight;
  }
}

}  // namespace

double NQRoundEncoder::Encode(double weight) { return EncodeConst(weight); }
double NQRoundEncoder::EncodeConst(double weight) const {
  if (IsMissing(weight)) return NQMV::Missing();
  const double rounded = Round(weight, fOption);
  return rounded > 0 ? rounded : NQMV::Missing();
}

double NQRoundEncoder::Encode(const std::string&) { return NQMV::Missing(); }
double NQRoundEncoder::EncodeConst(const std::string&) const { return NQMV::Missing(); }

NQRoundEncoder* NQRoundEncoder::Clone() const { return new NQRoundEncoder(*this); }

struct NQRoundEncoder::Saved {
  static constexpr const char* kName = "NQRoundEncoder";

  template <class Self, class Archive>
  static void Fields(Self& self, Archive& archive) {
    archive.Value(self.fOption);
    self.MissingFields(archive);
  }
};

int NQRoundEncoder::WriteObjectXML(std::ostream& os, int indent) const {
  return internal::WriteObject<Saved>(*this, os, indent);
}

int NQRoundEncoder::ReadObjectXML(std::ifstream& in) {
  return internal::ReadObject<Saved>(*this, in, "NQRoundEncoder from XML");
}

void NQRoundEncoder::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQRoundEncoder display start");
  DisplayCode("Encoder type", GetEncoderType());
  INQVariable::DisplayCode("Rounding option", fOption);
  DisplayMissing();
  DisplayText(1, "NQRoundEncoder display end");
}

}  // namespace NQXML_940
