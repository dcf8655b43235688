#pragma once

#include <nqcommon/common/NQMV.h>
#include <nqcommon/export.h>

namespace NQXML_940 {

// How many cases there are behind a table or a chart. Frequencies are sums of weights, and need not
// be whole. What is not known stays out of the document: a system-missing number of missing or of
// invalid cases, and a cardinality below 0. The total is always written.
class NQ_API NQXMLCounts {
 public:
  // No cases, and nothing else known.
  NQXMLCounts() = default;

  explicit NQXMLCounts(double totalFreq, double missingFreq = NQCommon_940::NQMV::Missing(),
                       double invalidFreq = NQCommon_940::NQMV::Missing(), double cardinality = -1)
      : fTotalFreq(totalFreq),
        fMissingFreq(missingFreq),
        fInvalidFreq(invalidFreq),
        fCardinality(cardinality) {}

  double GetTotalFreq() const { return fTotalFreq; }
  void SetTotalFreq(double frequency) { fTotalFreq = frequency; }

  // Of the cases without a value, and of those with one that is not allowed.
  double GetMissingFreq() const { return fMissingFreq; }
  void SetMissingFreq(double frequency) { fMissingFreq = frequency; }
  double GetInvalidFreq() const { return fInvalidFreq; }
  void SetInvalidFreq(double frequency) { fInvalidFreq = frequency; }

  // The number of different values.
  double GetCardinality() const { return fCardinality; }
  void SetCardinality(double cardinality) { fCardinality = cardinality; }

 private:
  double fTotalFreq = 0;
  double fMissingFreq = NQCommon_940::NQMV::Missing();
  double fInvalidFreq = NQCommon_940::NQMV::Missing();
  double fCardinality = -1;
};

}  // namespace NQXML_940
