#pragma once

#include <string>
#include <vector>

#include <nqcommon/export.h>
#include <nqcommon/output/NQVariateData.h>
#include <nqcommon/output/NQXMLCoordinates.h>
#include <nqcommon/output/NQXMLCoordinatesGroup.h>
#include <nqcommon/output/NQXMLCounts.h>
#include <nqcommon/output/NQXMLRecordInfo.h>
#include <nqcommon/xml/XMLElement.h>

namespace NQMath_940 {
class INQSymMatrix;
}

namespace NQXML_940 {

// Builders of the elements of a StatXML document, in which a model builder reports its tables and
// charts. The caller puts them together below the element of BuildRoot, and writes that with
// WriteTree.
//
// Result      a new element, which the caller owns; never null, but for coordinates without values.
// Ownership   elements passed in, alone or in a list, belong to the builder from the call on: they
//             become children in the order given, or are deleted where the result is null. An
//             element is passed once. Null elements are passed over. In braces a list needs its
//             type where texts or numbers could stand too: Elements{a, b}.
// Attributes  in the order told, as many as are told. A name, label or description in [brackets] is
//             left out when it is empty, a number in brackets when it is system-missing. bool is
//             "true" or "false"; numbers are as ReplaceSep writes them, so infinity is inf.
// Lists       items with single blanks between them, as one text; none where there are no items. A
//             null pointer or a count below 1 is an empty list. The time is linear.
// Failure     nothing is checked: names, kinds and sizes are written as they are told.
//
//   Root, generic elements, lists, arrays             NQStatXMLUtil.cpp
//   Variate data, coordinates, records                NQStatXMLUtil_data.cpp
//   Fields, parameters, labels, matrices, segments    NQStatXMLUtil_model.cpp
class NQ_API NQStatXMLUtil {
 public:
  NQStatXMLUtil() = delete;

  using Elements = std::vector<XMLElement*>;

  // ---- Root and generic elements (NQStatXMLUtil.cpp) --------------------------------------------

  // StatXML xmlns xmlns:xsi version xsi:schemaLocation.
  static XMLElement* BuildRoot();

  // UnivariateData, BivariateData, MultivariateData, StructuredData [name], to be filled.
  static XMLElement* CreateElemUnivarData(const std::string& name);
  static XMLElement* CreateElemBivarData(const std::string& name);
  static XMLElement* CreateElemMultivariateData(const std::string& name);
  static XMLElement* CreateElemStructuredData(const std::string& name);

  // An element with one, two or three attributes.
  static XMLElement* CreateElem(const std::string& name, const std::string& attribute,
                                const std::string& value);
  static XMLElement* CreateElem(const std::string& name, const std::string& attribute,
                                double value);
  static XMLElement* CreateElem(const std::string& name, const std::string& attribute1,
                                const std::string& value1, const std::string& attribute2,
                                const std::string& value2);
  static XMLElement* CreateElem(const std::string& name, const std::string& attribute1,
                                const std::string& value1, const std::string& attribute2,
                                const std::string& value2, const std::string& attribute3,
                                const std::string& value3);

  // ---- Lists and arrays (NQStatXMLUtil.cpp) -----------------------------------------------------

  // Integers of a vector exactly; those of a pointer rounded to one significant digit, as printf's
  // "%.0g": 12 is 1e+01, 150 is 2e+02, 7 is 7.
  static void AddIntList(XMLElement& element, const std::vector<int>& values);
  static void AddIntList(XMLElement& element, const int* values, int n);

  // A system-missing value is __MISSING__.
  static void AddDoublesList(XMLElement& element, const std::vector<double>& values);
  static void AddDoublesList(XMLElement& element, const double* values, int n);

  // Strings through ReplaceSpecialChar; each between double quotes when there is a blank in any. An
  // empty string leaves a trace only between quotes: readers lose it else, so give it a name.
  //   a b|c    "a b" "c"
  //   a|c      a c
  //   a"b|c    a\"b c
  //   |a       a, after a blank
  static void AddStringList(XMLElement& element, const std::vector<std::string>& values);

