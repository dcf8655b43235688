// What an object writes through the diagnostic display.
#pragma once

#include <sstream>
#include <string>

#include <nqcommon/common/display.h>

namespace nqtest {

template <class T>
std::string Displayed(const T& object) {
  std::ostringstream text;
  std::ostream& before = NQDisplay_940::GetOutStream();
  NQDisplay_940::SetOutStream(text);
  object.Display();
  NQDisplay_940::SetOutStream(before);
  return text.str();
}

}  // namespace nqtest
