#include <nqcommon/xml/save_format.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/text_conversion.h>
#include <nqcommon/xml/SaveXMLTags.h>
#include <nqcommon/xml/XMLObj.h>
#include <nqcommon/xml/XMLUtil.h>
#include <nqcommon/xml/internal/escape.h>
#include <nqcommon/xml/internal/save_line.h>
#include <nqcommon/xml/internal/value_kinds.h>
#include <nqcommon/xml/write_tree.h>

namespace NQXML_940 {
namespace {

using internal::kValueKind;
using internal::SaveLine;
using internal::ValueKind;

// The characters that separate the words of a line, by kind of line. The sets differ in '>' and
// '"': a character that is in no set is part of a word, and so a line with it does not match.
constexpr std::string_view kHeaderDelimiters = " \t\r\n<>=\"";
constexpr std::string_view kStartDelimiters = " \t\r\n<=\"";
constexpr std::string_view kEndDelimiters = " \t\r\n<>";
constexpr std::string_view kAttributeDelimiters = "=\"";
constexpr std::string_view kTextDelimiters = "\r\n\"";

// ReadWord takes the next line, and tells whether it starts with this word.
bool ReadWord(std::ifstream& is, std::string_view delimiters, std::string_view word) {
  SaveLine line;
  return line.Read(is) && line.Next(delimiters) == word;
}

// ReadToValue reads a line up to its value, as in <Int value=.
bool ReadToValue(std::ifstream& is, const ValueKind& kind, SaveLine& line) {
  return line.Read(is) && line.Next(kStartDelimiters) == kind.fElement &&
         line.Next(kAttributeDelimiters) == kind.fAttribute;
}

// The value of a line as `convert` reads its text.
template <class T, class Convert>
bool ReadValue(std::ifstream& is, T& value, Convert convert) {
  SaveLine line;
  if (!ReadToValue(is, kValueKind<T>, line)) return false;
  const std::optional<std::string_view> text = line.Next(kStartDelimiters);
  if (!text) return false;
  value = convert(*text);
  return true;
}

template <class Number>
Number ToNumber(std::string_view text) {
  Number value = 0;
  NQCommon_940::ReadNumber(text, value);
  return value;
}

unsigned ToUnsigned(std::string_view text) {
  constexpr unsigned kLargest = std::numeric_limits<unsigned>::max();
  // std::from_chars takes neither the blanks, of which some end no token, nor the plus sign.
  text.remove_prefix(std::min(text.find_first_not_of("\v\f"), text.size()));
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // No line is long enough to leave the range without an exponent, whose sign tells which way.
    const std::string_view number(text.data(), static_cast<std::size_t>(result.ptr - text.data()));
    return number.find('-') == std::string_view::npos ? kLargest : 0;
  }
  if (!(value > 0)) return 0;
  return value < kLargest ? static_cast<unsigned>(value) : kLargest;
}

double ToDouble(std::string_view text) {
  if (text == SaveXMLTags::XML_VAL_MISSING) return NQCommon_940::NQMV::Missing();
  return ToNumber<double>(text);
}

// The place among the words of a stream that says whether its strings are unescaped.
int UnescapeMark() {
  static const int mark = std::ios_base::xalloc();
  return mark;
}

}  // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): the form of the interface
int StartRoot(std::ostream& os, std::string copyright) {
  std::string tag = "<" + SaveXMLTags::XML_ELE_ROOT + " ";
  internal::AppendAttribute(tag, SaveXMLTags::XML_ATT_COPYRIGHT, copyright);
  Write(os, tag += ">");
  return 0;
}

int WriteHeader(std::ostream& os, std::string copyright) {
  return StartRoot(os, std::move(copyright));
}

int EndRoot(std::ostream& os) {
  Write(os, "\n</" + SaveXMLTags::XML_ELE_ROOT + ">");
  return 0;
}

int EndHeader(std::ostream& os) { return EndRoot(os); }

bool ParseStartXML(std::ifstream& is) {
  return ReadWord(is, kHeaderDelimiters, "?xml") && ReadWord(is, kHeaderDelimiters, "!DOCTYPE") &&
         ReadWord(is, kHeaderDelimiters, SaveXMLTags::XML_ELE_HEADER);
}

bool ParseStartObj(std::ifstream& is, const std::string& name) {
  SaveLine line;
  // The empty line is there when no root's start tag stands before the object's line feed.
  if (!line.Read(is) || (line.Rest().empty() && !line.Read(is))) return false;
  return line.Next(kStartDelimiters) == SaveXMLTags::XML_ELE_OBJ &&
         line.Next(kStartDelimiters) == SaveXMLTags::XML_ATT_OBJ && line.Next("\"") == name;
}

bool ParseValue(std::ifstream& is, int& value) { return ReadValue(is, value, ToNumber<int>); }

bool ParseValue(std::ifstream& is, unsigned int& value) { return ReadValue(is, value, ToUnsigned); }

bool ParseValue(std::ifstream& is, long& value) { return ReadValue(is, value, ToNumber<long>); }

bool ParseValue(std::ifstream& is, double& value) { return ReadValue(is, value, ToDouble); }

bool ParseValue(std::ifstream& is, std::string& value) {
  SaveLine line;
  if (!ReadToValue(is, kValueKind<std::string>, line)) return false;
  const std::string_view rest = line.Rest();
  const std::string_view text = line.Next(kTextDelimiters).value_or("");
  // Quotes separate, so that of value=""/> the tag's end is found instead of the text.
  value = text == "/>" && rest.substr(0, rest.find(text)).ends_with("\"\"") ? "" : text;
  if (is.iword(UnescapeMark()) != 0) value = XMLUtil::Unescape(value);
  return true;
}

void UnescapeStrings(std::ifstream& is) { is.iword(UnescapeMark()) = 1; }

bool CanBeReadBack(const std::string& value, int nTabs) {
  std::ostringstream line;
  XMLObj(std::string(), nTabs).WriteSubElement(line, value);
  const std::size_t size = line.str().size() - 1;  // without the line feed
  return size <= SaveLine::kMaxLength && value.find('\0') == value.npos;
}

bool ParseValue(std::ifstream& is, bool& value) {
  int number = 0;
  if (!ParseValue(is, number) || (number != 0 && number != 1)) return false;
  value = number == 1;
  return true;
}

bool ParseEndObj(std::ifstream& is) {
  return ReadWord(is, kEndDelimiters, "/" + SaveXMLTags::XML_ELE_OBJ);
}

}  // namespace NQXML_940
