// Nodes and documents: all that a tree is written through.
#include <nqcommon/xml/write_tree.h>

#include <memory>

#include "support/comma_locale.h"
#include "support/safe_depth.h"
#include "support/testing.h"

using namespace NQXML_940;

namespace {

using Root = std::unique_ptr<XMLElement>;

// The text of the node and of its clone, by ToString and by ToStream, of which all must agree. The
// bits of `flags` are format, indentation and new paragraph.
std::string Text(const XMLInterface& node, int flags) {
  const std::unique_ptr<XMLInterface> copy(node.Clone());
  std::string texts[4];
  for (int i = 0; i < 4; ++i) {
    ExportFormat format;
    format.SetFormat((flags & 1) != 0);
    format.SetIndentation((flags & 2) != 0);
    format.SetIsNewParagraph((flags & 4) != 0);
    std::ostringstream stream("|", std::ios::ate);
    if (i < 2) (i == 0 ? node : *copy).ToString(texts[i] = "|", format);
    if (i >= 2) copy->ToStream(stream, format, i == 3);
    if (i >= 2) texts[i] = stream.str();
    EXPECT_EQ(texts[i], texts[0]) << i << ' ' << flags;
    EXPECT_EQ(format.GetLevel(), 0) << i << ' ' << flags << texts[0];
  }
  return texts[0];
}

Root Element(const std::string& name, const std::string& value, const std::string& text) {
  Root root(XMLElement::Create(name));
  root->AddAttribute("v", value);
  root->AddElement(XMLElement::Create("b"));
  root->AddElement(XMLString::Create(text));
  return root;
}

template <class Writer>
std::string Document(Writer write, const XMLDocType* doctype, const Root& root, bool format) {
  std::ostringstream os;
  write(os, doctype, root.get(), format);
  return os.str();
}

const std::string kFirst = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n";

// What a stream with room for `room` bytes has got, and its state.
template <class Writer>
std::string Outcome(std::size_t room, std::ios::iostate before, Writer write) {
  std::string text(room, '.');
  struct Short : std::streambuf {
    explicit Short(std::string& bytes) { setp(bytes.data(), bytes.data() + bytes.size()); }
  } buffer(text);
  std::ostream os(&buffer);
  os.setstate(before);
  write(os);
  return text + std::to_string(os.rdstate());
}

}  // namespace

TEST(XMLElement, Layouts) {
  const Root root(XMLElement::Create("a"));
  XMLElement* d = XMLElement::Create("d");
  root->AddElement(XMLElement::Create("c"));
  root->AddElement(XMLString::Create("text"));
  root->AddElement(d);
  d->AddAttribute("x", 1.0);
  d->AddAttribute("y", 0.5, false);
  d->AddElement(XMLElement::Create("e"));
  d->AddElement(XMLElement::Create("f"));
  const std::string oneLine = "|<a><c/>text<d x=\"1\" y=\"0.5\"><e/><f/></d></a>";
  for (const int flags : {0, 2, 4, 6}) EXPECT_EQ(Text(*root, flags), oneLine);
  // no line feed from a text node, or the start, to the end of the next element
  EXPECT_EQ(Text(*root, 1), "|<a><c/>text<d x=\"1\" y=\"0.5\"><e/>\n<f/>\n</d>\n</a>");
  EXPECT_EQ(Text(*root, 5), "|\n<a>\n<c/>text<d x=\"1\" y=\"0.5\"><e/>\n<f/>\n</d>\n</a>");
  ExportFormat initial;
  std::string text("|");
  root->ToString(text, initial);
  EXPECT_EQ(text, Text(*root, 5));
  EXPECT_EQ(Text(*root, 7),
            "|\n<a>\n\t<c/>text\t<d \t\tx=\"1\" \t\ty=\"0.5\">\t\t<e/>\n\t\t<f/>\n\t</d>\n</a>");
}

