#include <nqcommon/model/NQTextEncoder.h>

#include <nqcommon/common/display.h>
#include <nqcommon/model/internal/saved_fields.h>
#include <nqcommon/model/internal/user_missing.h>

namespace NQXML_940 {

bool NQTextEncoder::IsDeclared(const std::string& text) const {
  return internal::PositionOf(text, fvMissing) < fvMissing.size();
}

bool NQTextEncoder::AddDiscreteUserMissing(const std::string& value, const std::string& label) {
  return internal::DeclareMissing(value, label, fvMissing, fvMissingLabels);
}

void NQTextEncoder::MissingFields(ObjectWriter& writer) const {
  internal::UserMissingFields(fvMissing, fvMissingLabels, writer);
}
void NQTextEncoder::MissingFields(ObjectReader& reader) {
  internal::UserMissingFields(fvMissing, fvMissingLabels, reader);
}

void NQTextEncoder::DisplayMissing() const {
  NQDisplay_940::DisplaySV("User-missing texts", fvMissing);
  NQDisplay_940::DisplaySV("Labels of user-missing texts", fvMissingLabels);
}

}  // namespace NQXML_940
