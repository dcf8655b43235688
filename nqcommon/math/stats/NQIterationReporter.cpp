#include <nqcommon/math/stats/NQIterationReporter.h>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/display.h>
#include <nqcommon/math/kernels/display_frame.h>

namespace NQMath_940 {

void NQIterationReporter::Reset() { *this = NQIterationReporter(); }

void NQIterationReporter::SetInfo(const std::vector<double>* est, int iterNum, int stepHalving,
                                  double logLik, double time) {
  SetInfo(est, nullptr, nullptr, iterNum, logLik, time);
  fStepHalving = stepHalving;
}

void NQIterationReporter::SetInfo(const std::vector<double>* est, const std::vector<double>* est2,
                                  const std::vector<double>* est3, int iterNum, double logLik,
                                  double time) {
  fvEstimates = est;
  fvEstimates2 = est2;
  fvEstimates3 = est3;
  fIterNum = iterNum;
  fLogLik = logLik;
  fTime = time;
}

int NQIterationReporter::DiscreteMeasure(const std::string& name) const {
  if (name == "iterNum") return fIterNum;
  if (name == "stepHalving") return fStepHalving;
  return -1;
}

double NQIterationReporter::ScaleMeasure(const std::string& name) const {
  if (name == "loglik") return fLogLik;
  if (name == "time") return fTime;
  return NQCommon_940::NQMV::Missing();
}

const std::vector<double>* NQIterationReporter::VectorMeasure(const std::string& name) const {
  if (name == "paramEstim") return fvEstimates;
  if (name == "paramEstim2") return fvEstimates2;
  if (name == "paramEstim3") return fvEstimates3;
  return nullptr;
}

void NQIterationReporter::Display() const {
  using namespace NQDisplay_940;
  internal::DisplayObject("NQIterationReporter", [&] {
    DisplayI("Iteration number", fIterNum);
    DisplayI("Number of step halving", fStepHalving);
    DisplayD("Pseudo -2 log-likelihood", fLogLik);
    DisplayD("Elapsed time in sec", fTime);
    if (fvEstimates != nullptr)
      DisplayDV("Parameter estimates", *fvEstimates, true);
    else
      DisplayText(1, "Parameter estimates pointer is 0");
    if (fvEstimates2 != nullptr)
      DisplayDV("Parameter estimates, second vector", *fvEstimates2, true);
    if (fvEstimates3 != nullptr)
      DisplayDV("Parameter estimates, third vector", *fvEstimates3, true);
  });
}

}  // namespace NQMath_940
