#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/model/INQEncoder.h>
#include <nqcommon/model/INQVariable.h>

namespace NQXML_940 {

// The variables of one model, in positions 0 .. GetNumVars() - 1.
//
// Positions  stay what they are: RemoveVar leaves an empty slot. Empty slots are skipped by every
//            search and count; they are not saved.
// Counts     of variables are taken from the variables when asked for, so that they are right after
//            any change made through GetVarAt too.
// Ownership  The list owns its variables and its field-formats element; a copy has copies of all.
// Failure    Without a variable at the position the answer is null, false or -1, and nothing
//            changes. ReadObjectXML fails as that of INQVariable, with "Failure reading
//            NQVarList!". Where memory ends std::bad_alloc passes, and adding has changed nothing.
// Threads    one object, one thread at a time; const operations may run together.
//
//   NQVarList.cpp         life cycle, adding, removing, finding, counts
//   NQVarList_roles.cpp   roles, target, response
//   NQVarList_save.cpp    save file, display
class NQ_API NQVarList {
 public:
  NQVarList();
  NQVarList(const NQVarList&);
  NQVarList(NQVarList&&) noexcept;
  NQVarList& operator=(const NQVarList&);
  NQVarList& operator=(NQVarList&&) noexcept;
  ~NQVarList();

  // ---- Adding: the position of the new variable, or -1 ------------------------------------------

  int AddContVar(const std::string& name, const std::string& label, double min, double max,
                 INQVariable::VariableRole role, bool isBinned, int bins);
  int AddContVar(const std::string& name, const std::string& label, double min, double max,
                 INQVariable::VariableRole role, const std::vector<double>& cutPoints);

  // A level that is not categorical is refused: -1.
  int AddCatVar(const std::string& name, const std::string& label, int categories,
                INQVariable::MeasureLevel level, INQVariable::VariableRole role, bool isOrdinal);

  // The variable gets these categories, numbers or texts, each once and in their order.
  // Frequencies, one for each value (else -1), add up by category to its sums of frequency weights.
  int AddCatVar(const std::string& name, const std::string& label,
                const std::vector<double>& values, INQVariable::VariableRole role, bool isOrdinal);
  int AddCatVar(const std::string& name, const std::string& label,
                const std::vector<double>& values, const std::vector<double>& frequencies,
                INQVariable::VariableRole role, bool isOrdinal);
  int AddCatVar(const std::string& name, const std::string& label,
                const std::vector<std::string>& texts, INQVariable::VariableRole role,
                bool isOrdinal);
  int AddCatVar(const std::string& name, const std::string& label,
                const std::vector<std::string>& texts, const std::vector<double>& frequencies,
                INQVariable::VariableRole role, bool isOrdinal);

  // A list has one weight at most: a new one takes the place of the old one.
  int SetWeightVar(const std::string& name, const std::string& label,
                   INQVariable::WRoundingOption option);

  // Adds a clone. Refused with -1 are null, a measure level outside 1 .. 4, an NQCatVar whose level
  // is not categorical, and a second weight.
  int AddNewVar(const INQVariable* variable);

  // ---- Removing and finding ---------------------------------------------------------------------

  bool RemoveVar(int i);
  bool RemoveVar(const std::string& name);  // the first of this name

  // Slots, the empty ones included.
  int GetNumVars() const { return static_cast<int>(fOwned.fvVariables.size()); }

  // The position of the first variable whose name is this byte for byte, or -1.
  int FindVariable(const std::string& name) const;

  const INQVariable* GetVarAt(int i) const;
  INQVariable* GetVarAt(int i);
  const INQVariable* GetVariable(const std::string& name) const;
  INQVariable* GetVariable(const std::string& name);
  const INQEncoder* GetEncoderAt(int i) const;
  INQEncoder* GetEncoderAt(int i);

  // The position of the weight, or -1 without one.
  int GetWeightVarIndex() const;

  // The names in list order, of all variables or of those of a role.
  std::vector<std::string> GetVarNames() const;
  std::vector<std::string> GetVarNames(INQVariable::VariableRole role) const;

  // ---- Counts of variables ----------------------------------------------------------------------

  int GetNumContVar() const;            // of level 1
  int GetNumCatVar() const;             // of levels 2 and 3
  int GetNumInputVars() const;          // of role Input
  int GetNumPossibleInputVars() const;  // of role Possible Input

  // The categories of all categorical variables of role Input: the indicator columns they make.
  long long GetNInputCats() const;

  void UpdateNumbersOfCategories();

