#include <nqcommon/model/NQContEncoder.h>

#include <limits>
#include <type_traits>

#include <nqcommon/common/display.h>
#include <nqcommon/model/internal/saved_fields.h>
#include <nqcommon/xml/number_format.h>

namespace NQXML_940 {

using NQCommon_940::NQMV;

int NQContEncoder::GetNumberOfCategories() const { return fBinning.GetNumberOfBins(); }

double NQContEncoder::Encode(double value) { return EncodeConst(value); }
double NQContEncoder::EncodeConst(double value) const {
  return IsMissing(value) ? NQMV::Missing() : value;
}

double NQContEncoder::Encode(const std::string&) { return NQMV::Missing(); }
double NQContEncoder::EncodeConst(const std::string&) const { return NQMV::Missing(); }

std::string NQContEncoder::Decode(int bin) const {
  const int last = fBinning.GetNumberOfCutPoints();
  if (bin < 0 || bin > last || last == 0) return {};
  if (bin == last) return "> " + ReplaceSep(fBinning.GetCutPoint(last - 1));
  const std::string upper = ReplaceSep(fBinning.GetCutPoint(bin));
  if (bin == 0) return "<= " + upper;
  return "(" + ReplaceSep(fBinning.GetCutPoint(bin - 1)) + ", " + upper + "]";
}

double NQContEncoder::DecodeNum(int bin) const {
  const bool isClosed = bin >= 0 && bin < fBinning.GetNumberOfCutPoints();
  return isClosed ? fBinning.GetCutPoint(bin) : NQMV::Missing();
}

NQContEncoder* NQContEncoder::Clone() const { return new NQContEncoder(*this); }

struct NQContEncoder::Saved {
  static constexpr const char* kName = "NQContEncoder";

  template <class Self, class Archive>
  static void Fields(Self& self, Archive& archive) {
    int bins = self.fBinning.GetNumberOfBins();
    archive.Count(bins);
    if constexpr (!std::is_const_v<Self>) {
      constexpr double unknown = std::numeric_limits<double>::quiet_NaN();
      self.fBinning.ComputeCutpoints(unknown, unknown, bins);
    }
    self.MissingFields(archive);
  }
};

int NQContEncoder::WriteObjectXML(std::ostream& os, int indent) const {
  return internal::WriteObject<Saved>(*this, os, indent);
}

int NQContEncoder::ReadObjectXML(std::ifstream& in) {
  return internal::ReadObject<Saved>(*this, in);
}

void NQContEncoder::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQContEncoder display start");
  DisplayCode("Encoder type", GetEncoderType());
  fBinning.Display();
  DisplayMissing();
  DisplayText(1, "NQContEncoder display end");
}

}  // namespace NQXML_940
