#pragma once

#include <map>
#include <string>
#include <vector>

#include <nqcommon/common/NQStatus.h>
#include <nqcommon/export.h>

namespace NQCommon_940 {

// Collects the warnings of one or more computations, each warning once, in order of first
// appearance, in two lists: the current one, which its owner clears between computations, and the
// accumulated one, which stays. A warning's code may carry typed parameters for its message.
//
// Finding a duplicate is a linear scan; finding parameters is logarithmic in the number of codes.
//
// Failure  Nothing throws but a copy of the object. A warning or parameter for which memory ends is
//          left out, and GetParameters then gives none.
class NQ_API NQWarnings {
 public:
  enum Destination : int { ToCurrent = 0, ToAccumulated = 1, ToBoth = 2 };

  // One parameter of a message: an integer (type 0), a double (1) or a string (2). Every kind has a
  // field of its own: reading converts nothing, and setting one kind leaves the others as they
  // were.
  class NQ_API NQParameterValue {
   public:
    int GetType() const { return fType; }
    int ToInteger() const { return fInteger; }
    double ToDouble() const { return fDouble; }
    std::string ToString() const { return fString; }

    void SetValue(int value);
    void SetValue(double value);
    void SetValue(std::string value);

   private:
    enum Type : int { kInteger = 0, kDouble = 1, kString = 2 };

    Type fType = kInteger;
    int fInteger = 0;
    double fDouble = 0;
    std::string fString;
  };

  NQWarnings() = default;
  NQWarnings(const NQWarnings&) = default;
  NQWarnings& operator=(const NQWarnings&) = default;
  NQWarnings(NQWarnings&&) noexcept = default;
  NQWarnings& operator=(NQWarnings&&) noexcept = default;
  virtual ~NQWarnings();

  // Appends a warning to the lists that `destination` names, where no equal one is there already.
  // A status that is not a warning is ignored. Any destination but the first two means both lists.
  void AddWarning(const NQStatus& status, Destination destination);

  // Adds each warning to the current list.
  void AddWarnings(const std::vector<NQStatus>& statuses);

  // Adds other's lists to the lists of this object, and its parameters for the codes that have none
  // here; codes known here keep their own. The copy makes it safe to add an object to itself.
  void AddWarnings(NQWarnings other);

  // The current list, or the accumulated one.
  const std::vector<NQStatus>& GetWarnings(bool current) const {
    return current ? fvCurrent : fvAccumulated;
  }

  // Empties the current list; the accumulated list and all parameters stay.
  void ClearWarnings() { fvCurrent.clear(); }

  // Appends a parameter for the code of `status`; statuses of one code share one sequence, whatever
  // their data. True, unless memory ends.
  bool AddParameter(const NQStatus& status, int value);
  bool AddParameter(const NQStatus& status, double value);
  bool AddParameter(const NQStatus& status, std::string value);

  bool HasParameter(const NQStatus& status) const;

  // The parameters of the code of `status`, empty for an unknown code, in a buffer that the next
  // call refills: a reference from an earlier call then shows the new answer.
  const std::vector<NQParameterValue>& GetParameters(const NQStatus& status);

 private:
  using Parameters = std::vector<NQParameterValue>;

  template <typename T>
  bool AppendParameter(const NQStatus& status, T& value);
  // FindParameters gives null where the code has no entry.
  const Parameters* FindParameters(long code) const;
  // ParametersOf makes the entry of the code where there is none.
  Parameters& ParametersOf(long code);

  std::vector<NQStatus> fvCurrent;
  std::vector<NQStatus> fvAccumulated;
  std::map<long, int> fParameterIndex;  // error code to position in fvParameters
  std::vector<Parameters> fvParameters;
  Parameters fvResult;
};

}  // namespace NQCommon_940
