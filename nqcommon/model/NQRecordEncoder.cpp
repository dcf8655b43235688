#include <nqcommon/model/NQRecordEncoder.h>

#include <unordered_map>

#include <nqcommon/common/NQMV.h>
#include <nqcommon/common/Record.h>
#include <nqcommon/common/Value.h>
#include <nqcommon/common/ValueRecord.h>
#include <nqcommon/model/NQVarList.h>
#include <nqcommon/xml/number_format.h>

namespace NQXML_940 {

using NQCommon_940::NQMV;
using NQCommon_940::Record;
using NQCommon_940::Value;
using NQCommon_940::ValueRecord;

namespace {

using CellState = NQRecordEncoder::CellState;

bool IsCategorical(const INQEncoder& encoder) {
  return encoder.GetEncoderType() == INQEncoder::EncoderNumericCategorical ||
         encoder.GetEncoderType() == INQEncoder::EncoderStringCategorical;
}

bool IsText(const INQEncoder& encoder) {
  return encoder.GetEncoderType() == INQEncoder::EncoderStringCategorical;
}

// A number or a text, and what becomes of it.
template <bool learns, class T>
CellState EncodeAs(INQEncoder& encoder, const T& value, double& number) {
  number = learns ? encoder.Encode(value) : encoder.EncodeConst(value);
  if (number != -1 && !NQMV::IsMissing(number)) return NQRecordEncoder::CellValue;
  if (!IsCategorical(encoder))
    return number == -1 ? NQRecordEncoder::CellValue : NQRecordEncoder::CellMissing;
  return encoder.IsMissing(value) ? NQRecordEncoder::CellMissing : NQRecordEncoder::CellUnseen;
}

template <bool learns>
CellState EncodeCell(INQEncoder& encoder, bool isText, double cell, double& number) {
  if (NQMV::IsMissing(cell)) return NQRecordEncoder::CellMissing;
  return isText ? EncodeAs<learns>(encoder, ReplaceSep(cell), number)
                : EncodeAs<learns>(encoder, cell, number);
}

template <bool learns>
CellState EncodeCell(INQEncoder& encoder, bool isText, const Value& cell, double& number) {
  switch (cell.GetType()) {
    case Value::NullType:
      return NQRecordEncoder::CellMissing;
    case Value::StringType:
      return isText ? EncodeAs<learns>(encoder, cell.GetStringRef(), number)
                    : NQRecordEncoder::CellMisfit;
    case Value::IntegerType:
      if (isText) return EncodeAs<learns>(encoder, std::to_string(cell.GetInteger()), number);
      [[fallthrough]];
    case Value::BoolType:
    case Value::RealType:
      return EncodeCell<learns>(encoder, isText, cell.GetReal(), number);
    default:
      return NQRecordEncoder::CellMisfit;
  }
}

}  // namespace

NQRecordEncoder::NQRecordEncoder(NQVarList& variables, const std::vector<std::string>& fields,
                                 const std::vector<int>& indices) {
  std::unordered_map<std::string, int> positions;
  for (std::size_t i = 0; i < fields.size(); ++i) positions.emplace(fields[i], static_cast<int>(i));
  const auto add = [&](int i) {
    const INQVariable* variable = variables.GetVarAt(i);
    if (!variable) return;
    const auto found = positions.find(variable->GetVariableName());
    if (found == positions.end()) fvAbsent.push_back(variable->GetVariableName());
    INQEncoder* const encoder = variables.GetEncoderAt(i);
    fvColumns.push_back({i, found == positions.end() ? -1 : found->second, encoder,
                         encoder && IsText(*encoder),
                         encoder && IsCategorical(*encoder) ? -1 : NQMV::Missing()});
  };
  for (int i = 0; indices.empty() && i < variables.GetNumVars(); ++i) add(i);
  for (const int i : indices) add(i);
}

NQRecordEncoder::NQRecordEncoder(NQVarList& variables, const ValueRecord& example,
                                 const std::vector<int>& indices)
    : NQRecordEncoder(variables, example.Names(false), indices) {}

template <bool learns, class Cell>
NQRecordEncoder::RowState NQRecordEncoder::EncodeRow(const Cell* cells, std::size_t nCells,
                                                     double* row, CellState* states) const {
  RowState counts;
  for (const Column& column : fvColumns) {
    CellState state = CellMissing;
    double number = column.fMissing;
    const auto field = static_cast<std::size_t>(column.fField);  // -1 lies past every end
    if (column.fpEncoder && field < nCells)
      state = EncodeCell<learns>(*column.fpEncoder, column.fIsText, cells[field], number);
    counts.fNMissing += state == CellMissing;
    counts.fNUnseen += state == CellUnseen;
    counts.fNMisfits += state == CellMisfit;
    if (states) *states++ = state;
    *row++ = number;
  }
  return counts;
}

NQRecordEncoder::RowState NQRecordEncoder::Encode(const std::vector<Value>& cells, double* row,
                                                  CellState* states) {
  return EncodeRow<true>(cells.data(), cells.size(), row, states);
}
NQRecordEncoder::RowState NQRecordEncoder::EncodeConst(const std::vector<Value>& cells, double* row,
                                                       CellState* states) const {
  return EncodeRow<false>(cells.data(), cells.size(), row, states);
}
NQRecordEncoder::RowState NQRecordEncoder::Encode(const ValueRecord& record, double* row,
                                                  CellState* states) {
  return Encode(record.GetRecord(), row, states);
}
NQRecordEncoder::RowState NQRecordEncoder::EncodeConst(const ValueRecord& record, double* row,
                                                       CellState* states) const {
  return EncodeConst(record.GetRecord(), row, states);
}
NQRecordEncoder::RowState NQRecordEncoder::Encode(const Record& record, double* row,
                                                  CellState* states) {
  return EncodeRow<true>(record.GetAll(), static_cast<std::size_t>(record.Size()), row, states);
}
NQRecordEncoder::RowState NQRecordEncoder::EncodeConst(const Record& record, double* row,
                                                       CellState* states) const {
  return EncodeRow<false>(record.GetAll(), static_cast<std::size_t>(record.Size()), row, states);
}

}  // namespace NQXML_940
