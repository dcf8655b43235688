#pragma once

#include <string>

#include <nqcommon/export.h>

namespace NQCommon_940 {

// File name of a library: "lib" and ".dylib" around the part behind the last '/'. A name of at
// least seven characters that ends with ".dylib" stays as it is. The suffix is the same on every
// platform.
//   foo -> libfoo.dylib    a/b/foo -> a/b/libfoo.dylib    libx.dylib -> libx.dylib
NQ_API std::string NQDecorateLibraryName(const std::string& name);

// Where a library of that file name is looked for: beside this library, first in a folder for
// extensions. This library keeps no directory of its own, so the name comes back unchanged.
NQ_API std::string NQGetFullPathName(const std::string& name);

// A shared library that is loaded at its first use and then stays loaded for the life of the
// process: the object never closes it.
//
// Failure   -1 or a null pointer, the platform's text in GetErrorText(), which is empty where there
//           is no memory for it; the next call tries again.
// Threads   one object, one thread at a time.
class NQ_API NQDynamicLoadedLibrary {
 public:
  // Nothing is loaded yet. mode 1: functions are bound at their first call, otherwise all at once.
  // The library's symbols are not offered to others.
  NQDynamicLoadedLibrary(const std::string& name, int mode);

  // 0 when the library is loaded, now or before.
  int LoadLibraryNow();
  // Loads the library when it is not. Null for a symbol that it does not have.
  void* GetSymbolAddress(const std::string& symbol);
  // Of the last LoadLibraryNow or GetSymbolAddress; empty after a success.
  const std::string& GetErrorText() const { return fErrorText; }

  // NQGetFullPathName(NQDecorateLibraryName(name)).
  static std::string NQDecorateDynamicPathName(const std::string& name);

 private:
  void* fpHandle = nullptr;
  int fMode;
  int fOpenFlags;
  std::string fPathName;
  std::string fErrorText;
};

}  // namespace NQCommon_940
