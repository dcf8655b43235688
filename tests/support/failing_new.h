// Memory that ends at a chosen allocation, in programs that link failing_new.cpp: the operator new
// of the whole program then counts, and throws std::bad_alloc where it is told to.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace nqtest {

enum class Failing { kOnce, kFromThenOn };

// Makes one call during which the chosen allocation fails; what comes before and after it is left
// alone. Exceptions of the call are kept, and count as a finding.
class Injection {
 public:
  Injection(std::size_t allocation, Failing mode) : fAllocation(allocation), fMode(mode) {}

  template <class Call>
  void operator()(Call&& call) {
    Start();
    try {
      call();
    } catch (...) {
      fThrew = true;
    }
    Stop();
  }

  bool HasFailed() const { return fFailed; }  // the allocation was reached, so memory ended
  bool Threw() const { return fThrew; }

 private:
  void Start();
  void Stop();

  std::size_t fAllocation;
  Failing fMode;
  bool fFailed = false;
  bool fThrew = false;
};

// What a call said, and what is true: an operation that reports success must have the right result,
// one that reports failure must have left what it documents. `isRight` answers for both.
struct Verdict {
  bool isRight;
  std::string got{};  // for the failure's text; may be empty
};

// One public operation: makes its objects, runs the call inside `inject`, and judges.
//
//   {"NQSymMatrix::Sweep", [](Injection& inject) {
//      NQSymMatrix s = ...;
//      bool done = false;
//      inject([&] { done = s.Sweep(...); });
//      return Verdict{done ? IsSwept(s) : s == before};
//    }}
struct MemoryCase {
  const char* operation;
  std::function<Verdict(Injection&)> run;
  bool mayThrow{false};  // std::bad_alloc passes by contract; the objects must still be whole
};

// Runs every case with its k-th allocation failing, for k = 1, 2, ... up to a run that reaches
// none, in both modes. Reports every finding as a failure of the running test, and prints the
// totals.
void RunMemoryCases(const std::string& title, const std::vector<MemoryCase>& cases);

}  // namespace nqtest
