#include <nqcommon/model/NQContVar.h>

#include <algorithm>
#include <memory>

#include <nqcommon/common/display.h>
#include <nqcommon/model/NQContEncoder.h>
#include <nqcommon/model/internal/saved_fields.h>

namespace NQXML_940 {

namespace {

NQBinningEncoder EqualBins(double min, double max, int n) {
  return max > min && n >= 2 ? NQBinningEncoder(min, max, n) : NQBinningEncoder();
}

std::unique_ptr<INQEncoder> MakeEncoder(const NQBinningEncoder& binning) {
  auto encoder = std::make_unique<NQContEncoder>();
  encoder->SetBinning(binning);
  return encoder;
}

// Null where the encoder is none, or another one.
NQContEncoder* AsContinuous(INQEncoder* encoder) { return dynamic_cast<NQContEncoder*>(encoder); }

}  // namespace

NQContVar::NQContVar(const std::string& name, const std::string& label, double min, double max,
                     VariableRole role, bool isBinned, int bins)
    : NQVariableBase(name, label, role, MakeEncoder(EqualBins(min, max, isBinned ? bins : 0))),
      fMin(min),
      fMax(max),
      fNBins(std::max(bins, 0)) {}

NQContVar::NQContVar(const std::string& name, const std::string& label, double min, double max,
                     VariableRole role, const std::vector<double>& cutPoints)
    : NQVariableBase(name, label, role, MakeEncoder(NQBinningEncoder(cutPoints))),
      fMin(min),
      fMax(max),
      fNBins(Encoder()->GetNumberOfCategories()) {}

int NQContVar::GetNumberOfCategories() const {
  return Encoder() ? Encoder()->GetNumberOfCategories() : fNBins;
}

INQVariable::VarStatus NQContVar::GetVarStatus() {
  return fMin > fMax ? StatusInvalid : fMin == fMax ? StatusConstant : StatusOK;
}

void NQContVar::SetMinMax(double min, double max) {
  fMin = min;
  fMax = max;
  NQContEncoder* encoder = AsContinuous(Encoder());
  if (!encoder) return;
  const NQBinningEncoder& old = encoder->GetBinning();
  if (old.GetNumberOfBins() >= 2 && !old.HasGivenCutPoints())
    encoder->SetBinning(EqualBins(fMin, fMax, fNBins));
}

void NQContVar::SetNBins(int n) {
  fNBins = std::max(n, 0);
  if (NQContEncoder* encoder = AsContinuous(Encoder()))
    encoder->SetBinning(EqualBins(fMin, fMax, fNBins));
}

std::vector<double> NQContVar::GetCutPoints() const {
  const NQContEncoder* encoder = AsContinuous(Encoder());
  return encoder ? encoder->GetBinning().GetCutPoints() : std::vector<double>();
}

void NQContVar::ChangeEncoder(INQEncoder* encoder) {
  ReplaceEncoder(encoder);
  const NQContEncoder* continuous = AsContinuous(encoder);
  if (continuous && continuous->GetNumberOfCategories() >= 2)
    fNBins = continuous->GetNumberOfCategories();
}

NQContVar* NQContVar::Clone() const { return new NQContVar(*this); }

int NQContVar::WriteObjectXML(std::ostream& os, int indent) const {
  ObjectWriter writer(os, "NQContVar", indent);
  writer.Value(fName);
  writer.Value(fLabel);
  writer.Value(fRole);
  writer.Value(fNBins);
  writer.Value(fMin);
  writer.Value(fMax);
  writer.Value(fMean);
  writer.Value(fStdDev);
  writer.Value(fStorage);
  WriteReplacement(writer);
  writer.Value(fSumFreqWts);
  writer.Value(fSumCompWts);
  WriteEncoder(writer);
  return writer.End();
}

int NQContVar::ReadObjectXML(std::ifstream& in) {
  return internal::ReadObject(in, "NQContVar", [this](ObjectReader& reader) {
    reader.Value(fName);
    reader.Value(fLabel);
    internal::ReadCode(reader, fRole);
    internal::ReadCount(reader, fNBins);
    reader.Value(fMin);
    reader.Value(fMax);
    reader.Value(fMean);
    reader.Value(fStdDev);
    internal::ReadCode(reader, fStorage);
    ReadReplacement(reader);
    reader.Value(fSumFreqWts);
    reader.Value(fSumCompWts);
    ReadEncoder(reader, {INQEncoder::EncoderNone, INQEncoder::EncoderContinuous,
                         INQEncoder::EncoderNumericCategorical,
                         INQEncoder::EncoderStringCategorical, INQEncoder::EncoderRounding});
    NQContEncoder* encoder = AsContinuous(Encoder());
    if (encoder && encoder->GetNumberOfCategories() >= 2)
      encoder->SetBinning(NQBinningEncoder(fMin, fMax, fNBins));
  });
}

void NQContVar::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQContVar display start");
  DisplayCommon();
  DisplayD("Minimum", fMin);
  DisplayD("Maximum", fMax);
  DisplayI("Number of bins", fNBins);
  DisplayD("Mean", fMean);
  DisplayD("Standard deviation", fStdDev);
  DisplayD("Sum of frequency weights", fSumFreqWts);
  DisplayD("Sum of composite weights", fSumCompWts);
  DisplayI("Outlier handling", fOutliers);
  DisplayEncoder();
  DisplayText(1, "NQContVar display end");
}

}  // namespace NQXML_940
