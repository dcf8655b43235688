#include <nqcommon/model/settings/internal/setting_display.h>

#include <cstddef>
#include <ostream>
#include <streambuf>
#include <string>
#include <utility>

#include <nqcommon/common/display.h>
#include <nqcommon/model/settings/NQNumValue.h>
#include <nqcommon/model/settings/NQSettingListValue.h>
#include <nqcommon/model/settings/NQSettings.h>
#include <nqcommon/model/settings/NQStrValue.h>
#include <nqcommon/model/settings/NQVecValue.h>

namespace NQXML_940 {

using namespace NQDisplay_940;

namespace {

constexpr std::size_t kStep = 2;
constexpr const char* kSettings = "number of settings";

// Takes the place of the display stream while it lives, to indent every line, those too that values
// of foreign classes write.
class IndentedOutput : private std::streambuf {
 public:
  IndentedOutput() : fOut(GetOutStream()), fStream(this) { SetOutStream(fStream); }
  IndentedOutput(const IndentedOutput&) = delete;
  IndentedOutput& operator=(const IndentedOutput&) = delete;
  ~IndentedOutput() override { SetOutStream(fOut); }

  // Runs `display` with its lines one step further to the right.
  template <class Display>
  void Indented(Display display) {
    fIndent.append(kStep, ' ');
    display();
    fIndent.resize(fIndent.size() - kStep);
  }

 private:
  int_type overflow(int_type c) override {
    fOut.put(traits_type::to_char_type(c));
    if (c == '\n') fOut.write(fIndent.data(), static_cast<std::streamsize>(fIndent.size()));
    return traits_type::not_eof(c);
  }
  int sync() override { return fOut.flush(), 0; }

  std::ostream& fOut;
  std::ostream fStream;
  std::string fIndent;
};

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

void DisplayCount(const std::string& label, const char* what, std::size_t count) {
  DisplayText(1, label + " (" + what + " = " + std::to_string(count) + ")");
}

class TreeDisplay {
 public:
  void Any(const std::string& label, const INQSettingValue& value) {
    if (DisplayAnyOf<NQNumValue, NQStrValue, NQSettingListValue, NQVecValue<int>,
                     NQVecValue<double>, NQVecValue<std::string>, NQVecValue<NQSettings>,
                     NQVecValue<std::pair<std::string, std::string>>,
                     NQVecValue<std::pair<std::string, double>>,
                     NQVecValue<std::pair<std::string, int>>>(label, value))
      return;
    DisplayText(1, label);
    fOut.Indented([&] { value.Display(); });
  }

  void Settings(const NQSettings& settings) {
    for (std::size_t i = 0; i < settings.Size(); ++i) {
      const NQSetting& setting = *settings.GetSettingAt(i);
      Any(internal::SettingLabel(setting), *setting.GetValue());
    }
  }

 private:
  // Displays a value of one of the classes named; false when it is of none of them.
  template <class... Values>
  bool DisplayAnyOf(const std::string& label, const INQSettingValue& value) {
    const auto tryValue = [&](const auto* part) {
      if (part != nullptr) Part(label, *part);
      return part != nullptr;
    };
    return (tryValue(dynamic_cast<const Values*>(&value)) || ...);
  }

  void Part(const std::string& label, const NQNumValue& value) {
    switch (value.GetNumValueType()) {
      case NQNumValue::kInt:
        return DisplayI(label, value.GetInt());
      case NQNumValue::kDouble:
        return DisplayD(label, value.GetDouble());
      default:
        return DisplayL(label, static_cast<long>(value.GetLongLong()));
    }
  }
  void Part(const std::string& label, const NQStrValue& value) {
    DisplayS(label, Quoted(value.GetString()));
  }
  void Part(const std::string& label, const NQVecValue<int>& value) {
    DisplayIV(label, value.GetVecValue());
  }
  void Part(const std::string& label, const NQVecValue<double>& value) {
    DisplayDV(label, value.GetVecValue(), true);
  }
  void Part(const std::string& label, const NQVecValue<std::string>& value) {
    DisplaySV(label, value.GetVecValue());
  }
  template <class T>
  void Part(const std::string& label, const NQVecValue<std::pair<std::string, T>>& value) {
    DisplayCount(label, "size", value.GetVecValue().size());
    for (const auto& [name, element] : value.GetVecValue()) Pair("  " + Quoted(name), element);
  }
  void Pair(const std::string& label, int value) { DisplayI(label, value); }
  void Pair(const std::string& label, double value) { DisplayD(label, value); }
  void Pair(const std::string& label, const std::string& value) { DisplayS(label, Quoted(value)); }

  void Part(const std::string& label, const NQSettingListValue& value) {
    Collection(label, value.GetListValue());
  }
  void Part(const std::string& label, const NQVecValue<NQSettings>& value) {
    DisplayCount(label, "size", value.GetVecValue().size());
    fOut.Indented([&] {
      std::size_t i = 0;
      for (const NQSettings& settings : value.GetVecValue())
        Collection("[" + std::to_string(i++) + "]", settings);
    });
  }
  void Collection(const std::string& label, const NQSettings& settings) {
    DisplayCount(label, kSettings, settings.Size());
    fOut.Indented([&] { Settings(settings); });
  }

  IndentedOutput fOut;
};

}  // namespace

std::string internal::SettingLabel(const NQSetting& setting) {
  return setting.GetType().empty() ? setting.GetName()
                                   : setting.GetName() + " (" + setting.GetType() + ")";
}

void internal::DisplayValue(const std::string& label, const INQSettingValue& value) {
  TreeDisplay().Any(label, value);
}

void NQSettings::Display() const {
  DisplayText(1, "NQSettings display start");
  TreeDisplay().Settings(*this);
  DisplayText(1, "NQSettings display end");
}

}  // namespace NQXML_940
