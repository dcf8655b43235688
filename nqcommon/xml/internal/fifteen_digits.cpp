#include <nqcommon/xml/internal/fifteen_digits.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace NQXML_940::internal {

namespace {

__extension__ typedef unsigned __int128 Uint128;

constexpr int kDigits = 15;
constexpr std::uint64_t kTenTo14 = 100000000000000;

// A power of ten is 10^(23 q) 10^r with r from 0 to 22: 10^r times the 53 bits of a double is exact
// in 128 bits, and 28 values of q serve all doubles.
constexpr int kStep = 23;
constexpr int kMinQ = -13;
constexpr int kMaxQ = 14;
constexpr std::uint64_t kFiveToStep = 11920928955078125;

constexpr int FloorLog2OfPowerOf10(int power) { return (power * 1741647) >> 19; }  // to |1233|
constexpr int FloorLog10OfPowerOf2(int power) { return (power * 315653) >> 20; }   // to |2620|

constexpr int LeadingZeros(Uint128 x) {  // of any x but 0
  const auto high = static_cast<std::uint64_t>(x >> 64);
  const auto low = static_cast<std::uint64_t>(x);
  return high != 0 ? std::countl_zero(high) : 64 + std::countl_zero(low | 1);
}

// An integer of 1024 bits, the lowest 64 first: enough for 5^(14 23), and for 2^1023 over 5^(13 23)
// with more than 128 bits.
class BigInteger {
 public:
  constexpr explicit BigInteger(std::size_t bit) {
    fWords[bit / 64] = std::uint64_t{1} << bit % 64;
  }

  constexpr void Multiply(std::uint64_t factor) {
    Uint128 carry = 0;
    for (std::uint64_t& word : fWords) {
      carry += Uint128{word} * factor;
      word = static_cast<std::uint64_t>(carry);
      carry >>= 64;
    }
  }

  constexpr void Divide(std::uint64_t divisor) {  // quotients of quotients stay the floor of all
    Uint128 rest = 0;
    for (std::size_t i = fWords.size(); i-- > 0;) {
      rest = rest << 64 | fWords[i];
      fWords[i] = static_cast<std::uint64_t>(rest / divisor);
      rest %= divisor;
    }
  }

  constexpr Uint128 Top128Bits() const {
    std::size_t i = fWords.size() - 1;
    while (fWords[i] == 0) --i;
    const int shift = std::countl_zero(fWords[i]);
    const auto word = [&](std::size_t below) { return i >= below ? fWords[i - below] : 0; };
    const Uint128 top = Uint128{word(0)} << 64 | word(1);
    return shift == 0 ? top : top << shift | word(2) >> (64 - shift);
  }

