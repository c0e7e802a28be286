// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_frame_table.h"

#include <algorithm>

namespace tunemeadow {

constinit const std::array<ID3v2FrameRow, 55> kID3v2Frames = {{
    {"TIT1", "Content group description"},
    {"TIT2", "Title/Songname/Content description"},
    {"TIT3", "Subtitle/Description refinement"},
    {"TALB", "Album/Movie/Show title"},
    {"TOAL", "Original album/movie/show title"},
    {"TRCK", "Track number/Position in set"},
    {"TPOS", "Part of a set"},
    {"TSST", "Set subtitle"},
    {"TSRC", "International Standard Recording Code "},
    {"TPE1", "Lead artist/Lead performer/Soloist/Performing group"},
    {"TPE2", "Band/Orchestra/Accompaniment"},
    {"TPE3", "Conductor"},
    {"TPE4", "Interpreted, remixed, or otherwise modified by"},
    {"TOPE", "Original artist/performer"},
    {"TEXT", "Lyricist/Text writer"},
    {"TOLY", "Original lyricist/text writer"},
    {"TCOM", "Composer"},
    {"TMCL", "Musician credits list"},
    {"TIPL", "Involved people list"},
    {"TENC", "Encoded by"},
    {"TBPM", "BPM"},
    {"TLEN", "Length"},
    {"TKEY", "Initial key"},
    {"TLAN", "Language"},
    {"TCON", "Content type(genre)"},
    {"TFLT", "File type"},
    {"TMED", "Media type"},
    {"TMOO", "Mood"},
    {"TCOP", "Copyright message"},
    {"TPRO", "Produced notice"},
    {"TPUB", "Publisher"},
    {"TOWN", "File owner/licensee"},
    {"TRSN", "Internet radio station name"},
    {"TRSO", "Internet radio station owner"},
    {"TOFN", "Original filename"},
    {"TDLY", "Playlist delay"},
    {"TDEN", "Encoding time"},
    {"TDOR", "Original release time"},
    {"TDRC", "Recording time"},
    {"TDRL", "Release time"},
    {"TDTG", "Tagging time"},
    {"TSSE", "Software/Hardware and settings used for encoding"},
    {"TSOA", "Album sort order"},
    {"TSOP", "Performer sort order"},
    {"TSOT", "Title sort order"},
    {"WCOM", "Commercial information"},
    {"WCOP", "Copyright/Legal information"},
    {"WOAF", "Official audio file webpage"},
    {"WOAR", "Official artist/performer webpage"},
    {"WOAS", "Official audio source webpage"},
    {"WORS", "Official Internet radio station homepage"},
    {"WPAY", "Payment"},
    {"WPUB", "Publishers official webpage"},
    {"USLT", "Unsynchronised lyrics/text transcription"},
    {"APIC", "Picture"},
}};

std::string_view ID3v2FrameDescription(std::string_view identifier) noexcept {
  const auto* const row = std::find_if(
      kID3v2Frames.begin(), kID3v2Frames.end(),
      [identifier](const ID3v2FrameRow& each) { return each.identifier == identifier; });
  return row == kID3v2Frames.end() ? std::string_view() : row->description;
}

}  // namespace tunemeadow
