#pragma once

#include <iosfwd>
#include <string>

#include <nqcommon/export.h>

namespace NQXML_940 {

class INQEncoder;
class XMLElement;

// One variable of a model: what it is called, how it is measured, stored and used, and the encoder
// that turns its raw values into numbers. NQCatVar, NQContVar and NQWeightVar; NQVarList owns those
// of a model.
//
// Ownership  A variable owns its encoder and its format element; a copy has copies of both.
// Failure    Setters return false, nothing changed, where they do not apply. Where memory ends
//            std::bad_alloc passes, with all objects whole. A file that does not
//            match makes ReadObjectXML write "Failure reading NQCatVar!" (its class) to the
//            standard error stream and throw a pointer to a new IOException, which the catcher
//            deletes; what was read before stays in the object, which can be used, read again and
//            destroyed.
// Codes      Codes outside the tables (a newer file may have them) are kept and saved, and
//            displayed as " = unrecognized".
// Threads    one object, one thread at a time; const operations may run together.
class NQ_API INQVariable {
 public:
  enum MeasureLevel : int {
    LevelUnknown = 0,
    LevelContinuous = 1,
    LevelNumericCategorical = 2,
    LevelStringCategorical = 3,
    LevelFrequencyWeight = 4
  };
  enum VariableRole : int {
    RoleUndefined = 0,
    RoleTarget = 1,
    RoleTargetResponse = 2,
    RoleFrequencyWeight = 3,
    RoleInput = 4,
    RolePossibleInput = 5,
    RoleUnused = 6,
    RoleRecordID = 7
  };
  enum VariableStorage : int {
    StorageUndefined = 0,
    StorageInteger = 1,
    StorageReal = 2,
    StorageString = 3,
    StorageDate = 4,
    StorageTime = 5,
    StorageTimestamp = 6
  };
  enum WRoundingOption : int { RoundDown = 0, RoundClosest = 1, RoundAsIs = 2 };
  enum VarStatus : int { StatusOK = 0, StatusConstant = 1, StatusInvalid = 2 };

  virtual ~INQVariable();

  virtual MeasureLevel GetMeasureLevel() const = 0;
  virtual const std::string& GetVariableName() const = 0;
  virtual const std::string& GetVariableLabel() const = 0;
  virtual void SetVariableLabel(const std::string& label) = 0;

  // The number of categories or bins; 0 for a weight.
  virtual int GetNumberOfCategories() const = 0;

  // A variable takes any role, but a weight keeps its own: false for another.
  virtual VariableRole GetVariableRole() const = 0;
  virtual bool SetVariableRole(VariableRole role) = 0;

  virtual VariableStorage GetVariableStorage() const = 0;
  virtual void SetVariableStorage(VariableStorage storage) = 0;

  // The format element, which the variable takes over; null for none, the one it has for no change.
  // It is not saved.
  virtual void SetFieldFormatElement(XMLElement* element) = 0;
  virtual const XMLElement* GetFieldFormatElement() const = 0;
  virtual XMLElement* GetFieldFormatElement() = 0;

  // Raises the number of categories to that of the encoder where this is larger; returns it.
  virtual int UpdateNumberOfCategories() = 0;

  // The text, of any kind, that stands for a missing value. The getter is false, its argument as it
  // was, where there is none. A weight never has one.
  virtual bool SetMissingValueReplacement(const std::string& text) = 0;
  virtual bool GetMissingValueReplacement(std::string& text) const = 0;

  // A copy that shares nothing, which the caller owns.
  virtual INQVariable* Clone() const = 0;

  // The encoder, or null for none.
  virtual const INQEncoder* GetEncoder() const = 0;
  virtual INQEncoder* GetEncoder() = 0;

  virtual VarStatus GetVarStatus() = 0;

  // Writes the variable and its encoder as nested blocks of the save format; returns the lines
  // written, those of the encoder included. The reader returns the lines read, the same number.
  virtual int WriteObjectXML(std::ostream& os, int indent) const = 0;
  virtual int ReadObjectXML(std::ifstream& in) = 0;

  // A flag is a categorical variable with two values, so said by its owner. False for other kinds.
  virtual bool SetFlagVariable(bool isFlag) = 0;
  virtual bool IsFlagVariable() const = 0;

  // Writes the state through the diagnostic display, between "<class> display start" and
  // "<class> display end".
  virtual void Display() const = 0;

  // Write the label and the words of the code.
  static void DisplayCode(const std::string& label, MeasureLevel level);
  static void DisplayCode(const std::string& label, VariableRole role);
  static void DisplayCode(const std::string& label, VariableStorage storage);
  static void DisplayCode(const std::string& label, WRoundingOption option);
  static void DisplayCode(const std::string& label, VarStatus status);

 protected:
  INQVariable() = default;
  INQVariable(const INQVariable&) = default;
  INQVariable& operator=(const INQVariable&) = default;
};

// Numbers or texts as categories.
inline bool IsCategorical(INQVariable::MeasureLevel level) {
  return level == INQVariable::LevelNumericCategorical ||
         level == INQVariable::LevelStringCategorical;
}

}  // namespace NQXML_940
