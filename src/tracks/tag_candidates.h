// SPDX-License-Identifier: GPL-3.0-or-later
// What the tags of one file say, gathered from its readers one by one and then made one set of
// texts. Pure: opens no file.
#pragma once

#include <cstdint>

#include "audio/lyrics3.h"
#include "audio/mp3_info.h"
#include "tracks/track_fields.h"

namespace tunemeadow {

/// What a file's tags offer for its row beside the fields of an ID3v1 tag, without zero bytes and
/// blanks at the ends. Windows-1252.
struct TagCandidates {
  TrackTexts texts;          ///< of tag texts only; the genre is its name
  TagText genre_number;      ///< text; empty: the genre of the ID3v1 tag stays
  std::int16_t genre = 255;  ///< the number that the text stands for, 255 for anything but one
  bool has_picture = false;
  bool has_id3v1 = false;  ///< the last 128 bytes are an ID3v1 tag
  bool has_id3v2 = false;

  /// As new, but for the memory of the texts.
  void Clear();
};

/// Takes the values that ReadID3v2Tag left in `info`.
void TakeID3v2Values(const Mp3Info& info, TagCandidates& candidates);

/// Takes the values that ReadOggInfo left in `info`, a record of its own.
void TakeOggValues(const Mp3Info& info, TagCandidates& candidates);

/// Each non-empty field of the block that is a field of a track replaces its candidate.
void TakeLyrics3Values(const Lyrics3& lyrics3, TagCandidates& candidates);

/// The values that ReadMp3Info leaves of an ID3v1 record.
struct ID3v1Values {
  const Mp3Info* info = nullptr;  ///< null: not an MPEG file, whose analysis alone leaves them
  [[nodiscard]] bool HasTrack() const {
    return info != nullptr && !info->Track.empty() && info->Track != "0";
  }
};

/// Sets every text of `texts`: those of the tags, UTF-8, without zero bytes and blanks at the ends,
/// a candidate before the value of the ID3v1 record; number and name of the genre; the three flags.
/// All others are empty.
void MergeTags(const TagCandidates& candidates, const ID3v1Values& id3v1, TrackTexts& texts);

}  // namespace tunemeadow
