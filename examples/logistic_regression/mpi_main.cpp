// The same by several processes: mpirun -n 4 logistic_regression_mpi DATA.csv --target NAME ...
#include "program.h"
#include "support/mpi_ranks.h"

int main(int argc, char** argv) {
  support::MpiRanks ranks(argc, argv);
  return logistic::Main(argc, argv, &ranks);
}
