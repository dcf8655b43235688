#pragma once

#include <string>
#include <vector>

#include <nqcommon/export.h>

namespace NQMath_940 {

// One iteration of an iterative estimation, as handed to progress callbacks. The estimates are not
// owned and may be null: they must live as long as they are asked for here.
//
// Use       One reporter serves all iterations. The estimation fills it and hands it to whoever
//           shows progress, who asks for measures by name:
//
//             NQCancelInfo cancel(query);            // the application's NQQueryCancel, or null
//             NQIterationReporter report;
//             for (int i = 1; !isConverged && !cancel.IsCancel(); ++i) {
//               const double logLik = TakeStep(estimates);
//               report.SetInfo(&estimates, i, halvings, logLik, seconds);
//               show(report);                        // report.ScaleMeasure("loglik"), ...
//             }
class NQ_API NQIterationReporter {
 public:
  virtual ~NQIterationReporter() = default;

  // Everything is zero or null.
  void Reset();

  // The second and third estimates become null.
  void SetInfo(const std::vector<double>* est, int iterNum, int stepHalving, double logLik,
               double time);

  // The number of step halvings stays.
  void SetInfo(const std::vector<double>* est, const std::vector<double>* est2,
               const std::vector<double>* est3, int iterNum, double logLik, double time);

  // "iterNum", "stepHalving"; -1 for any other name.
  int DiscreteMeasure(const std::string& name) const;

  // "loglik", the pseudo -2 log-likelihood, and "time", in seconds; the system-missing value for
  // any other name.
  double ScaleMeasure(const std::string& name) const;

  // "paramEstim", "paramEstim2", "paramEstim3"; null for any other name.
  const std::vector<double>* VectorMeasure(const std::string& name) const;

  // Writes all through the diagnostic display; of the second and third estimates those that are
  // there.
  void Display() const;

 private:
  const std::vector<double>* fvEstimates = nullptr;
  const std::vector<double>* fvEstimates2 = nullptr;
  const std::vector<double>* fvEstimates3 = nullptr;
  int fIterNum = 0;
  int fStepHalving = 0;
  double fLogLik = 0;
  double fTime = 0;
};

}  // namespace NQMath_940
