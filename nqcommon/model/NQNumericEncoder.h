#pragma once

#include <string>
#include <vector>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/export.h>
#include <nqcommon/model/INQEncoder.h>

namespace NQXML_940 {

class ObjectReader;
class ObjectWriter;

// The user-missing values of the encoders of numbers: values declared one by one, with labels, and
// a closed interval. A value may be both. A NaN is missing only where a NaN is declared: it lies in
// no interval.
class NQ_API NQNumericEncoder : public INQEncoder {
 public:
  using INQEncoder::AddDiscreteUserMissing;
  using INQEncoder::IsMissing;

  bool IsMissing(double value) const final {
    return NQCommon_940::NQMV::IsMissing(value) ||
           (fHasInterval && fLower <= value && value <= fUpper) ||
           (!fvMissing.empty() && IsDeclared(value));
  }

  bool AddDiscreteUserMissing(double value, const std::string& label) override;
  bool SetMissingInterval(double lo, double hi) override;
  const std::vector<double>& GetDiscreteMissValues() const override { return fvMissing; }
  const std::vector<std::string>& GetMissValueLabels() const override { return fvMissingLabels; }
  bool GetMissingInterval(double& lo, double& hi) const override;

 protected:
  // Write or read the flag of the interval and, when it is set, the bounds; then the values and
  // their labels.
  void MissingFields(ObjectWriter& writer) const;
  void MissingFields(ObjectReader& reader);
  void DisplayMissing() const;

 private:
  struct Saved;

  bool IsDeclared(double value) const;

  std::vector<double> fvMissing;
  std::vector<std::string> fvMissingLabels;
  bool fHasInterval = false;
  double fLower = NQCommon_940::NQMV::Missing();
  double fUpper = NQCommon_940::NQMV::Missing();
};

}  // namespace NQXML_940
