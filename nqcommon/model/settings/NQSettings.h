#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/model/settings/NQSetting.h>

namespace NQXML_940 {

// An ordered collection of named settings. Names are byte strings, case-sensitive, and may repeat;
// of equal names the one added first is "the first", which the getters read.
//
// Invariant  fIndex has one entry for each setting of fvSettings, under the name that the setting
//            was added with; entries of equal names are in the order of their positions. A removed
//            setting leaves a null slot, and the next access by position closes all such gaps.
// Ownership  the collection owns its settings. Pointers to them end with their removal, with Clear
//            and with assignment to the collection; adding leaves them valid.
// Cost       finding, adding and removing a setting are logarithmic, besides the copy of the value;
//            the first access by position after a removal is linear.
// Failure    false tells of an absent name, a wrong type, an unreadable text, and of memory that
//            ended, with nothing changed. What has no result to tell it by (constructors, copies,
//            assignment, SetValue, Clone, GetSettingNames, Display) throws std::bad_alloc then,
//            with all objects as they were; nothing else throws.
// Nesting    copying, comparing, displaying and destroying recurse: 10,000 levels fit the usual
//            stack of 8 MiB in an optimised build.
// Threads    one object, one thread at a time, readers included.
//
//   Life cycle, adding and removing, order   NQSettings.cpp
//   Getters and conversions                  NQSettings_convert.cpp
//   Display                                  internal/setting_display.cpp
class NQ_API NQSettings {
 public:
  // ---- Life cycle -------------------------------------------------------------------------------

  NQSettings();
  // Deep; the index is made anew from the names the settings now have.
  NQSettings(const NQSettings& other);
  // Leaves `other` empty.
  NQSettings(NQSettings&& other) noexcept;
  // `other` may be this collection or a part of it.
  NQSettings& operator=(NQSettings other) noexcept;
  virtual ~NQSettings();

  // A new copy; the caller deletes it.
  NQSettings* Clone() const;

  // Removes all settings.
  void Clear();

  // ---- Settings by position and by name ---------------------------------------------------------

  std::size_t Size() const { return fvSettings.size() - fNGaps; }

  // The setting at a position, in order of insertion; the position must be below Size().
  //
  // A setting renamed through the pointer, here and below, is found under the name that it was
  // added with until the collection is copied.
  const NQSetting* GetSettingAt(std::size_t i) const {
    if (fNGaps > 0) CloseGaps();
    return fvSettings[i].get();
  }
  NQSetting* GetSettingAt(std::size_t i) {
    if (fNGaps > 0) CloseGaps();
    return fvSettings[i].get();
  }

  // Appends the names in order of insertion, duplicates included.
  void GetSettingNames(std::vector<std::string>& names) const;

  // The first setting of the name, or null. Two names for one operation.
  const NQSetting* FindSetting(const std::string& name) const;
  NQSetting* FindSetting(const std::string& name);
  const NQSetting* GetSettingByName(const std::string& name) const { return FindSetting(name); }
  NQSetting* GetSettingByName(const std::string& name) { return FindSetting(name); }

  // ---- Adding and removing ----------------------------------------------------------------------

  // Append a setting with an empty type tag; `replace` first removes every setting of the name.
  // True.
  bool AddSetting(const std::string& name, double value, bool replace);
  bool AddSetting(const std::string& name, const std::string& value, bool replace);

  // Append a setting with the given type tag and remove nothing. The collection added may be this
  // one, or a part of it: the copy is taken first. T is an element type of NQVecValue. Always true.
  bool AddNewSetting(const std::string& name, double value, const std::string& type);
  bool AddNewSetting(const std::string& name, const std::string& value, const std::string& type);
  bool AddNewSetting(const std::string& name, const NQSettings& value, const std::string& type);
  bool AddNewSetting(const std::string& name, NQSettings&& value, const std::string& type);
  template <class T, typename = std::enable_if_t<kIsSettingElement<T>>>
  bool AddNewSetting(const std::string& name, std::vector<T> values, const std::string& type);

  // The same with a list of `count` zero-terminated texts, or of copies of `count` collections. A
  // null text counts as "", a null collection as an empty one. A count below 1 or a null array adds
  // nothing: false.
  bool AddNewSetting(const std::string& name, const char* const* values, int count,
                     const std::string& type);
  bool AddNewSetting(const std::string& name, const NQSettings* const* lists, int count,
                     const std::string& type);

  // Removes every setting of the name, or the first only; false when there is none.
  bool RemoveSetting(const std::string& name, bool all);

  // ---- Typed getters ----------------------------------------------------------------------------

