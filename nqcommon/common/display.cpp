#include <nqcommon/common/display.h>

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <iostream>
#include <span>

#include <nqcommon/common/NQMV.h>

namespace NQDisplay_940 {
namespace {

constexpr std::size_t kValuesPerLine = 10;

// OutStream holds the pointer to the display stream in a function: it is set before any use.
std::ostream*& OutStream() {
  static std::ostream* out = &std::cout;
  return out;
}

// Print is for numbers only, of which a few with their labels always fit.
[[gnu::format(printf, 1, 2)]] std::string Print(const char* format, ...) {
  char text[128];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  return text;
}

std::string Number(double value) {
  return NQCommon_940::NQMV::IsMissing(value) ? "miss" : Print("%g", value);
}
std::string Number(int value) { return Print("%d", value); }
std::string Number(unsigned value) { return Print("%u", value); }

// Item gives what a value line has for a value, the blank before it included.
template <class T>
std::string Item(T value) {
  return " " + Number(value);
}
std::string Item(bool value) { return value ? " t" : " f"; }
std::string Item(const std::string& value) { return " \"" + value + "\""; }
std::string Item(const std::pair<int, int>& value) {
  return Print("(%d,%d) ", value.first, value.second);
}
template <class T>
std::string Item(const std::pair<double, T>& value) {
  return Item(value.first) + Item(value.second);
}

template <class Values>
void ValueLines(const Values& values) {
  std::size_t inLine = 0;
  std::string line = " ";
  for (const auto& value : values) {
    line += Item(value);
    if (++inLine < kValuesPerLine) continue;
    DisplayText(1, line);
    line = " ";
    inLine = 0;
  }
  if (inLine > 0) DisplayText(1, line);
}

template <class Values>
void SizedVector(const std::string& name, const Values& values) {
  DisplayText(1, name + Print(" (size = %zu)", values.size()));
  ValueLines(values);
}

template <class Vectors>
void NestedVectors(const std::string& name, const Vectors& vectors) {
  DisplayText(1, vectors.empty() ? name + " <none>" : name);
  for (std::size_t i = 0; i < vectors.size(); ++i) {
    DisplayText(1, Print("vec[%zu]", i));
    ValueLines(vectors[i]);
  }
}

template <class Map>
void MapHeader(const std::string& name, const Map& map) {
  DisplayText(1, map.empty() ? name + " <empty>" : name);
}

template <class Map>
void NumberMap(const std::string& name, const Map& map, bool showSize) {
  MapHeader(name, map);
  if (showSize && !map.empty()) DisplayText(1, Print("map size = %zu", map.size()));
  for (const auto& [key, value] : map)
    DisplayText(1, " (" + Number(key) + "," + Number(value) + ")");
}

}  // namespace

void SetOutStream(std::ostream& out) { OutStream() = &out; }

std::ostream& GetOutStream() { return *OutStream(); }

void DisplayText(const long& n, const char* text) {
  if (text != nullptr) DisplayText(n, std::string(text));
}

void DisplayText(const long& n, const std::string& text) {
  std::ostream& out = GetOutStream();
  for (long i = 0; i < n; ++i) out.put('\n').flush();
  // The write is unformatted, so that a field width left in the stream does not pad the text.
  out.write(text.data(), static_cast<std::streamsize>(text.size())).flush();
}

void DisplayB(const std::string& name, bool value) { DisplayS(name, value ? "true" : "false"); }

void DisplayD(const std::string& name, double value) { DisplayS(name, Number(value)); }

void DisplayDF(const std::string& name, double value) {
  DisplayS(name, NQCommon_940::NQMV::IsMissing(value) ? "miss" : Print("%.17g", value));
}

void DisplayI(const std::string& name, int value) { DisplayS(name, Number(value)); }

void DisplayL(const std::string& name, long value) { DisplayS(name, Print("%ld", value)); }

void DisplayS(const std::string& name, const std::string& value) {
  DisplayText(1, name + " = " + value);
}

void DisplayTimeStamp(const std::string& name) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  DisplayText(1, name + ": " +
                     Print("%d-%02d-%02d-%02d-%02d-%02d", local.tm_year + 1900, local.tm_mon + 1,
                           local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec));
}

