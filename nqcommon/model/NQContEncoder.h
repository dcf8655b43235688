#pragma once

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/model/NQBinningEncoder.h>
#include <nqcommon/model/NQNumericEncoder.h>

namespace NQXML_940 {

// Numbers as they are: a value encodes to itself, a missing one to the system-missing value, NaN to
// NaN. The bins are for the builder that wants them, through GetBinning.
//
// Save file  Of the bins only their number is kept. An encoder read on its own has no cut points
//            until SetBinning; one read with its variable is given the variable's range and bins.
class NQ_API NQContEncoder final : public NQNumericEncoder {
 public:
  using NQNumericEncoder::AddDiscreteUserMissing;
  using NQNumericEncoder::IsMissing;

  // Without bins; with equal-width bins; with bins between cut points.
  NQContEncoder() = default;
  NQContEncoder(double min, double max, int n) : fBinning(min, max, n) {}
  explicit NQContEncoder(const std::vector<double>& cutPoints) : fBinning(cutPoints) {}

  EncoderType GetEncoderType() const override { return EncoderContinuous; }

  // The number of bins.
  int GetNumberOfCategories() const override;

  double Encode(double value) override;
  double EncodeConst(double value) const override;

  // The system-missing value: a text is no number.
  double Encode(const std::string& text) override;
  double EncodeConst(const std::string& text) const override;

  // The code is a bin. Its text is "<= 2", "(2, 4]", "> 4"; its number the cut point that closes
  // it, system-missing for the last one.
  std::string Decode(int bin) const override;
  double DecodeNum(int bin) const override;

  const NQBinningEncoder& GetBinning() const { return fBinning; }
  void SetBinning(NQBinningEncoder binning) { fBinning = std::move(binning); }

  NQContEncoder* Clone() const override;

  int WriteObjectXML(std::ostream& os, int indent) const override;
  int ReadObjectXML(std::ifstream& in) override;
  void Display() const override;

 private:
  struct Saved;

  NQBinningEncoder fBinning;
};

}  // namespace NQXML_940
