// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of a track as the classic writers take them: Windows-1252, a character that it lacks as
// "?".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "audio/id3v1_writer.h"
#include "audio/lyrics3_writer.h"
#include "audio/mp3_info.h"
#include "audio/tag_writing.h"
#include "tracks/track_fields.h"

namespace tunemeadow {

/// The track number as it is saved: the leading number without leading zeros, empty if that is
/// not above 0. nullopt if it is above 255.
[[nodiscard]] std::optional<std::string> TrackToSave(std::string_view text);

/// Sets every field of `info` that the ID3v2 writer takes. Genre is the number of the text, 255 for
/// any other; GenreV2 the text. Adds to `losses` the texts that Windows-1252 cannot hold.
void FillInfo(const TrackTexts& texts, Mp3Info& info, TagLosses& losses);

/// The same for an ID3v1 record, which takes the track number that TrackToSave makes.
[[nodiscard]] ID3v1Tag FillRecord(const TrackTexts& texts, TagLosses& losses);

/// The same for a Lyrics3 block, of whose title, artist and album only the lengths count.
[[nodiscard]] Lyrics3Texts FillLyrics3(const TrackTexts& texts, TagLosses& losses);

}  // namespace tunemeadow
