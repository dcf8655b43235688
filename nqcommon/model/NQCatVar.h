#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/model/NQVariableBase.h>

namespace NQXML_940 {

// A categorical variable, of numbers or of texts.
//
// The number of categories is stored beside the encoder's: a builder may know it before the data
// do, and it never falls. UpdateNumberOfCategories brings it up to what the encoder has seen.
//
// Save file  The sums of frequency weights, the flag-variable mark and the format element are not
//            kept; reading leaves them as they are. A variable without encoder is written, but
//            cannot be read: a categorical variable without categories would be no use to a model.
class NQ_API NQCatVar final : public NQVariableBase {
 public:
  // A level of LevelNumericCategorical makes a numeric-category encoder, any other level a string
  // encoder. A negative number of categories counts as 0.
  NQCatVar(const std::string& name, const std::string& label, int categories, MeasureLevel level,
           VariableRole role, bool isOrdinal);

  // The encoder is given these categories, in their order and each once, the system-missing value
  // left out, and the number of categories is at least the encoder's. A string encoder takes the
  // numbers as texts of up to 15 digits; the form with texts is LevelStringCategorical.
  NQCatVar(const std::string& name, const std::string& label, int categories, MeasureLevel level,
           VariableRole role, bool isOrdinal, const std::vector<double>& values);
  NQCatVar(const std::string& name, const std::string& label, int categories, VariableRole role,
           bool isOrdinal, const std::vector<std::string>& texts);

  MeasureLevel GetMeasureLevel() const override { return fLevel; }
  int GetNumberOfCategories() const override { return fNCategories; }
  int UpdateNumberOfCategories() override;

  // After UpdateNumberOfCategories: invalid without categories, constant with one, else OK.
  VarStatus GetVarStatus() override;

  bool IsOrdinal() const { return fIsOrdinal; }
  void SetOrdinal(bool isOrdinal) { fIsOrdinal = isOrdinal; }

  // Says that of two categories the one with code trueIndex, 0 or 1, is the true one. Any other
  // index switches the binary flag off, as `on` false does; the index is -1 then.
  void SetBinaryFlag(bool on, int trueIndex);
  bool IsBinaryFlag() const { return fIsBinaryFlag; }
  int GetTrueIndex() const { return fTrueIndex; }

  // The encoder, which the variable takes over from the caller; the old one is deleted, unless it
  // is the same. Null leaves the variable without an encoder. The number of categories stays.
  void ChangeEncoder(INQEncoder* encoder) { ReplaceEncoder(encoder); }

  // The sums by category code; none at first. Any number of them is accepted.
  const std::vector<double>& GetSumFreqWts() const { return fvSumFreqWts; }
  void SetSumFreqWts(const std::vector<double>& sums) { fvSumFreqWts = sums; }

  // Accepted for the two categorical measure levels only.
  bool SetFlagVariable(bool isFlag) override;
  bool IsFlagVariable() const override { return fIsFlagVariable; }

  NQCatVar* Clone() const override;

  // Read failures are also a negative number of categories and an encoder that is not one of
  // categories. A variable of any level is read.
  int WriteObjectXML(std::ostream& os, int indent) const override;
  int ReadObjectXML(std::ifstream& in) override;
  void Display() const override;

 private:
  struct Saved;

  NQCatVar(const std::string& name, const std::string& label, int categories, MeasureLevel level,
           VariableRole role, bool isOrdinal, std::unique_ptr<INQEncoder>&& encoder);

  bool fIsOrdinal;
  bool fIsBinaryFlag = false;
  int fTrueIndex = -1;
  int fNCategories;
  MeasureLevel fLevel;
  std::vector<double> fvSumFreqWts;
  bool fIsFlagVariable = false;
};

}  // namespace NQXML_940
