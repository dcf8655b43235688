#include "mpi_ranks.h"

#include <mpi.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace support {
namespace {

// A list in a buffer of fixed length, as a reduction needs: its length, then its bytes.
using Length = std::uint64_t;

std::vector<char> ListIn(const char* buffer) {
  Length length = 0;
  std::memcpy(&length, buffer, sizeof length);
  return {buffer + sizeof length, buffer + sizeof length + length};
}

void Put(const std::vector<char>& list, char* buffer) {
  const Length length = list.size();
  std::memcpy(buffer, &length, sizeof length);
  std::copy(list.begin(), list.end(), buffer + sizeof length);
}

// MPI hands the operation no context.
const Ranks::Join* gJoin = nullptr;

void JoinBuffers(void* left, void* right, int* count, MPI_Datatype* type) {
  int size = 0;
  MPI_Type_size(*type, &size);
  for (int i = 0; i < *count; ++i) {
    char* const to = static_cast<char*>(right) + std::ptrdiff_t{i} * size;
    const char* const from = static_cast<const char*>(left) + std::ptrdiff_t{i} * size;
    Put((*gJoin)(ListIn(from), ListIn(to)), to);
  }
}

}  // namespace

MpiRanks::MpiRanks(int& argc, char**& argv) {
  int provided = 0;
  // Only the thread that is here calls MPI.
  MPI_Init_thread(&argc, &argv, MPI_THREAD_FUNNELED, &provided);
  MPI_Comm_rank(MPI_COMM_WORLD, &fRank);
  MPI_Comm_size(MPI_COMM_WORLD, &fCount);
}

MpiRanks::~MpiRanks() { MPI_Finalize(); }

std::vector<char> MpiRanks::Reduce(const std::vector<char>& list, std::uint64_t mostBytes,
                                   const Join& join) {
  std::uint64_t together = list.size();
  MPI_Allreduce(MPI_IN_PLACE, &together, 1, MPI_UINT64_T, MPI_SUM, MPI_COMM_WORLD);
  const std::uint64_t size = sizeof(Length) + std::min(together, mostBytes);
  if (size > static_cast<std::uint64_t>(std::numeric_limits<int>::max()))
    throw std::runtime_error("the partial results are too long for a message");
  std::vector<char> mine(size), all(size);
  Put(list, mine.data());
  MPI_Datatype type;
  MPI_Op operation;
  MPI_Type_contiguous(static_cast<int>(size), MPI_BYTE, &type);
  MPI_Type_commit(&type);
  MPI_Op_create(JoinBuffers, 0, &operation);  // 0: it does not commute
  gJoin = &join;
  MPI_Reduce(mine.data(), all.data(), 1, type, operation, 0, MPI_COMM_WORLD);
  MPI_Bcast(all.data(), 1, type, 0, MPI_COMM_WORLD);
  gJoin = nullptr;
  MPI_Op_free(&operation);
  MPI_Type_free(&type);
  return ListIn(all.data());
}

std::uint64_t MpiRanks::Largest(std::uint64_t number) {
  MPI_Allreduce(MPI_IN_PLACE, &number, 1, MPI_UINT64_T, MPI_MAX, MPI_COMM_WORLD);
  return number;
}

std::uint64_t MpiRanks::FirstFailure(std::uint64_t place, std::string& message) {
  std::uint64_t first = place;
  MPI_Allreduce(MPI_IN_PLACE, &first, 1, MPI_UINT64_T, MPI_MIN, MPI_COMM_WORLD);
  if (first == kNowhere) return first;
  int owner = place == first ? fRank : fCount;
  MPI_Allreduce(MPI_IN_PLACE, &owner, 1, MPI_INT, MPI_MIN, MPI_COMM_WORLD);
  std::uint64_t length = message.size();
  MPI_Bcast(&length, 1, MPI_UINT64_T, owner, MPI_COMM_WORLD);
  message.resize(length);
  MPI_Bcast(message.data(), static_cast<int>(length), MPI_CHAR, owner, MPI_COMM_WORLD);
  return first;
}

}  // namespace support
