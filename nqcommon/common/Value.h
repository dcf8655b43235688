#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iosfwd>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/truncate.h>
#include <nqcommon/export.h>

namespace NQCommon_940 {

// A null, boolean, 64-bit integer, real, string, array of values or map from strings to values.
//
// Layout    a 16-bit type code and one 8-byte word: a scalar is in the word, so that records of
//           numbers never allocate; a string, array or map is one block that the value owns alone.
//           Copies are deep.
// Failure   NQException: 13 "Value type wrong!", 13 "This value is not an array!",
//           14 "Out of this array bounds!". A negative index raises std::out_of_range. The value is
//           unchanged when an exception leaves an operation.
// Nesting   copying, destroying, comparing and writing recurse: the depth of nesting is limited by
//           the stack (ten thousand levels need less than 8 MB).
// Threads   one object, one thread at a time; the shared prototypes are constant.
//
// The conversions to bool, int, long long and double make an operator between a value and a bare
// number ambiguous, and so an initialisation of another number type: write `v == Value(2)` and not
// `v == 2`, and `long n = v.GetInteger()`.
class NQ_API Value {
 public:
  enum ValueType : std::uint16_t {
    NullType = 0,
    BoolType = 1,
    IntegerType = 2,
    RealType = 3,
    StringType = 4,
    ArrayType = 5,
    MapType = 6
  };

  // The relative step of IsZeroDiff: the six-digit literal, not the exact machine epsilon.
  static constexpr double EPSILON = 2.22045e-16;

  // The system-missing value and infinity, as constants and by functions.
  static constexpr double SYSMISVALUE = NQMV::gMissingValue;
  static constexpr double NQVALUE_INFINITY = GetLocalInfinity();
  static double GetSysmisValue() { return SYSMISVALUE; }
  static double GetInfinity() { return NQVALUE_INFINITY; }

  // One prototype of each simple type: null, false, 0, the system-missing value (not 0.0) and "".
  static const Value NULL_VALUE;
  static const Value BOOL_VALUE;
  static const Value INTEGER_VALUE;
  static const Value REAL_VALUE;
  static const Value STRING_VALUE;

  // ---- Life cycle -------------------------------------------------------------------------------

  constexpr Value() noexcept {}
  constexpr Value(bool value) noexcept : fType(BoolType), fPayload(value) {}
  constexpr Value(int value) noexcept : Value(static_cast<long long>(value)) {}
  constexpr Value(long long value) noexcept : fType(IntegerType), fPayload(value) {}
  template <class Integer, IfOtherInteger<Integer> = 0>
  constexpr Value(Integer value) noexcept : Value(ToLongLong(value)) {}
  constexpr Value(double value) noexcept : fType(RealType), fPayload(value) {}
  Value(const char* text);  // a null pointer counts as ""
  Value(const std::string& text);
  Value(const Value& other)
      : fType(other.fType), fPayload(other.IsScalar() ? other.fPayload : other.CopyPayload()) {}
  // Leaves `other` null.
  Value(Value&& other) noexcept
      : fType(std::exchange(other.fType, NullType)),
        fPayload(std::exchange(other.fPayload, Payload())) {}
  ~Value() {
    if (!IsScalar()) DeletePayload();
  }

  // A new copy; the caller deletes it.
  Value* Clone() const;

  // ---- Assignment -------------------------------------------------------------------------------

  // The value takes the type of the right-hand side, which may be a part of the value: v = v[0].
  Value& operator=(const Value& other);
  // Leaves `other` null, unless it is this value itself, which keeps its contents.
  Value& operator=(Value&& other) noexcept;

  // The value takes the type and the contents of the argument. A null pointer counts as "".
  Value& operator=(bool value) { return *this = Value(value); }
  Value& operator=(int value) { return *this = Value(value); }
  Value& operator=(long long value) { return *this = Value(value); }
  template <class Integer, IfOtherInteger<Integer> = 0>
  Value& operator=(Integer value) {
    return *this = Value(value);
  }
  Value& operator=(double value) { return *this = Value(value); }
  Value& operator=(const char* text) { return *this = Value(text); }
  Value& operator=(const std::string& text) { return *this = Value(text); }

