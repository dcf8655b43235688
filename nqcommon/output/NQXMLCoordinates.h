#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/xml/XMLElement.h>

namespace NQXML_940 {

// The values along one axis of a chart, or one column of a table: integers, numbers or texts, of
// one kind at a time.
class NQ_API NQXMLCoordinates {
 public:
  // The values, or nothing. An empty list is a list.
  using Values =
      std::variant<std::monostate, std::vector<int>, std::vector<double>, std::vector<std::string>>;

  static constexpr int kNone = -1;
  static constexpr int kIntegers = 0;
  static constexpr int kDoubles = 1;
  static constexpr int kStrings = 2;

  // No names and no values.
  NQXMLCoordinates() = default;

  NQXMLCoordinates(std::string feature, std::string field, std::string statistic, Values values)
      : fFeature(std::move(feature)),
        fField(std::move(field)),
        fStatistic(std::move(statistic)),
        fValues(std::move(values)) {}

  // What the values are (always written), the field and the statistic they belong to.
  const std::string& GetFeature() const { return fFeature; }
  void SetFeature(const std::string& feature) { fFeature = feature; }
  const std::string& GetField() const { return fField; }
  void SetField(const std::string& field) { fField = field; }
  const std::string& GetStatistic() const { return fStatistic; }
  void SetStatistic(const std::string& statistic) { fStatistic = statistic; }

  // One of the kinds above.
  int GetKind() const { return static_cast<int>(fValues.index()) - 1; }

  const Values& GetValues() const { return fValues; }
  // The values of one kind, null while there are none of it.
  const std::vector<int>* GetIntegers() const { return std::get_if<std::vector<int>>(&fValues); }
  const std::vector<double>* GetDoubles() const {
    return std::get_if<std::vector<double>>(&fValues);
  }
  std::vector<double>* GetDoubles() { return std::get_if<std::vector<double>>(&fValues); }
  const std::vector<std::string>* GetStrings() const {
    return std::get_if<std::vector<std::string>>(&fValues);
  }

  // Replaces the values, and the kind with them:
  //   coordinates.SetValues(std::vector<double>{0.5, 1.5});
  void SetValues(Values values) { fValues = std::move(values); }

  // Appends a value, the first one setting the kind. False, nothing changed, where there are values
  // of another kind, or an empty list of one.
  bool AddValue(int value) { return Append(value); }
  bool AddValue(double value) { return Append(value); }
  bool AddValue(const std::string& value) { return Append(value); }

  // The element "Coordinates", which the caller owns; null where there are no values.
  XMLElement* GetCoordinates() const;

  void Display() const;

 private:
  template <class T>
  bool Append(const T& value) {
    if (GetKind() == kNone) fValues = std::vector<T>();
    auto* values = std::get_if<std::vector<T>>(&fValues);
    if (values != nullptr) values->push_back(value);
    return values != nullptr;
  }

  std::string fFeature;
  std::string fField;
  std::string fStatistic;
  Values fValues;
};

}  // namespace NQXML_940
