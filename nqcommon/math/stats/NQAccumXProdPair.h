#pragma once

#include <cstddef>
#include <vector>

#include <nqcommon/common/GuardedCopy.h>
#include <nqcommon/export.h>
#include <nqcommon/math/matrix/NQSymMatrix.h>

namespace NQMath_940 {

// Statistics of every pair of p variables, each pair with cases of its own: pairwise deletion of
// missing values. The cases of a pair are summed in a batch, and a batch of nAccum cases is folded
// into the pair's running means, variances and covariance.
//
// Layout    the pair (i, j), i > j, 0-based, is cell i(i-1)/2 + j; p(p-1)/2 cells, which is a
//           packed triangle of p - 1 rows:
//           p = 4:  10 | 20 21 | 30 31 32
// Numerics  A batch holds raw sums of squares, and so does folding: deviations that are small
//           beside the mean lose the digits that the mean has more, whatever the batch size. Centre
//           the variables first, roughly, where that matters.
// Values    Missing values are the caller's to remove.
// Failure   by false; a cell or pair that does not exist changes nothing. An accumulator for whose
//           cells there is no memory, a copy of another or one that InitAll resizes included, has
//           none: it keeps p, and refuses cases, merging and Finish.
// Threads   one object, one thread at a time.
class NQ_API NQAccumXProdPair {
 public:
  // What has been folded at a cell, beside the covariance.
  struct Stats {
    double nCases = 0;  // W: 0, or above 1
    double meanX = 0;   // of the first variable, i
    double meanY = 0;   // of the second, j
    double varX = 0;    // divisor W - 1
    double varY = 0;
  };

  // nVars < 1 counts as 0, nAccum < 1 as 1.
  NQAccumXProdPair(int nVars, int nAccum);
  NQAccumXProdPair(const NQAccumXProdPair&) = default;
  NQAccumXProdPair(NQAccumXProdPair&&) noexcept = default;  // the other is without cells then
  NQAccumXProdPair& operator=(const NQAccumXProdPair&) = default;
  NQAccumXProdPair& operator=(NQAccumXProdPair&&) noexcept = default;
  virtual ~NQAccumXProdPair();

  // Adds a case of weight w to the batch of a pair, in either order, or of a cell; x belongs to the
  // first variable. The batch is folded when it has nAccum cases or more. True, or what IncrStats
  // returned: while it refuses, the batch goes on, and each further case tries again.
  bool Update(int i, double x, int j, double y, double w);
  bool Update(int cell, double x, double y, double w);
  // Folds the batch of a cell, when it has a positive weight and W exceeds 1 with it. Returns
  // whether W, as it would be, exceeds 1.
  bool IncrStats(int cell);
  // IncrStats of every pair; whether all returned true.
  bool Finish();

  // Adds the folded statistics of another accumulator, this one included, and then its batches,
  // which are folded where IncrStats folds: no case is lost on the way. An accumulator without
  // variables takes those of the other first. False, nothing changed, unless p is the same.
  bool Merge(const NQAccumXProdPair& other);
  // Merges the entries in order, passing over null ones, up to the first that fails. False, too,
  // unless the first entry has variables, as many as this accumulator or this one none.
  bool Merge(const std::vector<const NQAccumXProdPair*>& others);
  bool Merge(const std::vector<NQAccumXProdPair*>& others);

  int GetNVars() const { return fNVars; }
  int GetNAccum() const { return fNAccum; }
  // Covariances by cell.
  const NQSymMatrix& GetCovar() const { return fmCovar; }
  // p rows, built anew by each call. The array of covariances is read as the packed triangle of p
  // rows that it would be with variances on the diagonal:
  //   (r, c) = cov(r, c) / cov(r, r)^(1/4) / cov(c, c)^(1/4)
  // and the missing value where cov(r, r) or cov(c, c) is not positive, or beyond the array, as the
  // last row is after construction. Of order -1 where memory ends.
  const NQSymMatrix& GetCorr();
  // The matrices of p rows that are usually meant. The correlation of a pair is its covariance over
  // the roots of the variances that the two variables have in the pair, 1 on the diagonal, missing
  // where a variance is not positive. The covariances have on the diagonal the variance of a
  // variable in the pair of the largest W that it belongs to, the first of these; missing for a
  // single variable. With missing values neither needs to be positive semi-definite. False, `out`
  // unchanged, where memory ends.
  bool GetCovarianceMatrix(NQSymMatrix& out) const;
  bool GetCorrelationMatrix(NQSymMatrix& out) const;
  // The folded statistics of a cell; all 0 where there is no cell. After Finish these and the
  // covariances are all there is to send: SetStats of every cell rebuilds the accumulator.
  Stats GetStats(int cell) const;
  // False, nothing changed, for a cell that does not exist and unless W is 0 or above 1.
  bool SetStats(int cell, const Stats& stats, double covariance);

  // Everything <- 0, in arrays of p rows.
  void InitAll();
  // The batch of a cell <- 0.
  void InitAccumCounts(int cell);
  // Ignores nAccum < 1.
  void SetNAccum(int nAccum);

  void Display() const;

 private:
  // Sums over the cases of a batch. A cell's are kept together: a case touches one cache line.
  struct Batch {
    double count = 0;
    double w = 0;
    double x = 0;
    double y = 0;
    double xx = 0;
    double yy = 0;
    double xy = 0;

    void Add(const Batch& other);
  };

  // All cells, or none.
  struct Cells {
    std::vector<Batch> batches;
    std::vector<Stats> stats;
  };

  bool HasCell(int cell) const { return cell >= 0 && static_cast<std::size_t>(cell) < CellCount(); }
  std::size_t CellCount() const;
  // The cells that belong to pairs, of which InitAll makes more, and whether they are there.
  std::size_t PairCount() const;
  bool HasPairs() const { return PairCount() <= CellCount(); }
  bool Resize(int nRows);
  bool AddToBatch(std::size_t cell, double x, double y, double w);
  bool Fold(std::size_t cell);
  void MergeFolded(std::size_t cell, Stats theirs, double covariance);
  template <class Of>
  bool MakeMatrix(NQSymMatrix& out, Of of) const;
  template <class Cell>
  void DisplayCells(const char* name, const std::vector<Cell>& cells, double Cell::*value) const;

  int fNVars;
  int fNAccum = 1;
  NQCommon_940::GuardedCopy<Cells> fCells;
  NQSymMatrix fmCovar;
  NQSymMatrix fmCorr;
};

}  // namespace NQMath_940
