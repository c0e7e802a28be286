// SPDX-License-Identifier: GPL-3.0-or-later
// The comment frames of an ID3v2 tag: the ordinary comment, and the five values that stand in
// comment frames marked "MusicMatch".
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "audio/id3v2_text.h"
#include "audio/mp3_info.h"

namespace tunemeadow {

/// Finds a text in the cleaned values (CleanFrameValue) of ranges of a tag, without regard to the
/// case of letters and without building the values. Ranges must be asked for in the order of their
/// begin; then all questions together walk the tag once, however far the ranges overlap.
class ID3v2ValueFinder {
 public:
  /// `needle` in capitals and "_"; it and what the text reads from must outlive the finder.
  ID3v2ValueFinder(const ID3v2TagText& text, std::string_view needle) noexcept
      : text_(text), needle_(needle) {}

  /// Whether the needle stands in the bytes `begin` to `end` (after the last).
  [[nodiscard]] bool IsWithin(std::size_t begin, std::size_t end) noexcept;

 private:
  [[nodiscard]] std::optional<std::size_t> EndOfMatchAt(std::size_t at) noexcept;

  ID3v2TagText text_;
  std::string_view needle_;
  std::size_t searched_ = 0;  ///< every match that begins before has been seen
  std::size_t match_begin_ = 0;
  std::size_t match_end_ = 0;  ///< 0 as long as no match has been seen
};

/// Takes the COMM frames of a tag one by one, in their order, and stores the outcome at the end.
/// What the tag's text reads from must outlive it.
class ID3v2Comments {
 public:
  explicit ID3v2Comments(const ID3v2TagText& text) noexcept;

  /// The next "COMM" of the text. One inside the header of the comment frame before is skipped,
  /// and so is all that follows a frame with a size above 2^31-1.
  void Add(std::size_t offset) noexcept;

  /// The same for a frame whose size after its header is known.
  void Add(std::size_t offset, std::size_t size) noexcept;

  /// Fills Preference, Situation, Bio, Tempo, Mood and Comment. The last ordinary frame gives the
  /// comment, less the four characters of language and empty description. False if a frame's size
  /// was above 2^31-1: Comment then holds the whole value of the frame before it, if there is one.
  [[nodiscard]] bool StoreIn(Mp3Info& info);

 private:
  static constexpr std::size_t kFields = 5;

  [[nodiscard]] TagText ValueOf(const std::optional<ID3v2ValueRange>& range);

  ID3v2TagText text_;
  ID3v2ValueFinder musicmatch_;
  std::array<ID3v2ValueFinder, kFields> finders_;
  std::array<std::optional<ID3v2ValueRange>, kFields> fields_;  ///< raw values, the last of each
  std::optional<ID3v2ValueRange> ordinary_;
  std::optional<ID3v2ValueRange> latest_;
  std::size_t next_ = 0;
  bool failed_ = false;
};

}  // namespace tunemeadow
