#pragma once

#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/numeric/tolerances.h>

namespace NQMath_940 {

// Distribution functions, significances, quantiles and densities.
//
//   normal                              NQDistFun_normal.cpp
//   chi-square and gamma                NQDistFun_gamma.cpp
//   beta                                NQDistFun_beta.cpp
//   t and F                             NQDistFun_t_and_f.cpp
//   binomial, negative binomial, hypergeometric   NQDistFun_discrete.cpp
//   noncentral chi-square, F and t      NQDistFun_noncentral.cpp
//   percentiles of grouped data         NQDistFun_grouped.cpp
//
// Names      Cdf* P(X <= x)   Sig* P(X > x), computed directly, so small tails keep their digits
//            Pdf* density     Idf* quantile of a lower-tail probability
// Arguments  the variable or the probability first, then the parameters
// Failure    by value: the system-missing value. Functions with a status set it on every path:
//            0 success, 1 invalid arguments, 2 numerical failure; other codes where stated.
// Underflow  is no failure: a result below exp(-708) is 0 (1 in the other tail). What it is made of
//            may be smaller.
// NaN        is an invalid argument, except where the normal functions say otherwise.
// Infinity   an infinite x gives the end of the range; an infinite shape or number of degrees of
//            freedom counts as 1e300
// Accuracy   "Worst" below is the largest relative error measured against 50-digit values of the
//            exact arguments. That of a tail q grows by some 2e-16 ln(1/q), the rounding of an
//            exponent of that size: the first figure holds to q = 1e-100, the second to 1e-307.
// Threads    no state; any number of threads.
class NQ_API NQDistFun {
 public:
  // ---- Normal (NQDistFun_normal.cpp) -----------------------------------------------------------
  // NaN in a distribution function gives 0.5, in a density NaN.
  // Worst     8e-16 everywhere, quantiles too

  // Phi(z).
  static double CdfStdNorm(double z);
  // Phi((x - mean)/sd); missing for sd <= 0.
  static double CdfNorm(double x, double mean, double sd);
  // exp(-z^2/2) / sqrt(2 pi).
  static double PdfNormalStandard(double z);
  // PdfNormalStandard(u)/sd, u = (x - mean)/sd; missing only for sd == 0: a negative sd gives a
  // negative value.
  static double PdfNormal(double x, double mean, double sd);
  // z with Phi(z) = p; exactly 0 for p == 0.5; missing for p outside (0, 1).
  static double IdfStdNorm(double p);
  // mean + sd z, exactly mean for p == 0.5; missing for p outside (0, 1) or sd <= 0.
  static double IdfNorm(double p, double mean, double sd);

  // ---- Chi-square and gamma (NQDistFun_gamma.cpp) ----------------------------------------------
  // The gamma density is rate^shape x^(shape-1) e^(-rate x) / Gamma(shape), x > 0; chi-square with
  // df degrees of freedom is gamma with shape df/2 and rate 1/2.
  // Method    series and continued fraction; from shape 20 on, near the mean, Temme's uniform
  //           expansion, so that the cost does not grow with the shape
  // Worst     2e-13 (4e-13), shapes up to 1e14, densities too; 1e-14 above 1e-6. Quantiles: 6e-15
  //           for shapes from 1/2 and p from 1e-10; below, 2e-13

  // 0 (SigChi: 1) for x <= 0; missing for df <= 0.
  static double CdfChi(double x, double df);
  static double SigChi(double x, double df);
  // 0 for p == 0; missing for p outside [0, 1) or df <= 0.
  static double IdfChi(double p, double df);
  // 0 for x <= 0; missing for shape <= 0 or rate <= 0.
  static double CdfGam(double x, double shape, double rate);
  // Missing for shape <= 0 or rate <= 0, and where the density exceeds exp(709). 0 for x < 0. At
  // x == 0, and where rate x underflows: missing for shape < 1, rate for shape == 1, 0 for
  // shape > 1.
  static double PdfGamma(double x, double shape, double rate);
  // 0 for p == 0; missing for p outside [0, 1), rate <= 0 or shape < 0, for shape == 0, p > 0, and
  // for a quantile out of the range of doubles.
  static double IdfGam(const double& p, const double& shape, const double& rate);

  // ---- Beta (NQDistFun_beta.cpp) ---------------------------------------------------------------
  // The density is x^(a-1) (1-x)^(b-1) / B(a, b), 0 < x < 1.
  // Method    series and continued fraction; for large shapes, near the mean, an expansion, so that
  //           the cost does not grow with the shapes
  // Worst     3e-13 (4e-13), shapes up to 1e12; 1e-14 above 1e-6. Quantiles: 6e-15 for shapes from
  //           1/2 and p from 1e-10; below, 2e-13

