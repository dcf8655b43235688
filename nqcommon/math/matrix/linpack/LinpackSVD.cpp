#include <nqcommon/math/matrix/linpack/Linpack.h>

#include <nqcommon/math/matrix/linpack/Blas1.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_reflector.h>
#include <nqcommon/math/matrix/linpack/internal/linpack_views.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace NQMath_940 {

using internal::FullView;

namespace {

// QR steps allowed for a singular value; two or three are usual.
constexpr int kMaxIterations = 30;

// Whether adding |x| to `neighbours`, the sum of the sizes of the elements beside it, changes
// nothing. x = 0 is negligible even where that sum is NaN, so that the bidiagonal matrix splits
// there and the iteration ends.
bool IsNegligible(double x, double neighbours) {
  return x == 0 || neighbours + std::fabs(x) == neighbours;
}

// Golub and Reinsch 1970, Numer. Math. 14: to bidiagonal form by reflections from both sides, then
// to diagonal form by implicitly shifted QR steps.
class SingularValues {
 public:
  SingularValues(FullView<double> x, int p, double* s, double* e, FullView<double> u,
                 int columnsOfU, FullView<double> v, bool wantV)
      : fX(x), fN(x.n), fP(p), fS(s), fE(e), fU(u), fColumnsOfU(columnsOfU), fV(v), fWantV(wantV) {}

  void Bidiagonalise(double* work);
  void FormU();
  void FormV();
  int Iterate();

 private:
  bool WantU() const { return fColumnsOfU > 0; }
  // The numbers of reflections from the left and from the right, and the bidiagonal matrix's order.
  int LeftCount() const { return std::min(fN - 1, fP); }
  int RightCount() const { return std::max(0, std::min(fP - 2, fN)); }
  int Order() const { return std::min(fP, fN + 1); }

  void ReflectRight(int l, double* work);
  int BlockStart(int m);
  int FindZero(int l, int m);
  void Deflate(int l, int m);
  void Split(int l, int m);
  void QRStep(int l, int m);
  void Settle(int l);

