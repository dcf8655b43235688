#include <nqcommon/common/MemoryRecordIterator.h>

#include <algorithm>
#include <cstddef>
#include <limits>

#include <nqcommon/common/ValueRecordIterator.h>

namespace NQCommon_940 {

namespace {

constexpr int kEndOfData = 1;

}  // namespace

RecordIterator::~RecordIterator() = default;
MultiPassRecordIter::~MultiPassRecordIter() = default;
ValueRecordIterator::~ValueRecordIterator() = default;
MemoryRecordIterator::~MemoryRecordIterator() = default;

MemoryRecordIterator::MemoryRecordIterator(int nRecords, int nValues, double* ids, double* values,
                                           double* weights)
    : fNRecords(nRecords),
      fNValues(std::clamp(nValues, 0, std::numeric_limits<int>::max() - 2)),
      fpIds(ids),
      fpValues(values),
      fpWeights(weights),
      fRecord(fNValues + (weights ? 2 : 1)),
      fFailReason(nRecords < 1 ? kEndOfData : 0) {}

Record* MemoryRecordIterator::Next() {
  if (fPosition >= fNRecords || fRecord.Size() == 0) fFailReason = kEndOfData;
  if (fFailReason != 0) return nullptr;
  const auto row = static_cast<std::ptrdiff_t>(fPosition);
  fRecord[0] = fpIds ? fpIds[row] : static_cast<double>(row + 1);
  std::copy_n(fpValues + row * fNValues, fNValues, fRecord.GetAll() + 1);
  if (fpWeights) fRecord[fNValues + 1] = fpWeights[row];
  if (++fPosition == fNRecords) fFailReason = kEndOfData;
  return &fRecord;
}

int MemoryRecordIterator::NewPass() {
  fPosition = fFailReason = 0;
  return 0;
}

}  // namespace NQCommon_940
