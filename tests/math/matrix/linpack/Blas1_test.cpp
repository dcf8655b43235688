// The level-1 kernels, the machine constants and the error report.
#include <unistd.h>

#include <nqcommon/math/matrix/linpack/Blas1.h>

#include <array>
#include <tuple>

#include "math/matrix/linpack/linpack_support.h"

namespace NQMath_940 {
namespace {

using namespace nqtest;

TEST(Blas1, PairsOfVectors) {
  std::mt19937 random(5);
  for (int n : {-1, 0, 1, 2, 4, 5, 6, 7, 13}) {
    for (int incx : {1, 2, -1, -3, 0}) {
      for (int incy : {1, 2, -1, -3, 0}) {
        Mat x = Random(40, 1, random), y = Random(40, 1, random), u = x, v = y;
        // Elements in the order of their visits; integers keep all of it exact.
        const auto each = [&](auto f) {
          for (int k = 0; k < n; ++k)
            f(u((incx < 0 ? 1 - n + k : k) * incx, 0), v((incy < 0 ? 1 - n + k : k) * incy, 0));
        };
        double dot = 0;
        each([&](double a, double b) { dot += a * b; });
        EXPECT_EQ(Blas1::DDot(n, x, incx, y, incy), dot) << n << " " << incx << " " << incy;
        Blas1::Daxpy(n, 3, x, incx, y, incy);
        each([](double a, double& b) { b += 3 * a; });
        Blas1::DRot(n, x, incx, y, incy, 2, -5);
        each([](double& a, double& b) { b = 2 * b + 5 * std::exchange(a, 2 * a - 5 * b); });
        Blas1::DSwap(n, x, incx, y, incy);
        each([](double& a, double& b) { std::swap(a, b); });
        EXPECT_TRUE(AreSame(x.data, u.data)) << n << " " << incx << " " << incy;
        Blas1::DCopy(n, x, incx, y, incy);
        each([](double a, double& b) { b = a; });
        EXPECT_TRUE(AreSame(y.data, v.data)) << n << " " << incx << " " << incy;
      }
    }
  }
  const double big[] = {1, 1e16, 1, -1e16, 1, 1, 1}, ones[] = {1, 1, 1, 1, 1, 1, 1};
  EXPECT_EQ(Blas1::DDot(7, big, 1, ones, 1), 3) << "from left to right";
  double y[] = {1, 2};
  Blas1::Daxpy(2, 0, std::vector{kNaN, kInf}.data(), 1, y, 1);
  EXPECT_EQ(y[0] + y[1], 3);
}

TEST(Blas1, SingleVectors) {
  constexpr double kMin = 0x1p-1074;
  for (const auto& [v, n, inc, sum, norm, largest] :
       std::vector<std::tuple<Values, int, int, double, double, int>>{
#include "math/matrix/linpack/single_vectors_cases.inc"
       }) {
    const std::string label = ::testing::PrintToString(v) + std::to_string(inc);
    EXPECT_CLOSE(Blas1::DASum(n, v.data(), inc), sum, kEps) << label;
    EXPECT_CLOSE(Blas1::DNrm2(n, v.data(), inc), norm, 2 * kEps) << label;
    EXPECT_EQ(Blas1::IDAMax(n, v.data(), inc), largest) << label;
  }
  Values x{1, 2, 3, 4, kInf};
  Blas1::DScal(2, -2, x.data(), 2);
  Blas1::DScal(2, 5, x.data(), 0);
  Blas1::DScal(2, 5, x.data(), -1);
  Blas1::DScal(1, 0, x.data() + 4, 1);
  EXPECT_TRUE(AreSame(x, {-2, 2, -6, 4, kNaN}));
}

TEST(Blas1, Rotations) {
  constexpr double kRoot = 1.4142135623730951;
  for (const auto& row : std::vector<std::array<double, 6>>{
#include "math/matrix/linpack/rotations_cases.inc"
       }) {
    double got[] = {row[0], row[1], 7, 7};
    Blas1::DRotG(got[0], got[1], got[2], got[3]);
    for (std::size_t k = 0; k < 4; ++k)
      EXPECT_CLOSE(got[k], row[k + 2], 4 * kEps) << row[0] << " " << row[1] << ", result " << k;
  }
}

TEST(Blas1, Scalars) {
  EXPECT_EACH(true, Blas1::D_Sign(-0.5) == -1, Blas1::D_Sign(0.0) == 1, Blas1::D_Sign(-0.0) == 1,
              Blas1::D_Abs(-2) == 2, Blas1::D_Max(-2, -3) == -2, Blas1::D_Max(-3, -2) == -2,
              Blas1::I_Max(-2, -3) == -2, Blas1::I_Max(-3, -2) == -2, Blas1::I_Min(-2, -3) == -3,
              Blas1::I_Min(-3, -2) == -3, Blas1::LSame('u', 'U'), Blas1::LSame('Z', 'z'),
              Blas1::LSame('5', '5'));
  EXPECT_EACH(false, Blas1::LSame('a', 'B'), Blas1::LSame('[', '{'), Blas1::LSame('@', '`'));
}

TEST(Blas1, MachineConstantsAndErrors) {
  EXPECT_EQ(Blas1::DMach(1), 0x1p-52);
  EXPECT_EQ(Blas1::DMach(2), 100 * 0x1p-1020);
  EXPECT_EQ(Blas1::DMach(3), 1 / (100 * 0x1p-1020));
  EXPECT_EXIT((dup2(STDERR_FILENO, STDOUT_FILENO), Blas1::DMach(4)), ::testing::ExitedWithCode(1),
              ::testing::Eq("\nXERBLA - Fatal error!\n  On entry to routine DMACH\n  input "
                            "parameter number 1 had an illegal value.\n"));
}

}  // namespace
}  // namespace NQMath_940
