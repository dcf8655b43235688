#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include <nqcommon/common/ClonePtr.h>
#include <nqcommon/export.h>
#include <nqcommon/model/INQEncoder.h>
#include <nqcommon/model/INQVariable.h>

namespace NQXML_940 {

class ObjectReader;
class ObjectWriter;

// What the variables have in common: name, label, role, storage, replacement of missing values,
// encoder and format element.
class NQ_API NQVariableBase : public INQVariable {
 public:
  ~NQVariableBase() override;

  const std::string& GetVariableName() const override { return fName; }
  const std::string& GetVariableLabel() const override { return fLabel; }
  void SetVariableLabel(const std::string& label) override { fLabel = label; }

  VariableRole GetVariableRole() const override { return fRole; }
  bool SetVariableRole(VariableRole role) override;
  VariableStorage GetVariableStorage() const override { return fStorage; }
  void SetVariableStorage(VariableStorage storage) override { fStorage = storage; }

  void SetFieldFormatElement(XMLElement* element) override;
  const XMLElement* GetFieldFormatElement() const override { return fFormatElement.Get(); }
  XMLElement* GetFieldFormatElement() override { return fFormatElement.Get(); }

  bool SetMissingValueReplacement(const std::string& text) override;
  bool GetMissingValueReplacement(std::string& text) const override;

  const INQEncoder* GetEncoder() const override { return fEncoder.Get(); }
  INQEncoder* GetEncoder() override { return fEncoder.Get(); }

  // Not a flag.
  bool SetFlagVariable(bool isFlag) override;
  bool IsFlagVariable() const override { return false; }

 protected:
  NQVariableBase(std::string name, std::string label, VariableRole role,
                 std::unique_ptr<INQEncoder> encoder);
  NQVariableBase(const NQVariableBase&);
  NQVariableBase& operator=(const NQVariableBase&);

  INQEncoder* Encoder() const { return fEncoder.Get(); }
  void ReplaceEncoder(INQEncoder* encoder) { fEncoder.Reset(encoder); }

  // Whether there is a replacement, and then the replacement.
  void WriteReplacement(ObjectWriter& writer) const;
  void ReadReplacement(ObjectReader& reader);

  // The type code of the encoder, EncoderNone without one, and then the encoder. The reader makes
  // the encoder of the code; a code that is not accepted fails, the encoder as it was.
  void WriteEncoder(ObjectWriter& writer) const;
  void ReadEncoder(ObjectReader& reader, std::initializer_list<INQEncoder::EncoderType> accepted);

  // The fields of this class, the encoder apart, which comes last.
  void DisplayCommon() const;
  void DisplayEncoder() const;

  std::string fName;
  std::string fLabel;
  VariableRole fRole;
  VariableStorage fStorage = StorageUndefined;

 private:
  std::string fReplacement;
  bool fHasReplacement = false;
  NQCommon_940::ClonePtr<INQEncoder> fEncoder;
  NQCommon_940::ClonePtr<XMLElement> fFormatElement;
};

}  // namespace NQXML_940
