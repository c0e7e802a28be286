// SPDX-License-Identifier: GPL-3.0-or-later
// The one way to the tags of a file. A command speaks of a track's texts in UTF-8; which tags hold
// them, in which code page and under which names, is known behind this port alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "audio/file_bytes.h"
#include "audio/id3v2_pictures.h"
#include "audio/mdl_ID3.h"
#include "audio/mp3reader.h"
#include "audio/tag_writing.h"
#include "run/preferences.h"
#include "tracks/track_fields.h"

namespace tunemeadow {

/// How a file is read, told by its extension alone.
enum class FileKind {
  kMp3,
  kOgg,
  kOther,  ///< nothing is read of it but length and date
};
[[nodiscard]] FileKind FileKindOf(std::string_view path) noexcept;

/// In the order in which they are written.
enum class SavedTag { kID3v2, kID3v1, kLyrics3 };

/// Characters of a comment that a track number follows in an ID3v1.1 record.
inline constexpr std::size_t kCommentBeforeTrack = 28;

/// Bytes by which tags after the audio commonly grow: those of an ID3v1 record.
inline constexpr std::int64_t kGrowthOfTags = sizeof(ID3v1Tag);

/// What is to go into a tag.
struct TagsToWrite {
  const TrackTexts& texts;    ///< the tag texts of it count; what is empty is erased
  bool empty_record = false;  ///< the ID3v1 record is to hold nothing at all, not even its mark
};

enum class PictureState { kNone, kHasOne, kEmptyFile, kUnreadable };

/// Paths are bytes. What cannot be written leaves the file as it was.
class TagPort {
 public:
  TagPort() = default;
  virtual ~TagPort() = default;
  TagPort(const TagPort&) = delete;
  TagPort& operator=(const TagPort&) = delete;

  /// What an import learns of the open file: the tag texts, of the preferences those that are
  /// wanted; number and name of the genre, quality, play time and its seconds, the three flags.
  /// Every other text is empty. A file that is not open has what a damaged one has. `progress` may
  /// be null.
  virtual void Read(FileBytes& file, FileKind kind, const Preferences& options,
                    ScanProgress* progress, TrackTexts& texts) = 0;

  /// The tag texts that a rewrite of the tags of an MPEG file has to keep, whatever an import
  /// skips: each ID3v2 text ends where its frame does. False if the file cannot be opened;
  /// `texts` is then as before.
  [[nodiscard]] virtual bool ReadTexts(const std::string& path, TrackTexts& texts) = 0;

  /// Writes one tag. A Lyrics3 block keeps what of the old one is no text of a track. What the tag
  /// cannot hold is counted in `writing.losses`. False if that failed.
  [[nodiscard]] virtual bool Write(SavedTag tag, const std::string& path, const TagsToWrite& tags,
                                   TagWriting& writing) = 0;

  /// Takes one tag away. "OK", the text that there is none (NoTagText), or what failed.
  [[nodiscard]] virtual std::string Remove(SavedTag tag, const std::string& path,
                                           TagWriting& writing) = 0;

  /// What the file's own tag says, whatever its row does.
  [[nodiscard]] virtual PictureState StateOfPicture(const std::string& path) = 0;
  [[nodiscard]] virtual std::optional<ID3v2Picture> ReadPicture(const std::string& path) = 0;

  /// Writes the texts and the picture of `writing` after those that are there. "OK" or what
  /// failed.
  [[nodiscard]] virtual std::string WritePicture(const std::string& path, const TrackTexts& texts,
                                                 TagWriting& writing) = 0;

  /// Takes every picture away. "OK", kNoID3v2Picture, or what failed.
  [[nodiscard]] virtual std::string RemovePictures(const std::string& path,
                                                   TagWriting& writing) = 0;
};

/// The result of TagPort::Remove if there is no such tag.
[[nodiscard]] std::string_view NoTagText(SavedTag tag) noexcept;

}  // namespace tunemeadow
