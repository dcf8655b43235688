#include <nqcommon/xml/XMLUtil.h>

#include <random>

#include "support/testing.h"

using namespace NQXML_940;

// One replacement after the other, as the escaping is defined.
static std::string EscapedInSteps(std::string text) {
  const char* steps[] = {"&",  "&amp;", "<",  "&lt;",  ">",  "&gt;",  "\"", "&quot;",
                         "\t", "&#9;",  "\n", "&#10;", "\r", "&#13;", "  ", " &#32;"};
  for (int i = 0; i < 16; i += 2) XMLUtil::ReplaceAll(text, steps[i], steps[i + 1]);
  if (!text.empty() && text.front() == ' ') text.replace(0, 1, "&#32;");
  if (!text.empty() && text.back() == ' ') text.replace(text.size() - 1, 1, "&#32;");
  return text;
}

TEST(XMLUtil, Escapes) {
  EXPECT_EQ(XMLUtil::Escape("a b  c   d    e"), "a b &#32;c &#32; d &#32; &#32;e");
  EXPECT_EQ(XMLUtil::Escape("   "), "&#32;&#32;&#32;");
  EXPECT_EQ(XMLUtil::Escape(" &amp;<>\"'\n\r\v\xE9"),
            "&#32;&amp;amp;&lt;&gt;&quot;'&#10;&#13;\v\xE9");
  EXPECT_EQ(XMLUtil::Unescape("&&lt;&amp;lt;&apos;&#9;&#x9;&#32&"), "&<&lt;&apos;\t&#x9;&#32&");
  std::mt19937 random(1);
  const std::string alphabet("    ab&<>\"\t\n\r;\0\xE4", 16);
  for (int i = 0; i < 50000; ++i) {
    std::string text(random() % 12, '\0');
    for (char& c : text) c = alphabet[random() % (i % 2 == 0 ? 5 : alphabet.size())];
    ASSERT_EQ(XMLUtil::Escape(text), EscapedInSteps(text)) << text;
    ASSERT_EQ(XMLUtil::Unescape(XMLUtil::Escape(text)), text);
  }
}

TEST(XMLUtil, Replaces) {
  std::string text = "abcabc";
  int pos = 2;
  EXPECT_EQ(XMLUtil::ReplaceAtPos(text, "bc", "X", pos), 4);
  EXPECT_EQ(pos, 4);
  EXPECT_EQ(XMLUtil::ReplaceString(text, "bc", "bcbc"), 1);
  EXPECT_EQ(XMLUtil::ReplaceString(text, "a", "a"), 0);
  for (const int from : {-1, 7, 8, 1000}) {
    EXPECT_EQ(XMLUtil::ReplaceAtPos(text, "X", "Y", pos = from), -1);
    EXPECT_EQ(pos, from);
  }
  EXPECT_EQ(XMLUtil::ReplaceString(text, "", "Y"), -1);
  XMLUtil::ReplaceAll(text, "bc", "b");
  XMLUtil::ReplaceAll(text, "", "never");
  XMLUtil::ReplaceAll(text, "b", "bb");
  EXPECT_EQ(text, "abbbbaX");
  XMLUtil::ReplaceAll(text, text, "a");
  EXPECT_EQ(text, "a");
  EXPECT_EQ(XMLUtil::GetTabs(2) + XMLUtil::GetTabs(-1) + XMLUtil::toString(-7), "\t\t-7");
}
