// SPDX-License-Identifier: GPL-3.0-or-later
// The frames of a new ID3v2.3 tag, and the picture frames of an old one. Bytes in memory only.
//
// A text frame:  name 4 | size 4, seven bits a byte | flags 00 00 | encoding 00 | value, no end
// mark A new picture: "APIC" | size 4, a plain number | 00 00 00 "image/" extension 00 00 00 |
//                bytes of the picture | 13 zero bytes
//
// The size of a new picture is always that of its bytes + 13, which is its frame's head for an
// extension of three letters; the 13 zero bytes lie outside of it. Other readers take them for the
// padding and stop there.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "audio/id3v2_walk.h"
#include "audio/mp3_info.h"

namespace tunemeadow {

/// Room in front of the frames for the header of the tag.
inline constexpr std::size_t kFramesStart = 10;

/// `value` divided by 2^21, 2^14, 2^7 and 1, each masked with 127. From 2^28 on bits are lost.
[[nodiscard]] std::array<char, 4> SyncSafeBytes(std::size_t value) noexcept;

/// The frames of a new tag, added from the first to the last, after ten zero bytes.
class ID3v2Frames {
 public:
  /// `expected` bytes of pictures need no second allocation.
  explicit ID3v2Frames(std::size_t expected);

  /// TPE1 to the last COMM, all of them, also with empty values.
  void AddTexts(const Mp3Info& info);

  /// A picture frame as it stands in an old tag, header included.
  void AddRaw(std::string_view frame) { bytes_ += frame; }

  /// The same for one whose size has seven bits a byte: its size becomes a plain number.
  void AddWithPlainSize(std::string_view frame);

  /// A new picture; `extension` without a point, Windows-1252.
  void AddPicture(std::string_view picture, std::string_view extension);

  /// TCON and USLT, which close the tag.
  void AddGenreAndLyrics(const Mp3Info& info);

  /// Bytes of all frames, without the room in front.
  [[nodiscard]] std::size_t Size() const noexcept { return bytes_.size() - kFramesStart; }

  /// Frames with a size of 128 and more, pictures aside: their size bytes are no plain number.
  [[nodiscard]] int LongTexts() const noexcept { return long_texts_; }

  /// Room and frames, and zero bytes up to `size` bytes of frames. Ends the use of the object.
  [[nodiscard]] std::string Take(std::size_t size) &&;

 private:
  /// Name, `size`, `zeros` zero bytes.
  void AddHead(std::string_view name, std::size_t size, std::size_t zeros);
  void AddPlainSize(std::size_t size);

  std::string bytes_;
  int long_texts_ = 0;
};

/// Where a picture frame stands in a text, from 0.
struct ID3v2PictureRange {
  std::size_t begin = 0;
  std::size_t end = 0;      ///< after its last byte; may lie up to two bytes after the text
  bool seven_bits = false;  ///< its size is no plain number
};

/// Every "APIC" of `text` from `from` on, in frames and inside other texts alike. `text` begins
/// with a tag, header and body, of `tag_bytes` bytes. The size after the name is a plain number,
/// but in a tag of version 4 it has seven bits a byte where it leads to a frame or padding
/// (TrueFrameSize). The search goes on two bytes before the end of the frame found. nullopt if a
/// size is above 2^31-1 or leaves less than nothing of the text.
[[nodiscard]] std::optional<std::vector<ID3v2PictureRange>> FindPictureFrames(
    std::string_view text, std::size_t from, std::size_t tag_bytes);

/// The size of the picture frame at `offset` of such a text, by the same rule; nullopt if it is
/// above 2^31-1.
[[nodiscard]] std::optional<ID3v2TrueSize> PictureFrameSize(std::string_view text,
                                                            std::size_t offset,
                                                            std::size_t tag_bytes) noexcept;

}  // namespace tunemeadow
