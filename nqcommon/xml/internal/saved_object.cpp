#include <nqcommon/xml/internal/saved_object.h>

#include <iostream>

#include <nqcommon/xml/IOException.h>
#include <nqcommon/xml/write_tree.h>

namespace NQXML_940::internal {

void ReportReadFailure(const std::string& what) {
  Write(std::cerr, "Failure reading " + what + "!\n");
}

void ThrowReadFailure(const std::string& what) {
  ReportReadFailure(what);
  throw new IOException;
}

}  // namespace NQXML_940::internal
