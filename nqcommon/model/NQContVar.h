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
// Bins       The encoder has them: given cut points, or bins of equal width when they are asked
//            for, the range is one (minimum < maximum, both finite and not system-missing), and
//            there are two or more. Else the encoder has no bins, and its number of categories is
//            0. Bins that were asked for before the range was known come with the range.
// Save file  The outlier handling and the format element are not kept, and reading leaves them as
//            they are. Of an encoder with bins, given cut points too, the number of bins is kept:
//            after reading it has equal-width bins. Bins still without a range are not asked for
//            any more.
class NQ_API NQContVar final : public NQVariableBase {
 public:
  // What a builder does with values outside the range.
  enum OutlierHandleMethod : int { OutlierAsIs = 0, OutlierAsMissing = 1, OutlierAsExtreme = 2 };

  // Asks for equal-width bins over min .. max when isBinned. A negative number of bins counts as 0.
  NQContVar(const std::string& name, const std::string& label, double min, double max,
            VariableRole role, bool isBinned, int bins);

  // Bins between the cut points given, one more than these. Neither their order nor repeated ones
  // matter.
  NQContVar(const std::string& name, const std::string& label, double min, double max,
            VariableRole role, const std::vector<double>& cutPoints);

  MeasureLevel GetMeasureLevel() const override { return LevelContinuous; }

  // The encoder's, or the number of bins without encoder. Updating changes nothing.
  int GetNumberOfCategories() const override;
  int UpdateNumberOfCategories() override { return GetNumberOfCategories(); }

  // Invalid when min > max, constant when they are equal, else OK (NaN too).
  VarStatus GetVarStatus() override;

  // Equal-width bins follow the new range. Given cut points stay.
  void SetMinMax(double min, double max);

  double GetMin() const { return fMin; }
  double GetMax() const { return fMax; }

  // Asks for n equal-width bins, instead of those that the encoder has.
  void SetNBins(int n);

  // The encoder's where it has bins, else the number asked for.
  int GetNBins() const;

  // The encoder's; empty where it has no bins.
  std::vector<double> GetCutPoints() const;

  // The encoder, with the bins it has, which the variable takes over from the caller; the old one
  // is deleted, unless it is the same. Null leaves the variable without an encoder.
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
  struct Saved;

  void MakeBins();

  double fMin;
  double fMax;
  int fNBins = 0;          // where the encoder has no bins
  bool fIsBinned = false;  // equal-width bins are asked for
  double fMean = NQCommon_940::NQMV::Missing();
  double fStdDev = NQCommon_940::NQMV::Missing();
  double fSumFreqWts = 0;
  double fSumCompWts = 0;
  OutlierHandleMethod fOutliers = OutlierAsIs;
};

}  // namespace NQXML_940