  // Stores a scalar in the payload word of a value that is null or of that very type already: the
  // caller's duty, asserted in debug builds. One store; nothing is converted or released.
  void SetValue(bool value) { StoreScalar(BoolType, Payload(value)); }
  void SetValue(int value) { SetValue(static_cast<long long>(value)); }
  void SetValue(long long value) { StoreScalar(IntegerType, Payload(value)); }
  template <class Integer, IfOtherInteger<Integer> = 0>
  void SetValue(Integer value) {
    SetValue(ToLongLong(value));
  }
  void SetValue(double value) { StoreScalar(RealType, Payload(value)); }

  // Assigns to a string in place; a value of any other type becomes a string. A null pointer counts
  // as "".
  void SetValue(const char* text);
  void SetValue(const std::string& text);

  // Makes the value null.
  void Clear() { *this = Value(); }
  // Clears the elements of an array or the values of a map, recursively, and keeps the length or
  // the keys; makes a value of any other type null.
  void ClearValue();

  // ---- Inspection -------------------------------------------------------------------------------

  ValueType GetType() const { return fType; }
  bool IsNull() const { return fType == NullType; }
  // An integer or a real.
  bool IsNumericValue() const { return fType == IntegerType || fType == RealType; }
  // Null, or a real that is the system-missing value.
  bool IsMissing() const {
    return IsNull() || (fType == RealType && NQMV::IsMissing(fPayload.fReal));
  }
  bool IsSystemMissingValue() const { return IsMissing(); }
  // Elements of an array, entries of a map, bytes of a string; -1 for any other type.
  long long Size() const;

  // ---- Converting getters -----------------------------------------------------------------------

  // They convert from every type and report nothing; text is read as by Str2T.
  //
  //              null            bool      integer    real           string    array, map
  //   GetBool    false           itself    != 0       != 0.0 (a)     Str2T     not empty
  //   GetInteger 0               0, 1      itself     truncated (b)  Str2T     size
  //   GetReal    system-missing  0.0, 1.0  converted  itself         Str2T     size
  //   GetString  ""              "0", "1"  decimal    T2Str          itself    as Display writes it
  //
  // (a) true for NaN and system-missing; (b) toward zero; NaN and what is out of range, such as the
  // system-missing value, give the most negative integer. A string without text gives false, 0 or
  // the system-missing value; one that is no number gives false, 0 or 0.0.
  bool GetBool() const;
  long long GetInteger() const;
  double GetReal() const;
  std::string GetString() const;

  // ---- Strict access ----------------------------------------------------------------------------

  // The payload of a value of exactly that type; otherwise, null included, code 13.
  operator bool() const;
  operator long long() const;
  // An integer beyond the range of int is code 13 too.
  operator int() const;

  operator double() const;
  operator std::string() const;

  // The payload by reference. A null value first becomes false, 0, 0.0 or ""; any other type is
  // code 13. A value that is not const prefers these: `if (v)` makes a null value a boolean.
  operator int() { return std::as_const(*this); }  // `int i = v` would be the boolean otherwise
  operator bool&();
  operator long long&();
  operator double&();
  operator std::string&();

  // The string, or for any other type the string of STRING_VALUE.
  const std::string& GetStringRef() const;

  // ---- Arrays -----------------------------------------------------------------------------------

  // The value must be an array (code 13) of more than i elements (code 14).
  const Value& operator[](int i) const;
  // Grows an array to i + 1 elements where it is shorter, new ones null; a null value becomes such
  // an array; any other type is code 13. References to elements stay valid: a[5] = a[0].
  Value& operator[](int i);
  // Sets the length of an array, new elements null; a null value becomes an array; any other type
  // is code 13. A negative length raises std::length_error.
  void Resize(int n);

  // ---- Maps -------------------------------------------------------------------------------------

