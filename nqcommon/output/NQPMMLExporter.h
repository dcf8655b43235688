#pragma once

#include <string>
#include <vector>

#include <nqcommon/common/NQStatus.h>
#include <nqcommon/export.h>
#include <nqcommon/xml/XMLElement.h>

namespace NQXML_940 {
class NQApplicInfo4XML;
class NQUniStats;
class NQVarList;
}  // namespace NQXML_940

namespace NQCommon_940 {

class NQQueryCancel;
class NQWarnings;

// Builds the parts of a PMML 4.3 document that all models share. The caller puts them below the
// element of ExportPMMLElement, adds the model, and writes the document with WriteTree:
//
//   PMML, Header, DataDictionary, <the model>: MiningSchema, ModelStats: UnivariateStats
//
// Result      a new element, which the caller owns; in `out`, whose old value is not read.
// Attributes  in the order told. A name, label, description, margin or statistic in [brackets] is
//             left out when it is empty or system-missing. Numbers are as ReplaceSep writes them.
// Failure     an error status. `out` is null, but for the three operations on fields, which stop at
//             the field that failed and hand out what they have, complete with its count. Where
//             memory ends the status is kNoMemory and the element null, also of operations without
//             a status; AddDoublesList alone throws std::bad_alloc, the element as it was.
// Threads     one object, one thread at a time; const operations may run together.
//
//   Root, header, statistics, extensions         NQPMMLExporter.cpp
//   Data dictionary, mining schema, data model   NQPMMLExporter_fields.cpp
class NQ_API NQPMMLExporter {
 public:
  enum ErrorCode : long {
    kFieldIndexOutOfRange = 101,  // discrete datum 0 is the index
    kNoVariableAtIndex = 102,     // the same, of an empty slot of the list
    kNoMemory = 103,
    kStatisticsNotValid = 117
  };

  // The query stays the caller's, may be null, and is not asked: no export takes long.
  explicit NQPMMLExporter(NQQueryCancel* cancel) : fCancel(cancel) {}

  // ---- Root and header (NQPMMLExporter.cpp) -----------------------------------------------------

  // PMML version xmlns xmlns:xsi xsi:schemaLocation. Both write version 4.3.
  NQXML_940::XMLElement* ExportPMMLElement() const;
  NQXML_940::XMLElement* ExportPMMLElement40() const;

  // Header copyright [description]: Application [name] [version], unless both are empty; Timestamp,
  // if asked for, with the local time as ctime writes it, "Sat Nov 21 08:45:00 2026". The copyright
  // is that of `info`, or this library's where that is empty. `info` may be null.
  NQStatus ExportHeader(const NQXML_940::NQApplicInfo4XML* info, const std::string& description,
                        bool withTimestamp, NQXML_940::XMLElement*& out) const;

  // ---- Fields (NQPMMLExporter_fields.cpp) -------------------------------------------------------

  // DataDictionary numberOfFields: a DataField for each index, in the order given. Without indices
  // for each variable but those of role RoleUnused; empty slots are passed over then.
  //
  // DataField name [displayName] optype dataType
  //   optype      "continuous"; of categorical variables "ordinal" or "categorical"
  //   dataType    by storage: "integer" "string" "dateDaysSince[1970]" "timeSeconds"
  //               "dateTimeSecondsSince[1970]", else "double"
  //   Extension   extender name value: flagTypeTrueValue, the true category of a binary flag, if
  //               the encoder has it
  // and of level LevelStringCategorical only
  //   Extension   extender name value: noSpaceTrim, if a category has blanks at its end
  //   Value       value [displayValue] property="valid" for each category; the labels when there is
  //               one for each category
  //   Value       value [displayValue] property="missing" for each user-missing value, texts first
  //   Extension   as of ExportExtension: invalidRangeLower, invalidRangeUpper, the bounds of the
  //               missing interval that are not system-missing
  //
  // Failure  kFieldIndexOutOfRange, kNoVariableAtIndex.
  NQStatus ExportDataDictionary(const NQXML_940::NQVarList& variables,
                                const std::vector<int>& indices, NQXML_940::XMLElement*& out) const;

  // MiningSchema: a MiningField for each index, in the order given, or without indices for each
  // variable but those of role RoleUnused.
  //
  // MiningField name usageType [outliers lowValue highValue] [missingValueReplacement]
  //   usageType  "target" of targets and responses, "frequencyWeight", "active" of inputs and
  //              undefined roles, else "supplementary": possible inputs, record IDs, unused ones
  //   outliers   "asMissingValues" or "asExtremeValues" outside the minimum and maximum, of a
  //              continuous variable that asks for it
  //   missingValueReplacement  the variable's, when it has one
  //
  // Failure  kFieldIndexOutOfRange, kNoVariableAtIndex.
  NQStatus ExportMiningSchema(const NQXML_940::NQVarList& variables,
                              const std::vector<int>& indices, NQXML_940::XMLElement*& out) const;

  // DataModel: a clone of the list's formats element, if any; Fields count: a Field for each index,
  // in the order given, or without indices for each variable.
  //
  // Field name [displayLabel] measure storage role: a clone of the variable's format element
  //   measure  "continuous"; of categorical variables "flag" (binary), "ordinal" or "nominal"
  //   storage  "integer" "string" "date" "time" "timestamp", else "real"
  //   role     "target" "freqWeight" "none" "recordId", else "input"
  //
  // Failure  kFieldIndexOutOfRange, kNoVariableAtIndex.
  NQStatus ExportDataModel(const NQXML_940::NQVarList& variables, const std::vector<int>& indices,
                           NQXML_940::XMLElement*& out) const;

  // ---- Statistics and extensions (NQPMMLExporter.cpp) -------------------------------------------

  // UnivariateStats field: Counts totalFreq, the number of cases even when missing; then
  //   categorical  DiscrStats: Array type="real" of the frequencies
  //   else         NumericInfo [minimum] [maximum] [mean] [standardDeviation], the maximum not when
  //                it is the largest double, which stands for that of no cases; ContStats as of
  //                ExportCutPointsFreqs
  //
  // Failure  kStatisticsNotValid.
  NQStatus ExportUniStats(const NQXML_940::NQUniStats& statistics,
                          NQXML_940::XMLElement*& out) const;

  // Extension [name] value extender, as of ExportExtensionImpl.
  void ExportExtension(const std::string& name, double value, NQXML_940::XMLElement*& out) const;
  void ExportExtension(const std::string& name, const std::string& value,
                       NQXML_940::XMLElement*& out) const;

 private:
  [[maybe_unused]] NQQueryCancel* fCancel;
  [[maybe_unused]] NQWarnings* fWarnings = nullptr;
};

// Adds the values as one text, with single blanks between them; NaN for a system-missing value.
// Nothing is added for null or for no values. The time is linear.
NQ_API void AddDoublesList(NQXML_940::XMLElement& element, const double* values, unsigned long n);

// ContStats: Interval [leftMargin] [rightMargin] closure between each two cut points, the closure
// "openClosed" or else "closedOpen"; Array type="real" of the frequencies, if any. Without cut
// points it is empty, frequencies or not.
NQ_API void ExportCutPointsFreqs(const std::vector<double>& cutPoints,
                                 const std::vector<double>& freqs, bool openLeft,
                                 NQXML_940::XMLElement*& out);

// Extension [name] value extender: the number, even when system-missing; or [the string].
NQ_API void ExportExtensionImpl(const std::string& name, const std::string& strValue, double value,
                                bool useDouble, NQXML_940::XMLElement*& out);

}  // namespace NQCommon_940
