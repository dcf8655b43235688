#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <nqcommon/common/ClonePtr.h>
#include <nqcommon/export.h>
#include <nqcommon/model/NQNumericEncoder.h>

namespace NQXML_940 {

namespace internal {
template <class T>
class Categories;
}

// Numbers as categories, with codes 0, 1, 2, ... in order of first appearance.
//
// Which numbers are one category is a matter of exact equality: 0 and -0 are one (the first seen is
// kept), and NaN, whatever its bits, is one of its own, unless it is declared missing.
//
// Cost       A search takes constant time, whatever the number of categories, plus the test for
//            missing, which is linear in the number of values declared missing.
// Save file  Values are kept to 15 digits: categories that differ further on come back as two codes
//            of the same value, of which encoding finds the first. NaN and the infinities are not
//            kept by the format: NaN comes back as 0, an infinity as 0 too.
class NQ_API NQCatNumEncoder final : public NQNumericEncoder {
 public:
  using NQNumericEncoder::AddDiscreteUserMissing;
  using NQNumericEncoder::IsMissing;

  // Without categories, with room for as many as are expected; or with those of `values`, in their
  // order and each once, the system-missing value left out.
  explicit NQCatNumEncoder(int expected = 0);
  explicit NQCatNumEncoder(const std::vector<double>& values);
  NQCatNumEncoder(const NQCatNumEncoder&);
  NQCatNumEncoder& operator=(const NQCatNumEncoder&);
  ~NQCatNumEncoder() override;

  EncoderType GetEncoderType() const override { return EncoderNumericCategorical; }
  int GetNumberOfCategories() const override;

  // The code, or -1 for a missing value. A new value gets the next code; in EncodeConst it is -1.
  double Encode(double value) override;
  double EncodeConst(double value) const override;

  // -1: a text is no category.
  double Encode(const std::string& text) override;
  double EncodeConst(const std::string& text) const override;

  // The text has up to 15 digits, with "." as the decimal point.
  std::string Decode(int code) const override;
  double DecodeNum(int code) const override;

  NQCatNumEncoder* Clone() const override;

  bool SetValueLabels(const std::vector<std::string>& labels) override;
  bool SetValueLabel(int code, const std::string& label) override;
  const std::vector<std::string>& GetValueLabels() const override;

  int WriteObjectXML(std::ostream& os, int indent) const override;
  int ReadObjectXML(std::ifstream& in) override;
  void Display() const override;

 private:
  NQCommon_940::ClonePtr<internal::Categories<double>> fCategories;
};

}  // namespace NQXML_940