  // `out` becomes `in` with a backslash before each double quote and each backslash. Both may be
  // the same string.
  static void ReplaceSpecialChar(const std::string& in, std::string& out);

  // Array type n, and the list; type is "int", "real" or "string". There is no n with the pointer
  // to integers. In the form of one string this is the list of n strings, and written as it is.
  static XMLElement* CreateElemArray(const int* values, int n);
  static XMLElement* CreateElemArray(const std::vector<int>& values);
  static XMLElement* CreateElemArray(const double* values, int n);
  static XMLElement* CreateElemArray(const std::vector<double>& values);
  static XMLElement* CreateElemArray(const std::string& list, int n);
  static XMLElement* CreateElemArray(const std::vector<std::string>& values);

  // ---- Variate data (NQStatXMLUtil_data.cpp) ----------------------------------------------------

  // An element of the name, [description]; then the Counts, the Statistics, and the Coordinates:
  // the first 2 for "UnivariateData", the first 3 for "BivariateData", all for any other name.
  // Those without values are passed over, and none takes their place.
  static XMLElement* CreateElemVarData(const std::string& name, const std::string& description,
                                       const NQVariateData& data);

  // Counts totalFreq [missingFreq] [invalidFreq] cardinality, the last when it is 0 or more.
  static XMLElement* CreateElemCounts(const NQXMLCounts& counts);
  static XMLElement* CreateElemCounts(double total, double missing, double invalid,
                                      double cardinality);

  // Statistic name value, without the value where the number is system-missing.
  static XMLElement* CreateElemStatistic(const std::string& name, const std::string& value);
  static XMLElement* CreateElemStatistic(const std::string& name, double value);

  // Coordinates feature [field] [statistic]: the Array that CreateElemArray makes of the values,
  // and `further`, such as a Label, if it is given.
  static XMLElement* CreateElemCoordinates(const std::string& feature, const std::string& field,
                                           const std::string& statistic, const int* values, int n,
                                           XMLElement* further = nullptr);
  static XMLElement* CreateElemCoordinates(const std::string& feature, const std::string& field,
                                           const std::string& statistic,
                                           const std::vector<int>& values,
                                           XMLElement* further = nullptr);
  static XMLElement* CreateElemCoordinates(const std::string& feature, const std::string& field,
                                           const std::string& statistic, const double* values,
                                           int n, XMLElement* further = nullptr);
  static XMLElement* CreateElemCoordinates(const std::string& feature, const std::string& field,
                                           const std::string& statistic,
                                           const std::vector<double>& values,
                                           XMLElement* further = nullptr);
  static XMLElement* CreateElemCoordinates(const std::string& feature, const std::string& field,
                                           const std::string& statistic, const std::string& list,
                                           int n, XMLElement* further = nullptr);
  static XMLElement* CreateElemCoordinates(const std::string& feature, const std::string& field,
                                           const std::string& statistic,
                                           const std::vector<std::string>& values,
                                           XMLElement* further = nullptr);
  // Null for coordinates without values; `further` is deleted then.
  static XMLElement* CreateElemCoordinates(const NQXMLCoordinates& coordinates,
                                           XMLElement* further = nullptr);

  // CoordinatesGroup [name]: the coordinates that all share, if there are any, and the others.
  static XMLElement* CreateElemCoordinatesGroup(const NQXMLCoordinatesGroup& group);
  static XMLElement* CreateElemCoordinatesGroup(XMLElement* shared, const Elements& coordinates,
                                                const std::string& name);

  // ---- Records (NQStatXMLUtil_data.cpp) ---------------------------------------------------------

  // RecordInfo recordId [recordLabel]: Arrays of the first two lists.
  static XMLElement* CreateElemRecordInfo(const NQXMLRecordInfo& record);
  static XMLElement* CreateElemRecordInfo(const std::string& id, const std::string& label,
                                          const std::vector<std::vector<int>>& arrays);
  static XMLElement* CreateElemRecordInfo(const std::string& id, const std::string& label,
                                          const std::vector<std::vector<double>>& arrays);
  static XMLElement* CreateElemRecordInfo(const std::string& id, const std::string& label,
                                          const std::vector<std::vector<std::string>>& arrays);