void DisplayDA(const std::string& name, const double* values, int count, bool showSize) {
  DisplayText(1, showSize ? name + Print(" (size = %d)", count) : name);
  DisplayDAS(values, count);
}

void DisplayDAS(const double* values, int count) {
  if (values == nullptr || count < 1) return;
  ValueLines(std::span(values, static_cast<std::size_t>(count)));
}

void DisplayDV(const std::string& name, const std::vector<double>& values, bool showSize) {
  if (showSize) return SizedVector(name, values);
  DisplayText(1, name);
  ValueLines(values);
}

void DisplayIV(const std::string& name, const std::vector<int>& values) {
  SizedVector(name, values);
}

void DisplayUV(const std::string& name, const std::vector<unsigned>& values) {
  SizedVector(name, values);
}

void DisplayBV(const std::string& name, const std::vector<bool>& values) {
  SizedVector(name, values);
}

void DisplaySV(const std::string& name, const std::vector<std::string>& values) {
  SizedVector(name, values);
}

void DisplayVPD(const std::string& name, const std::vector<std::pair<double, double>>& values) {
  SizedVector(name, values);
}

void DisplayVPDI(const std::string& name, const std::vector<std::pair<double, int>>& values) {
  SizedVector(name, values);
}

void DisplayVPII(const std::string& name, const std::vector<std::pair<int, int>>& values) {
  SizedVector(name, values);
}

void DisplayDVV(const std::string& name, const std::vector<std::vector<double>>& values) {
  NestedVectors(name, values);
}

void DisplaySVV(const std::string& name, const std::vector<std::vector<std::string>>& values) {
  NestedVectors(name, values);
}

void DisplayBVV(const std::string& name, const std::vector<std::vector<bool>>& values) {
  const std::size_t nCols = values.empty() ? 0 : values.front().size();
  DisplayText(1, name + Print(" ( number of rows =  %zu, number of columns =  %zu )", values.size(),
                              nCols));
  for (const auto& row : values) ValueLines(row);
}

void DisplayDVTR(const std::string& name, const std::vector<double>& values, int rowLength) {
  const std::size_t n = values.size();
  const std::size_t length = rowLength < 1 ? 0 : static_cast<std::size_t>(rowLength);
  const std::size_t nRows = length == 0 ? 0 : (n + length - 1) / length;
  DisplayText(1, name + Print(" (number of elements = %zu, number of rows = %zu)", n, nRows));
  DisplayDVTRS(values, rowLength);
}

void DisplayDVTRS(const std::vector<double>& values, int rowLength) {
  if (rowLength < 1) return;
  const auto length = static_cast<std::size_t>(rowLength);
  std::string line;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i % length == 0) line = Print("row %zu: ", i / length);
    line += Item(values[i]);
    if ((i + 1) % length == 0 || i + 1 == values.size()) DisplayText(1, line);
  }
}

void DisplaySLDM(const std::string& name,
                 const std::map<std::vector<std::string>, double>& values) {
  MapHeader(name, values);
  for (const auto& [key, value] : values) {
    DisplaySV("Map's StringList:", key);
    DisplayD("Map's double", value);
  }
}

void DisplayIntVecDVecMap(const std::string& name,
                          const std::map<std::vector<int>, std::vector<double>>& values) {
  MapHeader(name, values);
  for (const auto& [key, value] : values) {
    DisplayIV("Map key", key);
    DisplayDV("Map value", value, true);
  }
}

void DisplayIntVecIntMap(const std::string& name, const std::map<std::vector<int>, int>& values) {
  MapHeader(name, values);
  for (const auto& [key, value] : values) {
    DisplayIV("Map key", key);
    DisplayI("Map value", value);
  }
}

void DisplayIIM(const std::string& name, const std::map<int, int>& values) {
  NumberMap(name, values, true);
}

void DisplayVIM(const std::string& name, const std::map<int, int>& values) {
  NumberMap(name, values, false);
}

void DisplayDDM(const std::string& name, const std::map<double, double>& values) {
  NumberMap(name, values, true);
}

}  // namespace NQDisplay_940