  // The value of the first setting of the name, converted as INQSettingValue tells. False, `out`
  // untouched, when there is none.
  bool GetSettingValByName(const std::string& name, int& out) const;
  bool GetSettingValByName(const std::string& name, double& out) const;
  bool GetSettingValByName(const std::string& name, std::string& out) const;
  bool GetSettingValByName(const std::string& name, bool& out) const;
  bool GetSettingValByName(const std::string& name, long& out) const;
  bool GetSettingValByName(const std::string& name, long long& out) const;
  // A copy of the nested settings; false, too, when the value is of another type.
  bool GetSettingValByName(const std::string& name, NQSettings& out) const;
  // The list, as MapVecValue gives it: for a value that is no list true with `out` untouched.
  template <class T, typename = std::enable_if_t<kIsSettingElement<T>>>
  bool GetSettingValByName(const std::string& name, std::vector<T>& out) const {
    const NQSetting* setting = FindSetting(name);
    return setting != nullptr && MapVecValue(setting->GetValue(), out);
  }

  // The same for a value of the type of `out` only, which nothing is converted to: else false,
  // `out` untouched.
  //   int, long, long long   a number that is whole and in range
  //   double                 a number
  //   std::string            a text
  //   bool                   the text "true" or "false"
  //   NQSettings             nested settings
  //   std::vector<T>         a list of T
  template <class T>
  bool GetSettingValIfFits(const std::string& name, T& out) const;

  // ---- Conversions ------------------------------------------------------------------------------

  // The elements of a list in their order; T is an element type of NQVecValue.
  //
  //   list of \ out  int              double           std::string         the other four
  //   int            copied           converted        T2Str               untouched, true
  //   double         truncated (a)    copied           T2Str               untouched, true
  //   std::string    StrVec2IntVec    StrVec2DoubleVec copied              untouched, true
  //   their own T    untouched, true  untouched, true  untouched, true     copied
  //
  // A null pointer gives false. Any value without a way to `out` leaves it untouched and gives
  // true, a nested collection, a number and a single text included; so does a foreign class that
  // claims a sub-type without being that list.
  // (a) toward zero; NaN and what is out of range give -2147483648.
  template <class T, typename = std::enable_if_t<kIsSettingElement<T>>>
  static bool MapVecValue(const INQSettingValue* value, std::vector<T>& out);

  // Read a number from the start of the text as NQCommon_940::Str2T does: blanks before it and any
  // characters after it are accepted. False, *out untouched, when the text starts with no number or
  // with one out of range. A null `out` gives false.
  static bool Str2Int(const std::string& text, int* out);
  static bool Str2Double(const std::string& text, double* out);

  // Each element by the functions above. False, `out` empty, when `in` is empty or an element
  // fails.
  static bool StrVec2IntVec(const std::vector<std::string>& in, std::vector<int>& out);
  static bool StrVec2DoubleVec(const std::vector<std::string>& in, std::vector<double>& out);

  // ---- Order ------------------------------------------------------------------------------------

  // -1, 0 or 1: the order of the first two values at one position of which one is less than the
  // other; else the shorter collection is less. Names and type tags do not count: {a: 1} and
  // {b: 1} are equal. Neither do values of which neither is less count as different: a NaN is equal
  // to every double here.
  //
  // A strict weak ordering as far as that of the values is one (INQSettingValue).
  // Cost  linear in the settings compared, nested ones included.
  int Compare(const NQSettings& other) const;
  bool operator==(const NQSettings& other) const { return Compare(other) == 0; }
  bool operator!=(const NQSettings& other) const { return Compare(other) != 0; }
  bool operator<(const NQSettings& other) const { return Compare(other) < 0; }

  // ---- Display ----------------------------------------------------------------------------------

  // Writes one setting a line, with its type tag in parentheses, what is nested indented:
  //
  //   NQSettings display start
  //   alpha = 0.05
  //   method (enum) = "stepwise"
  //   fields (size = 2)
  //     "age" "income"
  //   roles (size = 1)
  //     "age" = "input"
  //   criteria (number of settings = 1)
  //     epsilon = 1e-06
  //   models (size = 2)
  //     [0] (number of settings = 1)
  //       kind = "tree"
  //     [1] (number of settings = 0)
  //   NQSettings display end
  //
  // A value of a foreign class is the name alone and, indented, what its own Display writes.
  void Display() const;

 private:
  using Index = std::multimap<std::string, NQSetting*>;

  template <class T>
  bool Add(const std::string& name, T&& value, const std::string& type, bool replace);
  void Append(std::unique_ptr<NQSetting> setting, bool replace);
  void Remove(Index::iterator first, Index::iterator last);
  void CloseGaps() const;

  mutable std::vector<std::unique_ptr<NQSetting>> fvSettings;
  mutable std::size_t fNGaps = 0;
  Index fIndex;
};

}  // namespace NQXML_940
