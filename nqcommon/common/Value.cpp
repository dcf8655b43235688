#include <nqcommon/common/Value.h>

#include <algorithm>
#include <cmath>
#include <locale>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include <nqcommon/common/NQException.h>
#include <nqcommon/common/text_conversion.h>
#include <nqcommon/common/three_way.h>

namespace NQCommon_940 {

static_assert(sizeof(Value) == 16);

namespace {

// How far apart equal reals may be, relative to the larger magnitude.
constexpr double kEqualRealsStep = 2.22045e-14;

bool IsNear(double a, double b, double step) {
  if (a - b == 0) return true;
  if (a == 0 || b == 0) return false;
  return step * std::max(std::fabs(a), std::fabs(b)) >= std::fabs(a - b);
}

bool AreEqualReals(double a, double b) {
  return NQMV::IsMissing(a) == NQMV::IsMissing(b) && IsNear(a, b, kEqualRealsStep);
}

template <typename T>
T ReadText(const std::string& text, T fallBack) {
  Str2T(text, fallBack);
  return fallBack;
}

}  // namespace

// All but the string are ready before any code runs.
constinit const Value Value::NULL_VALUE;
constinit const Value Value::BOOL_VALUE(false);
constinit const Value Value::INTEGER_VALUE(0);
constinit const Value Value::REAL_VALUE(SYSMISVALUE);
const Value Value::STRING_VALUE("");

// ---- Life cycle ---------------------------------------------------------------------------------

Value::Value(const char* text) : Value(TextOf(text)) {}

Value::Value(const std::string& text) : Value(StringType, Payload(new std::string(text))) {}

Value* Value::Clone() const { return new Value(*this); }

// Calls `visit` with the pointer to the string, array or map that the value owns.
template <class Visit>
auto Value::VisitOwned(Visit visit) const {
  assert(!IsScalar());
  switch (fType) {
    case StringType:
      return visit(fPayload.fpString);
    case ArrayType:
      return visit(fPayload.fpArray);
    default:
      return visit(fPayload.fpMap);
  }
}

Value::Payload Value::CopyPayload() const {
  return VisitOwned([](auto* owned) { return Payload(new auto(*owned)); });
}

void Value::DeletePayload() noexcept {
  VisitOwned([](const auto* owned) { delete owned; });
}

std::string Value::TextOf(const char* text) { return text ? text : ""; }

// ---- Assignment ---------------------------------------------------------------------------------

Value& Value::operator=(const Value& other) {
  if (this != &other) *this = Value(other);
  return *this;
}

Value& Value::operator=(Value&& other) noexcept {
  // The old payload goes last, with `taken`: `other` may be a part of it.
  Value taken(std::move(other));
  std::swap(fType, taken.fType);
  std::swap(fPayload, taken.fPayload);
  return *this;
}

void Value::SetValue(const char* text) { SetValue(TextOf(text)); }

void Value::SetValue(const std::string& text) {
  if (fType == StringType) {
    *fPayload.fpString = text;
  } else {
    *this = Value(text);
  }
}

void Value::ClearValue() {
  if (fType == ArrayType) {
    for (Value& element : *fPayload.fpArray) element.ClearValue();
  } else if (fType == MapType) {
    for (auto& entry : *fPayload.fpMap) entry.second.ClearValue();
  } else {
    Clear();
  }
}

// ---- Inspection and converting getters ----------------------------------------------------------

long long Value::Size() const {
  if (IsScalar()) return -1;
  return VisitOwned([](const auto* owned) { return static_cast<long long>(owned->size()); });
}

bool Value::GetBool() const {
  switch (fType) {
    case NullType:
      return false;
    case BoolType:
      return fPayload.fBool;
    case IntegerType:
      return fPayload.fInteger != 0;
    case RealType:
      return fPayload.fReal != 0.0;
    case StringType:
      return ReadText(*fPayload.fpString, false);
    default:
      return Size() > 0;
  }
}

long long Value::GetInteger() const {
  switch (fType) {
    case NullType:
      return 0;
    case BoolType:
      return fPayload.fBool ? 1 : 0;
    case IntegerType:
      return fPayload.fInteger;
    case RealType:
      return Truncate<long long>(fPayload.fReal);
    case StringType:
      return ReadText(*fPayload.fpString, 0LL);
    default:
      return Size();
  }
}

double Value::GetReal() const {
  switch (fType) {
    case NullType:
      return SYSMISVALUE;
    case RealType:
      return fPayload.fReal;
    case StringType:
      return ReadText(*fPayload.fpString, SYSMISVALUE);
    default:
      return static_cast<double>(GetInteger());
  }
}

std::string Value::GetString() const {
  switch (fType) {
    case NullType:
      return {};
    case BoolType:
      return T2Str(fPayload.fBool);
    case IntegerType:
      return T2Str(fPayload.fInteger);
    case RealType:
      return T2Str(fPayload.fReal);
    case StringType:
      return *fPayload.fpString;
    default:
      std::ostringstream stream;
      stream.imbue(std::locale::classic());
      stream.exceptions(std::ios::badbit);  // memory that ends is no end of the text
      Display(stream);
      return stream.str();
  }
}

// ---- Strict access ------------------------------------------------------------------------------

void Value::RequireType(ValueType type) const {
  if (fType != type) throw NQException(13, "Value type wrong!");
}

Value::operator bool() const {
  RequireType(BoolType);
  return fPayload.fBool;
}

Value::operator long long() const {
  RequireType(IntegerType);
  return fPayload.fInteger;
}

Value::operator int() const {
  const long long value = *this;
  if (value != static_cast<int>(value)) throw NQException(13, "Value type wrong!");
  return static_cast<int>(value);
}

Value::operator double() const {
  RequireType(RealType);
  return fPayload.fReal;
}

Value::operator std::string() const {
  RequireType(StringType);
  return *fPayload.fpString;
}

Value::operator bool&() {
  if (IsNull()) *this = false;
  RequireType(BoolType);
  return fPayload.fBool;
}

Value::operator long long&() {
  if (IsNull()) *this = 0;
  RequireType(IntegerType);
  return fPayload.fInteger;
}

Value::operator double&() {
  if (IsNull()) *this = 0.0;
  RequireType(RealType);
  return fPayload.fReal;
}

Value::operator std::string&() {
  if (IsNull()) *this = "";
  RequireType(StringType);
  return *fPayload.fpString;
}

const std::string& Value::GetStringRef() const {
  return *(fType == StringType ? *this : STRING_VALUE).fPayload.fpString;
}

// ---- Arrays and maps ----------------------------------------------------------------------------

void Value::RequireArray() const {
  if (fType != ArrayType) throw NQException(13, "This value is not an array!");
}

void Value::SetLength(std::size_t n) {
  if (IsNull()) {
    *this = Value(ArrayType, Payload(new Array(n)));
  } else {
    RequireArray();
    fPayload.fpArray->resize(n);
  }
}

const Value& Value::operator[](int i) const {
  RequireArray();
  if (i >= Size()) throw NQException(14, "Out of this array bounds!");
  return fPayload.fpArray->at(static_cast<std::size_t>(i));
}

Value& Value::operator[](int i) {
  if (!IsNull()) RequireArray();
  if (i < 0) throw std::out_of_range("Value: negative array index");
  const auto index = static_cast<std::size_t>(i);
  if (i >= Size()) SetLength(index + 1);
  return (*fPayload.fpArray)[index];
}

void Value::Resize(int n) {
  SetLength(static_cast<std::size_t>(n));  // of a negative length: more than an array can have
}

Value& Value::operator[](const std::string& key) {
  if (fType == MapType) return (*fPayload.fpMap)[key];
  // `key` may be this value's own text: the entry is made before the old payload goes.
  Value map(MapType, Payload(new Map()));
  Value& entry = (*map.fPayload.fpMap)[key];
  *this = std::move(map);
  return entry;
}

bool Value::Contains(const std::string& key) const {
  return fType == MapType && fPayload.fpMap->find(key) != fPayload.fpMap->end();
}

std::vector<std::string> Value::Names() const {
  std::vector<std::string> names;
  if (fType == MapType) {
    for (const auto& entry : *fPayload.fpMap) names.push_back(entry.first);
  }
  return names;
}

// ---- Text ---------------------------------------------------------------------------------------

void Value::Display(std::ostream& stream) const {
  const char* separator = "";
  switch (fType) {
    case NullType:
      break;
    case BoolType:
      stream << (fPayload.fBool ? '1' : '0');
      break;
    case IntegerType:
      // An integer is decimal and ungrouped in every base and locale of the stream.
      stream << std::to_string(fPayload.fInteger);
      break;
    case RealType:
      stream << fPayload.fReal;
      break;
    case StringType:
      stream << *fPayload.fpString;
      break;
    case ArrayType:
      stream << '{';
      for (const Value& element : *fPayload.fpArray) {
        stream << std::exchange(separator, ",") << element;
      }
      stream << '}';
      break;
    case MapType:
      stream << '[';
      for (const auto& [key, value] : *fPayload.fpMap) {
        stream << std::exchange(separator, ",") << key << ':' << value;
      }
      stream << ']';
      break;
  }
}

std::ostream& operator<<(std::ostream& stream, const Value& value) {
  value.Display(stream);
  return stream;
}

// ---- Comparison ---------------------------------------------------------------------------------

bool Value::IsZeroDiff(double a, double b, double k) { return IsNear(a, b, k * EPSILON); }

bool Value::operator==(const Value& other) const {
  if (fType != other.fType) return false;
  switch (fType) {
    case NullType:
      return false;
    case BoolType:
      return fPayload.fBool == other.fPayload.fBool;
    case IntegerType:
      return fPayload.fInteger == other.fPayload.fInteger;
    case RealType:
      return AreEqualReals(fPayload.fReal, other.fPayload.fReal);
    case StringType:
      return *fPayload.fpString == *other.fPayload.fpString;
    case ArrayType:
      return *fPayload.fpArray == *other.fPayload.fpArray;
    case MapType:
      return *fPayload.fpMap == *other.fPayload.fpMap;
  }
  return false;
}

int Value::Order(const Value& a, const Value& b) {
  if (a.fType != b.fType) return Sign(a.GetString(), b.GetString());
  const Payload& x = a.fPayload;
  const Payload& y = b.fPayload;
  switch (a.fType) {
    case NullType:
      return 0;
    case BoolType:
      return Sign(x.fBool, y.fBool);
    case IntegerType:
      return Sign(x.fInteger, y.fInteger);
    case RealType:
      return a.IsMissing() || b.IsMissing() ? 0 : Sign(x.fReal, y.fReal);
    case StringType:
      return Sign(*x.fpString, *y.fpString);
    case ArrayType:
      return OrderItems(*x.fpArray, *y.fpArray, Order);
    case MapType:
      return OrderItems(*x.fpMap, *y.fpMap, [](const auto& p, const auto& q) {
        const int order = Sign(p.first, q.first);
        return order != 0 ? order : Order(p.second, q.second);
      });
  }
  return 0;
}

bool Value::operator<(const Value& other) const { return Order(*this, other) < 0; }

bool Value::operator>(const Value& other) const {
  if (fType == BoolType && other.fType == BoolType) return *this < other;
  return other < *this;
}

}  // namespace NQCommon_940
