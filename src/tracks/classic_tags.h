// SPDX-License-Identifier: GPL-3.0-or-later
// The tags as this catalogue has always read and written them: Windows-1252, an ID3v2.3 tag that is
// rebuilt, an ID3v1.1 record, a Lyrics3 block, Vorbis comments for reading only.
#pragma once

#include <string>

#include "audio/lyrics3.h"
#include "audio/mp3_info.h"
#include "tracks/tag_candidates.h"
#include "tracks/tag_port.h"

namespace tunemeadow {

/// One object serves a whole run: the quality of a file whose header is damaged is that of the file
/// that was read before it. Buffers are kept from file to file.
class ClassicTags : public TagPort {
 public:
  void Read(FileBytes& file, FileKind kind, const Preferences& options, ScanProgress* progress,
            TrackTexts& texts) override;
  [[nodiscard]] bool ReadTexts(const std::string& path, TrackTexts& texts) override;
  [[nodiscard]] bool Write(SavedTag tag, const std::string& path, const TagsToWrite& tags,
                           TagWriting& writing) override;
  [[nodiscard]] std::string Remove(SavedTag tag, const std::string& path,
                                   TagWriting& writing) override;
  [[nodiscard]] PictureState StateOfPicture(const std::string& path) override;
  [[nodiscard]] std::optional<ID3v2Picture> ReadPicture(const std::string& path) override;
  [[nodiscard]] std::string WritePicture(const std::string& path, const TrackTexts& texts,
                                         TagWriting& writing) override;
  [[nodiscard]] std::string RemovePictures(const std::string& path, TagWriting& writing) override;

 private:
  Mp3Info info_;  ///< of the file that was read last
  TagCandidates candidates_;
  Lyrics3 lyrics3_;
};

/// Sets what `texts` lacks when the tags of an MPEG or Ogg file have been merged: quality and play
/// time, of `info`, and the length of the comment. `empty`: the file holds nothing, and `info`
/// still what the file before it did.
void SetStreamTexts(const Mp3Info& info, FileKind kind, bool empty, TrackTexts& texts);

}  // namespace tunemeadow
