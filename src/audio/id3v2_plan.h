// SPDX-License-Identifier: GPL-3.0-or-later
// What the head of a file is to become when its ID3v2 tag is written, loses its pictures or goes.
// Bytes in memory only: nothing is read and nothing written.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "audio/mp3_info.h"
#include "audio/tag_writing.h"

namespace tunemeadow {

/// The file afterwards is `tag` and then the old file from `audio` on.
struct ID3v2Plan {
  std::string error;       ///< why nothing is to be written; the rest then means nothing
  std::string tag;         ///< header, frames, zero bytes
  std::int64_t audio = 0;  ///< where the old file goes on after its tag, from 0
  TagLosses losses;        ///< what the new tag does not keep, and its long texts

  /// Whether what follows the tag stays where it is.
  [[nodiscard]] bool StaysInPlace() const noexcept {
    return static_cast<std::int64_t>(tag.size()) == audio;
  }
};

struct ID3v2NewPicture {
  std::string_view bytes;
  std::string_view extension;  ///< Windows-1252, without the point
};

/// How much of a file's start the plans are to be handed: as many bytes as the tag declares and 101
/// more, with zero bytes in place of what the file lacks. `start` holds the first ten bytes or
/// more, `length` is the file's. As long as `start` itself if there is no tag or the tag declares
/// more than the file has, which is an error whatever follows.
[[nodiscard]] std::size_t ID3v2HeadBytes(std::string_view start, std::int64_t length) noexcept;

/// A new tag from `info`, whose Lyrics gets four zero bytes in front. Pictures of the old tag are
/// copied, those of version 4 with a plain size, `picture` follows them. A tag that fits into the
/// old one keeps its size bytes, otherwise 800 zero bytes follow the frames. An error where the old
/// tag tells more bytes than the file has, a picture in it runs past its end, or the new tag would
/// have 2^28 bytes or more.
[[nodiscard]] ID3v2Plan PlanNewTag(std::string_view head, std::int64_t length,
                                   const std::optional<ID3v2NewPicture>& picture, Mp3Info& info);

/// The old tag without its picture frames and as much shorter; the first six bytes of its header
/// stay. The error is kNoID3v2Picture if there is none.
[[nodiscard]] ID3v2Plan PlanWithoutPictures(std::string_view head, std::int64_t length);

/// No tag. The error is kNoID3v2Tag if there is none.
[[nodiscard]] ID3v2Plan PlanWithoutTag(std::string_view head, std::int64_t length);

}  // namespace tunemeadow
