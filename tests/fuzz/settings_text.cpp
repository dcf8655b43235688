// Settings made of any texts are found, converted to every type, copied and compared.
#include <nqcommon/model/settings/NQSettings.h>

#include <vector>

#include "any_bytes.h"

using namespace NQXML_940;
using nqtest::Require;

namespace {

template <class... T>
void Convert(const NQSettings& settings, const std::string& name) {
  const auto convert = [&](auto single, auto list) {
    settings.GetSettingValByName(name, single);
    settings.GetSettingValIfFits(name, single);
    settings.GetSettingValByName(name, list);
    settings.GetSettingValIfFits(name, list);
  };
  (convert(T{}, std::vector<T>{}), ...);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  nqtest::Bytes bytes(data, size);
  NQSettings settings;
  std::vector<std::string> texts;
  int nCopies = 0;
  while (!bytes.IsEmpty()) {
    const std::string name = bytes.NextText();
    texts.push_back(bytes.NextText());
    const std::size_t before = settings.Size();
    switch (bytes.Next() % 6) {
      case 0:
        settings.AddSetting(name, texts.back(), true);
        break;
      case 1:
        settings.AddNewSetting(name, texts, "t");
        break;
      case 2:  // each copy doubles what there is
        if (nCopies++ < 6) settings.AddNewSetting(name, NQSettings(settings), "s");
        break;
      case 3:
        settings.AddNewSetting(name, static_cast<double>(bytes.NextInt()) * 1e-3, "n");
        break;
      case 4:
        Require(settings.RemoveSetting(name, true) == (settings.Size() < before));
        break;
      default:
        settings.AddNewSetting(name, texts.back(), "t");
    }
    Convert<int, double, std::string>(settings, name);
  }
  std::vector<std::string> names;
  settings.GetSettingNames(names);
  Require(names.size() == settings.Size());
  for (const std::string& name : names) Require(settings.FindSetting(name) != nullptr);
  std::vector<double> reals;
  std::vector<int> integers;
  if (NQSettings::StrVec2DoubleVec(texts, reals)) Require(reals.size() == texts.size());
  if (NQSettings::StrVec2IntVec(texts, integers)) Require(integers.size() == texts.size());
  return 0;
}
