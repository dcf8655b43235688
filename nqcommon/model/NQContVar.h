#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/export.h>
#include <nqcommon/model/NQVariableBase.h>

namespace NQXML_940 {

// A continuous variable: its range, its summary, and bins for the builders that want them.
//
// Save file  Given cut points, the outlier handling and the format element are not kept. Reading
//            leaves the latter two as they are, and gives an encoder that was saved with bins the
//            equal-width bins of the variable's minimum, maximum and number of bins.
class NQ_API NQContVar final : public NQVariableBase {
 public:
  // What a builder does with values outside the range.
  enum OutlierHandleMethod : int { OutlierAsIs = 0, OutlierAsMissing = 1, OutlierAsExtreme = 2 };

  // The encoder has equal-width bins over min .. max when isBinned, max > min and bins >= 2, else
  // none. A negative number of bins counts as 0.
  NQContVar(const std::string& name, const std::string& label, double min, double max,
            VariableRole role, bool isBinned, int bins);

  // Bins between the cut points given, one more than these; order and doubles do not matter.
  NQContVar(const std::string& name, const std::string& label, double min, double max,
            VariableRole role, const std::vector<double>& cutPoints);

  MeasureLevel GetMeasureLevel() const override { return LevelContinuous; }

  // The encoder's, or the number of bins without encoder. Updating changes nothing.
  int GetNumberOfCategories() const override;
  int UpdateNumberOfCategories() override { return GetNumberOfCategories(); }

  // Invalid when min > max, constant when they are equal, else OK (NaN too).
  VarStatus GetVarStatus() override;

  // An encoder with equal-width bins follows the new range, as in the constructor: a range that is
  // none takes its bins away for good. Given cut points, and an encoder without bins, stay.
  void SetMinMax(double min, double max);
  double GetMin() const { return fMin; }
  double GetMax() const { return fMax; }

  // Gives the encoder n equal-width bins, as in the constructor with isBinned.
  void SetNBins(int n);
  int GetNBins() const { return fNBins; }

  // The encoder's; empty when it is none of bins.
  std::vector<double> GetCutPoints() const;

  // The encoder, which the variable takes over from the caller; the old one is deleted, unless it is
  // the same. Null leaves the variable without an encoder. The bins of the encoder, when there are
  // two or more, become the variable's.
  void ChangeEncoder(INQEncoder* encoder);

  // System-missing until they are known.
  double GetMean() const { return fMean; }
  void SetMean(double mean) { fMean = mean; }
  double GetStdDev() const { return fStdDev; }
  void SetStdDev(double deviation) { fStdDev = deviation; }

  // Sums of frequency weights, and of their products with regression weights.
  double GetSumFreqWts() const { return fSumFreqWts; }
  void SetSumFreqWts(double sum) { fSumFreqWts = sum; }
  double GetSumCompWts() const { return fSumCompWts; }
  void SetSumCompWts(double sum) { fSumCompWts = sum; }

  OutlierHandleMethod GetOutlierHandleMethod() const { return fOutliers; }
  void SetOutlierHandleMethod(OutlierHandleMethod method) { fOutliers = method; }

  NQContVar* Clone() const override;

  // Read failures are also a negative number of bins and a type code of no encoder.
  int WriteObjectXML(std::ostream& os, int indent) const override;
  int ReadObjectXML(std::ifstream& in) override;
  void Display() const override;

 private:
  double fMin;
  double fMax;
  int fNBins;
  double fMean = NQCommon_940::NQMV::Missing();
  double fStdDev = NQCommon_940::NQMV::Missing();
  double fSumFreqWts = 0;
  double fSumCompWts = 0;
  OutlierHandleMethod fOutliers = OutlierAsIs;
};

}  // namespace NQXML_940
