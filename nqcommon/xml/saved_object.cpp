#include <nqcommon/xml/saved_object.h>

#include <iostream>

#include <nqcommon/xml/IOException.h>
#include <nqcommon/xml/write_tree.h>

namespace NQXML_940 {

void ReportReadFailure(const std::string& what) {
  Write(std::cerr, "Failure reading " + what + "!\n");
}

void ThrowReadFailure(const std::string& what) {
  ReportReadFailure(what);
  throw new IOException;
}

}  // namespace NQXML_940
