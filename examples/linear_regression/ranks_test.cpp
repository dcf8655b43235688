// The program by several processes, where there is an mpirun.
#include <cstdlib>
#include <sstream>

#include "test_support.h"

using namespace regression;

namespace {

// Factors, missing cells, both weights and quoted line ends, over ten chunks.
[[maybe_unused]] std::string Rows(const std::string& lastCell) {
  std::ostringstream csv;
  csv << "note,a,g,f,r,y\n";
  for (int i = 0; i < 60000; ++i) {
    csv << "\"n" << (i % 3 == 0 ? "\n" : ",") << "some text to fill the row\","
        << (i % 17 == 0 ? "NA" : std::to_string(i * 7 % 11)) << ",g" << i * 31L % 5 << ',' << i % 4
        << ',' << 0.5 + i % 3 << ',' << i * 37L % 1013 << '\n';
  }
  csv << "last,1,g1,1,1," << lastCell << '\n';
  return csv.str();
}

// The status of the program with these arguments; its files and what it says go to the directory.
[[maybe_unused]] int Launch(const std::string& launcher, const std::string& name,
                            const std::string& file) {
  const std::string base = (kDirectory / name).string();
  return std::system((launcher + " '" + file + "' --target y --inputs a,g --freq-weight f " +
                      "--reg-weight r --json '" + base + ".json' --statxml '" + base +
                      ".xml' --pmml '" + base + ".pmml' >'" + base + ".txt' 2>&1")
                         .c_str());
}

TEST(Ranks, GiveTheSameBytesAndNameTheSameLine) {
#ifdef NQ_REGRESSION_MPI_PROGRAM
  // An MPI library frees little of what it has when it ends: what it leaks is not looked for.
  const std::string mpirun =
      "ASAN_OPTIONS=detect_leaks=0 OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1 "
      "mpirun -q --oversubscribe -n ";
  if (std::system("mpirun --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "mpirun is missing";
  const std::string file = FileOf(Rows("2"));
  ASSERT_EQ(Launch(NQ_REGRESSION_PROGRAM " --threads 2", "one", file), 0)
      << ContentOf((kDirectory / "one.txt").string());
  for (const std::string n : {"1", "2", "4"}) {
    EXPECT_EQ(Launch(mpirun + n + " " NQ_REGRESSION_MPI_PROGRAM " --threads 1", "ranks", file), 0);
    for (const char* kind : {".json", ".xml", ".pmml", ".txt"}) {
      EXPECT_EQ(ContentOf((kDirectory / ("ranks" + std::string(kind))).string()),
                ContentOf((kDirectory / ("one" + std::string(kind))).string()))
          << n << kind;
    }
  }
  std::filesystem::remove_all(kDirectory);
  const std::string bad = FileOf(Rows("x"));
  EXPECT_NE(Launch(mpirun + "4 " NQ_REGRESSION_MPI_PROGRAM " --threads 1", "bad", bad), 0);
  EXPECT_EQ(ContentOf((kDirectory / "bad.txt").string()),
            "linear_regression: line 80002, column 'y': 'x' is not a number\n");
  EXPECT_FALSE(std::filesystem::exists(kDirectory / "bad.json"));
  const std::string database = (kDirectory / "data.sqlite").string();
  Connect(database, "CREATE TABLE t (a, g, f, r, y)");
  EXPECT_NE(Launch(mpirun + "2 " NQ_REGRESSION_MPI_PROGRAM " --table t", "bad", database), 0);
  EXPECT_EQ(ContentOf((kDirectory / "bad.txt").string()),
            "linear_regression: ranks cannot share a database; one process can read it\n");
  std::filesystem::remove_all(kDirectory);
#else
  GTEST_SKIP() << "built without MPI";
#endif
}

}  // namespace
