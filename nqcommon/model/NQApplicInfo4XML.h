#pragma once

#include <string>
#include <utility>

#include <nqcommon/export.h>

namespace NQXML_940 {

// The application that a model document names as its author. Empty texts are left out of it.
class NQ_API NQApplicInfo4XML {
 public:
  NQApplicInfo4XML() = default;
  NQApplicInfo4XML(std::string name, std::string version, std::string copyright)
      : fName(std::move(name)), fVersion(std::move(version)), fCopyright(std::move(copyright)) {}

  const std::string& GetApplicationName() const { return fName; }
  void SetApplicationName(const std::string& name) { fName = name; }
  const std::string& GetApplicationVersion() const { return fVersion; }
  void SetApplicationVersion(const std::string& version) { fVersion = version; }
  const std::string& GetCopyright() const { return fCopyright; }
  void SetCopyright(const std::string& copyright) { fCopyright = copyright; }

 private:
  std::string fName;
  std::string fVersion;
  std::string fCopyright;
};

}  // namespace NQXML_940
