#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <nqcommon/export.h>

namespace NQXML_940 {

// A case that an output table names: its identifier, its label, and lists of values, each of
// integers, numbers or texts. Of the lists the first two are written, however many there are.
class NQ_API NQXMLRecordInfo {
 public:
  using Values = std::variant<std::vector<int>, std::vector<double>, std::vector<std::string>>;

  NQXMLRecordInfo() = default;
  explicit NQXMLRecordInfo(std::string id, std::string label = "", std::vector<Values> arrays = {})
      : fId(std::move(id)), fLabel(std::move(label)), fvArrays(std::move(arrays)) {}

  const std::string& GetId() const { return fId; }
  void SetId(const std::string& id) { fId = id; }

  // Left out of the element when it is empty.
  const std::string& GetLabel() const { return fLabel; }
  void SetLabel(const std::string& label) { fLabel = label; }

  const std::vector<Values>& GetArrays() const { return fvArrays; }
  void SetArrays(std::vector<Values> arrays) { fvArrays = std::move(arrays); }
  // record.AddArray(std::vector<double>{0.5, 1.5});
  void AddArray(Values values) { fvArrays.push_back(std::move(values)); }

 private:
  std::string fId;
  std::string fLabel;
  std::vector<Values> fvArrays;
};

}  // namespace NQXML_940
