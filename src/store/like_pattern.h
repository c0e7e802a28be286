// SPDX-License-Identifier: GPL-3.0-or-later
// The pattern of a `like`, prepared once and matched against many texts, without regard to case.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tunemeadow {

/// "%" stands for any run of characters, "_" for one character, everything else for itself in
/// either case (FoldCase of core/text.h). Texts are UTF-8; a malformed byte is a character of its
/// own.
class LikePattern {
 public:
  explicit LikePattern(std::string_view pattern);

  /// Whether the whole text matches. Never slower than the length of the text times that of the
  /// pattern. Not for two threads at once: it keeps a buffer.
  [[nodiscard]] bool Matches(std::string_view text);

 private:
  /// What stands between two "%": folded bytes, "_" still in its place.
  struct Piece {
    std::string bytes;
    bool has_any_one = false;
    std::array<std::uint8_t, 256> skip{};  ///< how far a byte under the last place lets us move on
  };

  static constexpr std::size_t kNotFound = std::string_view::npos;

  [[nodiscard]] bool MatchesFolded(std::string_view text) const noexcept;
  [[nodiscard]] static std::size_t EndOfMatchAt(const Piece& piece, std::string_view text,
                                                std::size_t at) noexcept;
  [[nodiscard]] static std::size_t EndOfFirst(const Piece& piece, std::string_view text,
                                              std::size_t from) noexcept;
  [[nodiscard]] static bool MatchesAtEnd(const Piece& piece, std::string_view text,
                                         std::size_t from) noexcept;
  void AddPiece(std::string bytes);

  std::vector<Piece> pieces_;
  bool open_start_ = false;   ///< begins with "%"
  bool open_end_ = false;     ///< ends with "%"
  bool plain_ascii_ = true;   ///< can be sought in the bytes of any text as they are
  bool has_foreign_ = false;  ///< holds a letter that characters outside ASCII fold to
  std::string folded_;
};

}  // namespace tunemeadow