  // Adds a RecordInfo for each record.
  static void AddRecordInfos(XMLElement& element, const std::vector<NQXMLRecordInfo>& records);

  // ---- Fields and parameters (NQStatXMLUtil_model.cpp) ------------------------------------------

  // FieldInfo fieldName fieldValue isNull, without the value where the number is system-missing.
  static XMLElement* CreateElemFieldInfo(const std::string& name, const std::string& value,
                                         bool isNull);
  static XMLElement* CreateElemFieldInfo(const std::string& name, double value, bool isNull);

  // Covariate field power.
  static XMLElement* CreateElemCovariate(const std::string& field, int power);

  // Factor field value nest.
  static XMLElement* CreateElemFactor(const std::string& field, const std::string& value,
                                      bool nest);
  static XMLElement* CreateElemFactor(const std::string& field, double value, bool nest);

  // RegressionParameter [name] isIntercept: Factors and Covariates, of whose product it is the
  // coefficient.
  static XMLElement* CreateElemRegressionParameter(const std::string& name, bool isIntercept);
  static XMLElement* CreateElemRegressionParameter(const std::string& name, bool isIntercept,
                                                   const Elements& factors,
                                                   const Elements& covariates);

  // ---- Labels and matrices (NQStatXMLUtil_model.cpp) --------------------------------------------

  // Label: a text, none where it is empty; a number, __MISSING__ where it is that; an element or
  // several, such as a RegressionParameter or the FieldInfos of a cell.
  static XMLElement* CreateElemLabel(const std::string& text);
  static XMLElement* CreateElemLabel(double value);
  static XMLElement* CreateElemLabel(XMLElement* content);
  static XMLElement* CreateElemLabel(const Elements& contents);

  // RowColLabels dimension: the Labels given, or one for each text. The dimension is "row", "col"
  // or "both".
  static XMLElement* CreateElemRowColLabels(const Elements& labels, const std::string& dimension);
  static XMLElement* CreateElemRowColLabels(const std::vector<std::string>& labels,
                                            const std::string& dimension);

  // MatrixLabels: the RowColLabels.
  static XMLElement* CreateElemMatrixLabels(const Elements& labels);

  // Indices dimension: an Array of the row or column numbers of the values of a sparse matrix.
  static XMLElement* CreateElemIndices(XMLElement* array, const std::string& dimension);

  // Matrix kind nbRows nbCols rowMajor, without nbCols when the kind is "symmetric": the
  // MatrixLabels, if any; an Array for each row, or column unless rowMajor; the Indices. Of a
  // symmetric matrix the rows of the lower triangle are enough, of a diagonal one the diagonal.
  static XMLElement* CreateElemMatrix(XMLElement* labels, const Elements& rows, int nbRows,
                                      int nbCols, const std::string& kind, bool rowMajor);
  static XMLElement* CreateElemMatrix(XMLElement* labels, const Elements& rows,
                                      const Elements& indices, int nbRows, int nbCols,
                                      const std::string& kind, bool rowMajor);
  static XMLElement* CreateElemMatrix(XMLElement* labels,
                                      const std::vector<std::vector<double>>& rows, int nbRows,
                                      int nbCols, const std::string& kind, bool rowMajor);
  // The same for this matrix, whatever its storage: the rows of its lower triangle.
  static XMLElement* CreateElemMatrix(XMLElement* labels, const NQMath_940::INQSymMatrix& matrix);

  // ---- Segments (NQStatXMLUtil_model.cpp) -------------------------------------------------------

  // SegmentInfo [segmentID]: what tells the segment, such as the FieldInfos of its split fields and
  // its Counts.
  static XMLElement* CreateElemSegmentInfo(const std::string& id);
  static XMLElement* CreateElemSegmentInfo(const std::string& id, XMLElement* info);
  static XMLElement* CreateElemSegmentInfo(const std::string& id, const Elements& infos);

  // SegmentData: the SegmentInfo and what is reported of the segment.
  static XMLElement* CreateElemSegmentData(XMLElement* info, XMLElement* data);
  static XMLElement* CreateElemSegmentData(XMLElement* info, const Elements& data);
};

}  // namespace NQXML_940
