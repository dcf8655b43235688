#pragma once

#include <memory>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>
#include <nqcommon/math/random/NQURandom.h>

namespace NQMath_940 {

// Uniform, normal, chi-square, gamma and Wishart variates over a uniform source. One distribution
// is set at a time, and GetRandom draws from it; the RV operations draw from any.
//
// Source    an NQURandom of the object's own, the portable twister with seed 34567 at first.
// Failure   the SetParam operations return false, the distribution set before unchanged; draws
//           return the missing value or false, and take nothing from the source. Memory that ends
//           is a failure of the operations that take or return vectors and matrices; the others
//           need none.
// Draws     u stands for one uniform of the source, z for one RVSNor. One deviate takes
//             uniform        u                    exponential   u
//             normal         z, 2.2 u on average; none for a standard deviation of 0
//             gamma, a < 1   2 u a trial, at most 1.39 trials on average
//             gamma, a = 1   u
//             gamma, a > 1   2 u a trial, e sqrt(a / 2 pi) trials on average for large a;
//                            z for a >= 1e12
//           Multivariate uniforms and normals take one u or z for each dimension, in order; Wishart
//           matrices row by row, in row i: i z, then the chi-square with df - i degrees of freedom.
// Copies    A source of the object's own is copied, so the copy's stream starts at the seed again;
//           one set with SetURNGPtr is shared, and neither object owns it. Moving, and assigning an
//           object to itself, carry the stream on. Neither allocates.
// Threads   one object, and its source, one thread at a time.
//
// Contents  NQRandomValues.cpp       source, parameters, display
//           NQRandomValues_draw.cpp  draws
class NQ_API NQRandomValues {
 public:
  // ---- Uniform source (NQRandomValues.cpp) -----------------------------------------------------

  // A new source: the portable twister with this seed. A source that was set with SetURNGPtr is
  // deleted, though the object does not own it, and lost for everyone who shares it, the copies of
  // this object included. SetURNGPtr goes on to count the source as not owned.
  void SetSeed(unsigned long s);
  // While the object owns its source: gives it up and draws from p, which it does not own. p must
  // outlive its use. Afterwards the call changes nothing and returns true. False for null.
  // SetSeed deletes p: never call it after a p that does not come from `new` (an object on the
  // stack, or the source of another NQRandomValues), but p->SetSeed instead.
  bool SetURNGPtr(NQURandom* p);
  // The source in use, good until the next SetSeed or SetURNGPtr and while this object lives where
  // it is.
  NQURandom* GetURNGPtr() { return fpShared != nullptr ? fpShared : &fOwn; }
  const NQURandom* GetURNGPtr() const { return fpShared != nullptr ? fpShared : &fOwn; }

  // ---- Distribution (NQRandomValues.cpp) -------------------------------------------------------

  // For covariance and scale matrices that are set afterwards: a Cholesky pivot of at most
  // tolerance x its diagonal element counts as 0. 1e-12 at first; false unless tolerance >= 0.
  bool SetTolerance(double tolerance);

  // Uniform on [0, 1); between bounds, lo < hi; in `dim` dimensions, of [0, 1) or with bounds each.
  bool SetParamUniform();
  bool SetParamUniform(double lo, double hi);
  bool SetParamUniform(int dim);
  bool SetParamUniform(const std::vector<double>& lo, const std::vector<double>& hi);

  // Normal: standard; with a mean and a variance above 0; in `dim` independent standard dimensions;
  // with a vector of means and a covariance matrix of its order, positive semi-definite.
  bool SetParamNormal();
  bool SetParamNormal(double mean, double variance);
  bool SetParamNormal(int dim);
  bool SetParamNormal(const std::vector<double>& means, const NQSymMatrix& covariance);

  // df > 0; shape > 0 and rate > 0, the mean being shape / rate.
  bool SetParamChi(double df);
  bool SetParamGamma(double shape, double rate);