 private:
  std::array<std::uint64_t, 16> fWords{};
};

// The first 128 bits of 10^(23 q), the others cut off, for q from kMinQ to kMaxQ.
constexpr auto kCoarsePowers = [] {
  std::array<Uint128, kMaxQ - kMinQ + 1> powers{};
  BigInteger up(0);
  for (int q = 0; q <= kMaxQ; ++q, up.Multiply(kFiveToStep)) {
    powers[static_cast<std::size_t>(q - kMinQ)] = up.Top128Bits();
  }
  BigInteger down(1023);
  for (int q = -1; q >= kMinQ; --q) {
    down.Divide(kFiveToStep);
    powers[static_cast<std::size_t>(q - kMinQ)] = down.Top128Bits();
  }
  return powers;
}();

constexpr auto kFinePowers = [] {
  std::array<Uint128, kStep> powers{};
  Uint128 power = 1;
  for (Uint128& entry : powers) {
    entry = power;
    power *= 10;
  }
  return powers;
}();

// The upper half of the product, the lower one cut off.
constexpr Uint128 MultiplyHigh(Uint128 a, Uint128 b) {
  const auto high = [](Uint128 x) { return static_cast<std::uint64_t>(x >> 64); };
  const auto low = [](Uint128 x) { return static_cast<std::uint64_t>(x); };
  const Uint128 cross1 = Uint128{high(a)} * low(b);
  const Uint128 cross2 = Uint128{low(a)} * high(b);
  const Uint128 middle = Uint128{high(Uint128{low(a)} * low(b))} + low(cross1) + low(cross2);
  return Uint128{high(a)} * high(b) + high(cross1) + high(cross2) + high(middle);
}

// A number as digits 10^(exponent - 14), the digits from 10^14 to 10^15 - 1.
struct Decimal {
  std::uint64_t digits;
  int exponent;
};

// mantissa 2^binaryExponent with 15 digits, correctly rounded; none where that cannot be told. The
// mantissa has up to 53 bits and is not 0.
std::optional<Decimal> Round(std::uint64_t mantissa, int binaryExponent) {
  const int bits = static_cast<int>(std::bit_width(mantissa));
  // Exact or one too small: the number may be larger than the power of two below it.
  int exponent = FloorLog10OfPowerOf2(bits - 1 + binaryExponent);
  // The number times 10^power, in [10^14, 10^16), is scaled / 2^shift; with what was cut off from
  // the power and from the product it is below (scaled + 2) / 2^shift.
  const int power = kDigits - 1 - exponent;
  const int q = (power - kMinQ * kStep) / kStep + kMinQ;  // floor
  const Uint128 fine = mantissa * kFinePowers[static_cast<std::size_t>(power - q * kStep)];
  const int zeros = LeadingZeros(fine);
  const Uint128 scaled =
      MultiplyHigh(fine << zeros, kCoarsePowers[static_cast<std::size_t>(q - kMinQ)]);
  const int shift = zeros - binaryExponent - FloorLog2OfPowerOf10(q * kStep) - 1;
  auto digits = static_cast<std::uint64_t>(scaled >> shift);
  Uint128 half = Uint128{1} << (shift - 1);
  Uint128 rest = scaled & (2 * half - 1);
  if (digits >= 10 * kTenTo14) {
    rest += Uint128{digits % 10} << shift;
    half *= 10;
    digits /= 10;
    ++exponent;
  }
  if (rest <= half && rest + 2 > half) return std::nullopt;
  if (rest > half) ++digits;
  if (digits == 10 * kTenTo14) return Decimal{kTenTo14, exponent + 1};
  return Decimal{digits, exponent};
}

char* WriteExponent(int exponent, char* to) {
  *to++ = 'e';
  *to++ = exponent < 0 ? '-' : '+';
  if (std::abs(exponent) < 10) *to++ = '0';
  return std::to_chars(to, to + 3, std::abs(exponent)).ptr;
}

// The form of "%g": no trailing zeros, and an exponent outside of 1e-4 to 1e15.
char* WriteDecimal(const Decimal& number, char* to) {
  char digits[kDigits];
  std::to_chars(digits, digits + kDigits, number.digits);
  const char* end = digits + kDigits;
  while (end[-1] == '0') --end;
  const int exponent = number.exponent;
  const bool isScientific = exponent < -4 || exponent >= kDigits;
  if (!isScientific && exponent < 0) {
    to = std::copy_n("0.000", 1 - exponent, to);
    return std::copy(static_cast<const char*>(digits), end, to);
  }
  const char* point = digits + (isScientific ? 1 : exponent + 1);
  to = std::copy(static_cast<const char*>(digits), point, to);  // zeros before the point stay
  if (point < end) {
    *to++ = '.';
    to = std::copy(point, end, to);
  }
  return isScientific ? WriteExponent(exponent, to) : to;
}

}  // namespace

char* WriteFifteenDigits(double value, char* to) {
  constexpr int kMantissaBits = 52;
  constexpr std::uint64_t kHiddenBit = std::uint64_t{1} << kMantissaBits;
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const int biased = static_cast<int>(bits >> kMantissaBits & 0x7FF);
  const std::uint64_t mantissa = (bits & (kHiddenBit - 1)) | (biased == 0 ? 0 : kHiddenBit);
  if (mantissa != 0 && std::isfinite(value)) {
    const int binaryExponent = std::max(biased, 1) - 1023 - kMantissaBits;
    if (const std::optional<Decimal> decimal = Round(mantissa, binaryExponent)) {
      if (std::signbit(value)) *to++ = '-';
      return WriteDecimal(*decimal, to);
    }
  }
  return std::to_chars(to, to + kNumberRoom, value, std::chars_format::general, kDigits).ptr;
}

}  // namespace NQXML_940::internal
