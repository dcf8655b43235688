#pragma once

#include <string>
#include <utility>

#include <nqcommon/export.h>

namespace NQCommon_940 {

// What the values and records of this namespace throw: by value, to be caught by reference. It has
// no base class on purpose: a handler of std::exception does not swallow it.
class NQ_API NQException {
 public:
  NQException(int code, std::string message) : fCode(code), fMessage(std::move(message)) {}
  NQException(const NQException&) = default;
  NQException& operator=(const NQException&) = default;
  virtual ~NQException() = default;

  int GetCode() const { return fCode; }
  std::string GetMessage() const { return fMessage; }

 private:
  int fCode;
  std::string fMessage;
};

}  // namespace NQCommon_940
