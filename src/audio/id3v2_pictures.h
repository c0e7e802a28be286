// SPDX-License-Identifier: GPL-3.0-or-later
// The picture in an ID3v2 tag, for the picture pane.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "audio/file_bytes.h"
#include "audio/mp3_info.h"

namespace tunemeadow {

/// What the first APIC frame of a tag holds.
struct ID3v2Picture {
  std::string data;       ///< the picture file's bytes, from its signature to the frame's end
  TagText mime;           ///< as it stands, such as "image/jpeg"; may be empty
  std::string extension;  ///< of `mime`, fit for a file name: lower-case letters and digits only
  TagText description;    ///< without byte order mark; zero bytes of UTF-16 in it; may be empty
  std::uint8_t kind = 0;  ///< 3 is the front cover, 0 any other picture
};

/// The JPEG picture at the first "APIC" of the tag, whose size in version 4 may have seven bits a
/// byte (FindPictureFrames). nullopt if the file has no tag, no such name in it, a frame size above
/// 2^31-1, or a frame without FF D8 FF: pictures of other kinds are not found.
[[nodiscard]] std::optional<ID3v2Picture> ReadID3v2Pictures(FileBytes& file);
[[nodiscard]] std::optional<ID3v2Picture> ReadID3v2Pictures(const std::string& path);

}  // namespace tunemeadow