  // Wishart: the sum of squares and products of df normal vectors whose covariance matrix is
  // `scale`, of order dim and positive semi-definite; the identity at first. df >= dim >= 1; df
  // need not be a whole number.
  bool SetParamWishart(int dim, double df);
  bool SetParamWishart(int dim, double df, const NQSymMatrix& scale);

  // ---- Draws from the distribution set (NQRandomValues_draw.cpp) -------------------------------

  // Missing unless the distribution is one of a single number; one dimension is a single number.
  double GetRandom();
  // A uniform or normal vector: low + (high - low) u, and means + L z with the Cholesky factor L of
  // the covariance matrix. Another distribution of a single number gives one value. False, `out`
  // unchanged, for Wishart and when memory ends.
  bool GetRandom(std::vector<double>& out);
  // A Wishart matrix by M. S. Bartlett's decomposition (Proc. Roy. Soc. Edinb. 53 (1933) 260-283):
  // L A A' L', L the Cholesky factor of the scale matrix, A lower triangular, of normal deviates
  // below the diagonal and the roots of chi-square deviates on it. False, `out` unchanged, for
  // another distribution; false, `out` of order -1, when memory ends. dim^3 / 3 multiply-adds, half
  // of them for the identity.
  bool GetRandom(NQSymMatrix& out);

  // ---- Draws from any distribution (NQRandomValues_draw.cpp) -----------------------------------

  // lo + (hi - lo) u; missing for hi < lo.
  double RVUni(double lo, double hi);
  // mean + sd z; missing for sd < 0.
  double RVNor(double mean, double sd);
  // Standard normal, by Kinderman and Ramage (1976).
  double RVSNor();
  // RVGam(df / 2, 0.5); missing unless df > 0.
  double RVChi(double df);
  // Missing unless shape > 0 and rate > 0. Ahrens and Dieter's GS (1974) for shape < 1, Fishman
  // (1976) for shape > 1, Wilson and Hilferty (1931) for shape >= 1e12. Deviates that underflow are
  // 0.
  double RVGam(double shape, double rate);
  // -ln(1 - u) / rate; missing unless rate > 0, and when the source gives u >= 1.
  double RVExp(double rate);
  // The normal density at t less Kinderman and Ramage's triangle, 0 where that is negative, and
  // exactly 0 at t == 0.
  double RVAuxF(double t) const;

  // ---- Diagnostic display (NQRandomValues.cpp) -------------------------------------------------

  void Display() const;

 private:
  enum Kind : int { kUniform = 0, kNormal = 1, kChi = 2, kGamma = 3, kWishart = 4 };

  // What takes more than a number. It never changes once it is set, so that copies share it.
  struct Arrays {
    std::vector<double> low;  // bounds of uniforms, or the means
    std::vector<double> high;
    NQSymMatrix factor;  // L of the covariance or scale matrix
  };

  // Sets fpArrays, its factor that of `factored` unless that is null. False when the matrix is not
  // positive semi-definite, or memory ends.
  bool SetArrays(const std::vector<double>& low, const std::vector<double>& high,
                 const NQSymMatrix* factored);
  void SetKind(Kind kind, int dim, bool ready, bool standard);

  unsigned long fSeed = 34567;
  double fTolerance = defaultepse;
  NQURandom fOwn{fSeed, true, true};
  NQURandom* fpShared = nullptr;
  bool fOwnsURNG = true;  // until a source is set, though after SetSeed it is the own one again

  Kind fKind = kUniform;
  bool fReady = true;  // a single number
  int fDim = 1;
  bool fStandard = true;

  double fLower = 0;
  double fUpper = 1;
  double fMean = 0;
  double fVariance = 1;
  double fSd = 1;
  double fChiDf = 1;
  double fShape = 1;
  double fRate = 1;
  double fWishartDf = 1;
  std::shared_ptr<const Arrays> fpArrays;  // of a distribution that is not in standard form
};

}  // namespace NQMath_940
