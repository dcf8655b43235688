#include <nqcommon/common/NQDynamicLoadedLibrary.h>

#include <dlfcn.h>
#include <sys/stat.h>

#include <string_view>

#include <nqcommon/common/internal/library_path.h>
#include <nqcommon/common/memory_guard.h>

namespace NQCommon_940 {

namespace {

constexpr std::string_view kSuffix = ".dylib";

// Keeps the platform's text of its last failure, or none where memory ends.
void KeepLastError(std::string& text) {
  const char* error = dlerror();
  GuardMemory([&] { text = error ? error : ""; });
}

// The directory in which this library resides: none is kept.
std::string DirectoryOf(const std::string& /*library*/) { return {}; }

}  // namespace

// ---- Names --------------------------------------------------------------------------------------

std::string NQDecorateLibraryName(const std::string& name) {
  if (name.size() > kSuffix.size() && name.ends_with(kSuffix)) return name;
  const std::size_t base = name.rfind('/') + 1;  // 0 without a directory
  return name.substr(0, base).append("lib").append(name, base).append(kSuffix);
}

std::string internal::LibraryPathFrom(const std::string& directory, const std::string& name) {
  if (directory.empty()) return name;
  const std::string extension = directory + "../ext/bin/zolt.common/" + name;
  struct stat status = {};
  return stat(extension.c_str(), &status) == 0 ? extension : directory + name;
}

std::string NQGetFullPathName(const std::string& name) {
  // 910 is the version under which libraries have been laid out since.
  const std::string library = NQDecorateLibraryName(
      "nqcommon"
      "910"
      "r");
  return internal::LibraryPathFrom(DirectoryOf(library), name);
}

std::string NQDynamicLoadedLibrary::NQDecorateDynamicPathName(const std::string& name) {
  return NQGetFullPathName(NQDecorateLibraryName(name));
}

// ---- Loading ------------------------------------------------------------------------------------

NQDynamicLoadedLibrary::NQDynamicLoadedLibrary(const std::string& name, int mode)
    : fMode(mode), fOpenFlags((fMode == 1 ? RTLD_LAZY : RTLD_NOW) | RTLD_LOCAL), fPathName(name) {}

int NQDynamicLoadedLibrary::LoadLibraryNow() {
  fErrorText.clear();
  if (fpHandle) return 0;
  fpHandle = dlopen(fPathName.c_str(), fOpenFlags);
  if (!fpHandle) KeepLastError(fErrorText);
  return fpHandle ? 0 : -1;
}

void* NQDynamicLoadedLibrary::GetSymbolAddress(const std::string& symbol) {
  if (LoadLibraryNow() != 0) return nullptr;
  void* address = dlsym(fpHandle, symbol.c_str());
  if (!address) KeepLastError(fErrorText);
  return address;
}

}  // namespace NQCommon_940
