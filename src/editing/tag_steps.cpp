// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/tag_steps.h"

#include "core/paths.h"
#include "tracks/cd_archive_path.h"

namespace tunemeadow {
namespace {

/// A record begins where the drive and its separator end.
constexpr std::size_t kShortestPath = 4;

class TagSteps {
 public:
  TagSteps(const TagJob& job, TagPort& port, TagWriting& writing, const TagStepTalk& talk)
      : job_(job), port_(port), writing_(writing), talk_(talk) {}

  TagStepsDone Run(const Preferences& preferences) {
    if (preferences.chkSaveTags23) done_.id3v2 = Step(SavedTag::kID3v2);
    if (preferences.chkSaveTags11 && job_.path.size() >= kShortestPath) {
      done_.id3v1 = Step(SavedTag::kID3v1);
    }
    if (job_.lyrics3 && preferences.chkSaveLyrics2 &&
        !job_.tags.texts[TrackField::Lyrics].empty()) {
      (void)Step(SavedTag::kLyrics3);
    }
    return done_;
  }

 private:
  /// True if the tag was written.
  bool Step(SavedTag tag) {
    while (!done_.aborted) {
      if (talk_.begins) talk_.begins(tag);
      const TagLosses before = writing_.losses;
      if (port_.Write(tag, job_.path, job_.tags, writing_)) {
        // What several tags lose counts once.
        if (done_.id3v2) writing_.losses.characters = before.characters;
        return true;
      }
      writing_.losses = before;
      const Answer answer = talk_.failed(tag);
      done_.aborted = answer == Answer::kAbort;
      if (answer != Answer::kRetry) break;
    }
    return false;
  }

  const TagJob& job_;
  TagPort& port_;
  TagWriting& writing_;
  const TagStepTalk& talk_;
  TagStepsDone done_;
};

}  // namespace

bool WritesTags(const std::string& path, const Preferences& preferences) {
  return HasExtension(path, "mp3") && !bCheckCDArchive(path, preferences) &&
         (preferences.chkSaveTags23 || preferences.chkSaveTags11 || preferences.chkSaveLyrics2);
}

TagStepsDone WriteTags(const TagJob& job, const Preferences& preferences, TagPort& port,
                       TagWriting& writing, const TagStepTalk& talk) {
  if (!HasExtension(job.path, "mp3")) return {};
  return TagSteps(job, port, writing, talk).Run(preferences);
}

}  // namespace tunemeadow
