// Ranks by MPI.
#pragma once

#include <mpi.h>

#include "ranks.h"

namespace support {

// The ranks of MPI_COMM_WORLD, between MPI_Init and MPI_Finalize, which it calls. One object a
// program.
class MpiRanks final : public Ranks {
 public:
  MpiRanks(int& argc, char**& argv);
  ~MpiRanks() override;
  MpiRanks(const MpiRanks&) = delete;
  MpiRanks& operator=(const MpiRanks&) = delete;

  int Rank() const override { return fRank; }
  int Count() const override { return fCount; }
  std::vector<char> Reduce(const std::vector<char>& list, std::uint64_t mostBytes,
                           const Join& join) override;
  std::uint64_t Largest(std::uint64_t number) override;
  std::uint64_t FirstFailure(std::uint64_t place, std::string& message) override;

  void Abort(int status) override { MPI_Abort(MPI_COMM_WORLD, status); }

 private:
  int fRank = 0;
  int fCount = 1;
};

}  // namespace support
