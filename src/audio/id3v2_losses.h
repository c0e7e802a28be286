// SPDX-License-Identifier: GPL-3.0-or-later
// Counts what a rebuilt ID3v2 tag drops of the old one, so that a save can say so.
#pragma once

#include <string_view>

namespace tunemeadow {

/// Frames of `tag` (header and body, version 2.2 to 2.4) that a new tag has no place for. It has
/// one for the frames it is built of, for every picture of 2.3 and 2.4, for one link, one lyrics
/// text, and of the comments for the first without a description and those that are marked
/// "MusicMatch_". A frame without a value is not missed.
///
/// The frames are walked one behind the other. Sizes of 2.3 and 2.4 may be plain numbers or have
/// seven bits a byte, whatever the version says: the one counts that leads to a next frame, to
/// padding or to the end. The count ends where neither does.
[[nodiscard]] int CountLostFrames(std::string_view tag);

}  // namespace tunemeadow
