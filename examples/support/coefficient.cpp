#include "coefficient.h"

#include <cmath>
#include <cstddef>
#include <new>
#include <set>

using NQMath_940::NQSymMatrix;

namespace support {

std::vector<std::string> CoefficientNames(const ModelData& data, const std::vector<Column>& columns,
                                          bool intercept) {
  std::set<std::string> known;
  if (intercept) known.insert(kInterceptName);
  std::vector<std::string> names;
  for (const Column& column : columns) {
    std::string name = data.NameOf(column.variable);
    if (column.category >= 0)
      name += '=' + data.CategoriesOf(column.variable)[static_cast<std::size_t>(column.category)];
    while (!known.insert(name).second) name.insert(0, 1, '"').append(1, '"');
    names.push_back(name);
  }
  return names;
}

NQSymMatrix Covariances(const NQSymMatrix& inverse, double variance,
                        const std::vector<Column>& columns, int unit,
                        const std::vector<double>& centre,
                        std::optional<double> interceptStdError) {
  const int n = static_cast<int>(centre.size()), first = interceptStdError ? 1 : 0;
  NQSymMatrix covariances(first + n, true);
  if (!covariances.IsValidMatrix()) throw std::bad_alloc();
  const auto unitOf = [&](int i) { return unit - columns[static_cast<std::size_t>(i)].exponent; };
  const auto set = [&](int row, int column, double x, int unit1, int unit2) {
    covariances.SetElem(row, column, std::scalbn(std::scalbn(x, unit1), unit2) + 0.0);  // no -0
  };
  std::vector<double> product;
  if (n > 0) inverse.ComputeSV(centre, product);
  if (interceptStdError) covariances.SetElem(0, 0, *interceptStdError * *interceptStdError);
  for (int i = 0; i < n; ++i) {
    if (interceptStdError)
      set(first + i, 0, -variance * product[static_cast<std::size_t>(i)], unitOf(i), unit);
    for (int j = 0; j <= i; ++j)
      set(first + i, first + j, variance * inverse.GetElem(i, j), unitOf(i), unitOf(j));
  }
  return covariances;
}

JsonMembers JsonOfCoefficient(const ModelData& data, const Coefficient& c) {
  const auto category = [&] {
    return JsonString(data.CategoriesOf(c.variable)[static_cast<std::size_t>(c.category)]);
  };
  return {{"name", JsonString(c.name)},
          {"variable", c.variable < 0 ? "null" : JsonString(data.NameOf(c.variable))},
          {"category", c.category < 0 ? "null" : category()},
          {"estimate", JsonNumber(c.estimate)},
          {"stdError", JsonNumber(c.stdError)}};
}

}  // namespace support
