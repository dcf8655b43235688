#include <nqcommon/xml/XMLUtil.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

#include <nqcommon/xml/internal/escape.h>
#include <nqcommon/xml/number_format.h>

namespace NQXML_940 {

namespace {

// For each byte of an attribute value the reference that may stand for it; null for most.
constexpr std::array<const char*, 256> kReferences = [] {
  std::array<const char*, 256> references{};
  references['&'] = XMLUtil::XML_AMPERSAND;
  references['<'] = XMLUtil::XML_LESS_THAN;
  references['>'] = XMLUtil::XML_GREATER_THAN;
  references['"'] = XMLUtil::XML_QUOTE;
  references['\t'] = XMLUtil::XML_CHARREF_TAB;
  references['\n'] = XMLUtil::XML_CHARREF_NL;
  references['\r'] = XMLUtil::XML_CHARREF_CR;
  references[' '] = XMLUtil::XML_CHARREF_SP;
  return references;
}();

}  // namespace

std::string XMLUtil::GetTabs(int n) {
  return std::string(static_cast<std::size_t>(std::max(n, 0)), *ITEMINDENT);
}

std::string XMLUtil::toString(int value) { return std::to_string(value); }

int XMLUtil::ReplaceAtPos(std::string& text, const std::string& find,
                          const std::string& replacement, int& pos) {
  if (find.empty() || pos < 0) return -1;
  const std::size_t at = text.find(find, static_cast<std::size_t>(pos));
  if (at > static_cast<std::size_t>(std::numeric_limits<int>::max())) return -1;  // npos too
  text.replace(at, find.size(), replacement);
  pos = static_cast<int>(at);
  return pos;
}

int XMLUtil::ReplaceString(std::string& text, const std::string& find,
                           const std::string& replacement) {
  int pos = 0;
  return ReplaceAtPos(text, find, replacement, pos);
}

void XMLUtil::ReplaceAll(std::string& text, const std::string& find,
                         const std::string& replacement) {
  if (find.empty()) return;
  std::string replaced;
  std::size_t done = 0;
  for (std::size_t at; (at = text.find(find, done)) != text.npos; done = at + find.size()) {
    replaced.append(text, done, at - done).append(replacement);
  }
  replaced.append(text, done, text.npos);
  text = std::move(replaced);
}

std::string XMLUtil::Escape(const std::string& text) {
  std::string escaped;
  internal::AppendEscaped(escaped, text);
  return escaped;
}

std::string XMLUtil::Unescape(const std::string& text) {
  std::string plain;
  std::size_t done = 0;
  for (std::size_t at; (at = text.find('&', done)) != text.npos;) {
    plain.append(text, done, at - done);
    const auto begins = [&](const char* reference) {
      return reference != nullptr && text.compare(at, std::strlen(reference), reference) == 0;
    };
    const auto found = std::find_if(kReferences.begin(), kReferences.end(), begins);
    const bool isReference = found != kReferences.end();
    plain += isReference ? static_cast<char>(found - kReferences.begin()) : '&';
    done = at + (isReference ? std::strlen(*found) : 1);
  }
  return plain.append(text, done, text.npos);
}

// Of a run of blanks the second of each pair is replaced, so that the last of an odd number stays
// unless the text ends there.
void internal::AppendEscaped(std::string& out, std::string_view text) {
  std::size_t done = 0;
  std::size_t second = 0;  // where a blank would be the second of its pair, 0 for nowhere
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char* reference = kReferences[static_cast<unsigned char>(text[i])];
    if (reference == nullptr) continue;
    if (text[i] == *XMLUtil::SPACE) {
      const bool isSecond = i > 0 && i == second;
      second = isSecond ? 0 : i + 1;
      if (!isSecond && i > 0 && i + 1 < text.size()) continue;
    }
    out.append(text.substr(done, i - done)).append(reference);
    done = i + 1;
  }
  out.append(text.substr(done));
}

void internal::AppendAttribute(std::string& out, std::string_view name, const std::string& value) {
  out.append(name).append("=\"");
  AppendEscaped(out, value);
  out += '"';
}

void internal::AppendAttribute(std::string& out, std::string_view name, double value) {
  out.append(name).append("=\"");
  AppendNumber(out, value);
  out += '"';
}

}  // namespace NQXML_940
