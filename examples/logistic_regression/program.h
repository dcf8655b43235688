// The program, for one process or many.
#pragma once

#include "support/ranks.h"

namespace logistic {

// Reads the command line, fits and writes; gives the exit status. `ranks` is null for one process;
// else every rank calls it, and the first writes.
int Main(int argc, char** argv, support::Ranks* ranks);

}  // namespace logistic
