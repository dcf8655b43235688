#include <nqcommon/model/NQNumericEncoder.h>

#include <nqcommon/common/display.h>
#include <nqcommon/model/internal/saved_fields.h>
#include <nqcommon/model/internal/user_missing.h>

namespace NQXML_940 {

struct NQNumericEncoder::Saved {
  template <class Self, class Archive>
  static void Fields(Self& self, Archive& archive) {
    archive.Value(self.fHasInterval);
    if (self.fHasInterval) {
      archive.Value(self.fLower);
      archive.Value(self.fUpper);
    }
    internal::UserMissingFields(self.fvMissing, self.fvMissingLabels, archive);
  }
};

void NQNumericEncoder::MissingFields(ObjectWriter& writer) const { Saved::Fields(*this, writer); }
void NQNumericEncoder::MissingFields(ObjectReader& reader) { Saved::Fields(*this, reader); }

bool NQNumericEncoder::IsDeclared(double value) const {
  return internal::PositionOf(value, fvMissing) < fvMissing.size();
}

bool NQNumericEncoder::AddDiscreteUserMissing(double value, const std::string& label) {
  return internal::DeclareMissing(value, label, fvMissing, fvMissingLabels);
}

bool NQNumericEncoder::SetMissingInterval(double lo, double hi) {
  fHasInterval = true;
  fLower = lo;
  fUpper = hi;
  return true;
}

bool NQNumericEncoder::GetMissingInterval(double& lo, double& hi) const {
  if (!fHasInterval) return INQEncoder::GetMissingInterval(lo, hi);
  lo = fLower;
  hi = fUpper;
  return true;
}

void NQNumericEncoder::DisplayMissing() const {
  using namespace NQDisplay_940;
  DisplayB("Missing interval is set", fHasInterval);
  if (fHasInterval) {
    DisplayD("Lower bound of missing interval", fLower);
    DisplayD("Upper bound of missing interval", fUpper);
  }
  DisplayDV("User-missing values", fvMissing, true);
  DisplaySV("Labels of user-missing values", fvMissingLabels);
}

}  // namespace NQXML_940
