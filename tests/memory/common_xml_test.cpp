// Values, records, warnings and loading; trees, JSON and saved objects.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>

#include <nqcommon/common/MemoryRecordIterator.h>
#include <nqcommon/common/NQDynamicLoadedLibrary.h>
#include <nqcommon/common/NQWarnings.h>
#include <nqcommon/common/ValueRecord.h>
#include <nqcommon/common/display.h>
#include <nqcommon/common/text_conversion.h>
#include <nqcommon/xml/JsonObject.h>
#include <nqcommon/xml/XMLDocType.h>
#include <nqcommon/xml/XMLObj.h>
#include <nqcommon/xml/XMLUtil.h>
#include <nqcommon/xml/number_format.h>
#include <nqcommon/xml/save_format.h>
#include <nqcommon/xml/utf8_conversion.h>
#include <nqcommon/xml/write_tree.h>

#include "support/failing_new.h"
#include "support/memory_file.h"

namespace {

using namespace NQCommon_940;
using namespace NQXML_940;
using nqtest::Injection;
using nqtest::MemoryCase;
using nqtest::RunMemoryCases;
using nqtest::Verdict;

const std::string kLong(40, 'l');  // longer than a string holds in itself

std::string Text(const std::string& text) { return text; }
std::string Text(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += text + ",";
  return all;
}
std::string Text(const Value& value) { return std::to_string(value.GetType()) + value.GetString(); }
std::string Text(const ValueRecord& record) {
  std::string all;
  for (const std::string& name : record.Names(true))
    all += name + "=" + std::to_string(record.IndexOf(name)) + Text(record.Get(name)) + ";";
  return all + std::to_string(record.GetRecord().size());
}
std::string Text(const JsonObject& object) { return object.GetJsonString(true); }
template <class Node>
std::string Text(const std::unique_ptr<Node>& node) {
  ExportFormat format;
  std::string text;
  if (node) node->ToString(text, format);
  return text;
}
std::string Text(const Record& record) {
  return std::to_string(record.Size()) + ":" + std::to_string(record.Size() > 1 ? record[1] : 0);
}
std::string Text(const RawRecord& record) {
  return std::to_string(record.Size()) + ":" + (record.Size() > 1 ? record[1].fText : "");
}
std::string Text(const NQWarnings& warnings) {
  NQWarnings copy = warnings;
  std::string text;
  for (const bool current : {true, false})
    for (const NQStatus& status : copy.GetWarnings(current))
      text += std::to_string(status.GetErrorCode()) + (current ? "c" : "a");
  for (const long code : {1L, 2L})
    for (const auto& parameter : copy.GetParameters(NQStatus(code, true)))
      text += "|" + std::to_string(parameter.ToInteger()) + parameter.ToString();
  return text;
}

// The object after the call is as it was before where std::bad_alloc passed, and as it ought to be
// otherwise.
template <class Make, class Call>
MemoryCase Throws(const char* operation, Make make, Call call) {
  const auto run = [=](Injection& inject) {
    auto object = make(), wanted = make();
    const std::string before = Text(object);
    call(wanted);
    inject([&] { call(object); });
    return Verdict{Text(object) == (inject.Threw() ? before : Text(wanted)), Text(object)};
  };
  return {operation, run, true};
}

// The object after the call is as it ought to be, or, where memory ended, as `failure` says.
template <class Make, class Call>
MemoryCase Absorbs(const char* operation, const std::string& failure, Make make, Call call) {
  const auto run = [=](Injection& inject) {
    auto object = make(), wanted = make();
    call(wanted);
    inject([&] { call(object); });
    const std::string got = Text(object);
    return Verdict{got == Text(wanted) || (inject.HasFailed() && got == failure), got};
  };
  return {operation, run};
}

// What a stream gets is the text or, where memory ended, its beginning: then std::bad_alloc passes,
// or the state of the stream tells.
MemoryCase Writes(const char* operation, const std::function<void(std::ostream&)>& write) {
  const auto run = [=](Injection& inject) {
    std::ostringstream os, wanted;
    write(wanted);
    inject([&] { write(os); });
    const bool isCut = (inject.Threw() || os.fail()) && wanted.str().starts_with(os.str());
    return Verdict{isCut || os.str() == wanted.str(), os.str()};
  };
  return {operation, run, true};
}

Value Nested() {
  Value value;
  value[1]["key " + kLong] = kLong;
  return value;
}
Value Null() { return {}; }
std::string NoText() { return {}; }

TEST(Memory, Values) {
  const Value nested = Nested();
  const auto names = [] { return std::vector<std::string>(); };
  RunMemoryCases(
      "values",
      {Throws("Value(const char*)", Null, [](Value& v) { v = Value(kLong.c_str()); }),
       Throws("Value::operator=(Value)", Null, [&](Value& v) { v = nested; }),
       Throws("Value::operator=(a part)", Nested, [](Value& v) { v[0] = v; }),
       Throws("Value::operator=(string)", Nested, [](Value& v) { v = kLong; }),
       Throws("Value::Clone", Null,
              [&](Value& v) { v = std::move(*std::unique_ptr<Value>(nested.Clone())); }),
       Throws("Value::SetValue", Null, [](Value& v) { v.SetValue(kLong); }),
       Throws("Value::operator string&", Null,
              [](Value& v) { static_cast<std::string&>(v).clear(); }),
       Throws("Value::operator string", NoText,
              [](std::string& s) { s = static_cast<std::string>(Value(kLong)); }),
       Throws("Value::operator[](int)", Null, [](Value& v) { v[2]; }),
       Throws("Value::operator[](int), growing", Nested, [](Value& v) { v[500]; }),
       Throws("Value::Resize", Nested, [](Value& v) { v.Resize(1000); }),
       Throws("Value::operator[](key)", Nested, [](Value& v) { v[kLong]; }),
       Throws("Value::operator[](literal)", Null, [](Value& v) { v["literal of 24 characters"]; }),
       Throws("Value::GetString", NoText, [&](std::string& s) { s = nested.GetString(); }),
       Throws("Value::operator<", NoText,
              [&](std::string& s) { s = nested < Value(1) ? "<" : ""; }),
       Throws("Value::Names", names,
              [](std::vector<std::string>& n) {
                Value map;
                map[kLong] = map["b"] = 1;
                n = map.Names();
              }),
       Throws("Str2T, T2Str", NoText, [](std::string& s) {
         double x = 0;
         Str2T(kLong + "1", x);
         s = T2Str(x);
       })});
}

TEST(Memory, Records) {
  const auto record = [] {
    ValueRecord r;
    r.Add(kLong, 1);
    r.Add("b", kLong);
    return r;
  };
  const auto shared = [=] {
    const ValueRecord r = record();
    return ValueRecord(r);
  };
  ValueRecord other = record();
  const std::vector<std::string> names = {"x", kLong + "y", "b"};
  double values[] = {1, 2};
  const auto iterator = [&](Injection& inject) {
    bool isRight = false;
    inject([&] {
      MemoryRecordIterator rows(2, 1, values, values, nullptr);
      const Record* row = rows.Next();
      isRight = row ? (*row)[1] == 1 : !rows.HasMore();
    });
    return Verdict{isRight};
  };
  const auto raw = [] {
    RawRecord r(2);
    r[1].fText = kLong;
    return r;
  };
  const auto none = [] { return Record(0); };
  RunMemoryCases(
      "records",
      {Throws(
           "ValueRecord(names)", [] { return ValueRecord(); },
           [&](ValueRecord& r) { r = ValueRecord(names); }),
       Throws("ValueRecord::operator=", record, [&](ValueRecord& r) { r = ValueRecord(names); }),
       Throws("ValueRecord::Add", record, [](ValueRecord& r) { r.Add("c" + kLong, kLong); }),
       Throws("ValueRecord::Add, present", record, [](ValueRecord& r) { r.Add("b", kLong + "x"); }),
       Throws("ValueRecord::Add, shared", shared,
              [](ValueRecord& r) { r.Add("c" + kLong, kLong); }),
       Throws("ValueRecord::Set", shared, [](ValueRecord& r) { r.Set("b", kLong + "x", true); }),
       Throws("ValueRecord::Remove", shared, [](ValueRecord& r) { r.Remove(kLong); }),
       Throws("ValueRecord::SetValue", shared, [](ValueRecord& r) { r.SetValue(0, kLong); }),
       Throws("ValueRecord::Get, GetName", NoText,
              [&](std::string& s) { s = other.GetName(0) + other.Get("b").GetStringRef(); }),
       Throws(
           "ValueRecord::Names", [] { return std::vector<std::string>(); },
           [&](std::vector<std::string>& n) { n = other.Names(true); }),
       Absorbs("Record(int)", "0:0.000000", none, [](Record& r) { r = Record(5); }),
       Absorbs("Record::operator=", "0:0.000000", none,
               [](Record& r) {
                 const Record three(3);
                 r = three;
               }),
       Absorbs(
           "Record::Resize", "2:0.000000", [] { return Record(2); },
           [](Record& r) { r.Resize(6), r.Size() == 6 ? r[1] = 7 : 0.0; }),
       Absorbs("RawRecord, copy", "0:", raw, [](RawRecord& r) { r = RawRecord(r); }),
       {"MemoryRecordIterator", iterator}});
}

TEST(Memory, WarningsAndLoading) {
  const NQStatus one(1, true), two(2, true);
  const auto warnings = [=] {
    NQWarnings w;
    w.AddWarning(one, NQWarnings::ToBoth);
    w.AddParameter(one, kLong);
    return w;
  };
  const std::string before = Text(warnings());
  const auto loads = [](Injection& inject) {
    NQDynamicLoadedLibrary absent("/no/such/" + kLong, 1);
    int result = 0;
    void* address = &result;
    inject([&] { result = absent.LoadLibraryNow(), address = absent.GetSymbolAddress("x"); });
    const bool hasText = absent.GetErrorText().find(kLong) != std::string::npos;
    return Verdict{result == -1 && !address &&
                   (hasText || (inject.HasFailed() && absent.GetErrorText().empty()))};
  };
  RunMemoryCases("warnings and loading",
                 {Absorbs("NQWarnings::AddWarning", before, warnings,
                          [=](NQWarnings& w) { w.AddWarning(two, NQWarnings::ToCurrent); }),
                  Absorbs("NQWarnings::AddParameter", before, warnings,
                          [=](NQWarnings& w) { w.AddParameter(two, 7); }),
                  Absorbs("NQWarnings::GetParameters", before, warnings,
                          [=](NQWarnings& w) {
                            const std::size_t n = w.GetParameters(one).size();
                            if (n > 1) w.ClearWarnings();
                          }),
                  {"NQWarnings::AddWarnings",
                   [=](Injection& inject) {
                     NQWarnings w = warnings(), other;
                     other.AddWarnings({two});
                     other.AddParameter(two, kLong);
                     inject([&] { w.AddWarnings(std::move(other)); });
                     const std::string got = Text(w);
                     return Verdict{
                         got == "1c2c1a|0" + kLong + "|0" + kLong ||
                             (inject.HasFailed() && (got == before || got == "1c2c1a|0" + kLong ||
                                                     got == before + "|0" + kLong)),
                         got};
                   }},
                  {"NQDynamicLoadedLibrary", loads},
                  Throws("NQDecorateDynamicPathName", NoText, [](std::string& s) {
                    s = NQDynamicLoadedLibrary::NQDecorateDynamicPathName("a/" + kLong);
                  })});
}

using Root = std::unique_ptr<XMLElement>;

Root Tree() {
  Root root(XMLElement::Create("r" + kLong));
  root->AddAttribute(XMLAttribute::Create("a", " <" + kLong));
  root->AddElement(XMLString::Create("<" + kLong));
  root->AddElement(XMLElement::Create(kLong));
  return root;
}

TEST(Memory, Xml) {
  const Root tree = Tree();
  using DocType = std::unique_ptr<XMLDocType>;
  const auto doctype = [] {
    DocType d(XMLDocType::Create(kLong, kLong + ".dtd", 0));
    d->AddExtension(kLong);
    return d;
  };
  const DocType extended = doctype();
  RunMemoryCases(
      "XML",
      {Throws("XMLElement::Create, AddElement", Tree,
              [](Root& r) { r->AddElement(XMLElement::Create("e" + kLong)); }),
       Throws("XMLElement::AddElement(XMLString*)", Tree,
              [](Root& r) { r->AddElement(XMLString::Create("&" + kLong)); }),
       Throws("XMLElement::AddAttribute(XMLAttribute*)", Tree,
              [](Root& r) { r->AddAttribute(XMLAttribute::Create("b" + kLong, kLong)); }),
       Throws("XMLElement::AddAttribute", Tree,
              [](Root& r) { r->AddAttribute("b" + kLong, kLong + kLong); }),
       Throws("XMLElement::AddAttribute(double)", Tree,
              [](Root& r) { r->AddAttribute(kLong + kLong, 0.1); }),
       Throws(
           "XMLElement::Clone", [] { return Root(); }, [&](Root& r) { r.reset(tree->Clone()); }),
       Throws("XMLElement::ToString", NoText, [&](std::string& s) { s = Text(tree); }),
       Throws(
           "XMLDocType::Clone", [] { return DocType(); },
           [&](DocType& d) { d.reset(extended->Clone()); }),
       Throws("XMLDocType::AddExtension", doctype, [](DocType& d) { d->AddExtension(kLong); }),
       Writes("WriteTree",
              [&](std::ostream& os) { WriteTree(os, extended.get(), tree.get(), true); }),
       Writes("WriteTreeUTF8",
              [&](std::ostream& os) { WriteTreeUTF8(os, extended.get(), tree.get(), true); }),
       Throws("MbToUTF8", NoText, [](std::string& s) { s = MbToUTF8(kLong); }),
       Throws("XMLUtil::Escape", NoText, [](std::string& s) { s = XMLUtil::Escape(kLong + "<"); }),
       Throws(
           "XMLUtil::ReplaceAll", [] { return "a" + kLong; },
           [](std::string& s) { XMLUtil::ReplaceAll(s, "a", kLong + kLong); }),
       Throws(
           "XMLUtil::ReplaceString", [] { return "a" + kLong; },
           [](std::string& s) { XMLUtil::ReplaceString(s, "a", kLong + kLong); }),
       Throws("Format", NoText, [](std::string& s) { s = Format(0.5, true, "%40g"); })});
}

TEST(Memory, JsonAndSavedObjects) {
  const auto object = [] {
    JsonObject o("a" + kLong, JsonObject("k", kLong));
    o.AddPair("b", true);
    return o;
  };
  const JsonObject part = object();
  const nqtest::MemoryFile line("<String value=\"" + kLong + "\"/>");
  RunMemoryCases(
      "JSON and saved objects",
      {Throws("JsonObject::AddPair", object, [&](JsonObject& o) { o.AddPair("c" + kLong, part); }),
       Throws("JsonObject::AddPair, present", object,
              [](JsonObject& o) { o.AddPair("b", kLong.c_str()); }),
       Throws("JsonObject(items), AddToList", object,
              [&](JsonObject& o) {
                JsonObject list(std::vector<JsonObject>{part, kLong});
                list.AddToList(part);
                o = list;
              }),
       Throws("JsonObject::CreateStringText", object,
              [](JsonObject& o) { o = JsonObject::CreateStringText(kLong, kLong); }),
       Throws("JsonObject::GetJsonString", NoText, [&](std::string& s) { s = Text(part); }),
       Writes("XMLObj, StartRoot",
              [](std::ostream& os) {
                const XMLObj writer(kLong, 1);
                StartRoot(os, kLong);
                writer.StartObj(os);
                writer.WriteSubElement(os, kLong);
                writer.EndObj(os);
              }),
       Throws("ParseValue", NoText, [&](std::string& s) {
         std::ifstream is = line.Open();
         ParseValue(is, s);
       })});
}

}  // namespace
