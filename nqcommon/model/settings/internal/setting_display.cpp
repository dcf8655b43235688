#include <nqcommon/model/settings/internal/setting_display.h>

#include <cstddef>
#include <ostream>
#include <span>
#include <streambuf>
#include <utility>
#include <vector>

#include <nqcommon/common/display.h>
#include <nqcommon/model/settings/NQNumValue.h>
#include <nqcommon/model/settings/NQSettings.h>
#include <nqcommon/model/settings/NQStrValue.h>
#include <nqcommon/model/settings/NQVecValue.h>
#include <nqcommon/model/settings/internal/setting_tree.h>

namespace NQXML_940 {

using NQDisplay_940::DisplayD;
using NQDisplay_940::DisplayDV;
using NQDisplay_940::DisplayI;
using NQDisplay_940::DisplayIV;
using NQDisplay_940::DisplayL;
using NQDisplay_940::DisplayS;
using NQDisplay_940::DisplaySV;
using NQDisplay_940::DisplayText;
using NQDisplay_940::GetOutStream;
using NQDisplay_940::SetOutStream;

namespace {

// Takes the place of the display stream while it lives, to indent every line, those too that values
// of foreign classes write.
class IndentedOutput : private std::streambuf {
 public:
  IndentedOutput() : fOut(GetOutStream()), fStream(this) { SetOutStream(fStream); }
  IndentedOutput(const IndentedOutput&) = delete;
  IndentedOutput& operator=(const IndentedOutput&) = delete;
  ~IndentedOutput() override { SetOutStream(fOut); }

  void SetIndent(std::size_t indent) { fIndent.assign(indent, ' '); }

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

std::string Counted(const std::string& label, const char* what, std::size_t count) {
  return label + " (" + what + " = " + std::to_string(count) + ")";
}

// ---- Values without settings inside -------------------------------------------------------------

void DisplayPart(const std::string& label, const NQNumValue& value) {
  switch (value.GetNumValueType()) {
    case NQNumValue::kInt:
      return DisplayI(label, value.GetInt());
    case NQNumValue::kDouble:
      return DisplayD(label, value.GetDouble());
    default:
      return DisplayL(label, static_cast<long>(value.GetLongLong()));
  }
}
void DisplayPart(const std::string& label, const NQStrValue& value) {
  DisplayS(label, Quoted(value.GetString()));
}
void DisplayPart(const std::string& label, const NQVecValue<int>& value) {
  DisplayIV(label, value.GetVecValue());
}
void DisplayPart(const std::string& label, const NQVecValue<double>& value) {
  DisplayDV(label, value.GetVecValue(), true);
}
void DisplayPart(const std::string& label, const NQVecValue<std::string>& value) {
  DisplaySV(label, value.GetVecValue());
}

void DisplayElement(const std::string& label, int value) { DisplayI(label, value); }
void DisplayElement(const std::string& label, double value) { DisplayD(label, value); }
void DisplayElement(const std::string& label, const std::string& value) {
  DisplayS(label, Quoted(value));
}

template <class T>
void DisplayPart(const std::string& label, const NQVecValue<std::pair<std::string, T>>& value) {
  DisplayText(1, Counted(label, "size", value.GetVecValue().size()));
  for (const auto& [name, element] : value.GetVecValue())
    DisplayElement("  " + Quoted(name), element);
}

// Displays a value of one of the classes named; false when it is of none of them.
template <class... Values>
bool DisplayAnyOf(const std::string& label, const INQSettingValue& value) {
  const auto tryValue = [&](const auto* part) {
    if (part != nullptr) DisplayPart(label, *part);
    return part != nullptr;
  };
  return (tryValue(dynamic_cast<const Values*>(&value)) || ...);
}

// ---- Trees --------------------------------------------------------------------------------------

// What is left to display is on a list, so that a deep tree needs no deep stack.
class TreeDisplay {
 public:
  // Displays a value at an indent, or its header when there are settings inside: Rest does those.
  void Begin(std::size_t indent, const std::string& label, const INQSettingValue& value) {
    fOut.SetIndent(indent);
    if (const auto nested = internal::Nested(value)) {
      const bool isList = value.GetType() == INQSettingValue::kList;
      DisplayText(1, isList ? Counted(label, "size", nested->size())
                            : Counted(label, kSettings, nested->front().Size()));
      BeginCollections(indent + kStep, *nested, isList);
    } else if (!DisplayAnyOf<NQNumValue, NQStrValue, NQVecValue<int>, NQVecValue<double>,
                             NQVecValue<std::string>,
                             NQVecValue<std::pair<std::string, std::string>>,
                             NQVecValue<std::pair<std::string, double>>,
                             NQVecValue<std::pair<std::string, int>>>(label, value)) {
      DisplayText(1, label);
      fOut.SetIndent(indent + kStep);
      value.Display();
    }
  }

  void BeginCollections(std::size_t indent, std::span<const NQSettings> collections, bool isList) {
    fPath.push_back({collections, isList, indent});
  }

  void Rest() {
    while (!fPath.empty()) {
      Level& level = fPath.back();
      if (level.fCollection == level.fCollections.size()) {
        fPath.pop_back();
        continue;
      }
      const NQSettings& settings = level.fCollections[level.fCollection];
      if (level.fIsList && level.fSetting == 0) {
        fOut.SetIndent(level.fIndent);
        DisplayText(
            1, Counted("[" + std::to_string(level.fCollection) + "]", kSettings, settings.Size()));
      }
      if (level.fSetting == settings.Size()) {
        ++level.fCollection;
        level.fSetting = 0;
        continue;
      }
      const NQSetting& setting = *settings.GetSettingAt(level.fSetting++);
      Begin(level.fIndent + (level.fIsList ? kStep : 0), internal::SettingLabel(setting),
            *setting.GetValue());
    }
  }

 private:
  static constexpr std::size_t kStep = 2;
  static constexpr const char* kSettings = "number of settings";

  struct Level {
    std::span<const NQSettings> fCollections;
    bool fIsList;  // its collections have headers of their own
    std::size_t fIndent;
    std::size_t fCollection = 0;
    std::size_t fSetting = 0;
  };

  IndentedOutput fOut;
  std::vector<Level> fPath;
};

}  // namespace

std::string internal::SettingLabel(const NQSetting& setting) {
  return setting.GetType().empty() ? setting.GetName()
                                   : setting.GetName() + " (" + setting.GetType() + ")";
}

void internal::DisplayValue(const std::string& label, const INQSettingValue& value) {
  TreeDisplay display;
  display.Begin(0, label, value);
  display.Rest();
}

void NQSettings::Display() const {
  DisplayText(1, "NQSettings display start");
  {
    TreeDisplay display;
    display.BeginCollections(0, {this, 1}, false);
    display.Rest();
  }
  DisplayText(1, "NQSettings display end");
}

}  // namespace NQXML_940
