// One line of a file of saved objects, and the tokens in it.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <istream>
#include <optional>
#include <string_view>

namespace NQXML_940::internal {

class SaveLine {
 public:
  static constexpr std::size_t kMaxLength = 255;  // of a line, without its line feed

  SaveLine() = default;
  SaveLine(const SaveLine&) = delete;
  SaveLine& operator=(const SaveLine&) = delete;

  // Takes the next line off the stream: at most 255 characters, the last line with or without a
  // line feed. A longer line, and the end of the file, set the stream's fail state: false then, and
  // from then on. A NUL ends the line early; what follows it is skipped.
  bool Read(std::istream& is) {
    is.getline(fText.data(), static_cast<std::streamsize>(fText.size()));
    fRest = fText.data();
    return !is.fail();
  }

  // What the tokens taken so far have left.
  std::string_view Rest() const { return fRest; }

  // The next run of characters that are no delimiters, without the delimiters before it; they are
  // taken off the rest, and one delimiter behind them too. None when only delimiters are left.
  std::optional<std::string_view> Next(std::string_view delimiters) {
    fRest.remove_prefix(std::min(fRest.find_first_not_of(delimiters), fRest.size()));
    if (fRest.empty()) return std::nullopt;
    const std::string_view token = fRest.substr(0, fRest.find_first_of(delimiters));
    fRest.remove_prefix(std::min(token.size() + 1, fRest.size()));
    return token;
  }

 private:
  std::array<char, kMaxLength + 1> fText{};
  std::string_view fRest;
};

}  // namespace NQXML_940::internal
