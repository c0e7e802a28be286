// SPDX-License-Identifier: GPL-3.0-or-later
// Counts what a rebuilt ID3v2 tag does not keep of the old one, so that a save can say so.
#pragma once

#include <span>
#include <string_view>

#include "audio/id3v2_frames.h"
#include "audio/mp3_info.h"
#include "audio/tag_writing.h"

namespace tunemeadow {

/// What goes of `tag` (header and body, version 2.2 to 2.4) when a new one is built from `written`
/// and the pictures `copied`, found in a text that begins with the tag. Frames are walked by their
/// true sizes; the count ends where one leads nowhere. A frame without a value is not missed.
///
/// `frames`: what a new tag has no place for. It has one for the frames it is built of, for one
/// link, one lyrics text, and of the comments for the first without a description and those that
/// are marked "MusicMatch_".
/// `texts`: texts that have a place and are not what the old frame says: those of version 2.2,
/// which no reader sees, and those in Unicode that cannot be read byte by byte. One that was
/// emptied is not counted in 2.3 and 2.4.
/// `values`: what a text frame holds beside its first value, and its repetitions.
/// `pictures`: those that are not copied to the byte, and those whose bytes are not those of a
/// picture before they are decoded (compressed, unsynchronised and the like).
[[nodiscard]] TagLosses CountID3v2Losses(std::string_view tag, const Mp3Info& written,
                                         std::span<const ID3v2PictureRange> copied);

}  // namespace tunemeadow
