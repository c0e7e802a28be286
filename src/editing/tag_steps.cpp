// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/tag_steps.h"

#include "audio/id3v1_writer.h"
#include "audio/id3v2_writer.h"
#include "audio/lyrics3_writer.h"
#include "core/code_page.h"
#include "core/paths.h"
#include "tracks/cd_archive_path.h"

namespace tunemeadow {
namespace {

/// A record begins where the drive and its separator end.
constexpr std::size_t kShortestPath = 4;

class TagSteps {
 public:
  TagSteps(const TagJob& job, Mp3Info& info, TagWriting& writing, const TagStepTalk& talk)
      : job_(job), info_(info), writing_(writing), talk_(talk) {}

  TagStepsDone Run(const Preferences& preferences) {
    if (preferences.chkSaveTags23) {
      done_.id3v2 = Step(SavedTag::kID3v2, [this] { return WriteID3v2(); });
    }
    if (preferences.chkSaveTags11 && job_.path.size() >= kShortestPath) {
      done_.id3v1 = Step(SavedTag::kID3v1, [this] { return WriteID3v1(); });
    }
    if (job_.lyrics3 && preferences.chkSaveLyrics2 && !job_.values.lyrics.empty()) {
      (void)Step(SavedTag::kLyrics3, [this] { return WriteLyrics3(); });
    }
    return done_;
  }

 private:
  /// True if the tag was written.
  template <typename Write>
  bool Step(SavedTag tag, Write write) {
    while (!done_.aborted) {
      if (talk_.begins) talk_.begins(tag);
      const TagLosses before = writing_.losses;
      if (write()) return true;
      writing_.losses = before;
      const Answer answer = talk_.failed(tag);
      done_.aborted = answer == Answer::kAbort;
      if (answer != Answer::kRetry) break;
    }
    return false;
  }

  /// The writer puts zero bytes in front of the lyrics, so each try needs its own.
  bool WriteID3v2() {
    FillInfo(job_.values, info_, writing_.losses);
    return WriteID3v2Tag(writing_, job_.path, false, info_) == "OK";
  }

  /// What several tags lose counts once.
  bool WriteID3v1() {
    const TagValues& values = job_.values;
    if (!done_.id3v2) {
      CountLostCharacters(
          {&values.artist, &values.title, &values.album, &values.year, &values.comment},
          writing_.losses);
    }
    return WriteID3v1Tag(writing_, job_.path, job_.record, false);
  }

  /// Of the file's own block what the editor does not hold stays; that of another file must not
  /// come in its place.
  bool WriteLyrics3() {
    Lyrics3 block;
    if (!ReadLyrics3Tag(job_.path, block)) {
      if (HasLyrics3Tag(job_.path, block)) ++writing_.losses.blocks;
      block = {};
    }
    const TagValues& values = job_.values;
    if (!done_.id3v2) {
      CountLostCharacters({&values.lyrics, &values.mood, &values.situation}, writing_.losses);
    }
    bool ok = false;
    WriteTag(writing_, job_.path,
             {.lyrics = ToTagText(values.lyrics),
              .mood = ToTagText(values.mood),
              .situation = ToTagText(values.situation),
              .title = ToTagText(values.title),
              .artist = ToTagText(values.artist),
              .album = ToTagText(values.album)},
             block, ok);
    return ok;
  }

  const TagJob& job_;
  Mp3Info& info_;
  TagWriting& writing_;
  const TagStepTalk& talk_;
  TagStepsDone done_;
};

}  // namespace

bool WritesTags(const std::string& path, const Preferences& preferences) {
  return HasExtension(path, "mp3") && !bCheckCDArchive(path, preferences) &&
         (preferences.chkSaveTags23 || preferences.chkSaveTags11 || preferences.chkSaveLyrics2);
}

TagStepsDone WriteTags(const TagJob& job, const Preferences& preferences, Mp3Info& info,
                       TagWriting& writing, const TagStepTalk& talk) {
  if (!HasExtension(job.path, "mp3")) return {};
  return TagSteps(job, info, writing, talk).Run(preferences);
}

}  // namespace tunemeadow
