#pragma once

#include <string>
#include <vector>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/export.h>
#include <nqcommon/model/INQEncoder.h>
#include <nqcommon/model/UserMissing.h>

namespace NQXML_940 {

class ObjectReader;
class ObjectWriter;

// The user-missing values of the encoders of numbers: values declared one by one, with labels, and a
// closed interval. A value may be both. A NaN is missing only where a NaN is declared: it lies in no
// interval.
class NQ_API NQNumericEncoder : public INQEncoder {
 public:
  using INQEncoder::AddDiscreteUserMissing;
  using INQEncoder::IsMissing;

  bool IsMissing(double value) const final {
    return NQCommon_940::NQMV::IsMissing(value) ||
           (fHasInterval && fLower <= value && value <= fUpper) || fUserMissing.Contains(value);
  }

  bool AddDiscreteUserMissing(double value, const std::string& label) override;
  bool SetMissingInterval(double lo, double hi) override;
  const std::vector<double>& GetDiscreteMissValues() const override;
  const std::vector<std::string>& GetMissValueLabels() const override;
  bool GetMissingInterval(double& lo, double& hi) const override;

 protected:
  // The flag of the interval and, when it is set, the bounds; then the values and their labels.
  void WriteMissing(ObjectWriter& writer) const;
  void ReadMissing(ObjectReader& reader);
  void DisplayMissing() const;

 private:
  UserMissing<double> fUserMissing;
  bool fHasInterval = false;
  double fLower = NQCommon_940::NQMV::Missing();
  double fUpper = NQCommon_940::NQMV::Missing();
};

}  // namespace NQXML_940