  // ---- Roles ------------------------------------------------------------------------------------

  // The role is RoleUndefined where there is no variable. A weight keeps its own: false for
  // another.
  INQVariable::VariableRole GetVariableRole(int i) const;
  bool SetVariableRole(int i, INQVariable::VariableRole role);

  // The selection of inputs: with isInput a possible input becomes an input, without it an input
  // becomes a possible input. True also for a variable that has that role already; a variable of
  // any third role is refused.
  bool ChangeVariableRole(bool isInput, int i);

  // AddResponseVariable makes a variable a target response; a weight is refused. There may be
  // several. RemoveResponseVariable makes a target response an unused variable, not an input, so
  // that it does not slip into the model of another response; a variable of any other role is
  // refused.
  bool AddResponseVariable(int i);
  bool RemoveResponseVariable(int i);

  // The first target, or the first target response where there is no target, takes over this
  // encoder. False where there is neither, or for null: the encoder then stays the caller's.
  bool ChangeTargetEncoder(INQEncoder* encoder);

  bool SetMissingValueReplacement(int i, const std::string& text);

  // ---- Cases, and what they were used for -------------------------------------------------------

  bool GetListwiseDeletion() const { return fListwiseDeletion; }
  void SetListwiseDeletion(bool isListwise) { fListwiseDeletion = isListwise; }

  double GetUnweightedCount() const { return fUnweightedCount; }
  void SetUnweightedCount(double count) { fUnweightedCount = count; }
  double GetWeightedCount() const { return fWeightedCount; }
  void SetWeightedCount(double count) { fWeightedCount = count; }
  double GetDroppedCount() const { return fDroppedCount; }
  void SetDroppedCount(double count) { fDroppedCount = count; }
  double GetBadWeightCount() const { return fBadWeightCount; }
  void SetBadWeightCount(double count) { fBadWeightCount = count; }
  double GetWeightedDroppedCount() const { return fWeightedDroppedCount; }
  void SetWeightedDroppedCount(double count) { fWeightedDroppedCount = count; }

  // The element that describes the formats of all fields. The list takes it over; null for none,
  // the one it has for no change.
  void SetFieldFormatsElement(XMLElement* element);
  const XMLElement* GetFieldFormatsElement() const { return fOwned.fFormatsElement.get(); }
  XMLElement* GetFieldFormatsElement() { return fOwned.fFormatsElement.get(); }

  // ---- Save file --------------------------------------------------------------------------------

  // The variables, each after its measure level; then the numbers of continuous and categorical
  // variables, of inputs and of possible inputs. Return the lines, those of nested blocks included.
  //
  // Reading destroys the old variables. The old weight alone lives on, as the object of the weight
  // that is read; when none is, it is destroyed too. The flag, the counts of cases and the formats
  // element stay. Failures are also: a negative number of variables, a level outside 1 .. 4, a
  // second weight, a block of another level than the one before it, a number of continuous or of
  // categorical variables other than that of the variables read. The last two numbers are free.
  // After a failure the list holds the variables before the one that failed; when the start line
  // failed, it is unchanged.
  int WriteObjectXML(std::ostream& os, int indent) const;
  int ReadObjectXML(std::ifstream& in);

  // Whether a file that WriteObjectXML writes with this indent can be read. It cannot where a line
  // is longer than the format's 255 bytes (a text of some 230, escaped), where a text has a NUL, or
  // where a categorical variable has no encoder of categories. The texts then read may still be
  // escaped: UnescapeStrings.
  bool CanBeReadBack(int indent = 0) const;

  // Writes the list and its variables through the diagnostic display.
  void Display() const;

 private:
  struct Saved;

  // A copy has copies of all.
  struct Owned {
    Owned();
    Owned(const Owned& other);
    Owned(Owned&&) noexcept;
    Owned& operator=(const Owned& other);
    Owned& operator=(Owned&&) noexcept;
    ~Owned();

    std::vector<std::unique_ptr<INQVariable>> fvVariables;
    std::unique_ptr<XMLElement> fFormatsElement;
  };

  int Add(std::unique_ptr<INQVariable> variable);
  bool ChangeRole(int i, INQVariable::VariableRole from, INQVariable::VariableRole to);

  Owned fOwned;
  bool fListwiseDeletion = false;
  double fUnweightedCount = 0;
  double fWeightedCount = 0;
  double fDroppedCount = 0;
  double fBadWeightCount = 0;
  double fWeightedDroppedCount = 0;
};

}  // namespace NQXML_940
