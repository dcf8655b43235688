#include <nqcommon/math/numeric/LobattoQuad.h>

#include <cmath>
#include <functional>
#include <tuple>

#include <support/compare.h>
#include <support/each.h>
#include <support/special_values.h>

namespace {

using namespace nqtest;
using NQMath_940::LobattoQuad;

struct Integrand : NQMath_940::IIntegrand {
  explicit Integrand(std::function<double(double)> g) : f(std::move(g)) {}
  double Evaluate(double x) override { return f(x); }
  std::function<double(double)> f;
};

// The only code in the current or the accumulated list, 0 for none.
long Code(LobattoQuad& quad, bool current) {
  const auto& warnings = quad.GetWarnings().GetWarnings(current);
  EXPECT_LE(warnings.size(), 1u);
  return warnings.empty() ? 0 : warnings[0].GetErrorCode();
}

TEST(LobattoQuad, RuleIsExactToDegreeSeven) {
  for (int degree = 0; degree <= 8; ++degree) {
    Integrand power([degree](double x) { return std::pow(x, degree); });
    LobattoQuad quad(&power);
    const double want = (std::pow(3, degree + 1) - std::pow(-1, degree + 1)) / (degree + 1);
    const double error = nqtest::RelativeError(quad.SumUp(-1, 3), want);
    EXPECT_EQ(error < 1e-14, degree <= 7) << "degree " << degree << " error " << error;
  }
  Integrand none([](double) { return kMissing; });  // an empty interval takes no value
  LobattoQuad quad(&none);
  EXPECT_EACH(true, quad.SumUp(1, 1) == 0, quad.SumUp(3, -1) == 0);
}

TEST(LobattoQuad, Integrals) {
  const struct {
    const char* label;
    double (*f)(double);
    double a, b, pivot, want;
    long code;
  } rows[] = {
#include <reference/lobatto_integrals.inc>
  };
  for (const auto& r : rows) {
    Integrand f(r.f);
    LobattoQuad quad(&f);
    quad.SetBoundaryAdjustmentPivot(r.pivot);
    EXPECT_CLOSE(quad.Integrate(r.a, r.b), r.want, 1e-7) << r.label;
    EXPECT_EQ(Code(quad, true), r.code) << r.label;
  }
}

// f is large within 1 of the pivot. An end that moves is tried at 5 points more than 2 away.
TEST(LobattoQuad, EndsMoveWhereAsked) {
  for (const auto& [left, right, coef] :
       {std::tuple{true, true, 1e-12}, {false, true, 0.5}, {true, false, 0.5}, {true, true, 0.0}}) {
    int beyond[] = {0, 0};
    Integrand f([&](double x) {
      if (std::fabs(x - 1) > 2) ++beyond[x > 1];
      return std::fabs(x - 1) <= 1 ? 1e20 : 1.0;
    });
    LobattoQuad quad(&f);
    quad.SetAdjustLeft(left);
    quad.SetAdjustRight(right);
    quad.SetBoundaryAdjustmentCoef(coef);
    quad.Integrate(-62, 64);
    EXPECT_EQ(beyond[0] == 5, left && coef > 0) << left << right << coef << ": " << beyond[0];
    EXPECT_EQ(beyond[1] == 5, right && coef > 0) << left << right << coef << ": " << beyond[1];
  }
}

// |x - 1/4| is integrated exactly once a bound falls on 1/4: the limit leaves one exact rest.
TEST(LobattoQuad, LimitsAndReuse) {
  Integrand kink([](double x) { return std::fabs(x - 0.25); });
  LobattoQuad quad(&kink);
  quad.SetMaxIter(1);
  quad.SetMaxIter(0);
  EXPECT_CLOSE(quad.Integrate(0, 1), 0.3125, 1e-15);
  EXPECT_EQ(quad.GetNIterations(), 1);
  EXPECT_EQ(Code(quad, true), 901);

  quad.SetMaxIter(2000);
  EXPECT_CLOSE(quad.Integrate(0, 1), 0.3125, 1e-15);
  EXPECT_EQ(quad.GetNIterations(), 3);  // [0, 1/4], [1/4, 1/2], [1/2, 1]
  EXPECT_EQ(Code(quad, true), 0);
  EXPECT_EQ(Code(quad, false), 901);

  quad.SetAbsConvergence(true);
  quad.SetTolerance(0.02);  // on [0, 1] the two rules differ by 0.010, relatively by 0.032
  quad.SetTolerance(kNaN);
  EXPECT_NEAR(quad.Integrate(0, 1), 0.3125, 0.01);
  EXPECT_EQ(quad.GetNIterations(), 1);
  quad.SetTolerance(0.0052);  // on [0, 1/2] they differ by 0.0054
  quad.SetMaxSplits(1);       // it is accepted as it is, its halves meeting at 1/4
  EXPECT_CLOSE(quad.Integrate(0, 1), 0.3125, 1e-15);
  EXPECT_EQ(quad.GetNIterations(), 2);

  quad.SetCloseness(1);  // all of the span may be left out
  quad.SetCloseness(0);
  EXPECT_EQ(quad.Integrate(0, 4), 0);
  quad.SetIntegrand(nullptr);
  EXPECT_EQ(quad.Integrate(0, 1), 0);
}

}  // namespace
