#pragma once

#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/model/NQCategoryEncoder.h>

namespace NQXML_940 {

// Numbers as categories.
//
// Which numbers are one category is a matter of exact equality: 0 and -0 are one (the first seen is
// kept), and NaN, whatever its bits, is one of its own, unless it is declared missing.
//
// Save file  Values are kept to 15 digits: categories that differ further on come back as two codes
//            of the same value, of which encoding finds the first. NaN and the infinities are not
//            kept by the format: NaN comes back as 0, an infinity as 0 too.
class NQ_API NQCatNumEncoder final : public NQCategoryEncoder<double, NQNumericEncoder> {
 public:
  // Without categories, with room for as many as are expected; or with those of `values`, in their
  // order and each once, the system-missing value left out.
  explicit NQCatNumEncoder(int expected = 0) : NQCategoryEncoder(expected) {}
  explicit NQCatNumEncoder(const std::vector<double>& values) : NQCategoryEncoder(values) {}

  NQCatNumEncoder* Clone() const override;
};

}  // namespace NQXML_940
