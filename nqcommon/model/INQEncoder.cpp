#include <nqcommon/model/INQEncoder.h>

#include <string_view>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/display.h>
#include <nqcommon/model/internal/code_words.h>

namespace NQXML_940 {

using NQCommon_940::NQMV;

namespace {

constexpr std::string_view kTypeWords[] = {
    " = Unknown", " = Binning of numeric values", " = Categorical with numeric category values",
    " = Categorical with string category values",
    " = ounding for frequency weights"};  // sic: readers of the text know it this way

template <class T>
const std::vector<T>& NoValues() {
  static const std::vector<T> none;
  return none;
}

}  // namespace

INQEncoder::~INQEncoder() = default;

int INQEncoder::GetNumberOfCategories() const { return 0; }

bool INQEncoder::IsMissing(double value) const { return NQMV::IsMissing(value); }
bool INQEncoder::IsMissing(const std::string&) const { return false; }

std::string INQEncoder::Decode(int) const { return {}; }
double INQEncoder::DecodeNum(int) const { return NQMV::Missing(); }

bool INQEncoder::SetValueLabels(const std::vector<std::string>&) { return false; }
bool INQEncoder::SetValueLabel(int, const std::string&) { return false; }
bool INQEncoder::AddDiscreteUserMissing(const std::string&, const std::string&) { return false; }
bool INQEncoder::AddDiscreteUserMissing(double, const std::string&) { return false; }
bool INQEncoder::SetMissingInterval(double, double) { return false; }

const std::vector<std::string>& INQEncoder::GetValueLabels() const {
  return NoValues<std::string>();
}
const std::vector<double>& INQEncoder::GetDiscreteMissValues() const { return NoValues<double>(); }
const std::vector<std::string>& INQEncoder::GetDiscreteMissValuesStr() const {
  return NoValues<std::string>();
}
const std::vector<std::string>& INQEncoder::GetMissValueLabels() const {
  return NoValues<std::string>();
}

bool INQEncoder::GetMissingInterval(double& lo, double& hi) const {
  lo = hi = NQMV::Missing();
  return false;
}

void INQEncoder::DisplayCode(const std::string& label, EncoderType type) {
  constexpr std::string_view otherTypes = " = Encoder type";
  const auto code = static_cast<std::size_t>(type);  // a negative one lies past every end
  const std::string_view rest = code < otherTypes.size() ? otherTypes.substr(code) : "";
  internal::DisplayCodeWord(label, type, kTypeWords, rest);
}

}  // namespace NQXML_940
