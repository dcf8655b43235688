// A decimal comma in the places where a program can have it: the C locale, the C++ global locale
// and the locale of std::cout.
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <locale>
#include <optional>
#include <stdexcept>
#include <string>

#include <unistd.h>

namespace nqtest {

// In the C++ locales while the object lives, with points between thousands. The facet is our own:
// no locale needs to be installed.
class CommaLocale {
 public:
  explicit CommaLocale(bool inGlobal = true, bool inOutput = true) {
    const std::locale comma(std::locale(), new Comma);
    if (inGlobal) std::locale::global(comma);
    if (inOutput) std::cout.imbue(comma);
  }
  CommaLocale(const CommaLocale&) = delete;
  ~CommaLocale() {
    std::locale::global(fGlobal);
    std::cout.imbue(fOutput);
  }

 private:
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };

  std::locale fGlobal;
  std::locale fOutput = std::cout.getloc();
};

// In the C locale, and in the C++ locales where asked for. It is compiled by the platform's
// localedef: no locale needs to be installed. Where that fails it throws, so that no test passes
// without the comma.
class CommaCLocale {
 public:
  explicit CommaCLocale(bool inCppToo = true) {
    if (inCppToo) fCppLocale.emplace();
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
  std::optional<CommaLocale> fCppLocale;
  const std::filesystem::path fDirectory =
      std::filesystem::temp_directory_path() / ("nq_comma_" + std::to_string(getpid()));
};

// Makes the check with the comma in one place at a time, and in all.
template <class Check>
void InEachCommaLocale(Check check) {
  const auto run = [&](const char* place, bool c, bool global, bool output) {
    SCOPED_TRACE(place);
    const CommaLocale cpp(global, output);
    std::optional<CommaCLocale> inC;
    if (c) inC.emplace(false);
    check();
  };
  run("comma in the C locale", true, false, false);
  run("comma in the global locale", false, true, false);
  run("comma in std::cout", false, false, true);
  run("comma everywhere", true, true, true);
}

}  // namespace nqtest
