#include <nqcommon/model/NQNumericEncoder.h>

#include <nqcommon/common/display.h>
#include <nqcommon/model/internal/saved_fields.h>

namespace NQXML_940 {

using NQCommon_940::NQMV;

bool NQNumericEncoder::AddDiscreteUserMissing(double value, const std::string& label) {
  fUserMissing.Add(value, label);
  return true;
}

bool NQNumericEncoder::SetMissingInterval(double lo, double hi) {
  fHasInterval = true;
  fLower = lo;
  fUpper = hi;
  return true;
}

const std::vector<double>& NQNumericEncoder::GetDiscreteMissValues() const {
  return fUserMissing.GetValues();
}

const std::vector<std::string>& NQNumericEncoder::GetMissValueLabels() const {
  return fUserMissing.GetLabels();
}

bool NQNumericEncoder::GetMissingInterval(double& lo, double& hi) const {
  if (!fHasInterval) return INQEncoder::GetMissingInterval(lo, hi);
  lo = fLower;
  hi = fUpper;
  return true;
}

void NQNumericEncoder::WriteMissing(ObjectWriter& writer) const {
  writer.Value(fHasInterval);
  if (fHasInterval) {
    writer.Value(fLower);
    writer.Value(fUpper);
  }
  internal::WriteUserMissing(writer, fUserMissing);
}

void NQNumericEncoder::ReadMissing(ObjectReader& reader) {
  reader.Value(fHasInterval);
  fLower = fUpper = NQMV::Missing();
  if (fHasInterval) {
    reader.Value(fLower);
    reader.Value(fUpper);
  }
  internal::ReadUserMissing(reader, fUserMissing);
}

void NQNumericEncoder::DisplayMissing() const {
  using namespace NQDisplay_940;
  DisplayB("Missing interval is set", fHasInterval);
  if (fHasInterval) {
    DisplayD("Lower bound of missing interval", fLower);
    DisplayD("Upper bound of missing interval", fUpper);
  }
  DisplayDV("User-missing values", fUserMissing.GetValues(), true);
  DisplaySV("Labels of user-missing values", fUserMissing.GetLabels());
}

}  // namespace NQXML_940
