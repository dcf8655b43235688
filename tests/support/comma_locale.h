// A decimal comma, and points between thousands where asked for, in the global locale and in
// std::cout while the object lives. The facet is our own: no locale needs to be installed.
#pragma once

#include <iostream>
#include <locale>
#include <string>

namespace nqtest {

class CommaLocale {
 public:
  explicit CommaLocale(bool groupThousands = false)
      : fGlobal(std::locale::global(std::locale(std::locale(), new Comma(groupThousands)))),
        fOutput(std::cout.imbue(std::locale())) {}
  CommaLocale(const CommaLocale&) = delete;
  ~CommaLocale() {
    std::locale::global(fGlobal);
    std::cout.imbue(fOutput);
  }

 private:
  struct Comma : std::numpunct<char> {
    explicit Comma(bool groupThousands) : fGroupThousands(groupThousands) {}
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return fGroupThousands ? "\3" : ""; }
    bool fGroupThousands;
  };

  std::locale fGlobal;
  std::locale fOutput;
};

}  // namespace nqtest
