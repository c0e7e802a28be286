// SPDX-License-Identifier: GPL-3.0-or-later
// The record of the current audio file: what its first frame header says, and its tag strings.
// Every reader takes it by reference and fills its own fields; none resets the whole record.
#pragma once

#include <cstdint>
#include <string>

namespace tunemeadow {

/// Bytes of a tag, one character per byte in Windows-1252. All 256 values survive.
using TagText = std::string;

/// Header values and tag strings of one file. A field keeps the value of the file read before
/// until a reader stores a new one: ReadMp3Info stores its header fields only when the whole
/// header made sense, so a damaged file shows the quality of its predecessor. The record starts
/// zeroed, once per run.
struct Mp3Info {
  std::int16_t Bitrate = 0;     ///< kbit/s; an estimate for a variable bit rate
  std::int32_t SampleRate = 0;  ///< Hz
  TagText ChannelMode;          ///< "Stereo", "Joint Stereo", "Dual Channel", "Single Channel"
  TagText Emphasis;             ///< "None", "50/15", "Reserved", "CCITT J 17"
  std::int16_t Version = 0;     ///< MPEG version, 1 or 2
  std::int16_t Layer = 0;       ///< 1 to 3; 0 for the reserved code
  TagText Padding;              ///< "Yes" or "No"
  TagText Crc;                  ///< "Yes" or "No"
  std::int32_t Playtime = 0;    ///< whole seconds
  TagText Copyright;            ///< "Yes"/"No" after the analysis, text of TCOP after an ID3v2 read
  TagText Original;             ///< "Yes"/"No" after the analysis, text of TOPE after an ID3v2 read
  TagText Private;              ///< "Yes" or "No"
  bool HasID3v1 = false;        ///< the trailer scan met a tag
  TagText Title;
  TagText Artist;
  TagText Album;
  TagText Year;
  TagText Comment;
  std::int16_t Genre = 255;     ///< ID3v1 number; 255 means none
  TagText Track = "0";          ///< decimal text; "0" when none
  bool IsVbr = false;           ///< a Xing header stands in the first frame
  std::int16_t VbrFrames = 0;   ///< frame count of the Xing header
  std::int32_t FileLength = 0;  ///< bytes
  TagText CommentOverride;      ///< emptied by each analysis; nothing fills it
  TagText EncodedBy;
  TagText Bpm;
  TagText TrackV2;
  TagText Composer;
  TagText GenreV2;
  TagText Url;
  TagText Lyrics;
  TagText Bio;
  TagText Tempo;
  TagText Mood;
  TagText Situation;
  TagText Preference;
  bool HasPicture = false;  ///< an APIC frame exists
  bool NoHeader = false;    ///< no frame sync was found
};

}  // namespace tunemeadow
