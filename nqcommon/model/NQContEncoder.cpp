#include <nqcommon/model/NQContEncoder.h>

#include <limits>

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

int NQContEncoder::WriteObjectXML(std::ostream& os, int indent) const {
  ObjectWriter writer(os, "NQContEncoder", indent);
  writer.Value(fBinning.GetNumberOfBins());
  WriteMissing(writer);
  return writer.End();
}

int NQContEncoder::ReadObjectXML(std::ifstream& in) {
  return internal::ReadObject(in, "NQContEncoder", [this](ObjectReader& reader) {
    constexpr double unknown = std::numeric_limits<double>::quiet_NaN();
    int n = 0;
    internal::ReadCount(reader, n);
    fBinning.ComputeCutpoints(unknown, unknown, n);
    ReadMissing(reader);
  });
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
