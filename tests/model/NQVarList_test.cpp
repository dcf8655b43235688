// The variable list: adding, removing and finding, roles, counts, copies. Its save file is tested
// in variable_list_save_test.cpp.
#include <nqcommon/model/NQVarList.h>

#include <nqcommon/model/NQCatNumEncoder.h>
#include <nqcommon/model/NQWeightVar.h>
#include <nqcommon/xml/XMLElement.h>

#include <climits>

#include "support/testing.h"
#include "support/variable_list_checks.h"

using namespace NQXML_940;
using namespace nqtest;
using V = INQVariable;

TEST(NQVarList, PositionsStayAndEmptySlotsAreSkipped) {
  NQVarList list = FullVariableList();
  EXPECT_EQ(list.AddContVar("age", "the second", 0, 1, V::RoleInput, Doubles{0.5}), 6);
  EXPECT_EQ(list.FindVariable("age"), 0);
  EXPECT_EQ(list.FindVariable("Age"), -1);
  list.GetVariable("age")->SetVariableLabel("the first");
  const NQVarList& known = list;
  EXPECT_EQ(known.GetVariable("age")->GetVariableLabel(), "the first");
  EXPECT_EACH(true, !known.GetVariable("Age"), known.GetEncoderAt(0) == list.GetEncoderAt(0));
  EXPECT_EACH(true, list.RemoveVar("age"), list.RemoveVar(4));
  EXPECT_EACH(false, list.RemoveVar(0), list.RemoveVar("w"), list.RemoveVar(-1), list.RemoveVar(7));
  EXPECT_EQ(list.FindVariable("age"), 6);
  EXPECT_EQ(list.GetNumVars(), 7);
  EXPECT_EQ(list.GetVarNames(), (Texts{"plain", "region", "name", "bare", "age"}));
  EXPECT_EQ(list.GetVarNames(V::RoleInput), (Texts{"region", "age"}));
  EXPECT_EQ(list.GetNumContVar(), 3);
  EXPECT_EQ(list.GetNumCatVar(), 2);
  for (int i : {0, 7, -1, INT_MIN}) {
    EXPECT_EACH(false, list.GetVarAt(i) != nullptr, list.GetEncoderAt(i) != nullptr,
                list.SetVariableRole(i, V::RoleInput), list.ChangeVariableRole(true, i),
                list.AddResponseVariable(i), list.RemoveResponseVariable(i),
                list.SetMissingValueReplacement(i, ""), list.GetVariableRole(i) != 0)
        << i;
  }
  EXPECT_EQ(list.SetWeightVar("w", "", V::RoundDown), 7);
}

TEST(NQVarList, OneWeight) {
  NQVarList list;
  EXPECT_EQ(list.GetWeightVarIndex(), -1);
  EXPECT_EACH(true, !list.GetListwiseDeletion(), list.GetUnweightedCount() == 0,
              list.GetWeightedCount() == 0, list.GetDroppedCount() == 0,
              list.GetBadWeightCount() == 0, list.GetWeightedDroppedCount() == 0);
  list.AddContVar("x", "", 0, 1, V::RoleInput, false, 0);
  const NQWeightVar weight("w", "", V::RoundClosest);
  EXPECT_EQ(list.AddNewVar(&weight), 1);
  EXPECT_EQ(list.AddNewVar(&weight), -1);
  EXPECT_EQ(list.AddNewVar(list.GetVarAt(1)), -1);
  EXPECT_TRUE(list.SetMissingValueReplacement(0, "1"));
  EXPECT_EQ(list.SetWeightVar("w2", "", V::RoundDown), 1);
  EXPECT_EQ(list.GetVarNames(), (Texts{"x", "w2"}));
  EXPECT_EQ(list.GetEncoderAt(1)->Encode(0.9), kMissing);
  EXPECT_EACH(false, list.SetVariableRole(1, V::RoleInput), list.AddResponseVariable(1),
              list.SetMissingValueReplacement(1, "1"), list.GetVarAt(1)->SetFlagVariable(true),
              list.GetVarAt(1)->IsFlagVariable(), list.GetVarAt(1)->GetNumberOfCategories() > 0,
              list.GetVarAt(1)->UpdateNumberOfCategories() > 0,
              list.GetEncoderAt(1)->GetNumberOfCategories() > 0);
}

TEST(NQVarList, WhatIsAddedIsOfAKnownLevel) {
  NQVarList list;
  EXPECT_EQ(list.AddNewVar(nullptr), -1);
  for (int level : {-1, 0, 1, 4, 5}) {
    const NQCatVar variable("c", "", 2, V::MeasureLevel(level), V::RoleInput, false);
    EXPECT_EQ(list.AddCatVar("c", "", 2, V::MeasureLevel(level), V::RoleInput, false), -1) << level;
    EXPECT_EQ(list.AddNewVar(&variable), -1) << level;
  }
  EXPECT_EQ(list.GetNumVars(), 0);
}