TEST(XMLElement, Nodes) {
  const nqtest::CommaCLocale locale;
  XMLElement* refusing = XMLElement::Create("e");
  refusing->AddElement(static_cast<XMLElement*>(nullptr));
  refusing->AddElement(static_cast<XMLString*>(nullptr));
  refusing->AddAttribute(nullptr);
  refusing->AddElement(refusing);
  XMLDocType* doctype = XMLDocType::Create("r<", "s&.dtd", -1);
  EXPECT_EQ(doctype->AddExtension("<!ENTITY a \"b\">"), 16U);
  EXPECT_EQ(doctype->AddExtension(""), 17U);
  const std::pair<XMLInterface*, std::string> rows[] = {
      {refusing, "|<e/>"},
      {XMLAttribute::Create("a", "b  c\n<"), "|a=\"b &#32;c&#10;&lt;\""},
      {XMLAttribute::Create("a", 1234567.25), "|a=\"1234567.25\""},
      {XMLAttribute::Create("a", 1e20, true), "|a=\"1e+20\""},
      {XMLString::Create("a<b&c>\"\t\n  &lt; "), "|a&lt;b&amp;c>\"\t\n  &amp;lt; "},
      {doctype, "|" + kFirst + "<!DOCTYPE r< SYSTEM \"s&.dtd\"\n[\n<!ENTITY a \"b\">\n\n]>\n"}};
  for (const auto& [node, text] : rows)
    EXPECT_EQ(Text(*std::unique_ptr<XMLInterface>(node), 0), text);
}

TEST(XMLElement, SafeDepth) {
  Root root(XMLElement::Create("e"));
  root->AddElement(XMLString::Create("x"));
  std::string start = "|<e>", end = "</e>";
  for (int level = 1; level < nqtest::kSafeDepth; ++level, start += "<e>", end += "</e>") {
    Root outer(XMLElement::Create("e"));
    outer->AddElement(root.release());
    root = std::move(outer);
  }
  EXPECT_TRUE(Text(*root, 0) == start + "x" + end);
}

TEST(WriteTree, Documents) {
  const Root root = Element("r", "x", "t");
  const std::unique_ptr<XMLDocType> doctype(XMLDocType::Create("r", "r.dtd", 0));
  const std::string type = kFirst + "<!DOCTYPE r SYSTEM \"r.dtd\">\n";
  for (const auto write : {WriteTree, WriteTreeUTF8}) {
    EXPECT_EQ(Document(write, nullptr, root, true), kFirst + "\n<r v=\"x\">\n<b/>t</r>");
    EXPECT_EQ(Document(write, doctype.get(), root, false), type + "<r v=\"x\"><b/>t</r>");
    EXPECT_EQ(Document(write, doctype.get(), nullptr, true), "");
  }
}

// In the C locale no byte above 127 is a character: each name, value and text ends before it.
TEST(WriteTree, Utf8PieceByPiece) {
  const std::unique_ptr<XMLDocType> doctype(XMLDocType::Create("a\x80", "c\x80", 0));
  doctype->AddExtension("d\x80");
  const Root root = Element("r\xC3\xA9r", "<x\xE4y", "t>&\xFF");
  EXPECT_EQ(Document(WriteTreeUTF8, doctype.get(), root, false),
            kFirst + "<!DOCTYPE a SYSTEM \"c\"\n[\nd\n]>\n<r v=\"&lt;x\"><b/>t>&amp;</r>");
  EXPECT_EQ(Document(WriteTree, nullptr, root, false),
            kFirst + "<r\xC3\xA9r v=\"&lt;x\xE4y\"><b/>t>&amp;\xFF</r\xC3\xA9r>");
  std::ostringstream os;
  WriteUTF(os, "b\xFFz");
  EXPECT_EQ(os.str(), "b");
}

TEST(WriteTree, PiecesOfAnyLengthToStreamsThatFail) {
  for (const std::size_t length : {1UL, 8191UL, 8192UL, 9000UL}) {
    const std::string x(length, 'x');
    const Root root = Element(x, x, x);
    const std::string text = kFirst + "<" + x + " v=\"" + x + "\"><b/>" + x + "</" + x + ">";
    for (const auto room : {0UL, 8192UL, text.size() - 2, text.size() - 1, text.size()}) {
      for (const auto before : {std::ios::goodbit, std::ios::eofbit, std::ios::badbit}) {
        const std::string wanted = Outcome(room, before, [&](auto& os) {
          for (const char c : text) os.put(c);
        });
        EXPECT_TRUE(wanted == Outcome(room, before,
                                      [&](auto& os) { WriteTree(os, nullptr, root.get(), false); }))
            << length << ' ' << room << ' ' << before;
      }
    }
  }
}