  // The entry of the key, inserted as null where it is absent. A value that is not a map becomes
  // one: what it held is discarded without an error.
  Value& operator[](const std::string& key);
  // For literals and character arrays: without it v["key"] could also mean "key"[v], and as a
  // template it leaves v[0] to the arrays.
  template <typename Text,
            typename = std::enable_if_t<std::is_convertible_v<const Text&, const char*>>>
  Value& operator[](const Text& key) {
    return (*this)[TextOf(key)];
  }
  // False for anything but a map that has the key.
  bool Contains(const std::string& key) const;
  // The keys of a map in ascending byte order; none for any other type.
  std::vector<std::string> Names() const;

  // ---- Text -------------------------------------------------------------------------------------

  // Writes a bool as the digit 1 or 0, an integer in decimal, a real in the stream's current
  // format, a string as its bytes, null as nothing; an array in braces and a map in brackets, in
  // key order, deliberately not the other way round: {1,a} and [key:1,other:b].
  void Display(std::ostream& stream) const;

  // ---- Comparison -------------------------------------------------------------------------------

  // Values of different types are unequal, and null is unequal to everything, itself included.
  // Reals are equal when they differ by at most 2.22045e-14 of the larger magnitude; zero equals
  // only zero, system-missing only itself, NaN nothing. As the rule has it, an infinity does not
  // equal itself and does equal every other number but zero and system-missing. Arrays and maps are
  // equal entry by entry.
  bool operator==(const Value& other) const;
  bool operator!=(const Value& other) const { return !(*this == other); }

  // Values of different types compare as their GetString texts, by bytes. Null is never less; a
  // real is never less when either side is system-missing or NaN; arrays and maps compare
  // lexicographically, maps by (key, value). The cost is linear in the shorter side.
  bool operator<(const Value& other) const;
  // other < *this, except that for two booleans it is deliberately the same test as <: a > b when a
  // is false and b is true.
  bool operator>(const Value& other) const;

  // < or ==, > or ==.
  bool operator<=(const Value& other) const { return *this < other || *this == other; }
  bool operator>=(const Value& other) const { return *this > other || *this == other; }

  // |a - b| <= k * EPSILON * max(|a|, |b|), where zero is near only to zero.
  static bool IsZeroDiff(double a, double b, double k);

 private:
  using Array = std::deque<Value>;  // references to elements stay valid while it grows
  using Map = std::map<std::string, Value>;

  union Payload {
    constexpr Payload() noexcept : fInteger(0) {}
    explicit constexpr Payload(bool value) noexcept : fBool(value) {}
    explicit constexpr Payload(long long value) noexcept : fInteger(value) {}
    explicit constexpr Payload(double value) noexcept : fReal(value) {}
    explicit Payload(std::string* owned) noexcept : fpString(owned) {}
    explicit Payload(Array* owned) noexcept : fpArray(owned) {}
    explicit Payload(Map* owned) noexcept : fpMap(owned) {}

    bool fBool;
    long long fInteger;
    double fReal;
    std::string* fpString;
    Array* fpArray;
    Map* fpMap;
  };

  Value(ValueType type, Payload owned) noexcept : fType(type), fPayload(owned) {}

  bool IsScalar() const { return fType < StringType; }
  template <class Visit>
  auto VisitOwned(Visit visit) const;
  Payload CopyPayload() const;
  void DeletePayload() noexcept;
  void StoreScalar(ValueType type, Payload payload) {
    assert(IsNull() || fType == type);
    fPayload = payload;
    if (IsNull()) fType = type;
  }
  void RequireType(ValueType type) const;
  void RequireArray() const;
  void SetLength(std::size_t n);
  static std::string TextOf(const char* text);
  // Order is -1 for a < b, 1 for b < a, else 0.
  static int Order(const Value& a, const Value& b);

  ValueType fType = NullType;
  Payload fPayload;
};

NQ_API std::ostream& operator<<(std::ostream& stream, const Value& value);

}  // namespace NQCommon_940
