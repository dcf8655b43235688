#include <nqcommon/output/NQStatXMLUtil.h>

#include <algorithm>

#include <nqcommon/math/matrix/INQSymMatrix.h>
#include <nqcommon/output/NQPMMLTags.h>
#include <nqcommon/output/NQStatXMLTags.h>
#include <nqcommon/output/internal/new_element.h>

namespace NQXML_940 {

using namespace NQStatXMLTags;
using internal::ElementPtr;
using internal::NewElement;
using internal::NonEmpty;
using internal::One;
using internal::PassedElements;

namespace {

template <class Value>
XMLElement* FieldInfo(const std::string& name, const Value& value, bool isNull) {
  return NewElement(XML_ELE_FIELDINFO, XML_ATT_FIELDNAME, name, XML_ATT_FIELDVALUE, value,
                    XML_ATT_ISNULL, isNull)
      .release();
}

template <class Value>
XMLElement* Factor(const std::string& field, const Value& value, bool nest) {
  return NewElement(XML_ELE_FACTOR, NQPMMLTags::XML_ATT_FIELD, field, NQPMMLTags::XML_ATT_VALUE,
                    value, XML_ATT_NEST, nest)
      .release();
}

struct MatrixShape {
  int nbRows;
  int nbCols;
  const std::string& kind;
  bool rowMajor;
};

ElementPtr NewMatrix(const MatrixShape& shape) {
  ElementPtr element = NewElement(XML_ELE_MATRIX, NQPMMLTags::XML_ATT_KIND, shape.kind,
                                  XML_ATT_NBROWS, shape.nbRows);
  if (shape.kind != XML_VAL_SYMMETRIC)
    internal::AddAttribute(*element, XML_ATT_NBCOLS, shape.nbCols);
  internal::AddAttribute(*element, XML_ATT_ROWMAJOR, shape.rowMajor);
  return element;
}

}  // namespace

// ---- Fields and parameters ----------------------------------------------------------------------

XMLElement* NQStatXMLUtil::CreateElemFieldInfo(const std::string& name, const std::string& value,
                                               bool isNull) {
  return FieldInfo(name, value, isNull);
}

XMLElement* NQStatXMLUtil::CreateElemFieldInfo(const std::string& name, double value, bool isNull) {
  return FieldInfo(name, internal::NotMissing{value}, isNull);
}

XMLElement* NQStatXMLUtil::CreateElemCovariate(const std::string& field, int power) {
  return NewElement(XML_ELE_COVARIATE, NQPMMLTags::XML_ATT_FIELD, field, XML_ATT_POWER, power)
      .release();
}

XMLElement* NQStatXMLUtil::CreateElemFactor(const std::string& field, const std::string& value,
                                            bool nest) {
  return Factor(field, value, nest);
}

XMLElement* NQStatXMLUtil::CreateElemFactor(const std::string& field, double value, bool nest) {
  return Factor(field, value, nest);
}

XMLElement* NQStatXMLUtil::CreateElemRegressionParameter(const std::string& name,
                                                         bool isIntercept) {
  return CreateElemRegressionParameter(name, isIntercept, {}, {});
}

XMLElement* NQStatXMLUtil::CreateElemRegressionParameter(const std::string& name, bool isIntercept,
                                                         const Elements& factors,
                                                         const Elements& covariates) {
  PassedElements passed(factors, covariates);
  return passed.AddTo(NewElement(XML_ELE_REGRESSIONPARAM, NQPMMLTags::XML_ATT_NAME, NonEmpty{name},
                                 XML_ATT_ISINTERCEPT, isIntercept));
}

// ---- Labels and matrices ------------------------------------------------------------------------

XMLElement* NQStatXMLUtil::CreateElemLabel(const std::string& text) {
  ElementPtr element = NewElement(XML_ELE_LABEL);
  if (!text.empty()) element->AddElement(XMLString::Create(text));
  return element.release();
}

XMLElement* NQStatXMLUtil::CreateElemLabel(double value) {
  ElementPtr element = NewElement(XML_ELE_LABEL);
  AddDoublesList(*element, &value, 1);
  return element.release();
}

XMLElement* NQStatXMLUtil::CreateElemLabel(XMLElement* content) {
  PassedElements passed(One(content));
  return passed.AddTo(NewElement(XML_ELE_LABEL));
}

XMLElement* NQStatXMLUtil::CreateElemLabel(const Elements& contents) {
  PassedElements passed(contents);
  return passed.AddTo(NewElement(XML_ELE_LABEL));
}

XMLElement* NQStatXMLUtil::CreateElemRowColLabels(const Elements& labels,
                                                  const std::string& dimension) {
  PassedElements passed(labels);
  return passed.AddTo(NewElement(XML_ELE_ROWCOLLABELS, XML_ATT_DIMENTION, dimension));
}

XMLElement* NQStatXMLUtil::CreateElemRowColLabels(const std::vector<std::string>& labels,
                                                  const std::string& dimension) {
  ElementPtr element = NewElement(XML_ELE_ROWCOLLABELS, XML_ATT_DIMENTION, dimension);
  for (const std::string& label : labels) element->AddElement(CreateElemLabel(label));
  return element.release();
}

XMLElement* NQStatXMLUtil::CreateElemMatrixLabels(const Elements& labels) {
  PassedElements passed(labels);
  return passed.AddTo(NewElement(XML_ELE_MATRIXLABELS));
}

XMLElement* NQStatXMLUtil::CreateElemIndices(XMLElement* array, const std::string& dimension) {
  PassedElements passed(One(array));
  return passed.AddTo(NewElement(XML_ELE_INDICES, XML_ATT_DIMENTION, dimension));
}

XMLElement* NQStatXMLUtil::CreateElemMatrix(XMLElement* labels, const Elements& rows, int nbRows,
                                            int nbCols, const std::string& kind, bool rowMajor) {
  return CreateElemMatrix(labels, rows, {}, nbRows, nbCols, kind, rowMajor);
}

XMLElement* NQStatXMLUtil::CreateElemMatrix(XMLElement* labels, const Elements& rows,
                                            const Elements& indices, int nbRows, int nbCols,
                                            const std::string& kind, bool rowMajor) {
  PassedElements passed(One(labels), rows, indices);
  return passed.AddTo(NewMatrix({nbRows, nbCols, kind, rowMajor}));
}

XMLElement* NQStatXMLUtil::CreateElemMatrix(XMLElement* labels,
                                            const std::vector<std::vector<double>>& rows,
                                            int nbRows, int nbCols, const std::string& kind,
                                            bool rowMajor) {
  PassedElements passed(One(labels));
  ElementPtr element(passed.AddTo(NewMatrix({nbRows, nbCols, kind, rowMajor})));
  for (const std::vector<double>& row : rows) element->AddElement(CreateElemArray(row));
  return element.release();
}

XMLElement* NQStatXMLUtil::CreateElemMatrix(XMLElement* labels,
                                            const NQMath_940::INQSymMatrix& matrix) {
  const int order = std::max(matrix.GetNRows(), 0);
  PassedElements passed(One(labels));
  ElementPtr element(passed.AddTo(NewMatrix({order, order, XML_VAL_SYMMETRIC, true})));
  for (int i = 0; i < order; ++i) {
    std::vector<double> row;
    for (int j = 0; j <= i; ++j) row.push_back(matrix.GetElem(i, j));
    element->AddElement(CreateElemArray(row));
  }
  return element.release();
}

// ---- Segments -----------------------------------------------------------------------------------

XMLElement* NQStatXMLUtil::CreateElemSegmentInfo(const std::string& id) {
  return CreateElemSegmentInfo(id, Elements());
}

XMLElement* NQStatXMLUtil::CreateElemSegmentInfo(const std::string& id, XMLElement* info) {
  PassedElements passed(One(info));
  return passed.AddTo(NewElement(XML_ELE_SEGMENTINFO, XML_ATT_SEGMENTID, NonEmpty{id}));
}

XMLElement* NQStatXMLUtil::CreateElemSegmentInfo(const std::string& id, const Elements& infos) {
  PassedElements passed(infos);
  return passed.AddTo(NewElement(XML_ELE_SEGMENTINFO, XML_ATT_SEGMENTID, NonEmpty{id}));
}

XMLElement* NQStatXMLUtil::CreateElemSegmentData(XMLElement* info, XMLElement* data) {
  PassedElements passed(One(info), One(data));
  return passed.AddTo(NewElement(XML_ELE_SEGMETNTDATA));
}

XMLElement* NQStatXMLUtil::CreateElemSegmentData(XMLElement* info, const Elements& data) {
  PassedElements passed(One(info), data);
  return passed.AddTo(NewElement(XML_ELE_SEGMETNTDATA));
}

}  // namespace NQXML_940
