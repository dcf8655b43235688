#pragma once

#include <string>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/model/INQEncoder.h>

namespace NQXML_940 {

class ObjectReader;
class ObjectWriter;

// The user-missing values of the encoder of texts: texts declared one by one, with labels.
class NQ_API NQTextEncoder : public INQEncoder {
 public:
  using INQEncoder::AddDiscreteUserMissing;
  using INQEncoder::IsMissing;

  bool IsMissing(const std::string& text) const final {
    return !fvMissing.empty() && IsDeclared(text);
  }

  bool AddDiscreteUserMissing(const std::string& value, const std::string& label) override;
  const std::vector<std::string>& GetDiscreteMissValuesStr() const override { return fvMissing; }
  const std::vector<std::string>& GetMissValueLabels() const override { return fvMissingLabels; }

 protected:
  // Write or read the texts and their labels.
  void MissingFields(ObjectWriter& writer) const;
  void MissingFields(ObjectReader& reader);
  void DisplayMissing() const;

 private:
  bool IsDeclared(const std::string& text) const;

  std::vector<std::string> fvMissing;
  std::vector<std::string> fvMissingLabels;
};

}  // namespace NQXML_940
