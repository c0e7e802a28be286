// SPDX-License-Identifier: GPL-3.0-or-later
// What the writers and removers of tags share: the journal, the picture to be written, and a count
// of what a write drops or cuts without having been asked to.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "audio/file_bytes.h"
#include "audio/mp3_info.h"
#include "files/undo_journal.h"

namespace tunemeadow {

/// Results of the removers besides "OK" and the texts that no such tag is there.
inline constexpr std::string_view kNoID3v1Tag = "No ID3v1 Tag available to remove!";
inline constexpr std::string_view kNoID3v2Tag = "No ID3v2 Tag available to remove!";
inline constexpr std::string_view kNoID3v2Picture = "No ID3v2-APIC Tag available to remove!";
inline constexpr std::string_view kNoLyrics3Tag = "No LYRICS3 Tag available to remove!";

/// What saves have dropped or cut. Counts of frames and texts, not of files.
struct TagLosses {
  int frames = 0;      ///< of an old ID3v2 tag that the new one has no place for
  int characters = 0;  ///< texts with a character outside Windows-1252, written as "?"
  int long_texts = 0;  ///< frames of 128 bytes and more, whose size other programs misread
  int blocks = 0;      ///< Lyrics3 blocks of which only a part could be read and kept
  int cut_texts = 0;   ///< texts cut to the 255 characters that a row has room for
  int texts = 0;       ///< of an old ID3v2 tag that cannot be read as they are and so were not kept
  int values = 0;      ///< of texts of an old ID3v2 tag, beside the first value of each
  int pictures = 0;    ///< of an old ID3v2 tag that were dropped, or copied and cannot be seen now
  int sounds = 0;      ///< Lyrics3 blocks written over the last 128 bytes of sound

  TagLosses& operator+=(const TagLosses& more) noexcept;
};

/// One short sentence for the status line; empty if nothing was lost.
[[nodiscard]] std::string LossSentence(const TagLosses& losses);

struct TagWriting {
  explicit TagWriting(UndoJournal& journal_in) : journal(journal_in) {}

  UndoJournal& journal;
  std::function<void()> yield;  ///< called between the reading and the writing of a whole file; may
                                ///< be empty
  std::string PictureFile;      ///< picture for WriteID3v2Tag; bytes
  TagText PictureExtension;     ///< of its name, without the point
  TagLosses losses;             ///< the writers add to it
  std::string fault;            ///< why the last writer or remover left its file as it was, one
                                ///< sentence for a person; empty if it went well or there was
                                ///< nothing to remove
};

/// Runs one writer or remover, whose own sentence `write` returns: empty if it went well or
/// there was nothing to do. Keeps that sentence in `writing.fault` and returns it; memory that runs
/// out becomes one as well.
std::string RunWriter(TagWriting& writing, const std::function<std::string()>& write);

/// The ranges of a file that its tags take up: the ID3v2 tag with its header (up to 1 MB), and what
/// follows the audio, from the Lyrics3 block or the ID3v1 record on.
[[nodiscard]] std::vector<ByteRange> TagRanges(FileBytes& file);

}  // namespace tunemeadow