TEST(NQVarList, FrequenciesAddUpByCategory) {
  NQVarList list;
  list.AddCatVar("n", "", {7, 5, 7, kMissing}, {1, 2, 3.5, 8}, V::RoleInput, false);
  list.AddCatVar("s", "", Texts{"b", "a", "b"}, Doubles{1, 2, 4}, V::RoleInput, true);
  EXPECT_EQ(list.AddCatVar("s", "", Texts{"b", "a"}, Doubles{1}, V::RoleInput, true), -1);
  const auto sums = [&list](int i) {
    return dynamic_cast<NQCatVar&>(*list.GetVarAt(i)).GetSumFreqWts();
  };
  EXPECT_EQ(sums(0), (Doubles{4.5, 2}));
  EXPECT_EQ(sums(1), (Doubles{5, 2}));
  EXPECT_EQ(list.GetNInputCats(), 4);
  list.AddCatVar("big", "", INT_MAX, V::LevelStringCategorical, V::RoleInput, false);
  list.AddContVar("bins", "", 0, 1, V::RoleInput, true, 9);
  list.SetVariableRole(1, V::RolePossibleInput);
  EXPECT_EQ(list.GetNInputCats(), INT_MAX + 2LL);
  list.GetEncoderAt(0)->Encode(8);
  list.UpdateNumbersOfCategories();
  EXPECT_EQ(list.GetNInputCats(), INT_MAX + 3LL);
}

TEST(NQVarList, Roles) {
  enum Change { Out, In, Respond, Retract };
  const int rows[][4] = {
      // role before, change, accepted, role after
      {5, In, 1, 4},      {4, In, 1, 4},      {6, In, 0, 6},      {1, In, 0, 1},
      {4, Out, 1, 5},     {5, Out, 1, 5},     {2, Out, 0, 2},     {6, Respond, 1, 2},
      {2, Respond, 1, 2}, {2, Retract, 1, 6}, {1, Retract, 0, 1}, {4, Retract, 0, 4},
  };
  NQVarList list = FullVariableList();
  for (const auto& [before, change, accepted, after] : rows) {
    list.SetVariableRole(3, V::VariableRole(before));
    bool done = change < Respond && list.ChangeVariableRole(change, 3);
    done |= change == Respond && list.AddResponseVariable(3);
    done |= change == Retract && list.RemoveResponseVariable(3);
    EXPECT_EQ(done, accepted) << before << " by " << change;
    EXPECT_EQ(list.GetVariableRole(3), after) << before << " by " << change;
  }
  EXPECT_EQ(list.GetNumInputVars(), 3);
  EXPECT_EQ(list.GetNumPossibleInputVars(), 1);
}

TEST(NQVarList, EncoderOfTheTarget) {
  NQVarList list;
  std::unique_ptr<INQEncoder> mine(new NQCatNumEncoder(Doubles{8, 9}));
  list.AddContVar("x", "", 0, 1, V::RoleInput, true, 3);
  list.AddCatVar("y", "", {1, 2}, V::RoleTargetResponse, false);
  EXPECT_FALSE(list.ChangeTargetEncoder(nullptr));
  EXPECT_EACH(true, list.ChangeTargetEncoder(mine->Clone()),
              list.ChangeTargetEncoder(list.GetEncoderAt(1)));
  EXPECT_EQ(list.GetEncoderAt(1)->EncodeConst(9), 1);
  list.SetVariableRole(0, V::RoleTarget);
  EXPECT_TRUE(list.ChangeTargetEncoder(mine->Clone()));
  EXPECT_EQ(list.GetEncoderAt(0)->EncodeConst(9), 1) << "the target comes before the response";
  list.SetVariableRole(0, V::RoleUnused);
  list.SetVariableRole(1, V::RoleUnused);
  EXPECT_FALSE(list.ChangeTargetEncoder(mine.get())) << "and it is still mine";
}

TEST(NQVarList, CopiesShareNothing) {
  NQVarList list = FullVariableList();
  list.SetFieldFormatsElement(XMLElement::Create("Formats"));
  list.SetFieldFormatsElement(list.GetFieldFormatsElement());
  list.GetVarAt(0)->SetFieldFormatElement(XMLElement::Create("Format"));
  list.RemoveVar(1);
  const std::string before = Displayed(list);
  NQVarList copy(list), assigned;
  assigned = list;
  assigned = *&assigned;
  for (int i : {0, 2, 3, 4}) {
    list.GetEncoderAt(i)->AddDiscreteUserMissing(4, "");
    list.GetEncoderAt(i)->AddDiscreteUserMissing("4", "");
  }
  for (const NQVarList* other : {&copy, &assigned}) {
    EXPECT_EQ(Displayed(*other), before);
    const XMLElement* format = other->GetVarAt(0)->GetFieldFormatElement();
    EXPECT_EACH(false, other->GetFieldFormatsElement() == list.GetFieldFormatsElement(),
                format == nullptr, format == list.GetVarAt(0)->GetFieldFormatElement());
  }
  const INQVariable* const first = copy.GetVarAt(0);
  assigned = std::move(copy);
  EXPECT_EQ(assigned.GetVarAt(0), first);
}
