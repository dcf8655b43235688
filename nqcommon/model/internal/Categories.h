// What the two encoders of categories have in common: the categories by code, and their labels.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <nqcommon/model/internal/category_index.h>
#include <nqcommon/model/internal/saved_fields.h>

namespace NQXML_940::internal {

template <class T>
class Categories {
 public:
  explicit Categories(int expected) : fIndex(expected) {}

  Categories* Clone() const { return new Categories(*this); }

  CategoryIndex<T>& Index() { return fIndex; }
  const CategoryIndex<T>& Index() const { return fIndex; }

  // Null for a code without a category.
  const T* ValueAt(int code) const {
    const auto i = static_cast<std::size_t>(code);  // a negative code lies past every end
    return i < fIndex.GetValues().size() ? &fIndex.GetValues()[i] : nullptr;
  }

  void SetLabels(const std::vector<std::string>& labels) { fvLabels = labels; }
  const std::vector<std::string>& GetLabels() const { return fvLabels; }

  // False past the first code that has neither a category nor a label: labels take no memory that
  // nothing was given for. The label may be one of these.
  bool SetLabel(int code, std::string label) {
    const auto i = static_cast<std::size_t>(code);
    if (code < 0 || i > std::max(fIndex.GetValues().size(), fvLabels.size())) return false;
    if (i >= fvLabels.size()) fvLabels.resize(i + 1);
    fvLabels[i] = std::move(label);
    return true;
  }

  // The number of values and the values, the number of labels and the labels. A value that the file
  // has twice (15 digits do not tell all numbers apart) keeps both codes, so that the later codes
  // stay what they were; encoding finds the first.
  void Write(ObjectWriter& writer) const {
    writer.List(fIndex.GetValues());
    writer.List(fvLabels);
  }
  void Read(ObjectReader& reader) {
    fIndex.Clear();
    ReadEach<T>(reader, [this](const T& value) { fIndex.Append(value); });
    reader.List(fvLabels);
  }

 private:
  CategoryIndex<T> fIndex;
  std::vector<std::string> fvLabels;
};

}  // namespace NQXML_940::internal
