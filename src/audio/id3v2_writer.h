// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the ID3v2.3 tag at the head of a file, and takes it away. The tag is rebuilt from the
// tag strings; of the old one only the pictures stay. The layout is that of the ID3v2.3.0 informal
// standard, but for the sizes of all frames but APIC: seven bits per byte, as in 2.4. Below 128
// bytes both are the same; above, readers of plain numbers see a larger size. It has been written
// so for as long as there are catalogues, and is kept.
#pragma once

#include <string>

#include "audio/mp3_info.h"
#include "audio/tag_writing.h"

namespace tunemeadow {

/// Zero bytes after the frames of a tag that had to grow.
inline constexpr std::size_t kID3v2Reserve = 800;

/// Builds the tag from `info` and writes it in place. A tag that fits into the old one keeps its
/// size; otherwise the audio moves and 800 zero bytes follow the frames. With `withPicture`, and
/// where PictureFile exists, its picture goes in after the copied ones. `info.Lyrics` gets four
/// zero bytes in front at each call and keeps them.
///
/// "OK", also for a file of no bytes, which stays as it is. Otherwise what failed, and the file is
/// as before: it cannot be opened or read, the old tag declares more bytes than the file has, a
/// picture frame of it runs past the tag, there is no room. Moved audio goes block by block: memory
/// grows with the tags and the picture, not with the file.
[[nodiscard]] std::string WriteID3v2Tag(TagWriting& writing, const std::string& path,
                                        bool withPicture, Mp3Info& info);

/// Takes the tag away with its padding; the audio moves to the head of the file. "OK", kNoID3v2Tag,
/// or what failed, with the file as before.
[[nodiscard]] std::string RemoveID3v2Tag(TagWriting& writing, const std::string& path);

/// Cuts every picture frame out of the tag; the tag gets smaller by them and no padding is added.
/// "OK", kNoID3v2Picture, or what failed, with the file as before.
[[nodiscard]] std::string RemoveID3v2Picture(TagWriting& writing, const std::string& path);

}  // namespace tunemeadow
