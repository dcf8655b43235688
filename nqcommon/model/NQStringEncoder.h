#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <nqcommon/common/ClonePtr.h>
#include <nqcommon/export.h>
#include <nqcommon/model/INQEncoder.h>
#include <nqcommon/model/UserMissing.h>

namespace NQXML_940 {

namespace internal {
template <class T>
class Categories;
}

// Texts as categories, with codes 0, 1, 2, ... in order of first appearance. Texts are the same byte
// for byte; the empty text, and blanks at the end, are as good as any other.
//
// Cost       A search takes constant time, whatever the number of categories, plus the test for
//            missing, which is linear in the number of texts declared missing.
// Save file  Texts that the save format escapes come back escaped ("a & b" as "a &amp; b"), and one
//            longer than a line of the format, about 230 characters, cannot be read.
class NQ_API NQStringEncoder final : public INQEncoder {
 public:
  using INQEncoder::AddDiscreteUserMissing;
  using INQEncoder::IsMissing;

  // Without categories, with room for as many as are expected; or with those of `texts`, in their
  // order and each once.
  explicit NQStringEncoder(int expected = 0);
  explicit NQStringEncoder(const std::vector<std::string>& texts);
  NQStringEncoder(const NQStringEncoder&);
  NQStringEncoder& operator=(const NQStringEncoder&);
  ~NQStringEncoder() override;

  EncoderType GetEncoderType() const override { return EncoderStringCategorical; }
  int GetNumberOfCategories() const override;

  // -1: a number is no category.
  double Encode(double value) override;
  double EncodeConst(double value) const override;

  // The code, or -1 for a missing text. A new text gets the next code; in EncodeConst it is -1.
  double Encode(const std::string& text) override;
  double EncodeConst(const std::string& text) const override;

  bool IsMissing(const std::string& text) const override;

  // No category has a number.
  std::string Decode(int code) const override;

  NQStringEncoder* Clone() const override;

  bool SetValueLabels(const std::vector<std::string>& labels) override;
  bool SetValueLabel(int code, const std::string& label) override;
  bool AddDiscreteUserMissing(const std::string& value, const std::string& label) override;
  const std::vector<std::string>& GetValueLabels() const override;
  const std::vector<std::string>& GetDiscreteMissValuesStr() const override;
  const std::vector<std::string>& GetMissValueLabels() const override;

  int WriteObjectXML(std::ostream& os, int indent) const override;
  int ReadObjectXML(std::ifstream& in) override;
  void Display() const override;

 private:
  NQCommon_940::ClonePtr<internal::Categories<std::string>> fCategories;
  UserMissing<std::string> fUserMissing;
};

}  // namespace NQXML_940
