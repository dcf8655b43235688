#include <nqcommon/model/NQContVar.h>

#include <algorithm>
#include <memory>
#include <type_traits>

#include <nqcommon/common/display.h>
#include <nqcommon/model/NQContEncoder.h>
#include <nqcommon/model/internal/saved_fields.h>

namespace NQXML_940 {

namespace {

// AsContinuous gives null where the encoder is none, or another one.
NQContEncoder* AsContinuous(INQEncoder* encoder) { return dynamic_cast<NQContEncoder*>(encoder); }

bool HasBins(const NQContEncoder* encoder) {
  return encoder && encoder->GetNumberOfCategories() >= 2;
}

}  // namespace

NQContVar::NQContVar(const std::string& name, const std::string& label, double min, double max,
                     VariableRole role, bool isBinned, int bins)
    : NQVariableBase(name, label, role, std::make_unique<NQContEncoder>()),
      fMin(min),
      fMax(max),
      fNBins(std::max(bins, 0)),
      fIsBinned(isBinned) {
  MakeBins();
}

NQContVar::NQContVar(const std::string& name, const std::string& label, double min, double max,
                     VariableRole role, const std::vector<double>& cutPoints)
    : NQVariableBase(name, label, role, std::make_unique<NQContEncoder>(cutPoints)),
      fMin(min),
      fMax(max) {}

int NQContVar::GetNumberOfCategories() const {
  return Encoder() ? Encoder()->GetNumberOfCategories() : fNBins;
}

INQVariable::VarStatus NQContVar::GetVarStatus() {
  return fMin > fMax ? StatusInvalid : fMin == fMax ? StatusConstant : StatusOK;
}

// MakeBins alone gives the encoder equal-width bins, or takes them away.
void NQContVar::MakeBins() {
  NQContEncoder* encoder = AsContinuous(Encoder());
  if (!encoder) return;
  const NQBinningEncoder bins(fMin, fMax, fIsBinned && fMax > fMin ? fNBins : 0);
  encoder->SetBinning(bins.GetNumberOfCutPoints() > 0 ? bins : NQBinningEncoder());
}

int NQContVar::GetNBins() const {
  const NQContEncoder* encoder = AsContinuous(Encoder());
  return HasBins(encoder) ? encoder->GetNumberOfCategories() : fNBins;
}

void NQContVar::SetMinMax(double min, double max) {
  fMin = min;
  fMax = max;
  fNBins = GetNBins();
  if (const NQContEncoder* encoder = AsContinuous(Encoder()); HasBins(encoder))
    fIsBinned = !encoder->GetBinning().HasGivenCutPoints();
  if (fIsBinned) MakeBins();
}

void NQContVar::SetNBins(int n) {
  fNBins = std::max(n, 0);
  fIsBinned = true;
  MakeBins();
}

std::vector<double> NQContVar::GetCutPoints() const {
  const NQContEncoder* encoder = AsContinuous(Encoder());
  return encoder ? encoder->GetBinning().GetCutPoints() : std::vector<double>();
}

void NQContVar::ChangeEncoder(INQEncoder* encoder) {
  if (encoder == Encoder()) return;
  fNBins = GetNBins();
  fIsBinned = false;
  ReplaceEncoder(encoder);
}

NQContVar* NQContVar::Clone() const { return new NQContVar(*this); }

struct NQContVar::Saved {
  static constexpr const char* kName = "NQContVar";

  template <class Self, class Archive>
  static void Fields(Self& self, Archive& archive) {
    archive.Value(self.fName);
    archive.Value(self.fLabel);
    archive.Value(self.fRole);
    int bins = self.GetNBins();
    archive.Count(bins);
    archive.Value(self.fMin);
    archive.Value(self.fMax);
    archive.Value(self.fMean);
    archive.Value(self.fStdDev);
    archive.Value(self.fStorage);
    self.ReplacementFields(archive);
    archive.Value(self.fSumFreqWts);
    archive.Value(self.fSumCompWts);
    self.EncoderFields(archive,
                       {INQEncoder::EncoderNone, INQEncoder::EncoderContinuous,
                        INQEncoder::EncoderNumericCategorical, INQEncoder::EncoderStringCategorical,
                        INQEncoder::EncoderRounding});
    if constexpr (!std::is_const_v<Self>) {
      self.fNBins = bins;
      self.fIsBinned = HasBins(AsContinuous(self.Encoder()));
      self.MakeBins();
    }
  }
};

int NQContVar::WriteObjectXML(std::ostream& os, int indent) const {
  return internal::WriteObject<Saved>(*this, os, indent);
}

int NQContVar::ReadObjectXML(std::ifstream& in) { return internal::ReadObject<Saved>(*this, in); }

void NQContVar::Display() const {
  using namespace NQDisplay_940;
  DisplayText(1, "NQContVar display start");
  DisplayCommon();
  DisplayD("Minimum", fMin);
  DisplayD("Maximum", fMax);
  DisplayI("Number of bins", GetNBins());
  DisplayD("Mean", fMean);
  DisplayD("Standard deviation", fStdDev);
  DisplayD("Sum of frequency weights", fSumFreqWts);
  DisplayD("Sum of composite weights", fSumCompWts);
  DisplayI("Outlier handling", fOutliers);
  DisplayEncoder();
  DisplayText(1, "NQContVar display end");
}

}  // namespace NQXML_940
