// A list with every kind of variable and encoder, and what must hold for the reader of lists on any
// bytes whatever. The fuzz target and the ordinary tests share both. A check that fails aborts.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <nqcommon/model/NQCatVar.h>
#include <nqcommon/model/NQContVar.h>
#include <nqcommon/model/NQVarList.h>
#include <nqcommon/xml/IOException.h>

#include "support/displayed.h"
#include "support/memory_file.h"

namespace nqtest {

// Saved, restored and saved again it gives the same bytes: no text to escape, 15 digits.
inline NQXML_940::NQVarList FullVariableList() {
  using namespace NQXML_940;
  using V = INQVariable;
  NQVarList list;
  list.AddContVar("age", "Age in years", 0, 10, V::RoleInput, true, 5);
  list.AddContVar("plain", "", -2.5, 1e20, V::RolePossibleInput, false, 3);
  list.AddCatVar("region", "", {5, 3, 0.125}, V::RoleInput, true);
  list.AddCatVar("name", "a name", std::vector<std::string>{"b", "", "a c"}, V::RoleTarget, false);
  list.SetWeightVar("w", "weight", V::RoundClosest);
  NQContVar bare("bare", "", 3, 3, V::RoleUnused, false, 0);
  bare.ChangeEncoder(nullptr);
  list.AddNewVar(&bare);
  list.GetVarAt(0)->SetVariableStorage(V::StorageInteger);
  list.SetMissingValueReplacement(0, "17");
  list.GetEncoderAt(0)->SetMissingInterval(90, 99);
  list.GetEncoderAt(0)->AddDiscreteUserMissing(-1, "refused");
  list.GetEncoderAt(2)->SetValueLabels({"five", "", "eighth"});
  list.GetEncoderAt(2)->AddDiscreteUserMissing(9, "");
  list.GetEncoderAt(3)->AddDiscreteUserMissing("none", "not told");
  list.GetEncoderAt(4)->SetMissingInterval(-9, -1);
  dynamic_cast<NQCatVar&>(*list.GetVarAt(2)).SetBinaryFlag(true, 1);
  return list;
}

template <class T>
std::string Saved(const T& object) {
  std::ostringstream os;
  object.WriteObjectXML(os, 0);
  return os.str();
}

// The lines read, or the name in the message of the failure.
struct Outcome {
  int lines = 0;
  std::string failure;
};
template <class T>
Outcome Restore(T& object, const std::string& bytes, bool streamThrows = false) {
  const MemoryFile file(bytes);
  std::ifstream in = file.Open();
  if (streamThrows) in.exceptions(std::ios::failbit | std::ios::badbit);
  std::ostringstream said;
  std::streambuf* const before = std::cerr.rdbuf(said.rdbuf());
  Outcome outcome;
  try {
    outcome.lines = object.ReadObjectXML(in);
  } catch (NQXML_940::IOException* failure) {
    delete failure;
    const std::string message = said.str();
    outcome.failure = message.substr(16, message.size() - 18);
    if (message != "Failure reading " + outcome.failure + "!\n") std::abort();
  }
  std::cerr.rdbuf(before);
  return outcome;
}

// A list is read or refused, and in both cases can be used: encoded with, displayed, copied, saved.
inline void CheckVariableListReader(const std::string& bytes) {
  using namespace NQXML_940;
  NQVarList list = FullVariableList();
  Restore(list, bytes);
  for (int i = 0; i < list.GetNumVars(); ++i) {
    list.GetVarAt(i)->GetVarStatus();
    if (INQEncoder* encoder = list.GetEncoderAt(i))
      encoder->Decode((encoder->Encode(0.5) > 0) + (encoder->Encode("new") > 0));
  }
  Displayed(list);
  std::ostringstream os;
  const int lines = NQVarList(list).WriteObjectXML(os, 1);
  const std::string saved = os.str();
  if (lines != std::count(saved.begin(), saved.end(), '\n')) std::abort();
}

}  // namespace nqtest
