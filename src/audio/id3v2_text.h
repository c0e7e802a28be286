// SPDX-License-Identifier: GPL-3.0-or-later
// An ID3v2 tag as one text: its header, how much of the file belongs to it, and the value of a
// frame whose place is known. No frame walk: frames are found by searching for their names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "audio/file_bytes.h"
#include "audio/mp3_info.h"

namespace tunemeadow {

/// The first ten bytes of a tag. The flags are not looked at.
struct ID3v2Header {
  std::uint8_t version = 0;  ///< major version, 3 for ID3v2.3
  std::int64_t size = 0;     ///< bytes behind the header: four bytes of seven bits each, unmasked
};

inline constexpr std::size_t kID3v2HeaderBytes = 10;

/// The header at the start of `head`; nullopt if that has under ten bytes or no "ID3".
[[nodiscard]] std::optional<ID3v2Header> ParseID3v2Header(std::string_view head) noexcept;

/// The text of a tag: tag size, or file length where that is less, + 101 bytes from the first byte
/// of the file on. It starts with the header, and 91 bytes of what follows the tag close it; what
/// the file lacks is zero. A tag that tells more than 256 MB is read to there. The view lasts until
/// the next read of the file.
[[nodiscard]] std::string_view LoadID3v2Text(FileBytes& file, const ID3v2Header& header) noexcept;

/// The size that the frame at `offset` (from 0) of `text` tells, a plain big-endian number in every
/// version. Bytes behind the text count as zero. nullopt above 2^31-1.
[[nodiscard]] std::optional<std::size_t> FrameSize(std::string_view text,
                                                   std::size_t offset) noexcept;

/// The value behind frame header and encoding byte as it stands in the text: size - 1 bytes from
/// offset + 11 on, clipped at the text's end and at 16 MB. Empty for size 0.
[[nodiscard]] std::string_view RawFrameValue(std::string_view text, std::size_t offset,
                                             std::size_t size) noexcept;

/// Where the description that begins at `from` of a frame's bytes ends: at one zero byte, or with
/// `wide` at two in the step of UTF-16; at the last byte's end where there is none.
[[nodiscard]] std::size_t EndOfDescription(std::string_view frame, std::size_t from,
                                           bool wide) noexcept;

/// The value without the byte order marks: first every FF FE is removed, then every 9F FE. The zero
/// bytes of UTF-16 stay.
[[nodiscard]] TagText CleanFrameValue(std::string_view raw);

/// The value of the frame at `position` (from 1) of the tag text; nullopt where its size is above
/// 2^31-1.
[[nodiscard]] std::optional<TagText> ReadFrameText(std::size_t position, std::string_view tag_text);

}  // namespace tunemeadow
