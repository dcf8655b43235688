#include <nqcommon/model/NQCategoryEncoder.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/common/memory_guard.h>
#include <nqcommon/model/internal/category_index.h>
#include <nqcommon/model/internal/saved_fields.h>
#include <nqcommon/xml/number_format.h>

namespace NQXML_940 {

using NQCommon_940::GuardMemory;
using NQCommon_940::NQMV;

namespace {

constexpr double kNoCode = -1;

void DisplayCategories(const std::vector<double>& values) {
  NQDisplay_940::DisplayDV("Category values", values, true);
}
void DisplayCategories(const std::vector<std::string>& texts) {
  NQDisplay_940::DisplaySV("Category texts", texts);
}

std::string AsText(double value) { return ReplaceSep(value); }
std::string AsText(const std::string& value) { return value; }

double AsNumber(double value) { return value; }
double AsNumber(const std::string&) { return NQMV::Missing(); }

}  // namespace

template <class T, class Base>
NQCategoryEncoder<T, Base>::NQCategoryEncoder(int expected)
    : fIndex(std::make_unique<internal::CategoryIndex<T>>(expected)) {}

template <class T, class Base>
NQCategoryEncoder<T, Base>::NQCategoryEncoder(const std::vector<T>& values) : NQCategoryEncoder(0) {
  for (const T& value : values) {
    if (!Base::IsMissing(value)) fIndex->FindOrAdd(value);
  }
}

template <class T, class Base>
NQCategoryEncoder<T, Base>::NQCategoryEncoder(const NQCategoryEncoder& other)
    : Base(other),
      fIndex(std::make_unique<internal::CategoryIndex<T>>(*other.fIndex)),
      fvLabels(other.fvLabels) {}

template <class T, class Base>
NQCategoryEncoder<T, Base>& NQCategoryEncoder<T, Base>::operator=(const NQCategoryEncoder& other) {
  auto index = std::make_unique<internal::CategoryIndex<T>>(*other.fIndex);
  Base::operator=(other);
  fvLabels = other.fvLabels;
  fIndex = std::move(index);
  return *this;
}

template <class T, class Base>
NQCategoryEncoder<T, Base>::~NQCategoryEncoder() = default;

template <class T, class Base>
int NQCategoryEncoder<T, Base>::GetNumberOfCategories() const {
  return fIndex->Size();
}

template <class T, class Base>
double NQCategoryEncoder<T, Base>::Encode(Value value) {
  if (this->IsMissing(value)) return kNoCode;
  return GuardMemory(kNoCode, [&] { return static_cast<double>(fIndex->FindOrAdd(value)); });
}

template <class T, class Base>
double NQCategoryEncoder<T, Base>::EncodeConst(Value value) const {
  return this->IsMissing(value) ? kNoCode : fIndex->Find(value);
}

template <class T, class Base>
double NQCategoryEncoder<T, Base>::Encode(Other) {
  return kNoCode;
}
template <class T, class Base>
double NQCategoryEncoder<T, Base>::EncodeConst(Other) const {
  return kNoCode;
}

// ValueAt gives null for a code without a category.
template <class T, class Base>
const T* NQCategoryEncoder<T, Base>::ValueAt(int code) const {
  const auto i = static_cast<std::size_t>(code);  // a negative code lies past every end
  return i < fIndex->GetValues().size() ? &fIndex->GetValues()[i] : nullptr;
}

template <class T, class Base>
std::string NQCategoryEncoder<T, Base>::Decode(int code) const {
  const T* value = ValueAt(code);
  return value ? AsText(*value) : std::string();
}

template <class T, class Base>
double NQCategoryEncoder<T, Base>::DecodeNum(int code) const {
  const T* value = ValueAt(code);
  return value ? AsNumber(*value) : NQMV::Missing();
}

template <class T, class Base>
bool NQCategoryEncoder<T, Base>::SetValueLabels(const std::vector<std::string>& labels) {
  return GuardMemory([&] { fvLabels = std::vector<std::string>(labels); });
}

// Labels past the first code that has neither a category nor a label would take memory that nothing
// was given for.
template <class T, class Base>
bool NQCategoryEncoder<T, Base>::SetValueLabel(int code, const std::string& label) {
  const auto i = static_cast<std::size_t>(code);  // a negative one lies past every end
  if (i > std::max(fIndex->GetValues().size(), fvLabels.size())) return false;
  return GuardMemory([&] {
    std::string newLabel = label;  // which may be one of these labels
    if (i >= fvLabels.size()) fvLabels.resize(i + 1);
    fvLabels[i] = std::move(newLabel);
  });
}

// A value that the file has twice (15 digits do not tell all numbers apart) keeps both codes, so
// that the later codes stay what they were; encoding finds the first.
template <class T, class Base>
struct NQCategoryEncoder<T, Base>::Saved {
  static constexpr const char* kName =
      std::is_same_v<T, double> ? "NQCatNumEncoder" : "NQStringEncoder";

  template <class Self, class Archive>
  static void Fields(Self& self, Archive& archive) {
    auto values = self.fIndex->GetValues();
    archive.List(values);
    if constexpr (!std::is_const_v<Self>) *self.fIndex = internal::CategoryIndex<T>(values);
    archive.List(self.fvLabels);
    self.MissingFields(archive);
  }
};

template <class T, class Base>
int NQCategoryEncoder<T, Base>::WriteObjectXML(std::ostream& os, int indent) const {
  return internal::WriteObject<Saved>(*this, os, indent);
}

template <class T, class Base>
int NQCategoryEncoder<T, Base>::ReadObjectXML(std::ifstream& in) {
  return internal::ReadObject<Saved>(*this, in);
}

template <class T, class Base>
void NQCategoryEncoder<T, Base>::Display() const {
  using NQDisplay_940::DisplayText;
  DisplayText(1, std::string(Saved::kName) + " display start");
  INQEncoder::DisplayCode("Encoder type", GetEncoderType());
  DisplayCategories(fIndex->GetValues());
  NQDisplay_940::DisplaySV("Value labels", fvLabels);
  this->DisplayMissing();
  DisplayText(1, std::string(Saved::kName) + " display end");
}

template class NQCategoryEncoder<double, NQNumericEncoder>;
template class NQCategoryEncoder<std::string, NQTextEncoder>;

}  // namespace NQXML_940
