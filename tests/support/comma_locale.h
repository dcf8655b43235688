// A decimal comma, and points between thousands where asked for, in the global locale and in
// std::cout while the object lives. The facet is our own: no locale needs to be installed.
#pragma once

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <locale>
#include <stdexcept>
#include <string>

#include <unistd.h>

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

// The same in the C locale too. It is compiled by the platform's localedef: no locale needs to be
// installed. Where that fails it throws, so that no test passes without the comma.
class CommaCLocale {
 public:
  CommaCLocale() {
    std::filesystem::create_directories(fDirectory);
    const std::string source = fDirectory / "comma.src";
    std::ofstream(source) << "comment_char %\nescape_char /\nLC_NUMERIC\ndecimal_point \",\"\n"
                             "thousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n";
    // It warns of the other categories, which are not used.
    const std::string compile = "localedef --no-archive -c -i " + source + " " +
                                (fDirectory / "xx_XX").string() + " >/dev/null 2>&1";
    [[maybe_unused]] const int status = std::system(compile.c_str());
    setenv("LOCPATH", fDirectory.c_str(), 1);
    std::setlocale(LC_NUMERIC, "xx_XX");
    unsetenv("LOCPATH");
    std::filesystem::remove_all(fDirectory);
    if (*std::localeconv()->decimal_point != ',') throw std::runtime_error("no comma locale");
  }
  CommaCLocale(const CommaCLocale&) = delete;
  ~CommaCLocale() { std::setlocale(LC_NUMERIC, "C"); }

 private:
  const CommaLocale fCppLocale{true};
  const std::filesystem::path fDirectory =
      std::filesystem::temp_directory_path() / ("nq_comma_" + std::to_string(getpid()));
};

}  // namespace nqtest
