#include <nqcommon/output/NQPMMLExporter.h>

#include <cstddef>
#include <iterator>

#include <nqcommon/model/NQCatVar.h>
#include <nqcommon/model/NQContVar.h>
#include <nqcommon/model/NQVarList.h>
#include <nqcommon/output/NQDataModelTags.h>
#include <nqcommon/output/NQPMMLTags.h>
#include <nqcommon/output/internal/new_element.h>
#include <nqcommon/output/internal/pmml_export.h>

namespace NQCommon_940 {

using namespace NQPMMLTags;
using NQXML_940::INQEncoder;
using NQXML_940::INQVariable;
using NQXML_940::NQCatVar;
using NQXML_940::NQContVar;
using NQXML_940::NQVarList;
using NQXML_940::XMLElement;
using NQXML_940::internal::ElementPtr;
using NQXML_940::internal::NewElement;
using NQXML_940::internal::NonEmpty;

namespace {

// ---- Fields of either list ----------------------------------------------------------------------

bool IsCategorical(const INQVariable& variable) {
  return NQXML_940::IsCategorical(variable.GetMeasureLevel());
}

// An application's own class of variables is neither ordinal nor a binary flag.
bool IsOrdinal(const INQVariable& variable) {
  const auto* categorical = dynamic_cast<const NQCatVar*>(&variable);
  return categorical && categorical->IsOrdinal();
}

// AsBinaryFlag gives null for a variable that is none.
const NQCatVar* AsBinaryFlag(const INQVariable& variable) {
  const auto* categorical = dynamic_cast<const NQCatVar*>(&variable);
  return categorical && categorical->IsBinaryFlag() ? categorical : nullptr;
}

bool IsUsed(const INQVariable& variable) {
  return variable.GetVariableRole() != INQVariable::RoleUnused;
}

// Selected gives the indices or, without any, the positions of the variables to be included.
template <class Included>
std::vector<int> Selected(const NQVarList& variables, const std::vector<int>& indices,
                          Included isIncluded) {
  if (!indices.empty()) return indices;
  std::vector<int> positions;
  for (int i = 0; i < variables.GetNumVars(); ++i) {
    const INQVariable* variable = variables.GetVarAt(i);
    if (variable && isIncluded(*variable)) positions.push_back(i);
  }
  return positions;
}

NQStatus FieldError(const NQVarList& variables, int index) {
  const bool isInRange = index >= 0 && index < variables.GetNumVars();
  NQStatus status(
      isInRange ? NQPMMLExporter::kNoVariableAtIndex : NQPMMLExporter::kFieldIndexOutOfRange,
      false);
  status.SetDiscreteDatum(0, index);
  return status;
}

// Adds the element that `make` makes of each field, up to the first error; then, in any case, the
// attribute of their number, where it has a name.
template <class Make>
NQStatus AddFields(XMLElement& parent, const NQVarList& variables, const std::vector<int>& indices,
                   const std::string& countName, Make make) {
  NQStatus status;
  int count = 0;
  for (const int i : indices) {
    const INQVariable* variable = variables.GetVarAt(i);
    if (!variable) {
      status = FieldError(variables, i);
      break;
    }
    parent.AddElement(make(*variable).release());
    ++count;
  }
  if (!countName.empty()) NQXML_940::internal::AddAttribute(parent, countName, count);
  return status;
}

// ---- Data dictionary ----------------------------------------------------------------------------

const std::string& OpType(const INQVariable& variable) {
  if (!IsCategorical(variable)) return XML_VAL_CONTINUOUS;
  return IsOrdinal(variable) ? XML_VAL_ORDINAL : XML_VAL_CATEGORICAL;
}

// What a storage is called in a data dictionary and in a data model.
struct StorageWords {
  const std::string& fDataType;
  const std::string& fStorage;
};

const StorageWords& WordsOf(INQVariable::VariableStorage storage) {
  static const StorageWords words[] = {
      {XML_VAL_DOUBLE, NQDataModelTags::XML_VAL_REAL},  // undefined
      {XML_VAL_INTEGER, NQDataModelTags::XML_VAL_INTEGER},
      {XML_VAL_DOUBLE, NQDataModelTags::XML_VAL_REAL},
      {XML_VAL_STRING, NQDataModelTags::XML_VAL_STRING},
      {XML_VAL_DATEDAYSINCE1970, NQDataModelTags::XML_VAL_DATE},
      {XML_VAL_TIMESECONDS, NQDataModelTags::XML_VAL_TIME},
      {XML_VAL_DATETIMESECONDSINCE1970, NQDataModelTags::XML_VAL_TIMESTAMP}};
  const auto code = static_cast<std::size_t>(storage);  // a negative one lies past every end
  return words[code < std::size(words) ? code : 0];
}

template <class Value>
void AddExtension(XMLElement& field, const std::string& name, const Value& value) {
  field.AddElement(NewElement(XML_ELE_EXTENSION, XML_ATT_EXTENDER, XML_VAL_TARNCOM, XML_ATT_NAME,
                              name, XML_ATT_VALUE, value)
                       .release());
}

// A true category that the encoder has not met yet has no value to be told.
void AddTrueValue(XMLElement& field, const NQCatVar& flag, const INQEncoder& encoder) {
  const int code = flag.GetTrueIndex();
  if (code < 0 || code >= encoder.GetNumberOfCategories()) return;
  if (flag.GetMeasureLevel() == INQVariable::LevelStringCategorical) {
    AddExtension(field, XML_VAL_FLAGTYPE, encoder.Decode(code));
  } else {
    AddExtension(field, XML_VAL_FLAGTYPE, encoder.DecodeNum(code));
  }
}

template <class Value>
void AddValue(XMLElement& field, const Value& value, const std::string& label,
              const std::string& property) {
  field.AddElement(NewElement(XML_ELE_VALUE, XML_ATT_VALUE, value, XML_ATT_DISPLAYVALUE,
                              NonEmpty{label}, XML_ATT_PROPERTY, property)
                       .release());
}

void AddCategories(XMLElement& field, const INQEncoder& encoder) {
  std::vector<std::string> texts;
  bool hasBlankEnd = false;
  for (int code = 0; code < encoder.GetNumberOfCategories(); ++code) {
    texts.push_back(encoder.Decode(code));
    hasBlankEnd = hasBlankEnd || texts.back().ends_with(' ');
  }
  if (hasBlankEnd) AddExtension(field, XML_VAL_NOSPACETRIM, XML_VAL_NOSPACE_TRUE);
  const std::vector<std::string>& labels = encoder.GetValueLabels();
  const bool isLabelled = labels.size() == texts.size();
  for (std::size_t i = 0; i < texts.size(); ++i)
    AddValue(field, texts[i], isLabelled ? labels[i] : "", XML_VAL_VALID);
}

void AddMissingBound(XMLElement& field, const std::string& name, double bound) {
  if (!NQMV::IsMissing(bound)) field.AddElement(internal::NewExtension(name, bound).release());
}

// An encoder declares texts missing, or numbers; the one list of labels is in this order.
void AddMissing(XMLElement& field, const INQEncoder& encoder) {
  const std::vector<std::string>& labels = encoder.GetMissValueLabels();
  std::size_t i = 0;
  const auto addEach = [&](const auto& values) {
    for (const auto& value : values) {
      AddValue(field, value, i < labels.size() ? labels[i] : "", XML_VAL_MISSING);
      ++i;
    }
  };
  addEach(encoder.GetDiscreteMissValuesStr());
  addEach(encoder.GetDiscreteMissValues());
  double lower, upper;
  if (encoder.GetMissingInterval(lower, upper)) {
    AddMissingBound(field, XML_VAL_NAME_MSLO, lower);
    AddMissingBound(field, XML_VAL_NAME_MSUP, upper);
  }
}

ElementPtr NewDataField(const INQVariable& variable) {
  ElementPtr field =
      NewElement(XML_ELE_DATAFIELD, XML_ATT_NAME, variable.GetVariableName(), XML_ATT_DISPLAYNAME,
                 NonEmpty{variable.GetVariableLabel()}, XML_ATT_OPTYPE, OpType(variable),
                 XML_ATT_DATATYPE, WordsOf(variable.GetVariableStorage()).fDataType);
  const INQEncoder* encoder = variable.GetEncoder();
  if (!encoder) return field;
  if (const NQCatVar* flag = AsBinaryFlag(variable)) AddTrueValue(*field, *flag, *encoder);
  if (variable.GetMeasureLevel() == INQVariable::LevelStringCategorical) {
    AddCategories(*field, *encoder);
    AddMissing(*field, *encoder);
  }
  return field;
}

// ---- Mining schema ------------------------------------------------------------------------------

// What a role is called in a mining schema and in a data model.
struct RoleWords {
  const char* fUsageType;
  const std::string& fRole;
};

const RoleWords& WordsOf(INQVariable::VariableRole role) {
  static const RoleWords words[] = {{"active", NQDataModelTags::XML_VAL_INPUT},  // undefined
                                    {"target", NQDataModelTags::XML_VAL_TARGET},
                                    {"target", NQDataModelTags::XML_VAL_TARGET},
                                    {"frequencyWeight", NQDataModelTags::XML_VAL_FREQWEIGHT},
                                    {"active", NQDataModelTags::XML_VAL_INPUT},
                                    {"supplementary", NQDataModelTags::XML_VAL_INPUT},
                                    {"supplementary", NQDataModelTags::XML_VAL_NONE},
                                    {"supplementary", NQDataModelTags::XML_VAL_RECORDID}};
  const auto code = static_cast<std::size_t>(role);  // a negative one lies past every end
  return words[code < std::size(words) ? code : 0];
}

ElementPtr NewMiningField(const INQVariable& variable) {
  ElementPtr field =
      NewElement(XML_ELE_MININGFIELD, XML_ATT_MININGFIELDNAME, variable.GetVariableName(),
                 XML_ATT_MININGFIELDUSE, WordsOf(variable.GetVariableRole()).fUsageType);
  const auto* continuous = dynamic_cast<const NQContVar*>(&variable);
  if (continuous && continuous->GetOutlierHandleMethod() != NQContVar::OutlierAsIs) {
    const bool isExtreme = continuous->GetOutlierHandleMethod() == NQContVar::OutlierAsExtreme;
    NQXML_940::internal::AddAttributes(
        *field, XML_ATT_OUTLIERS, isExtreme ? XML_VAL_ASEXTREMEVALUES : XML_VAL_ASMISSINGVALUES,
        XML_ATT_LOWVALUE, continuous->GetMin(), XML_ATT_HIGHVALUE, continuous->GetMax());
  }
  if (std::string replacement; variable.GetMissingValueReplacement(replacement))
    field->AddAttribute(XML_ATT_MISSINGVALUEREPLACE, replacement);
  return field;
}

// ---- Data model ---------------------------------------------------------------------------------

const std::string& Measure(const INQVariable& variable) {
  if (!IsCategorical(variable)) return NQDataModelTags::XML_VAL_CONTINUOUS;
  if (AsBinaryFlag(variable)) return NQDataModelTags::XML_VAL_FLAG;
  return IsOrdinal(variable) ? NQDataModelTags::XML_VAL_ORDINAL : NQDataModelTags::XML_VAL_NOMINAL;
}

void AddClone(XMLElement& parent, const XMLElement* format) {
  if (format) parent.AddElement(format->Clone());
}

ElementPtr NewField(const INQVariable& variable) {
  ElementPtr field = NewElement(
      NQDataModelTags::XML_ELE_FIELD, NQDataModelTags::XML_ATT_NAME, variable.GetVariableName(),
      NQDataModelTags::XML_ATT_DISPLAYLABEL, NonEmpty{variable.GetVariableLabel()},
      NQDataModelTags::XML_ATT_MEASURE, Measure(variable), NQDataModelTags::XML_ATT_STORAGE,
      WordsOf(variable.GetVariableStorage()).fStorage, NQDataModelTags::XML_ATT_ROLE,
      WordsOf(variable.GetVariableRole()).fRole);
  AddClone(*field, variable.GetFieldFormatElement());
  return field;
}

}  // namespace

NQStatus NQPMMLExporter::ExportDataDictionary(const NQVarList& variables,
                                              const std::vector<int>& indices,
                                              XMLElement*& out) const {
  NQStatus status;
  const NQStatus exported = internal::Export(out, [&] {
    ElementPtr dictionary = NewElement(XML_ELE_DATADICTIONARY);
    status = AddFields(*dictionary, variables, Selected(variables, indices, IsUsed),
                       XML_ATT_NUMBEROFFIELDS, NewDataField);
    return dictionary;
  });
  return exported.IsOK() ? status : exported;
}

NQStatus NQPMMLExporter::ExportMiningSchema(const NQVarList& variables,
                                            const std::vector<int>& indices,
                                            XMLElement*& out) const {
  NQStatus status;
  const NQStatus exported = internal::Export(out, [&] {
    ElementPtr schema = NewElement(XML_ELE_MININGSCHEMA);
    status =
        AddFields(*schema, variables, Selected(variables, indices, IsUsed), "", NewMiningField);
    return schema;
  });
  return exported.IsOK() ? status : exported;
}

NQStatus NQPMMLExporter::ExportDataModel(const NQVarList& variables,
                                         const std::vector<int>& indices, XMLElement*& out) const {
  const auto isAny = [](const INQVariable&) { return true; };
  NQStatus status;
  const NQStatus exported = internal::Export(out, [&] {
    ElementPtr model = NewElement(NQDataModelTags::XML_ELE_DATAMODEL);
    AddClone(*model, variables.GetFieldFormatsElement());
    ElementPtr fields = NewElement(NQDataModelTags::XML_ELE_FIELDS);
    status = AddFields(*fields, variables, Selected(variables, indices, isAny),
                       NQDataModelTags::XML_ATT_COUNT, NewField);
    model->AddElement(fields.release());
    return model;
  });
  return exported.IsOK() ? status : exported;
}

}  // namespace NQCommon_940
