#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <nqcommon/export.h>

namespace NQCommon_940 {
class Record;
class Value;
class ValueRecord;
}  // namespace NQCommon_940

namespace NQXML_940 {

class INQEncoder;
class NQVarList;

// Turns cases into rows of numbers by the encoders of a variable list: a column for each variable,
// with codes of categories, numbers, and weights.
//
//   NQRecordEncoder encoder(variables, {"age", "region", "y"});  // the fields of a case, in order
//   std::vector<double> row(encoder.Size());
//   for (const auto& cells : cases) {
//     if (encoder.Encode(cells, row.data()).IsComplete()) accumulator.Update(row);
//   }
//
// Columns    are the variables in list order, or those asked for. Names of fields are compared with
//            names of variables byte for byte, once, when the encoder is made. A variable whose
//            name is no field, and one without encoder, is missing in every case.
// Cells      A variable of numbers takes numbers and truth values (1, 0). A variable of texts takes
//            texts, and numbers as texts of up to 15 digits, integers with all their digits. Null
//            is missing, and so is the system-missing value.
// Lifetime   the list outlives this object. Variables removed from it, and encoders replaced, end
//            its use: make another one then.
// Cost       a virtual call for each cell besides the encoder's own; texts are not copied.
// Failure    std::bad_alloc alone may pass, from the constructor and where a number becomes a text.
// Threads    EncodeConst may run in several threads, each with a row of its own.
class NQ_API NQRecordEncoder {
 public:
  // What a number of a row stands for. All but the first are the encoder's number for missing, -1
  // of categories and system-missing else.
  enum CellState : int {
    CellValue = 0,
    CellMissing = 1,  // null, system-missing, declared missing, no such field, a weight not above 0
    CellUnseen = 2,   // a category without a code
    CellMisfit = 3    // a text where a number is wanted, an array or a map
  };

  // How many cells of a row are in each of the last three states.
  struct RowState {
    int fNMissing = 0;
    int fNUnseen = 0;
    int fNMisfits = 0;
    bool IsComplete() const { return fNMissing == 0 && fNUnseen == 0 && fNMisfits == 0; }
  };

  // The variables at `indices`, or without indices all that the list has. `fields` are the names of
  // the cells of a case, by position; of equal names the first counts.
  NQRecordEncoder(NQVarList& variables, const std::vector<std::string>& fields,
                  const std::vector<int>& indices = {});
  // The fields are those of the record: cases have the same ones at the same positions.
  NQRecordEncoder(NQVarList& variables, const NQCommon_940::ValueRecord& example,
                  const std::vector<int>& indices = {});

  // The number of columns, and the position in the list of the variable of each.
  int Size() const { return static_cast<int>(fvColumns.size()); }
  int GetVariableIndex(int column) const {
    return fvColumns[static_cast<std::size_t>(column)].fVariable;
  }

  // The names of the variables that are no field.
  const std::vector<std::string>& GetAbsentNames() const { return fvAbsent; }

  // Write Size() numbers to `row` and, where `states` is not null, as many states. Encode gives new
  // categories their codes, EncodeConst never does. Cells past the end of a case are missing.
  RowState Encode(const std::vector<NQCommon_940::Value>& cells, double* row,
                  CellState* states = nullptr);
  RowState EncodeConst(const std::vector<NQCommon_940::Value>& cells, double* row,
                       CellState* states = nullptr) const;
  RowState Encode(const NQCommon_940::ValueRecord& record, double* row,
                  CellState* states = nullptr);
  RowState EncodeConst(const NQCommon_940::ValueRecord& record, double* row,
                       CellState* states = nullptr) const;
  RowState Encode(const NQCommon_940::Record& record, double* row, CellState* states = nullptr);
  RowState EncodeConst(const NQCommon_940::Record& record, double* row,
                       CellState* states = nullptr) const;

 private:
  struct Column {
    int fVariable;          // position in the list
    int fField;             // position in a case, or -1
    INQEncoder* fpEncoder;  // or null
    bool fIsText;
    double fMissing;  // the encoder's number for it
  };

  template <bool learns, class Cell>
  RowState EncodeRow(const Cell* cells, std::size_t nCells, double* row, CellState* states) const;

  std::vector<Column> fvColumns;
  std::vector<std::string> fvAbsent;
};

}  // namespace NQXML_940
