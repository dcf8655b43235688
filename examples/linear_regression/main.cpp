// Linear regression from a table: see README.md.
#include "program.h"

int main(int argc, char** argv) { return regression::Main(argc, argv, nullptr); }
