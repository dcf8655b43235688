// Logistic regression from a CSV file: see README.md.
#include "program.h"

int main(int argc, char** argv) { return logistic::Main(argc, argv, nullptr); }
