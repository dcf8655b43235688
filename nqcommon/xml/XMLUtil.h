#pragma once

#include <string>

#include <nqcommon/export.h>

namespace NQXML_940 {

// The texts of the writer, and replacing within text.
class NQ_API XMLUtil {
 public:
  static constexpr int TAB_LENGTH = 8;
  static constexpr const char* FIRST_LINE = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>";
  static constexpr const char* ROWSEP = "\n";
  static constexpr const char* ITEMINDENT = "\t";
  static constexpr const char* QUOTE = "\"";
  static constexpr const char* EQUAL = "=";
  static constexpr const char* BEGIN_ELEMENT = "<";
  static constexpr const char* BEGIN_PREPROCESSOR = "!";
  static constexpr const char* END_ELEMENT = ">";
  static constexpr const char* BEGIN_END_ELEMENT = "/";
  static constexpr const char* SPACE = " ";
  static constexpr const char* AMPERSAND = "&";
  static constexpr const char* LESS_THAN = "<";
  static constexpr const char* GREATER_THAN = ">";
  static constexpr const char* XML_AMPERSAND = "&amp;";
  static constexpr const char* XML_LESS_THAN = "&lt;";
  static constexpr const char* XML_GREATER_THAN = "&gt;";
  static constexpr const char* XML_QUOTE = "&quot;";
  static constexpr const char* XML_CHARREF_TAB = "&#9;";
  static constexpr const char* XML_CHARREF_NL = "&#10;";
  static constexpr const char* XML_CHARREF_CR = "&#13;";
  static constexpr const char* XML_CHARREF_SP = "&#32;";
  static constexpr const char* XML_SP_CHARREF_SP = " &#32;";

  // n tabs; none for n of 0 or less.
  static std::string GetTabs(int n);

  static std::string toString(int value);

  // Replaces the first `find` at or after index `pos`. Returns its index, which `pos` is set to;
  // -1, with nothing changed, where there is none, for an empty `find`, for a `pos` outside the
  // text, and for an index beyond the range of int.
  static int ReplaceAtPos(std::string& text, const std::string& find,
                          const std::string& replacement, int& pos);

  // ReplaceAtPos from index 0.
  static int ReplaceString(std::string& text, const std::string& find,
                           const std::string& replacement);

  // Replaces every `find`, from left to right; replacements are not searched. Time linear in the
  // text, at any length.
  static void ReplaceAll(std::string& text, const std::string& find,
                         const std::string& replacement);

  // The text as an attribute value: & < > " tab, line feed and carriage return become references.
  // So does each blank that a reader of XML might drop: the second of every two in a row, and one
  // that is the first or last character.
  //
  //   a lone blank inside             stays
  //   2, 3, 4 and 5 blanks inside     " &#32;"  " &#32; "  " &#32; &#32;"  " &#32; &#32; "
  //   1, 2, 3 blanks alone            "&#32;"   "&#32;&#32;"   "&#32;&#32;&#32;"
  static std::string Escape(const std::string& text);

  // The text of which Escape made this one: each reference that Escape writes is its character
  // again. What is no such reference, a lone & too, stays.
  static std::string Unescape(const std::string& text);
};

}  // namespace NQXML_940
