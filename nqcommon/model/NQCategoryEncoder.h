#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/model/INQEncoder.h>
#include <nqcommon/model/NQNumericEncoder.h>
#include <nqcommon/model/NQTextEncoder.h>

namespace NQXML_940 {

namespace internal {
template <class T>
class CategoryIndex;
}

// Values as categories, with codes 0, 1, 2, ... in order of first appearance: numbers on the base
// NQNumericEncoder, texts on NQTextEncoder.
//
// Cost     A search takes constant time, whatever the number of categories, plus the test for
//          missing, which is linear in the number of values declared missing.
// Failure  A new value that memory has no room for gets no code: -1. Setters are false then.
template <class T, class Base>
class NQ_API NQCategoryEncoder : public Base {
 public:
  using EncoderType = INQEncoder::EncoderType;
  using Value = std::conditional_t<std::is_same_v<T, double>, double, const std::string&>;
  using Other = std::conditional_t<std::is_same_v<T, double>, const std::string&, double>;

  EncoderType GetEncoderType() const override {
    return std::is_same_v<T, double> ? INQEncoder::EncoderNumericCategorical
                                     : INQEncoder::EncoderStringCategorical;
  }
  int GetNumberOfCategories() const override;

  // The code, or -1 for a missing value. A new value gets the next code; in EncodeConst it is -1.
  double Encode(Value value) override;
  double EncodeConst(Value value) const override;

  // -1: a text is no category of numbers, a number none of texts.
  double Encode(Other value) override;
  double EncodeConst(Other value) const override;

  // The text of a number has up to 15 digits, with "." as the decimal point; no text has a number.
  std::string Decode(int code) const override;
  double DecodeNum(int code) const override;

  bool SetValueLabels(const std::vector<std::string>& labels) override;
  bool SetValueLabel(int code, const std::string& label) override;
  const std::vector<std::string>& GetValueLabels() const override { return fvLabels; }

  int WriteObjectXML(std::ostream& os, int indent) const override;
  int ReadObjectXML(std::ifstream& in) override;
  void Display() const override;

  ~NQCategoryEncoder() override;

 protected:
  explicit NQCategoryEncoder(int expected);
  explicit NQCategoryEncoder(const std::vector<T>& values);
  NQCategoryEncoder(const NQCategoryEncoder& other);
  NQCategoryEncoder& operator=(const NQCategoryEncoder& other);

 private:
  struct Saved;

  const T* ValueAt(int code) const;

  std::unique_ptr<internal::CategoryIndex<T>> fIndex;
  std::vector<std::string> fvLabels;
};

extern template class NQCategoryEncoder<double, NQNumericEncoder>;
extern template class NQCategoryEncoder<std::string, NQTextEncoder>;

}  // namespace NQXML_940
