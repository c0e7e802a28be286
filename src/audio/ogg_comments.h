// SPDX-License-Identifier: GPL-3.0-or-later
// A few Vorbis comments from the first 1024 bytes of an Ogg file, searched as text: no pages, no
// packets. Bit rate and play time are not read.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "audio/file_bytes.h"
#include "audio/mp3_info.h"

namespace tunemeadow {

/// Fills Title, Album, TrackV2, Artist, the organization's field, Comment, GenreV2, Url, Copyright
/// and Year in this order, then FileLength; a missing comment is empty. Values are bytes (UTF-8
/// in a sound file), read as Windows-1252.
///
/// Returns "OK" or what went wrong; the fields before the failing one are then filled, FileLength
/// is not.
[[nodiscard]] std::string ReadOggInfo(FileBytes& file, Mp3Info& info);
[[nodiscard]] std::string ReadOggInfo(const std::string& path, Mp3Info& info);

/// The value after the first `key` ("TITLE=", upper case, found in any case and place) of `block`;
/// empty if there is none. Its length is the low byte of the comment's length less the key's.
/// nullopt if that byte stands before the block, or is less than the key's length.
[[nodiscard]] std::optional<TagText> OggField(std::string_view block, std::string_view key);

}  // namespace tunemeadow
