#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/output/NQXMLCoordinates.h>
#include <nqcommon/output/NQXMLCounts.h>

namespace NQXML_940 {

// What is told of one, two or more variables: counts, named statistics, which are all numbers or
// all texts, and coordinates.
class NQ_API NQVariateData {
 public:
  using Statistics = std::variant<std::vector<double>, std::vector<std::string>>;

  const std::string& GetDescription() const { return fDescription; }
  void SetDescription(const std::string& description) { fDescription = description; }

  const std::vector<NQXMLCounts>& GetCounts() const { return fvCounts; }
  void SetCounts(std::vector<NQXMLCounts> counts) { fvCounts = std::move(counts); }
  void AddCounts(const NQXMLCounts& counts) { fvCounts.push_back(counts); }

  const std::vector<NQXMLCoordinates>& GetCoordinates() const { return fvCoordinates; }
  void SetCoordinates(std::vector<NQXMLCoordinates> coordinates) {
    fvCoordinates = std::move(coordinates);
  }
  void AddCoordinates(NQXMLCoordinates coordinates) {
    fvCoordinates.push_back(std::move(coordinates));
  }

  // The names, and as many values of the one kind or of the other.
  const std::vector<std::string>& GetStatisticNames() const { return fvStatisticNames; }
  const Statistics& GetStatistics() const { return fvStatistics; }
  bool HasStringStatistics() const { return fvStatistics.index() == 1; }

  // Replaces the statistics. False, nothing changed, without one value for each name.
  bool SetStatistics(std::vector<std::string> names, Statistics values);
  // Append a statistic. False, nothing changed, where there are statistics of the other kind.
  bool AddStatistic(const std::string& name, double value) { return Append(name, value); }
  bool AddStatistic(const std::string& name, const std::string& value) {
    return Append(name, value);
  }

  // The elements "UnivariateData", "BivariateData" and "MultivariateData" with the description, as
  // NQStatXMLUtil::CreateElemVarData builds them. The caller owns them.
  XMLElement* GetUnivariateDataElem() const;
  XMLElement* GetBivariateDataElem() const;
  XMLElement* GetMultiVariateDataElem() const;

 private:
  template <class T>
  bool Append(const std::string& name, const T& value) {
    if (fvStatisticNames.empty()) fvStatistics = std::vector<T>();
    auto* values = std::get_if<std::vector<T>>(&fvStatistics);
    if (values == nullptr) return false;
    values->push_back(value);
    fvStatisticNames.push_back(name);
    return true;
  }

  std::string fDescription;
  std::vector<NQXMLCounts> fvCounts;
  std::vector<std::string> fvStatisticNames;
  Statistics fvStatistics;
  std::vector<NQXMLCoordinates> fvCoordinates;
};

}  // namespace NQXML_940
