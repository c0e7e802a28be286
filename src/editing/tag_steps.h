// SPDX-License-Identifier: GPL-3.0-or-later
// The tags of one file, written in their order: ID3v2, ID3v1, Lyrics3. What a save of one record
// and a save of many have in common.
#pragma once

#include <functional>
#include <string>

#include "audio/tag_writing.h"
#include "run/interaction.h"
#include "run/preferences.h"
#include "tracks/tag_port.h"

namespace tunemeadow {

/// What is to be written.
struct TagJob {
  const std::string& path;  ///< bytes
  TagsToWrite tags;
  /// The Lyrics3 block too, where there are lyrics and chkSaveLyrics2 is set.
  bool lyrics3 = false;
};

/// How the steps speak to the person.
struct TagStepTalk {
  std::function<void(SavedTag)> begins;    ///< before each step that writes; may be empty
  std::function<Answer(SavedTag)> failed;  ///< Abort, Retry or Ignore
};

/// What the steps did.
struct TagStepsDone {
  bool id3v2 = false, id3v1 = false;  ///< the tag was written
  bool aborted = false;               ///< Abort: what was written before stays
};

/// Whether any step would write to the file at all: it ends in ".mp3", a tag is wanted, and it does
/// not live on a burnt disc.
[[nodiscard]] bool WritesTags(const std::string& path, const Preferences& preferences);

/// Runs the steps that the preferences want; chkSaveTags is the caller's to ask. Files that do not
/// end in ".mp3" are skipped. Retry repeats the write, Ignore goes on to the next step.
/// `writing.losses` counts what the tags that were written have lost, a text that several of them
/// lack once.
[[nodiscard]] TagStepsDone WriteTags(const TagJob& job, const Preferences& preferences,
                                     TagPort& port, TagWriting& writing, const TagStepTalk& talk);

}  // namespace tunemeadow