  // I_x(a, b): 0 for x <= 0, 1 for x >= 1; missing for a <= 0 or b <= 0.
  static double CdfBeta(double x, double a, double b);
  // x with I_x(a, b) = p; missing for p outside [0, 1], a <= 0 or b <= 0.
  static double IdfBeta(double p, double a, double b);

  // ---- t and F (NQDistFun_t_and_f.cpp) ---------------------------------------------------------
  // Through the incomplete beta function, with its accuracy: half the degrees of freedom are its
  // shapes.

  // Missing for df <= 0; above 1e8 degrees of freedom the normal distribution, which differs from t
  // by t^4/(4 df) of the tail.
  static double CdfT(double x, double df);
  static double SigT(double t, double df);
  static double PdfT(double x, double df, long& status);
  // Missing for p outside (0, 1) or df <= 0, and for a quantile out of the range of doubles;
  // exactly 0 for p == 0.5. acu, bound: see betinv; defaultepsz and defaultepse serve.
  static double IdfT(double p, double df, double acu, double bound);
  // 0 (SigF: 1) for x <= 0; missing for df1 <= 0 or df2 <= 0.
  static double CdfF(double x, double df1, double df2);
  static double SigF(double x, double df1, double df2);
  // 0 for p == 0; missing for p outside [0, 1), df1 <= 0 or df2 <= 0, and for a quantile out of the
  // range of doubles.
  static double IdfF(double p, double df1, double df2);

  // ---- Binomial, negative binomial, hypergeometric (NQDistFun_discrete.cpp) --------------------
  // Worst     2e-13 (5e-13), sizes to 1e12; 1e-14 above 1e-6; powers p^n and (1 - p)^n two ulp.
  //           Counts above 2^53 are no longer exact
  // Cost      one incomplete beta for CdfBin, a few for IdfBin; CDFHyper some 8,000 terms at most

  // P(at most k successes in n trials of probability p), k floored. Status 3: n is not a whole
  // number, 1: n < 1 or p outside [0, 1].
  static double CdfBin(double k, double n, double p, long& status);
  // 0 for a k that is not a whole number of 0 .. n; n need not be whole. Status 1: n < 1 or p
  // outside [0, 1].
  static double PdfBin(double k, double n, double p, long& status);
  // The smallest k with CdfBin(k, n, p) >= q, where a smaller tail within 2^-45 of itself counts as
  // reached: IdfBin of CdfBin(k) is k. -1 for q == 0 (n - 1 for p == 1). Status 1: n is not a whole
  // number, 2: n < 1, p or q outside [0, 1].
  static double IdfBin(double q, double n, double p, long& status);
  // k failures before the r-th success, r >= 0 whole or not. 0 for k < 0 and for a k that is not a
  // whole number. Status 1: r < 0, p <= 0 or p > 1.
  static double PdfNegBin(double k, double r, double p, long& status);
  // NOTE THE ORDER. PdfHyper takes (k, total, DRAWS, SUCCESSES), CDFHyper (k, total, SUCCESSES,
  // DRAWS). The probabilities are symmetric in the two; what is missing is not.
  // P(exactly k of `draws` items drawn from `total` are among its `successes`). Missing for
  // draws <= 0, successes <= 0, either above total, and a k that no such draw can give.
  static double PdfHyper(long k, long total, long draws, long successes);
  // P(at most k), k floored; 0 and 1 beyond the k that can be. Status 1: total not in [1, 1e300],
  // counts that are not whole numbers of 0 .. total.
  static double CDFHyper(double k, double total, double successes, double draws, int& status);

  // ---- Noncentral chi-square, F and t (NQDistFun_noncentral.cpp) -------------------------------
  // The sum of squares of normal variables whose squared means add to ncp; its ratio to a
  // chi-square variable; the ratio of a normal variable of mean ncp to a chi variable.
  // Worst     3e-13 (4e-13), parameters to 1e6, 1e-13 above 1e-6; ncp to 1e10: 1e-12, to 1e12:
  //           1e-11; past 2e26 the distribution of the sum of squares is taken as if about its mean
  //           term alone
  // Cost      some 2,000 terms at most; wide sums some 60 values of the central distribution. A
  //           search takes one distribution function a doubling and some 60 to bisect
  // tol       allows for an error; the sums are always taken to full precision, which costs little
  // Infinity  an infinite ncp is the limit: cdf 0 (1 for -infinity), density 0

