// Values as bytes for another process of the same program, and back.
#pragma once

#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace support {

// A class says what it has by `template <class A> void Transfer(A& a) { a(fOne); a(fOther); }`,
// which writes with a Packer and reads with an Unpacker.
template <class T, class A>
concept Transfers = requires(T& value, A& a) {
  value.Transfer(a);
};

class Packer {
 public:
  static constexpr bool kReads = false;

  template <class T>
  void operator()(T& value) {
    if constexpr (Transfers<T, Packer>) {
      value.Transfer(*this);
    } else {
      static_assert(std::is_trivially_copyable_v<T>);
      Bytes(&value, sizeof value);
    }
  }
  void operator()(std::string& text) { Sequence(text); }
  template <class T>
  void operator()(std::vector<T>& values) {
    Sequence(values);
  }

  const std::vector<char>& Result() const { return fBytes; }

 private:
  template <class S>
  void Sequence(S& values) {
    std::size_t size = values.size();
    (*this)(size);
    for (auto& value : values) (*this)(value);
  }
  void Bytes(const void* from, std::size_t size) {
    const char* bytes = static_cast<const char*>(from);
    fBytes.insert(fBytes.end(), bytes, bytes + size);
  }

  std::vector<char> fBytes;
};

// Reads what a Packer wrote, which must outlive it.
class Unpacker {
 public:
  static constexpr bool kReads = true;

  explicit Unpacker(const char* bytes) : fAt(bytes) {}

  template <class T>
  void operator()(T& value) {
    if constexpr (Transfers<T, Unpacker>) {
      value.Transfer(*this);
    } else {
      static_assert(std::is_trivially_copyable_v<T>);
      std::memcpy(&value, fAt, sizeof value);
      fAt += sizeof value;
    }
  }
  void operator()(std::string& text) { Sequence(text); }
  template <class T>
  void operator()(std::vector<T>& values) {
    Sequence(values);
  }

 private:
  template <class S>
  void Sequence(S& values) {
    std::size_t size = 0;
    (*this)(size);
    values.resize(size);
    for (auto& value : values) (*this)(value);
  }

  const char* fAt;
};

}  // namespace support
