#pragma once

#include <string>
#include <utility>
#include <vector>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/export.h>

namespace NQXML_940 {

// The univariate statistics of one variable: frequencies by category, or frequencies by interval
// between cut points with a summary. They are made by the builder and exported with its model; what
// is made is valid until the builder says otherwise.
class NQ_API NQUniStats {
 public:
  // What is not known is system-missing.
  struct Summary {
    double fMinimum = NQCommon_940::NQMV::Missing();
    double fMaximum = NQCommon_940::NQMV::Missing();
    double fMean = NQCommon_940::NQMV::Missing();
    double fStdDev = NQCommon_940::NQMV::Missing();
  };

  // No statistics, and so not valid.
  NQUniStats() = default;

  // Of a categorical variable: one frequency for each category.
  NQUniStats(std::string name, double nCases, std::vector<double> frequencies)
      : fName(std::move(name)),
        fNCases(nCases),
        fvFrequencies(std::move(frequencies)),
        fIsCategorical(true),
        fIsValid(true) {}

  // Of a continuous variable: n cut points bound n - 1 intervals, with one frequency for each, or
  // no frequencies. The intervals are open on the left or else open on the right.
  NQUniStats(std::string name, double nCases, std::vector<double> cutPoints,
             std::vector<double> frequencies, bool isOpenLeft, const Summary& summary)
      : fName(std::move(name)),
        fNCases(nCases),
        fvFrequencies(std::move(frequencies)),
        fvCutPoints(std::move(cutPoints)),
        fSummary(summary),
        fIsOpenLeft(isOpenLeft),
        fIsValid(true) {}

  const std::string& GetVariableName() const { return fName; }
  double GetNCases() const { return fNCases; }
  const std::vector<double>& GetFrequencies() const { return fvFrequencies; }
  const std::vector<double>& GetCutPoints() const { return fvCutPoints; }
  const Summary& GetSummary() const { return fSummary; }
  bool IsCategorical() const { return fIsCategorical; }
  bool IsOpenLeft() const { return fIsOpenLeft; }

  bool IsValid() const { return fIsValid; }
  void SetValid(bool isValid) { fIsValid = isValid; }

 private:
  std::string fName;
  double fNCases = 0;
  std::vector<double> fvFrequencies;
  std::vector<double> fvCutPoints;
  Summary fSummary;
  bool fIsCategorical = false;
  bool fIsOpenLeft = false;
  bool fIsValid = false;
};

}  // namespace NQXML_940
