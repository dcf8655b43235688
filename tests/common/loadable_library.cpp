// Loaded by NQDynamicLoadedLibrary_test.cpp.
extern "C" int Twice(int x) { return 2 * x; }
