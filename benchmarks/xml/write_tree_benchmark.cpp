// Writing a tree of elements with three attributes each, one of them a double, to memory: WriteTree
// to a string stream beside pugixml's save to a string and libxml2's xmlDocDumpMemory, each from
// its own tree ("write"). We escape a value when an attribute is created and they when they write,
// so building the tree, writing it once and deleting it is measured too ("document"); the number is
// text before in all of them. And numbers as text: ReplaceSep beside the bare std::to_chars of 15
// digits, for numbers like those of a model and for all magnitudes. The order is the number of
// elements, and of numbers.
#include <nqcommon/xml/number_format.h>
#include <nqcommon/xml/write_tree.h>

#include <benchmark/benchmark.h>
#include <libxml/tree.h>

#include <charconv>
#include <cmath>
#include <memory>
#include <pugixml.hpp>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "support/ratio_reporter.h"

namespace {

using NQXML_940::XMLElement;

// What the three documents hold: a parameter estimate like those of a model.
struct Row {
  std::string name;
  std::string label;
  std::string value;
};

std::vector<Row> Rows(int n) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> normal(0, 100);
  std::vector<Row> rows;
  for (int i = 0; i < n; ++i) {
    const std::string number = std::to_string(i);
    rows.push_back({"p" + number, i % 8 == 0 ? "group <" + number + "> & rest" : "group " + number,
                    NQXML_940::ReplaceSep(normal(random))});
  }
  return rows;
}

// Each peer builds its tree once, and writes it anew for each call of Write: the number of bytes.
class Ours {
 public:
  explicit Ours(const std::vector<Row>& rows) : fRoot(XMLElement::Create("Parameters")) {
    for (const Row& row : rows) {
      XMLElement* element = XMLElement::Create("Parameter");
      element->AddAttribute("name", row.name);
      element->AddAttribute("label", row.label);
      element->AddAttribute("value", row.value);
      fRoot->AddElement(element);
    }
  }

  std::size_t Write() const {
    std::ostringstream os;
    WriteTree(os, nullptr, fRoot.get(), true);
    return static_cast<std::size_t>(os.tellp());
  }

 private:
  std::unique_ptr<XMLElement> fRoot;
};

class Pugixml {
 public:
  explicit Pugixml(const std::vector<Row>& rows) {
    pugi::xml_node root = fDocument.append_child("Parameters");
    for (const Row& row : rows) {
      pugi::xml_node element = root.append_child("Parameter");
      element.append_attribute("name") = row.name.c_str();
      element.append_attribute("label") = row.label.c_str();
      element.append_attribute("value") = row.value.c_str();
    }
  }

  std::size_t Write() const {
    struct StringWriter : pugi::xml_writer {
      void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
      }
      std::string text;
    } writer;
    fDocument.save(writer, "", pugi::format_default, pugi::encoding_utf8);  // lines, no indentation
    return writer.text.size();
  }

 private:
  pugi::xml_document fDocument;
};

class Libxml2 {
 public:
  explicit Libxml2(const std::vector<Row>& rows) : fDocument(xmlNewDoc(BAD_CAST "1.0")) {
    xmlNode* root = xmlNewNode(nullptr, BAD_CAST "Parameters");
    xmlDocSetRootElement(fDocument.get(), root);
    for (const Row& row : rows) {
      xmlNode* element = xmlNewChild(root, nullptr, BAD_CAST "Parameter", nullptr);
      xmlNewProp(element, BAD_CAST "name", BAD_CAST row.name.c_str());
      xmlNewProp(element, BAD_CAST "label", BAD_CAST row.label.c_str());
      xmlNewProp(element, BAD_CAST "value", BAD_CAST row.value.c_str());
    }
  }

  std::size_t Write() const {
    xmlChar* text = nullptr;
    int size = 0;
    xmlDocDumpMemoryEnc(fDocument.get(), &text, &size, "UTF-8");
    xmlFree(text);
    return static_cast<std::size_t>(size);
  }

 private:
  struct Free {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
  };
  std::unique_ptr<xmlDoc, Free> fDocument;
};

template <class Peer>
void WriteTrees(benchmark::State& state, int n) {
  const Peer peer(Rows(n));
  for (auto _ : state) benchmark::DoNotOptimize(peer.Write());
  state.counters["bytes"] = static_cast<double>(peer.Write());
}

template <class Peer>
void Documents(benchmark::State& state, int n) {
  const std::vector<Row> rows = Rows(n);
  for (auto _ : state) benchmark::DoNotOptimize(Peer(rows).Write());
}

template <class ToText>
void Numbers(benchmark::State& state, int n, bool anyMagnitude, ToText toText) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> normal(0, 100);
  std::uniform_real_distribution<double> exponent(-300, 300);
  std::vector<double> values;
  for (int i = 0; i < n; ++i) {
    values.push_back(normal(random) * (anyMagnitude ? std::pow(10, exponent(random)) : 1));
  }
  for (auto _ : state) {
    for (const double value : values) toText(value);
  }
}

void ToChars(double value) {
  char text[32];
  benchmark::DoNotOptimize(
      std::to_chars(text, text + sizeof text, value, std::chars_format::general, 15));
  benchmark::ClobberMemory();
}

void ReplaceSep(double value) { benchmark::DoNotOptimize(NQXML_940::ReplaceSep(value)); }

template <class Run>
void Register(const std::string& name, int n, Run run) {
  benchmark::RegisterBenchmark((name + "/" + std::to_string(n)).c_str(), run)
      ->Unit(benchmark::kMicrosecond)
      ->MinTime(0.1)
      ->Repetitions(5);
}

template <class Peer>
void RegisterPeer(const std::string& name, int n) {
  Register("write/" + name, n, [n](auto& state) { WriteTrees<Peer>(state, n); });
  Register("document/" + name, n, [n](auto& state) { Documents<Peer>(state, n); });
}

}  // namespace

int main(int argc, char** argv) {
  for (const int n : {1000, 200000}) {
    RegisterPeer<Ours>("ours", n);
    RegisterPeer<Pugixml>("pugixml", n);
    RegisterPeer<Libxml2>("libxml2", n);
  }
  for (const bool any : {false, true}) {
    const std::string work = any ? "any number" : "number";
    Register(work + "/ours", 1000, [any](auto& s) { Numbers(s, 1000, any, ReplaceSep); });
    Register(work + "/to_chars", 1000, [any](auto& s) { Numbers(s, 1000, any, ToChars); });
  }
  return nqbench::RunWithRatios(argc, argv);
}
