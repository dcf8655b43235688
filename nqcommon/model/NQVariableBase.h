#pragma once

#include <initializer_list>
#include <memory>
#include <string>

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
  const XMLElement* GetFieldFormatElement() const override { return fOwned.fFormatElement.get(); }
  XMLElement* GetFieldFormatElement() override { return fOwned.fFormatElement.get(); }

  bool SetMissingValueReplacement(const std::string& text) override;
  bool GetMissingValueReplacement(std::string& text) const override;

  const INQEncoder* GetEncoder() const override { return fOwned.fEncoder.get(); }
  INQEncoder* GetEncoder() override { return fOwned.fEncoder.get(); }

  // Not a flag.
  bool SetFlagVariable(bool isFlag) override;
  bool IsFlagVariable() const override { return false; }

 protected:
  NQVariableBase(std::string name, std::string label, VariableRole role,
                 std::unique_ptr<INQEncoder> encoder);
  NQVariableBase(const NQVariableBase&);
  NQVariableBase& operator=(const NQVariableBase&);

  INQEncoder* Encoder() const { return fOwned.fEncoder.get(); }

  // Deletes the old encoder, unless it is the same.
  void ReplaceEncoder(INQEncoder* encoder);

  // Write or read whether there is a replacement, and then the replacement.
  void ReplacementFields(ObjectWriter& writer) const;
  void ReplacementFields(ObjectReader& reader);

  // Write or read the type code of the encoder, EncoderNone without one, and then the encoder. The
  // reader makes the encoder of the code; a code that is not accepted fails, the encoder as it was.
  using EncoderTypes = std::initializer_list<INQEncoder::EncoderType>;
  void EncoderFields(ObjectWriter& writer, EncoderTypes accepted) const;
  void EncoderFields(ObjectReader& reader, EncoderTypes accepted);

  // The fields of this class, the encoder apart, which comes last.
  void DisplayCommon() const;
  void DisplayEncoder() const;

  std::string fName;
  std::string fLabel;
  VariableRole fRole;
  VariableStorage fStorage = StorageUndefined;

 private:
  struct Saved;

  // A copy has copies of both.
  struct Owned {
    explicit Owned(std::unique_ptr<INQEncoder> encoder);
    Owned(const Owned& other);
    Owned& operator=(const Owned& other);
    ~Owned();

    std::unique_ptr<INQEncoder> fEncoder;
    std::unique_ptr<XMLElement> fFormatElement;
  };

  bool fHasReplacement = false;
  std::string fReplacement;
  Owned fOwned;
};

}  // namespace NQXML_940
