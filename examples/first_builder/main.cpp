// A whole builder in sixty lines: yield by dose and soil, from cases to figures and a document.
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <nqcommon/nqcommon.h>

using namespace NQMath_940;
using namespace NQXML_940;
using NQCommon_940::NQMV;
using NQCommon_940::Value;

int main() {
  // What the fields are. Codes of categories are given while the cases are read.
  NQVarList fields;
  fields.AddContVar("yield", "", 0, 100, INQVariable::RoleTarget, false, 0);
  fields.AddContVar("dose", "", 0, 10, INQVariable::RoleInput, false, 0);
  fields.AddCatVar("soil", "", 0, INQVariable::LevelStringCategorical, INQVariable::RoleInput,
                   false);
  fields.GetVarAt(2)->SetVariableStorage(INQVariable::StorageString);
  const std::vector<std::vector<Value>> records = {
      {21.5, 1.0, "clay"}, {25.1, 2.0, "clay"}, {Value(), 2.5, "clay"}, {28.4, 3.0, "clay"},
      {19.0, 1.0, "sand"}, {22.2, 2.0, "sand"}, {26.1, 3.0, "sand"},    {29.2, 4.0, "sand"}};

  // Cases to rows of numbers: an indicator for sand, the dose, the yield; a missing cell drops its
  // case.
  NQRectMatrix cases(static_cast<int>(records.size()), 3, true);
  int nCases = 0;
  for (const auto& record : records) {
    const double yield = fields.GetEncoderAt(0)->Encode(record[0].GetReal());
    const double dose = fields.GetEncoderAt(1)->Encode(record[1].GetReal());
    const double soil = fields.GetEncoderAt(2)->Encode(record[2].GetString());
    if (NQMV::IsMissing(yield) || NQMV::IsMissing(dose) || soil < 0) continue;
    const double row[] = {soil == 1 ? 1.0 : 0.0, dose, yield};
    for (int j = 0; j < 3; ++j) cases.SetElem(nCases, j, row[j]);
    ++nCases;
  }

  // Means and centred cross-products; sweeping the inputs in leaves coefficients and residuals.
  NQMeansXProducts sums(3, true, false, false);
  if (!sums.Compute(cases, nCases)) return 1;
  NQSymMatrix s = sums.GetXProds();
  NQBitSet swept;
  s.SweepOnSelected({0, 1}, defaultepse, swept, false);
  const double df = nCases - 1 - swept.InSet(), mse = s.GetElem(2, 2) / df;
  const char* const names[] = {"soil=sand", "dose"};
  double intercept = sums.GetMeans()[2];
  for (int j = 0; j < 2; ++j) {
    if (!swept.IsIn(j)) continue;  // redundant
    const double b = s.GetElem(2, j), t = b / std::sqrt(-s.GetElem(j, j) * mse);
    intercept -= b * sums.GetMeans()[static_cast<std::size_t>(j)];
    std::printf("%-10s %8.4f  t %7.3f  sig %.4g\n", names[j], b, t,
                2 * NQDistFun::SigT(std::fabs(t), df));
  }
  std::printf("%-10s %8.4f\n", "intercept", intercept);

  // The fields of the model as PMML; the model element is the builder's own.
  const std::unique_ptr<XMLElement> pmml(NQCommon_940::NQPMMLExporter(nullptr).ExportPMMLElement());
  XMLElement* dictionary = nullptr;
  NQCommon_940::NQPMMLExporter(nullptr).ExportDataDictionary(fields, {}, dictionary);
  pmml->AddElement(dictionary);
  WriteTree(std::cout, nullptr, pmml.get(), true);
}