  FullView<double> fX;
  int fN;
  int fP;
  double* fS;
  double* fE;
  FullView<double> fU;
  int fColumnsOfU;  // 0 when U is not wanted
  FullView<double> fV;
  bool fWantV;
};

// ---- Bidiagonal form

void SingularValues::Bidiagonalise(double* work) {
  const int left = LeftCount();
  const int right = RightCount();
  for (int l = 0; l < std::max(left, right); ++l) {
    if (l < left) fS[l] = -internal::MakeReflector(fN - l, fX.At(l, l));
    if (l < left && fS[l] != 0) internal::ReflectRightOf(fX.At(l, l), fN - l, fX.lda, fP - l - 1);
    for (int j = l + 1; j < fP; ++j) fE[j] = fX(l, j);
    if (WantU() && l < left) Blas1::DCopy(fN - l, fX.At(l, l), 1, fU.At(l, l), 1);
    if (l < right) ReflectRight(l, work);
  }
  const int m = Order();
  if (left < fP) fS[left] = fX(left, left);
  if (fN < m) fS[m - 1] = 0;
  if (right + 1 < m) fE[right] = fX(right, m - 1);
  fE[m - 1] = 0;
}

// ReflectRight reflects row l, which is in e[l + 1 ..], to the one element e[l], and the rows below
// it alike.
void SingularValues::ReflectRight(int l, double* work) {
  double* v = fE + l + 1;
  fE[l] = -internal::MakeReflector(fP - l - 1, v);
  const int rows = fN - l - 1;
  if (fE[l] != 0) {
    std::fill(work + l + 1, work + fN, 0.0);
    for (int j = l + 1; j < fP; ++j) Blas1::Daxpy(rows, fE[j], fX.At(l + 1, j), 1, work + l + 1, 1);
    for (int j = l + 1; j < fP; ++j)
      Blas1::Daxpy(rows, -fE[j] / v[0], work + l + 1, 1, fX.At(l + 1, j), 1);
  }
  if (fWantV) Blas1::DCopy(fP - l - 1, v, 1, fV.At(l + 1, l), 1);
}

void SingularValues::FormU() {
  if (!WantU()) return;
  const int left = LeftCount();
  const auto unit = [this](int j) {
    std::fill(fU.At(0, j), fU.At(0, j) + fN, 0.0);
    fU(j, j) = 1;
  };
  for (int j = left; j < fColumnsOfU; ++j) unit(j);
  for (int l = left - 1; l >= 0; --l) {
    if (fS[l] == 0) {
      unit(l);
      continue;
    }
    double* reflector = fU.At(l, l);
    internal::ReflectRightOf(reflector, fN - l, fU.lda, fColumnsOfU - l - 1);
    Blas1::DScal(fN - l, -1, reflector, 1);
    reflector[0] += 1;
    std::fill(fU.At(0, l), reflector, 0.0);
  }
}

void SingularValues::FormV() {
  if (!fWantV) return;
  for (int l = fP - 1; l >= 0; --l) {
    if (l < RightCount() && fE[l] != 0)
      internal::ReflectRightOf(fV.At(l + 1, l), fP - l - 1, fV.lda, fP - l - 1);
    std::fill(fV.At(0, l), fV.At(0, l) + fP, 0.0);
    fV(l, l) = 1;
  }
}

// ---- Diagonal form
// Of the leading m values the iteration works on the last block, l .. m-1, that has no zero above
// its diagonal.

int SingularValues::Iterate() {
  int iterations = 0;
  for (int m = Order(); m > 0;) {
    if (iterations >= kMaxIterations) return m;
    const int l = BlockStart(m);
    if (l == m - 1) {
      Settle(l);
      iterations = 0;
      --m;
      continue;
    }
    const int zero = FindZero(l, m);
    if (zero == m - 1) {
      Deflate(l, m);
    } else if (zero >= l) {
      Split(zero + 1, m);
    } else {
      QRStep(l, m);
      ++iterations;
    }
  }
  return 0;
}

int SingularValues::BlockStart(int m) {
  for (int l = m - 1; l > 0; --l) {
    if (!IsNegligible(fE[l - 1], std::fabs(fS[l - 1]) + std::fabs(fS[l]))) continue;
    fE[l - 1] = 0;
    return l;
  }
  return 0;
}

// FindZero makes the last negligible diagonal element of the block 0 and returns its place; l - 1
// when there is none.
int SingularValues::FindZero(int l, int m) {
  for (int k = m - 1; k >= l; --k) {
    double neighbours = 0;
    if (k != m - 1) neighbours += std::fabs(fE[k]);
    if (k != l) neighbours += std::fabs(fE[k - 1]);
    if (!IsNegligible(fS[k], neighbours)) continue;
    fS[k] = 0;
    return k;
  }
  return l - 1;
}

// Deflate is called when the last diagonal element is 0. It rotates the element above that one out
// at the top of the block.
void SingularValues::Deflate(int l, int m) {
  double f = std::exchange(fE[m - 2], 0.0);
  for (int k = m - 2; k >= l; --k) {
    double cs = 0;
    double sn = 0;
    Blas1::DRotG(fS[k], f, cs, sn);
    if (k != l) {
      f = -sn * fE[k - 1];
      fE[k - 1] *= cs;
    }
    if (fWantV) Blas1::DRot(fP, fV.At(0, k), 1, fV.At(0, m - 1), 1, cs, sn);
  }
}

// Split is called when diagonal element l - 1 is 0. It rotates the element beside that one out at
// the end of the block, so that a new block starts at l.
void SingularValues::Split(int l, int m) {
  double f = std::exchange(fE[l - 1], 0.0);
  for (int k = l; k < m; ++k) {
    double cs = 0;
    double sn = 0;
    Blas1::DRotG(fS[k], f, cs, sn);
    f = -sn * fE[k];
    fE[k] *= cs;
    if (WantU()) Blas1::DRot(fN, fU.At(0, k), 1, fU.At(0, l - 1), 1, cs, sn);
  }
}

void SingularValues::QRStep(int l, int m) {
  // The shift is the eigenvalue of the trailing 2 x 2 block of B'B that is nearer to its corner.
  const double scale = std::max({std::fabs(fS[m - 1]), std::fabs(fS[m - 2]), std::fabs(fE[m - 2]),
                                 std::fabs(fS[l]), std::fabs(fE[l])});
  const double last = fS[m - 1] / scale;
  const double beforeLast = fS[m - 2] / scale;
  const double off = fE[m - 2] / scale;
  const double first = fS[l] / scale;
  const double b = ((beforeLast + last) * (beforeLast - last) + off * off) / 2;
  const double c = (last * off) * (last * off);
  double shift = 0;
  if (b != 0 || c != 0) {
    const double root = std::sqrt(b * b + c);
    shift = c / (b + (b < 0 ? -root : root));
  }
  double f = (first + last) * (first - last) + shift;
  double g = first * (fE[l] / scale);

  // The bulge g is chased from below the diagonal to beside it and on to the end.
  double cs = 0;
  double sn = 0;
  for (int k = l; k < m - 1; ++k) {
    Blas1::DRotG(f, g, cs, sn);
    if (k != l) fE[k - 1] = f;
    f = cs * fS[k] + sn * fE[k];
    fE[k] = cs * fE[k] - sn * fS[k];
    g = sn * fS[k + 1];
    fS[k + 1] *= cs;
    if (fWantV) Blas1::DRot(fP, fV.At(0, k), 1, fV.At(0, k + 1), 1, cs, sn);
    Blas1::DRotG(f, g, cs, sn);
    fS[k] = f;
    f = cs * fE[k] + sn * fS[k + 1];
    fS[k + 1] = -sn * fE[k] + cs * fS[k + 1];
    g = sn * fE[k + 1];
    fE[k + 1] *= cs;
    if (WantU()) Blas1::DRot(fN, fU.At(0, k), 1, fU.At(0, k + 1), 1, cs, sn);
  }
  fE[m - 2] = f;
}

// Settle makes the converged value l positive and moves it to its place among the converged ones.
void SingularValues::Settle(int l) {
  if (fS[l] < 0) {
    fS[l] = -fS[l];
    if (fWantV) Blas1::DScal(fP, -1, fV.At(0, l), 1);
  }
  for (; l + 1 < Order() && !(fS[l] >= fS[l + 1]); ++l) {
    std::swap(fS[l], fS[l + 1]);
    if (fWantV) Blas1::DSwap(fP, fV.At(0, l), 1, fV.At(0, l + 1), 1);
    // U has no column for value n + 1.
    if (WantU() && l + 1 < fN) Blas1::DSwap(fN, fU.At(0, l), 1, fU.At(0, l + 1), 1);
  }
}

}  // namespace

int Linpack::Dsvdc(double* x, int ldx, int n, int p, double* s, double* e, double* u, int ldu,
                   double* v, int ldv, double* work, int job) {
  if (n < 1 || p < 1) return 0;
  const int jobU = job / 10 % 10;
  const int columnsOfU = jobU == 0 ? 0 : jobU == 1 ? n : std::min(n, p);
  SingularValues values({x, ldx, n}, p, s, e, {u, ldu, n}, columnsOfU, {v, ldv, p}, job % 10 != 0);
  values.Bidiagonalise(work);
  values.FormU();
  values.FormV();
  return values.Iterate();
}

}  // namespace NQMath_940
