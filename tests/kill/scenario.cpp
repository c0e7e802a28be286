// SPDX-License-Identifier: GPL-3.0-or-later
#include "kill/scenario.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>

#include "audio/id3v1_writer.h"
#include "audio/id3v2_text.h"
#include "audio/id3v2_writer.h"
#include "audio/lyrics3_writer.h"
#include "audio/tag_writing.h"
#include "files/journaled_file.h"
#include "support/mp3_builder.h"

namespace tunemeadow::kill {
namespace {

/// `count` bytes that differ from each other and from what other seeds give.
std::string Text(std::size_t count, char seed) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += static_cast<char>('a' + (seed + i * i / 7) % 26);
  return text;
}

Mp3Info NewTexts() {
  Mp3Info info;
  info.Title = "A new title";
  info.Artist = "A new artist";
  info.Album = Text(60, 'n');
  info.Year = "2004";
  info.TrackV2 = info.Track = "7";
  info.GenreV2 = "Rock";
  info.Lyrics = Text(900, 'l');
  info.Comment = "written anew";
  return info;
}

Step WriteV2(const std::string& picture = {}) {
  return [picture](UndoJournal& journal, const std::string& path) {
    TagWriting writing(journal);
    writing.PictureFile = picture;
    writing.PictureExtension = "jpg";
    Mp3Info info = NewTexts();
    return WriteID3v2Tag(writing, path, !picture.empty(), info) == "OK";
  };
}

bool WriteV1(UndoJournal& journal, const std::string& path) {
  TagWriting writing(journal);
  const ID3v1Texts texts = {.artist = "A new artist",
                            .genre = "Rock",
                            .title = "A new title",
                            .year = "2004",
                            .album = "New",
                            .comment = "new",
                            .track = "7"};
  return WriteID3v1Tag(writing, path, FillID3v1Tag(texts), false);
}

Step WriteL3(std::size_t lyrics) {
  return [lyrics](UndoJournal& journal, const std::string& path) {
    TagWriting writing(journal);
    Lyrics3 block;
    (void)ReadLyrics3Tag(path, block);
    bool ok = false;
    WriteTag(writing, path, {.lyrics = Text(lyrics, 'L'), .mood = "glad"}, block, ok);
    return ok;
  };
}

template <std::string (*kRemove)(TagWriting&, const std::string&)>
bool Remove(UndoJournal& journal, const std::string& path) {
  TagWriting writing(journal);
  return kRemove(writing, path) == "OK";
}

Step SetLength(double factor) {
  return [factor](UndoJournal& journal, const std::string& path) {
    JournaledFile file(journal);
    if (!file.Open(path).empty()) return false;
    const auto length = static_cast<double>(file.Length()) * factor;
    return file.Rewrite({}, static_cast<std::int64_t>(length)).empty();
  };
}

/// What stands around the audio.
struct Tags {
  bool v2 = false;
  std::size_t padding = 0;
  std::size_t pictures = 0;
  std::size_t lyrics = 0;  ///< of a Lyrics3 block
  bool v1 = false;
};

using Audio = std::shared_ptr<const std::string>;

std::string TaggedBytes(std::string_view audio, const Tags& tags) {
  Mp3File file;
  if (tags.v2) {
    std::string pictures;
    for (std::size_t i = 0; i < tags.pictures; ++i) pictures += PictureFrame(FakeJpeg(30'000));
    file.Id3v2({{"TIT2", "Old"}, {"TPE1", "Older"}, {"TALB", Text(40, 'o')}},
               {.padding = tags.padding, .more_frames = pictures});
  }
  file.Bytes(audio);
  if (tags.lyrics > 0) file.Lyrics3({{"LYR", Text(tags.lyrics, 'y')}, {"AUT", "Somebody"}});
  if (tags.v1) file.Id3v1({.title = "Old", .artist = "Older", .track = 3});
  return file.Build();
}

std::function<std::string()> Tagged(const Audio& audio, const Tags& tags, std::size_t part = 1) {
  return
      [=] { return TaggedBytes(std::string_view(*audio).substr(0, audio->size() / part), tags); };
}

void AddSingles(const Audio& audio, const std::string& picture, std::vector<Scenario>& scenarios) {
  const auto add = [&](std::string writer, std::string form, const Tags& tags, Step step) {
    scenarios.push_back(
        {std::move(writer), std::move(form), {{Tagged(audio, tags), {std::move(step)}}}});
  };
  const Tags bare;
  const Tags roomy = {.v2 = true, .padding = 4000, .v1 = true};
  const Tags tight = {.v2 = true, .v1 = true};
  const Tags pictured = {.v2 = true, .pictures = 2, .v1 = true};
  const Tags sung = {.v2 = true, .lyrics = 2000, .v1 = true};
  add("WriteID3v2Tag", "fits", roomy, WriteV2());
  add("WriteID3v2Tag", "grows", tight, WriteV2());
  add("WriteID3v2Tag", "no tag before", bare, WriteV2());
  add("WriteID3v2Tag", "with a picture", pictured, WriteV2(picture));
  add("WriteID3v1Tag", "over the old one", tight, WriteV1);
  add("WriteID3v1Tag", "behind the file", bare, WriteV1);
  add("WriteTag", "no block before", tight, WriteL3(5000));
  add("WriteTag", "longer block", sung, WriteL3(5000));
  add("WriteTag", "shorter block", sung, WriteL3(500));
  add("WriteTag", "no ID3v1 record", bare, WriteL3(5000));
  add("RemoveID3v1Tag", "", tight, Remove<RemoveID3v1Tag>);
  add("RemoveID3v2Tag", "", roomy, Remove<RemoveID3v2Tag>);
  add("RemoveID3v2Picture", "two of them", pictured, Remove<RemoveID3v2Picture>);
  add("KillLyrics3Tag", "with an ID3v1 record", sung, Remove<KillLyrics3Tag>);
  add("KillLyrics3Tag", "at the end", {.lyrics = 2000}, Remove<KillLyrics3Tag>);
  add("JournaledFile", "shorter", tight, SetLength(0.5));
  add("JournaledFile", "longer", tight, SetLength(1.25));
}

void AddGroups(const Audio& audio, const std::string& picture, std::vector<Scenario>& scenarios) {
  constexpr std::size_t kPart = 6;
  const Tags roomy = {.v2 = true, .padding = 4000, .lyrics = 800, .v1 = true};
  const std::vector<Step> all = {WriteV2(), WriteV1, WriteL3(1500)};
  scenarios.push_back({"one save", "three tags", {{Tagged(audio, roomy), all}}, true});
  scenarios.push_back({"one save", "nothing before", {{Tagged(audio, {}), all}}, true});

  Scenario fits{.writer = "group", .form = "tags that fit", .grouped = true};
  for (int i = 0; i < 6; ++i) fits.files.push_back({Tagged(audio, roomy, kPart), all});
  scenarios.push_back(fits);

  Scenario mixed{.writer = "group", .form = "of every kind", .grouped = true};
  mixed.files = {
      {Tagged(audio, roomy, kPart), all},
      {Tagged(audio, {}, kPart), {WriteV2(), WriteV1}},
      {Tagged(audio, {.v2 = true, .pictures = 1}, kPart),
       {WriteV2(picture), WriteV1, WriteL3(3000)}},
      {Tagged(audio, {.v2 = true, .padding = 900, .lyrics = 900, .v1 = true}, kPart),
       {Remove<KillLyrics3Tag>, Remove<RemoveID3v1Tag>, Remove<RemoveID3v2Tag>}},
      {Tagged(audio, {.v2 = true, .pictures = 2}, kPart),
       {Remove<RemoveID3v2Picture>, WriteV2(picture)}},
  };
  scenarios.push_back(mixed);
}

}  // namespace

std::vector<Scenario> AllScenarios(const std::string& audio, const std::string& picture_file) {
  std::vector<Scenario> scenarios;
  const auto shared = std::make_shared<const std::string>(audio);
  AddSingles(shared, picture_file, scenarios);
  AddGroups(shared, picture_file, scenarios);
  return scenarios;
}

std::string AudioOf(const std::string& mp3, std::size_t size) {
  std::size_t start = 0;
  if (const std::optional<ID3v2Header> tag = ParseID3v2Header(mp3.substr(0, kID3v2HeaderBytes))) {
    start = kID3v2HeaderBytes + static_cast<std::size_t>(tag->size);
  }
  std::string frames = mp3.substr(std::min(start, mp3.size()));
  if (frames.size() > 128 && frames.substr(frames.size() - 128).starts_with("TAG")) {
    frames.resize(frames.size() - 128);
  }
  std::string audio;
  while (!frames.empty() && audio.size() < size) audio += frames;
  return audio;
}

}  // namespace tunemeadow::kill
