#include <nqcommon/common/NQDynamicLoadedLibrary.h>
#include <nqcommon/common/internal/library_path.h>

#include <filesystem>
#include <fstream>

#include "support/testing.h"

namespace NQCommon_940 {
namespace {

TEST(NQDynamicLoadedLibrary, LoadsOnFirstUse) {
  for (int mode : {0, 1}) {
    NQDynamicLoadedLibrary library(NQ_LOADABLE_LIBRARY, mode);
    EXPECT_EQ(library.GetSymbolAddress("NoSuchSymbol"), nullptr);
    EXPECT_NE(library.GetErrorText().find("NoSuchSymbol"), std::string::npos);
    EXPECT_EQ(library.LoadLibraryNow(), 0);
    EXPECT_EQ(library.GetErrorText(), "");
    const auto twice = reinterpret_cast<int (*)(int)>(library.GetSymbolAddress("Twice"));
    ASSERT_NE(twice, nullptr) << library.GetErrorText();
    EXPECT_EQ(twice(21), 42);
  }
  NQDynamicLoadedLibrary global("", 1);  // the program itself
  EXPECT_EQ(global.GetSymbolAddress("Twice"), nullptr) << "symbols stay local";
  NQDynamicLoadedLibrary absent("/no/such/library", 1);
  EXPECT_EQ(absent.GetSymbolAddress("Twice"), nullptr);
  EXPECT_EQ(absent.LoadLibraryNow(), -1);
  EXPECT_NE(absent.GetErrorText().find("/no/such/library"), std::string::npos);
}

TEST(NQDynamicLoadedLibrary, Names) {
  const char* rows[][2] = {{"foo", "libfoo.dylib"},
                           {"a/b/foo", "a/b/libfoo.dylib"},
                           {"x.dylib", "x.dylib"},
                           {".dylib", "lib.dylib.dylib"},
                           {"", "lib.dylib"}};
  for (const auto& [name, decorated] : rows)
    EXPECT_EQ(NQDynamicLoadedLibrary::NQDecorateDynamicPathName(name), decorated);
  namespace fs = std::filesystem;
  const fs::path root = fs::path(::testing::TempDir()) / "nq_library_path";
  const std::string directory = (root / "lib").string() + "/";
  fs::create_directories(root / "lib");
  fs::create_directories(root / "ext/bin/zolt.common");
  EXPECT_EQ(internal::LibraryPathFrom(directory, "foo"), directory + "foo");
  std::ofstream(root / "ext/bin/zolt.common/foo") << "x";
  EXPECT_EQ(internal::LibraryPathFrom(directory, "foo"), directory + "../ext/bin/zolt.common/foo");
  fs::remove_all(root);
}

}  // namespace
}  // namespace NQCommon_940
