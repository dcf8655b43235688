#pragma once

#include <iosfwd>
#include <string>

#include <nqcommon/export.h>
#include <nqcommon/model/INQVariable.h>
#include <nqcommon/model/NQNumericEncoder.h>

namespace NQXML_940 {

// Frequency weights, rounded: w to floor(w), floor(w + 0.5) or w itself. What is not greater than 0
// then, NaN included, is the system-missing value: the case is dropped. An option outside the table
// leaves weights as they are.
class NQ_API NQRoundEncoder final : public NQNumericEncoder {
 public:
  using NQNumericEncoder::AddDiscreteUserMissing;
  using NQNumericEncoder::IsMissing;

  explicit NQRoundEncoder(INQVariable::WRoundingOption option = INQVariable::RoundAsIs)
      : fOption(option) {}

  EncoderType GetEncoderType() const override { return EncoderRounding; }
  INQVariable::WRoundingOption GetRoundingOption() const { return fOption; }

  double Encode(double weight) override;
  double EncodeConst(double weight) const override;

  // The system-missing value: a text is no weight.
  double Encode(const std::string& text) override;
  double EncodeConst(const std::string& text) const override;

  NQRoundEncoder* Clone() const override;

  // A failure is reported as "Failure reading NQRoundEncoder from XML!".
  int WriteObjectXML(std::ostream& os, int indent) const override;
  int ReadObjectXML(std::ifstream& in) override;
  void Display() const override;

 private:
  struct Saved;

  INQVariable::WRoundingOption fOption;
};

}  // namespace NQXML_940
