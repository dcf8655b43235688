#pragma once

#include <string>
#include <utility>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/output/NQXMLCoordinates.h>

namespace NQXML_940 {

// Coordinates that are drawn together, such as the curves of one chart: those that all share, if
// any, and then each curve's own. Coordinates without values are left out of the element.
class NQ_API NQXMLCoordinatesGroup {
 public:
  NQXMLCoordinatesGroup() = default;
  explicit NQXMLCoordinatesGroup(std::string name) : fName(std::move(name)) {}

  const std::string& GetName() const { return fName; }
  void SetName(const std::string& name) { fName = name; }

  const NQXMLCoordinates& GetShared() const { return fShared; }
  void SetShared(NQXMLCoordinates shared) { fShared = std::move(shared); }

  const std::vector<NQXMLCoordinates>& GetCoordinates() const { return fvCoordinates; }
  void SetCoordinates(std::vector<NQXMLCoordinates> coordinates) {
    fvCoordinates = std::move(coordinates);
  }
  void AddCoordinates(NQXMLCoordinates coordinates) {
    fvCoordinates.push_back(std::move(coordinates));
  }

  // The element "CoordinatesGroup", which the caller owns.
  XMLElement* GetCoordinatesGroup() const;

 private:
  std::string fName;
  NQXMLCoordinates fShared;
  std::vector<NQXMLCoordinates> fvCoordinates;
};

}  // namespace NQXML_940
