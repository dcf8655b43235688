// Ctrl-C and its like, as the library's computations ask for them.
#pragma once

#include <exception>

#include <nqcommon/common/NQQueryCancel.h>

namespace support {

// A run that the user ended, by this signal.
class Interrupted : public std::exception {
 public:
  explicit Interrupted(int signal) : fSignal(signal) {}
  const char* what() const noexcept override { return "interrupted"; }
  // What a shell reports for a program that the signal ended.
  int ExitStatus() const { return 128 + fSignal; }

 private:
  int fSignal;
};

// Notes SIGINT, SIGTERM and SIGHUP instead of dying of them, so that temporary files are removed on
// the way out; ignores SIGPIPE, so that writing fails. One object a program; it puts the signals
// back. A second SIGINT ends the program at once.
class Interrupt final : public NQCommon_940::NQQueryCancel {
 public:
  Interrupt();
  ~Interrupt() override;
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;

  bool QueryCancel() override;
  bool QueryWillCancel() override { return QueryCancel(); }

  // Throws Interrupted when a signal has come.
  static void Check();
};

}  // namespace support