  // Missing for df <= 0 or ncp < 0; 0 for x <= 0.
  static double NonCentralCdfChi(double x, double df, double ncp);
  static double NonCentralCdfF(double x, double df1, double df2, double ncp, double tol);
  // Missing for df <= 0; ncp of either sign. Both tails keep their digits.
  static double NonCentralCdfT(double x, double df, double ncp, double tol);
  // Status 1: df <= 0.
  static double NonCentralPdfT(double x, double df, double ncp, long& status);
  // The ncp > 0 at which the distribution function at x equals prob; for prob == 0 the one from
  // which it underflows, exp(-708). Missing where the central one is not above prob, for tol < 0,
  // prob outside [0, 1] and degrees of freedom <= 0.
  // tol  of the probability and of ncp, absolute; the search ends within 8 epsilons at the latest
  static double FindNCParamChi(double x, double df, double prob, double tol);
  static double FindNCParamF(double x, double df1, double df2, double prob, double tol);
  static double FindNCParamT(double x, double df, double prob, double tol, double cdfTol);

  // ---- Grouped data (NQDistFun_grouped.cpp) ----------------------------------------------------

  // Percentile `pct` of n classes of ascending values: where the cumulative frequency, taken as
  // linear between knots, is pct/100 of the total.
  // bounds  n + 1: class i lies between bounds[i] and bounds[i + 1]
  // method  <= 0: knots at the values, half of the own frequency below; bounds is not read
  //         1: at the value less and plus half the class width; >= 2: at the class bounds, values
  //         is not read
  // status  0 found (the result missing in a class without frequency), 1 below the first knot,
  //         2 above the last, -1 n < 2, vectors too short, NaN or an infinite frequency. The result
  //         is missing but for 0. An open class has an infinite bound, and so are results inside.
  static void GPTile(long n, double pct, const std::vector<double>& values,
                     const std::vector<double>& freqs, const std::vector<double>& bounds,
                     long method, double& result, long& status);
  // Distribution-free confidence interval of the median, by the sign test, of n distinct ascending
  // values with frequencies that add to `total`: with j = IdfBin(1/2 - confPct/200, total, 1/2), 0
  // at least, the observations of rank j + 1 and total - j. achievedPct is their confidence.
  // flag  check first that the values ascend and that the frequencies are >= 0 and add to total
  // The results are missing unless total > 2, for a total that is infinite or not whole, confPct
  // outside [0, 100], vectors too short and a failed check.
  static void Mednci(long n, const std::vector<double>& values, const std::vector<double>& freqs,
                     double total, double confPct, bool flag, double& lower, double& upper,
                     double& achievedPct);

  // ---- Kernels ---------------------------------------------------------------------------------
  // The functions above are written on these. A kernel that fails returns the missing value and,
  // where it has a status, sets it.

  // ln Gamma(x); missing for x <= 0. tarndnlgam is the same by value.
  static double dnlgam(const double& x);
  static double tarndnlgam(double x);
  // Phi(z), 0.5 for NaN.
  static double prbnrm(const double& z);
  // The error function, and its complement (0 below exp(-708)).
  static double derf(const double& x);
  static double derfc(const double& x);
  // The normal quantile.
  static double probit(const double& p);

  // 1 - exp(-rate x). Status 1: rate <= 0.
  static double cdfexp(const double& x, const double& rate, long& status);
  // P(a, x) with lowerTail, else Q(a, x). Status 1: a <= 0.
  static double gammad(const double& x, const double& a, bool lowerTail, long& status);
  // The chi-square quantile, and its search by bisection. Status 1: p outside [0, 1) or df <= 0.
  static double tarnidfchi(const double& p, const double& df, long& status);
  static double idfchb(const double& p, const double& df, long& status);

  // I_x(a, b). Status 1: a <= 0 or b <= 0.
  static double cdfbet(const double& x, const double& a, const double& b, long& status);
  // (1 - u^2 + 2 u ln u)/(1 - u)^2; missing for u < 0.
  static double cbtaux(const double& u);
  // x with I_x(a, b) = p.
  // acu, bound  the tolerances of algorithm AS 109. The search here goes on to full precision, and
  //             to quantiles nearer to 0 and 1 than any bound, so neither changes the result.
  // Status 1: p outside [0, 1], a <= 0 or b <= 0.
  static double betinv(const double& p, const double& a, const double& b, const double& acu,
                       const double& bound, long& status);

  // The distribution functions of t and F, and their quantiles.
  static double tarncdft(const double& t, const double& df, long& status);
  static double tarncdff(const double& x, const double& df1, const double& df2, long& status);
  static double tarnidft(const double& p, const double& df, long& status, const double& acu,
                         const double& bound);
  static double tarnidff(const double& p, const double& df1, const double& df2, long& status);

  // ln C(n, k), neither need be whole. Status 1: n < 0, k < 0 or k > n.
  static double dnlbnc(const double& n, const double& k, long& status);
  // Noncentral I_x(a, b): the Poisson mixture, mean ncp/2, of I_x(a + j, b). tol as above. Status
  // 1: a <= 0, b <= 0 or ncp < 0.
  static double ncdbet(const double& x, const double& a, const double& b, const double& ncp,
                       const double& tol, long& status);
};

}  // namespace NQMath_940
