#pragma once

#include <iosfwd>
#include <string>

#include <nqcommon/export.h>
#include <nqcommon/model/NQVariableBase.h>

namespace NQXML_940 {

class NQRoundEncoder;

// The frequency weight: a variable of level 4 and role 3, without categories and without
// replacement for missing values, never a flag variable. Its encoder is an NQRoundEncoder of its
// option.
//
// Save file  Storage and format element are not kept; reading leaves them as they are.
class NQ_API NQWeightVar final : public NQVariableBase {
 public:
  NQWeightVar(const std::string& name, const std::string& label, WRoundingOption option);

  // That of the encoder.
  WRoundingOption GetRoundingOption() const;

  MeasureLevel GetMeasureLevel() const override { return LevelFrequencyWeight; }
  int GetNumberOfCategories() const override { return 0; }
  int UpdateNumberOfCategories() override { return 0; }
  VarStatus GetVarStatus() override { return StatusOK; }
  bool SetVariableRole(VariableRole role) override { return role == RoleFrequencyWeight; }
  bool SetMissingValueReplacement(const std::string&) override { return false; }

  NQWeightVar* Clone() const override;

  // A rounding option in the variable other than that in its encoder is a read failure too.
  int WriteObjectXML(std::ostream& os, int indent) const override;
  int ReadObjectXML(std::ifstream& in) override;
  void Display() const override;

 private:
  struct Saved;

  NQRoundEncoder& Rounding() const;
};

}  // namespace NQXML_940
