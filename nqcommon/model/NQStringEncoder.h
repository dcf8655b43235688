#pragma once

#include <string>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/model/NQCategoryEncoder.h>

namespace NQXML_940 {

// Texts as categories. Texts are the same byte for byte; the empty text, and blanks at the end, are
// as good as any other.
//
// Save file  Texts that the save format escapes come back escaped ("a & b" as "a &amp; b"), and one
//            longer than a line of the format, about 230 characters, cannot be read.
class NQ_API NQStringEncoder final : public NQCategoryEncoder<std::string, NQTextEncoder> {
 public:
  // Without categories, with room for as many as are expected; or with those of `texts`, in their
  // order and each once.
  explicit NQStringEncoder(int expected = 0) : NQCategoryEncoder(expected) {}
  explicit NQStringEncoder(const std::vector<std::string>& texts) : NQCategoryEncoder(texts) {}

  NQStringEncoder* Clone() const override;
};

}  // namespace NQXML_940
